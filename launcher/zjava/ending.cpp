#include "ending.h"
#include "jni_proxy.h"
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

static void describePlace(const void* address, char* text, size_t size) {
    HMODULE module = nullptr;
    char path[MAX_PATH] = "unknown module";
    constexpr DWORD byAddress =
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (GetModuleHandleExA(byAddress, static_cast<LPCSTR>(address), &module))
        GetModuleFileNameA(module, path, sizeof(path));
    const char* name = path;
    for (const char* at = path; *at; ++at)
        if (*at == '\\' || *at == '/') name = at + 1;
    snprintf(text, size, "%s+%#lx", name,
             reinterpret_cast<DWORD>(address) - reinterpret_cast<DWORD>(module));
}

static LONG WINAPI reportFault(EXCEPTION_POINTERS* fault) {
    // Threads that are stopped wherever they are may fault, which is no fault of the program's.
    if (endingThread && endingThread != GetCurrentThreadId()) Sleep(INFINITE);
    static LONG reported;
    if (InterlockedExchange(&reported, 1)) return EXCEPTION_EXECUTE_HANDLER;
    const EXCEPTION_RECORD& record = *fault->ExceptionRecord;
    char place[MAX_PATH + 32];
    describePlace(record.ExceptionAddress, place, sizeof(place));
    char message[MAX_PATH + 128];
    snprintf(message, sizeof(message), "Windows exception %#lx at %s", record.ExceptionCode, place);
    fprintf(stderr, "zjava: %s\n", message);
    fflush(stderr);

    void* env = nullptr;
    JavaVM* vm = proxyVm();
    // The VM's fatal error prints the Java stack of this thread and aborts.
    if (vm->GetEnv(&env, JNI_VERSION_1_8) == JNI_OK) static_cast<JNIEnv*>(env)->FatalError(message);
    abortThroughWindows();
    return EXCEPTION_EXECUTE_HANDLER;
}

void reportUnhandledFaults() { SetUnhandledExceptionFilter(reportFault); }
