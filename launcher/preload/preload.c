/* Preloaded into the Wine process, on the Unix side of it:
   - tells the launcher, through the environment, where dlopen and its like are, and with which
     words the process was started;
   - makes threads of the Java VM Wine threads, so that they may call Win32, and tells the VM about
     the stack that such a thread really runs on;
   - offers faults to the VM first and to Wine else;
   - hands requests to end the program, or for a thread dump, to the VM;
   - ends the program when Wine's server was killed;
   - lets the process end at once when Wine has ended it;
   - is what System.loadLibrary("zemvolt11") finds, and hands over to the launcher.
   Built without headers and without a start-up: no 32-bit C library need be installed. */

typedef unsigned size_t;
typedef unsigned long pthread_t;
typedef void* (*thread_main)(void*);

extern void* dlsym(void*, const char*);
extern void* dlopen(const char*, int);
extern char* dlerror(void);
extern int dladdr(const void*, void*);
extern char* strstr(const char*, const char*);
extern int setenv(const char*, const char*, int);
extern int sprintf(char*, const char*, ...);
extern void* calloc(size_t, size_t);
extern char* strdup(const char*);
extern pthread_t pthread_self(void);
extern int pthread_attr_getstacksize(const void*, size_t*);
extern int pthread_attr_setstack(void*, void*, size_t);
extern void _exit(int) __attribute__((noreturn));
void exit(int) __attribute__((noreturn));

#define RTLD_NEXT ((void*)-1)
enum { least_stack = 512 * 1024 };

/* The launcher has the same structure in unix_side.h. */
struct preload_table {
    void* dlopen;
    void* dlsym;
    void* dlerror;
    int (*create_thread)(thread_main, void* argument, size_t stack, pthread_t* id);
    int (*on_load)(void* vm);
    int argument_count;
    char** arguments; /* as the process was started; Wine moves the originals about */
};
static struct preload_table table;

__attribute__((constructor)) static void publish(int count, char** arguments) {
    char address[16];
    table.dlopen = (void*)dlopen;
    table.dlsym = (void*)dlsym;
    table.dlerror = (void*)dlerror;
    table.arguments = calloc(count + 1, sizeof(char*));
    for (int i = 0; table.arguments && i < count; ++i) table.arguments[i] = strdup(arguments[i]);
    table.argument_count = table.arguments ? count : 0;
    sprintf(address, "%u", (unsigned)&table);
    setenv("ZJAVA_PRELOAD", address, 1);
}

struct module_info {
    const char* file;
    void* base;
    const char* symbol;
    void* address;
};

static int is_from(const char* library, const void* caller) {
    struct module_info info;
    return dladdr(caller, &info) && info.file && strstr(info.file, library);
}

int pthread_create(pthread_t* id, const void* attributes, thread_main run, void* argument) {
    static int (*real)(pthread_t*, const void*, thread_main, void*);
    if (!real) real = dlsym(RTLD_NEXT, "pthread_create");
    if (!table.create_thread || !is_from("libjvm.so", __builtin_return_address(0)))
        return real(id, attributes, run, argument);
    size_t stack = 0;
    if (attributes) pthread_attr_getstacksize(attributes, &stack);
    return table.create_thread(run, argument, stack < least_stack ? least_stack : stack, id);
}

/* Where a Wine thread keeps the bounds of its stack, behind the segment register that leads to its
   thread block. */
static void wine_stack(char** low, char** base) {
    __asm__("movl %%fs:4,%0" : "=r"(*base));
    __asm__("movl %%fs:0xe0c,%0" : "=r"(*low));
}

int pthread_getattr_np(pthread_t thread, void* attributes) {
    static int (*real)(pthread_t, void*);
    if (!real) real = dlsym(RTLD_NEXT, "pthread_getattr_np");
    int result = real(thread, attributes);
    if (result || !table.create_thread || thread != pthread_self()) return result;
    unsigned short selector;
    __asm__("mov %%fs,%0" : "=r"(selector));
    if (!selector) return result;
    char here, *low, *base;
    wine_stack(&low, &base);
    if (&here >= low && &here < base) pthread_attr_setstack(attributes, low, base - low);
    return 0;
}

/* Wine has stopped all other threads by then, wherever they were and whatever locks they held, and
   has left its server, which kills a process that takes long from there. The exit handlers of the
   Unix libraries could wait forever, and the program's exit code would be lost. */
void exit(int code) {
    if (is_from("ntdll.so", __builtin_return_address(0))) _exit(code);
    void (*real)(int) __attribute__((noreturn)) = dlsym(RTLD_NEXT, "exit");
    real(code);
}

int JNI_OnLoad(void* vm, void* reserved) {
    (void)reserved;
    return table.on_load ? table.on_load(vm) : -1;
}

typedef struct {
    void (*handler)(int, void*, void*);
    unsigned mask[32];
    int flags;
    void* restorer;
} signal_action;
extern int sigaction(int, const signal_action*, signal_action*);

enum {
    signal_hup = 1,
    signal_int = 2,
    signal_quit = 3,
    signal_ill = 4,
    signal_bus = 7,
    signal_fpe = 8,
    signal_segv = 11,
    signal_term = 15,
    last_signal = 31
};
static signal_action wine_actions[last_signal + 1], wine_quit;
static int (*vm_handles)(int, void*, void*, int abort_if_unrecognized);

static void dispatch(int number, void* info, void* context) {
    if (vm_handles(number, info, context, 0)) return;
    wine_actions[number].handler(number, info, context);
}

extern int pthread_sigmask(int, const void*, void*);

/* For a thread that is about to end. When the process ends meanwhile, Wine's server stops its threads
   by this signal. Wine would count the ending thread as ended twice, and take the program for ended
   with the thread's code, or look for a thread block that is gone, and crash. */
void zjava_end_thread_unstopped(void) {
    enum { block = 0 };
    unsigned set[32] = {1u << (signal_quit - 1)};
    pthread_sigmask(block, set, 0);
}

/* The VM runs with user signal handlers allowed and leaves Wine's alone; this one stays on Wine's
   alternate stack. */
void zjava_share_signals(void* libjvm) {
    static const int numbers[] = {signal_segv, signal_bus, signal_fpe, signal_ill};
    vm_handles = dlsym(libjvm, "JVM_handle_linux_signal");
    if (!vm_handles) return;
    sigaction(signal_quit, 0, &wine_quit); /* the VM will set its own */
    for (unsigned i = 0; i < sizeof(numbers) / sizeof(numbers[0]); ++i) {
        int number = numbers[i];
        if (sigaction(number, 0, &wine_actions[number])) continue;
        int is_default_or_ignored = (unsigned)wine_actions[number].handler < 2;
        if (is_default_or_ignored) continue;
        signal_action shared = wine_actions[number];
        shared.handler = dispatch;
        sigaction(number, &shared, 0);
    }
}

/* Requests to end the program and for a thread dump are the VM's. Wine's server stops threads by the
   signal that asks for a dump, too, but sends it to one thread of the process. */
static signal_action vm_actions[signal_term + 1];

static void request(int number, void* info, void* context) {
    enum { code_word = 2, sent_to_thread = -6 };
    if (number == signal_quit && ((int*)info)[code_word] == sent_to_thread)
        wine_quit.handler(number, info, context);
    else
        vm_actions[number].handler(number, info, context);
}

/* After the VM has set its handlers: they run on Wine's alternate stack, too. */
void zjava_share_requests(void) {
    static const int numbers[] = {signal_hup, signal_int, signal_quit, signal_term};
    enum { with_info_on_alternate_stack_restarting = 0x4 | 0x08000000 | 0x10000000 };
    for (unsigned i = 0; i < sizeof(numbers) / sizeof(numbers[0]); ++i) {
        int number = numbers[i];
        if (sigaction(number, 0, &vm_actions[number])) continue;
        int is_default_or_ignored = (unsigned)vm_actions[number].handler < 2;
        if (is_default_or_ignored) continue;
        signal_action shared = wine_quit;
        shared.handler = request;
        shared.flags = with_info_on_alternate_stack_restarting;
        sigaction(number, &shared, 0);
    }
}

extern int atoi(const char*);
extern char* getenv(const char*);
extern int poll(void*, unsigned, int);
extern long syscall(long, ...);

/* Threads that wait for each other never learn that Wine's server was killed, and the one that does
   ends with success. */
static void* await_server(void* process) {
    enum { readable = 1, killed = 137 };
    struct {
        int file;
        short events, found;
    } end = {(int)process, readable, 0};
    while (poll(&end, 1, -1) < 0) {}
    _exit(killed);
}

void zjava_end_with_server(void) {
    enum { pidfd_open = 434 };
    static int (*create)(pthread_t*, const void*, thread_main, void*);
    const char* server = getenv("ZEMVOLT_SERVER");
    int process = server ? (int)syscall(pidfd_open, atoi(server), 0) : -1;
    pthread_t id;
    create = dlsym(RTLD_NEXT, "pthread_create");
    if (process >= 0) create(&id, 0, await_server, (void*)process);
}
