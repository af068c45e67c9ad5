#include "fault_watch.h"
#include "symbols.h"
#include <stdio.h>
#include <string.h>

static FaultReporter tell;

namespace {

// What the system, its heap and the emulated processor raise where they find something wrong: the
// cause lies in the program, whoever finds it.
constexpr DWORD found[] = {
    0x80000100, // a function that nobody offers was called
    0x80000101, // a failed assertion of the system's
    0xC0000374, // a damaged heap
    0xE0415221, // a flaw of the device's code
};

constexpr DWORD faults[] = {
    EXCEPTION_ACCESS_VIOLATION,    EXCEPTION_DATATYPE_MISALIGNMENT, EXCEPTION_IN_PAGE_ERROR,
    EXCEPTION_ILLEGAL_INSTRUCTION, EXCEPTION_PRIV_INSTRUCTION,      EXCEPTION_INT_DIVIDE_BY_ZERO,
    EXCEPTION_INT_OVERFLOW,        EXCEPTION_ARRAY_BOUNDS_EXCEEDED, EXCEPTION_STACK_OVERFLOW,
    EXCEPTION_BREAKPOINT,
};

} // namespace

template <size_t Count>
static bool contains(const DWORD (&codes)[Count], DWORD code) {
    for (DWORD listed : codes)
        if (listed == code) return true;
    return false;
}

static const char* nameOf(const char* path) {
    const char* name = path;
    for (const char* at = path; *at; ++at)
        if (*at == '\\' || *at == '/') name = at + 1;
    return name;
}

// Null for what lies in none.
static HMODULE moduleAt(const void* address) {
    constexpr DWORD byAddress =
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    HMODULE module = nullptr;
    return GetModuleHandleExA(byAddress, static_cast<LPCSTR>(address), &module) ? module : nullptr;
}

static bool isOurs(HMODULE module) {
    char path[MAX_PATH] = "", program[MAX_PATH] = "";
    GetModuleFileNameA(module, path, sizeof(path));
    GetModuleFileNameA(nullptr, program, sizeof(program));
    size_t folder = nameOf(program) - program;
    return _strnicmp(path, program, folder) == 0 && nameOf(path) == path + folder;
}

static bool isAccess(const EXCEPTION_RECORD& record) {
    return record.ExceptionCode == EXCEPTION_ACCESS_VIOLATION && record.NumberParameters >= 2;
}

// The heap keeps the addresses of blocks on pages of their own when it gives those up.
static bool touchesGivenUp(const EXCEPTION_RECORD& record) {
    if (!isAccess(record)) return false;
    MEMORY_BASIC_INFORMATION memory;
    return VirtualQuery(reinterpret_cast<void*>(record.ExceptionInformation[1]), &memory,
                        sizeof(memory)) &&
           memory.State == MEM_RESERVE;
}

static bool concernsUs(const EXCEPTION_RECORD& record) {
    if (contains(found, record.ExceptionCode)) return true;
    if (!contains(faults, record.ExceptionCode)) return false;
    HMODULE module = moduleAt(record.ExceptionAddress);
    return !module || isOurs(module) || touchesGivenUp(record);
}

static FaultDescription describe(const EXCEPTION_RECORD& record) {
    char path[MAX_PATH] = "";
    HMODULE module = moduleAt(record.ExceptionAddress);
    if (module) GetModuleFileNameA(module, path, sizeof(path));
    char access[64] = "";
    if (isAccess(record))
        snprintf(access, sizeof(access), ", which %s address %#010lx",
                 record.ExceptionInformation[0] == 0   ? "reads"
                 : record.ExceptionInformation[0] == 1 ? "writes to"
                                                       : "jumps to",
                 static_cast<unsigned long>(record.ExceptionInformation[1]));
    DWORD offset =
        reinterpret_cast<DWORD>(record.ExceptionAddress) - reinterpret_cast<DWORD>(module);
    char function[sizeof(FaultDescription::text) / 2] = "";
    if (module) describeFunction(path, offset, function, sizeof(function));
    FaultDescription fault;
    snprintf(fault.text, sizeof(fault.text), "fault %#lx at %s+%#lx%s%s", record.ExceptionCode,
             module ? nameOf(path) : "no module", offset, function, access);
    return fault;
}

static void end(const EXCEPTION_RECORD& record) {
    constexpr UINT faultInTelling = 134;
    static LONG telling; // the thread that does
    auto thread = static_cast<LONG>(GetCurrentThreadId());
    LONG before = InterlockedCompareExchange(&telling, thread, 0);
    if (before == thread) TerminateProcess(GetCurrentProcess(), faultInTelling);
    if (before) Sleep(INFINITE); // that thread ends the process
    TerminateProcess(GetCurrentProcess(), tell(describe(record)));
}

static LONG CALLBACK look(EXCEPTION_POINTERS* exception) {
    if (concernsUs(*exception->ExceptionRecord)) end(*exception->ExceptionRecord);
    return EXCEPTION_CONTINUE_SEARCH;
}

static LONG WINAPI lookAtUnhandled(EXCEPTION_POINTERS* exception) {
    end(*exception->ExceptionRecord);
    return EXCEPTION_EXECUTE_HANDLER;
}

extern "C" {

extern void* callbackStubs[]; // of callbacks.S
extern const DWORD callbackStubCount;
void* systemCallbacks[64];

// Nobody in the callback has handled it: the next handler is the system's, which goes on.
EXCEPTION_DISPOSITION __cdecl leaveCallback(EXCEPTION_RECORD* record, void*, CONTEXT*, void*) {
    constexpr DWORD unwinding = 0x2 | 0x4;
    constexpr DWORD warningOrError = 0x80000000;
    if (!(record->ExceptionFlags & unwinding) && (record->ExceptionCode & warningOrError))
        end(*record);
    return ExceptionContinueSearch;
}
}

// The handlers by which Wine's system enters callbacks, in a table of each process.
static void standBeforeCallbacks() {
    constexpr size_t tableInProcessBlock = 0x2C;
    HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
    HMODULE user = LoadLibraryW(L"user32.dll");
    if (!GetProcAddress(ntdll, "wine_get_version")) return;
    using ProcessBlock = char*(WINAPI*)();
    auto processBlock = reinterpret_cast<ProcessBlock>(
        reinterpret_cast<void*>(GetProcAddress(ntdll, "RtlGetCurrentPeb")));
    auto*** table = reinterpret_cast<void***>(processBlock() + tableInProcessBlock);
    if (!*table) return;
    DWORD count = 0;
    while (count < callbackStubCount && moduleAt((*table)[count]) == user) {
        systemCallbacks[count] = (*table)[count];
        ++count;
    }
    if (count) *table = callbackStubs;
}

void watchFaults(FaultReporter reporter) {
    tell = reporter;
    AddVectoredExceptionHandler(TRUE, look);
    SetUnhandledExceptionFilter(lookAtUnhandled);
    standBeforeCallbacks();
}
