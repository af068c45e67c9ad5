// processor.dll: loads the library's image for the device into this process and lets the desk call
// it as if it were the desk's own build.

#include "processor.h"
#include <stdio.h>
#include <stdlib.h>

static Image image;
static LPTOP_LEVEL_EXCEPTION_FILTER nextFilter;

// A fault of a memory access, which the emulated processor makes in this process's own name.
static LONG WINAPI reportFault(EXCEPTION_POINTERS* fault) {
    Processor* processor = currentProcessor();
    if (processor && processor->isRunning()) processor->report("faults");
    LONG answer = nextFilter ? nextFilter(fault) : EXCEPTION_CONTINUE_SEARCH;
    // All is said; a debugger, for which the system would wait, is not there.
    if (processor && answer == EXCEPTION_CONTINUE_SEARCH) TerminateProcess(GetCurrentProcess(), 1);
    return answer;
}

static const char* setting(const char* name) {
    const char* value = getenv(name);
    return value ? value : "";
}

static std::string load() {
    if (!unixSide()) return "start me through launcher/on-device or launcher/java-on-device";
    const char* emulator = setting("ZEMVOLT_PROCESSOR");
    if (!unicorn::library.load(emulator))
        return std::string("the processor's emulator cannot be loaded: ") + emulator;
    std::string problem = image.load(setting("ZEMVOLT_IMAGE"), setting("ZEMVOLT_SYMBOLS"));
    if (!problem.empty()) return problem;
    bool isOlder = strcmp(setting("ZEMVOLT_ARCHITECTURE"), "armv4") == 0;
    bool counts = *setting("ZEMVOLT_COUNT");
    setProcessors({&image, isOlder ? unicorn::modelSA1110 : unicorn::model925T,
                   counts ? Count::instructions : Count::nothing});
    nextFilter = SetUnhandledExceptionFilter(reportFault);
    using Entry = BOOL(WINAPI*)(HINSTANCE, DWORD, LPVOID);
    auto entry = reinterpret_cast<Entry>(image.entryPoint());
    if (!entry(reinterpret_cast<HINSTANCE>(image.base()), DLL_PROCESS_ATTACH, nullptr))
        return "the library refuses to be loaded";
    return {};
}

extern "C" {

// The image, or null with a line on standard error. Once.
__declspec(dllexport) HMODULE Processor_Load() {
    // Processes that this one starts could not use it.
    if (unixSide()) {
        void* unsetenv = unixSymbol(nullptr, "unsetenv");
        for (const char* name : {"LD_PRELOAD", "ZJAVA_PRELOAD"}) {
            callUnix(unsetenv, name);
            SetEnvironmentVariableA(name, nullptr);
        }
    }
    std::string problem = load();
    if (problem.empty()) return reinterpret_cast<HMODULE>(image.base());
    fprintf(stderr, "processor: %s\n", problem.c_str());
    return nullptr;
}

__declspec(dllexport) void* Processor_Find(const char* name) { return image.exportNamed(name); }

__declspec(dllexport) void* Processor_EntryPoint() { return image.entryPoint(); }

__declspec(dllexport) void Processor_NoteByteResults(void* const* functions, uint32_t count) {
    noteByteResults(functions, count);
}

__declspec(dllexport) uint64_t Processor_Count() { return countInstructions(); }
}
