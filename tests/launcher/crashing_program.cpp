// A program that nobody watches, and that crashes.
int main() { *reinterpret_cast<volatile int*>(8) = 1; }
