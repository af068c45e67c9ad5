#include "faults.h"
#include "symbols.h"
#include <stdio.h>
#include <winternl.h>

static FaultEnding endProgram;

extern "C" {
void* callbackStubs[]; // of callbacks.S
extern const DWORD callbackStubCount;
void* systemCallbacks[64];
}

static HMODULE moduleOf(const void* address) {
    constexpr DWORD byAddress =
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    HMODULE module = nullptr;
    GetModuleHandleExA(byAddress, static_cast<LPCSTR>(address), &module);
    return module;
}

static const char* behindFolder(const char* path) {
    const char* name = path;
    for (const char* at = path; *at; ++at)
        if (*at == '\\' || *at == '/') name = at + 1;
    return name;
}

void describePlace(const void* address, char* text, size_t size) {
    HMODULE module = moduleOf(address);
    if (!module) {
        snprintf(text, size, "%p, outside of all modules", address);
        return;
    }
    char path[MAX_PATH] = "unknown module", function[256];
    GetModuleFileNameA(module, path, sizeof(path));
    auto offset = reinterpret_cast<DWORD>(address) - reinterpret_cast<DWORD>(module);
    describeFunction(path, offset, function, sizeof(function));
    snprintf(text, size, "%s+%#lx%s", behindFolder(path), offset, function);
}

static bool isError(const EXCEPTION_RECORD& record) {
    constexpr DWORD errorOrWarning = 0x80000000;
    return (record.ExceptionCode & errorOrWarning) &&
           record.ExceptionCode != STATUS_GUARD_PAGE_VIOLATION;
}

static void report(const EXCEPTION_RECORD& record) {
    static LONG reporting; // the thread that does
    constexpr UINT aborted = 134;
    LONG before = InterlockedCompareExchange(&reporting, GetCurrentThreadId(), 0);
    if (before == static_cast<LONG>(GetCurrentThreadId()))
        TerminateProcess(GetCurrentProcess(), aborted); // telling it has failed
    if (before) Sleep(INFINITE);
    char place[MAX_PATH + 300], message[MAX_PATH + 400];
    describePlace(record.ExceptionAddress, place, sizeof(place));
    snprintf(message, sizeof(message), "Windows exception %#lx at %s", record.ExceptionCode, place);
    endProgram(message);
}

// The program's own modules lie in one folder. None of them handles faults itself.
static bool isOurs(const void* address) {
    char path[MAX_PATH], ours[MAX_PATH];
    HMODULE module = moduleOf(address);
    if (!module || !GetModuleFileNameA(module, path, MAX_PATH) ||
        !GetModuleFileNameA(nullptr, ours, MAX_PATH))
        return false;
    size_t folder = behindFolder(ours) - ours;
    return behindFolder(path) == path + folder && _strnicmp(path, ours, folder) == 0;
}

static LONG WINAPI reportUnhandled(EXCEPTION_POINTERS* fault) {
    report(*fault->ExceptionRecord);
    return EXCEPTION_EXECUTE_HANDLER;
}

// Whoever knows more of faults has put its filter before ours.
static void reportTo(EXCEPTION_POINTERS* fault) {
    LPTOP_LEVEL_EXCEPTION_FILTER first = SetUnhandledExceptionFilter(reportUnhandled);
    (first ? first : reportUnhandled)(fault);
}

static LONG WINAPI reportOurs(EXCEPTION_POINTERS* fault) {
    const EXCEPTION_RECORD& record = *fault->ExceptionRecord;
    if (isError(record) && isOurs(record.ExceptionAddress)) reportTo(fault);
    return EXCEPTION_CONTINUE_SEARCH;
}

// Nothing in the callback has handled it: the next handler is the system's, which swallows it.
extern "C" EXCEPTION_DISPOSITION __cdecl leaveCallback(EXCEPTION_RECORD* record, void*,
                                                       CONTEXT* context, void*) {
    constexpr DWORD unwinding = 0x2 | 0x4;
    if (!(record->ExceptionFlags & unwinding) && isError(*record)) {
        EXCEPTION_POINTERS fault = {record, context};
        reportTo(&fault);
    }
    return ExceptionContinueSearch;
}

// The system's table of what it enters callbacks by. Wine's handlers take two arguments.
static void wrapCallbacks() {
    HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
    if (!GetProcAddress(ntdll, "wine_get_version")) return;
    constexpr size_t tableInProcessBlock = 0x2C;
    auto* block = reinterpret_cast<char*>(NtCurrentTeb()->ProcessEnvironmentBlock);
    auto** table = reinterpret_cast<void***>(block + tableInProcessBlock);
    HMODULE user = LoadLibraryW(L"user32.dll");
    if (!*table || *table == callbackStubs) return;
    DWORD count = 0;
    while (count < callbackStubCount && moduleOf((*table)[count]) == user) {
        systemCallbacks[count] = (*table)[count];
        ++count;
    }
    if (count) *table = callbackStubs;
}

void endAtFaults(FaultEnding end) {
    endProgram = end;
    AddVectoredExceptionHandler(TRUE, reportOurs);
    SetUnhandledExceptionFilter(reportUnhandled);
    wrapCallbacks();
}
