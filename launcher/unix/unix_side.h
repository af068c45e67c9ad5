#pragma once
// The Unix half of the process, where the Java VM lives.

#include <stdint.h>
#include <windows.h>

// The preloaded library has the same structure.
struct PreloadTable {
    void* dlopen;
    void* dlsym;
    void* dlerror;
    void* createThread;
    void* onLoad;
    int argumentCount;
    char** arguments; // the process's, the loader's own included
};

// Calls a function of either ABI's caller-cleans or callee-cleans convention with the words, on a
// stack aligned as Unix code wants it.
extern "C" uint64_t callAligned(void* function, const uint32_t* words, uint32_t count);

template <class... Words>
uint32_t callUnix(void* function, Words... words) {
    const uint32_t list[] = {uint32_t(uintptr_t(words))..., 0};
    return uint32_t(callAligned(function, list, sizeof...(Words)));
}

// Null when the process was started without the preloaded library.
PreloadTable* unixSide();

// A symbol of a loaded Unix library; of any loaded one when library is null.
void* unixSymbol(void* library, const char* name);

// What the Unix environment says, byte for byte: the device's own copy of it has lost what its code
// page does not have. Null when it says nothing.
const char* unixSetting(const char* name);

// Lets the VM create its threads as Windows threads.
void shareThreads();
