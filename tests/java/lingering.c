/* A Unix library that takes its time when the process ends. Built without a C library's headers. */

extern unsigned sleep(unsigned seconds);

enum { longer_than_wine_waits = 4 };

__attribute__((destructor)) static void linger(void) { sleep(longer_than_wine_waits); }
