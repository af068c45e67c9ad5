#include "ending.h"
#include "fault_watch.h"
#include "jni_proxy.h"
#include "toolkit.h"
#include "unix_side.h"
#include <stdio.h>
#include <windows.h>

static constexpr UINT abortCode = 134; // as a shell sees SIGABRT

static volatile DWORD endingThread; // 0 before

void exitThroughWindows(jint code) {
    fflush(nullptr);
    endingThread = GetCurrentThreadId();
    ExitProcess(code);
}

void abortThroughWindows() {
    fflush(nullptr);
    TerminateProcess(GetCurrentProcess(), abortCode);
}

static UINT tellOfFault(const FaultDescription& fault) {
    // Threads that are stopped wherever they are may fault, which is no fault of the program's.
    if (endingThread && endingThread != GetCurrentThreadId()) Sleep(INFINITE);
    fprintf(stderr, "zjava: %s\n", fault.text);
    reportProcessor();
    fflush(stderr);

    void* env = nullptr;
    JavaVM* vm = proxyVm();
    // The VM's fatal error prints the Java stack of this thread and aborts.
    if (vm->GetEnv(&env, JNI_VERSION_1_8) == JNI_OK)
        static_cast<JNIEnv*>(env)->FatalError(fault.text);
    fflush(nullptr);
    return abortCode;
}

void reportFaults() { watchFaults(tellOfFault); }
