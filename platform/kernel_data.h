#pragma once
// Which thread and which process run. The device's libraries have no functions for that: a program
// reads the numbers in memory that the system shows it, each processor's in its own way. Any
// thread; cannot fail.

#include <windows.h>

#ifdef _ARM_
// The page that the kernel shows to all programs holds, from its second word on, the handles of the
// system: the second and the third of them are those of the running thread and process, which on
// this system are their numbers too.
inline DWORD kernelHandle(DWORD index) {
    constexpr DWORD kernelHandles = 0xFFFFC804;
    return reinterpret_cast<const volatile DWORD*>(kernelHandles)[index];
}

inline DWORD currentThreadId() { return kernelHandle(1); }
inline DWORD currentProcessId() { return kernelHandle(2); }
#else
// The system shows each thread a block of its own.
template <DWORD offset>
inline DWORD ofThisThread() {
    DWORD value;
    asm("movl %%fs:%c1, %0" : "=r"(value) : "i"(offset));
    return value;
}

inline DWORD currentThreadId() { return ofThisThread<0x24>(); }
inline DWORD currentProcessId() { return ofThisThread<0x20>(); }
#endif
