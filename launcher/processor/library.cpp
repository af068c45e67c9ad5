// processor.dll: loads images for the device into this process, the library's and its companions',
// and lets the desk call them as if they were the desk's own build.

#include "processor.h"
#include <list>
#include <stdio.h>
#include <stdlib.h>

static Image toolkit;
static std::list<Image> companions;
static LPTOP_LEVEL_EXCEPTION_FILTER nextFilter;

// Whether the device's code runs on this thread.
static bool reportProcessor() {
    Processor* processor = currentProcessor();
    if (processor)
        processor->report(processor->isRunning() ? "faults" : "called this side, which faults");
    return processor;
}

// A fault of a memory access, which the emulated processor makes in this process's own name.
static LONG WINAPI reportFault(EXCEPTION_POINTERS* fault) {
    bool runs = reportProcessor();
    LONG answer = nextFilter ? nextFilter(fault) : EXCEPTION_CONTINUE_SEARCH;
    // All is said; a debugger, for which the system would wait, is not there.
    if (runs && answer == EXCEPTION_CONTINUE_SEARCH) TerminateProcess(GetCurrentProcess(), 1);
    return answer;
}

static const char* setting(const char* name) {
    const char* value = getenv(name);
    return value ? value : "";
}

static std::string start(const Image& image) {
    addImage(image);
    using Entry = BOOL(WINAPI*)(HINSTANCE, DWORD, LPVOID);
    auto entry = reinterpret_cast<Entry>(image.entryPoint());
    if (entry(reinterpret_cast<HINSTANCE>(image.base()), DLL_PROCESS_ATTACH, nullptr)) return {};
    return "the library refuses to be loaded";
}

static std::string load() {
    if (!unixSide()) return "start me through launcher/on-device or launcher/java-on-device";
    const char* emulator = unixSetting("ZEMVOLT_PROCESSOR");
    if (!emulator) return "ZEMVOLT_PROCESSOR does not name the processor's emulator";
    if (!unicorn::library.load(emulator))
        return std::string("the processor's emulator cannot be loaded: ") + emulator;
    std::string problem = toolkit.load(setting("ZEMVOLT_IMAGE"), setting("ZEMVOLT_SYMBOLS"));
    if (!problem.empty()) return problem;
    bool isOlder = strcmp(setting("ZEMVOLT_ARCHITECTURE"), "armv4") == 0;
    bool counts = *setting("ZEMVOLT_COUNT");
    setProcessors({isOlder ? unicorn::modelSA1110 : unicorn::model925T,
                   counts ? Count::instructions : Count::nothing});
    nextFilter = SetUnhandledExceptionFilter(reportFault);
    return start(toolkit);
}

static HMODULE moduleOf(const Image& image) { return reinterpret_cast<HMODULE>(image.base()); }

static const Image* imageOf(HMODULE module) {
    if (moduleOf(toolkit) == module) return &toolkit;
    for (const Image& companion : companions)
        if (moduleOf(companion) == module) return &companion;
    return nullptr;
}

// A file with a name of its own beside another one.
static std::string beside(const std::string& path, const std::string& name) {
    return path.substr(0, path.find_last_of("/\\") + 1) + name;
}

static bool isFile(const std::string& path) {
    return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

static std::string loadCompanion(const std::string& path, const std::string& name, Image* image) {
    std::string symbols = setting("ZEMVOLT_SYMBOLS");
    if (!symbols.empty()) symbols = beside(symbols, name.substr(0, name.rfind('.')) + ".symbols");
    if (std::string problem = image->load(path, symbols, &toolkit); !problem.empty())
        return problem;
    return start(*image);
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
    if (problem.empty()) return moduleOf(toolkit);
    fprintf(stderr, "processor: %s\n", problem.c_str());
    return nullptr;
}

// Whether the device's build has a companion library of that name.
__declspec(dllexport) bool Processor_HasCompanion(const char* name) {
    return isFile(beside(setting("ZEMVOLT_IMAGE"), name));
}

// Its image, or null with a line on standard error. Once for each, before other threads run.
__declspec(dllexport) HMODULE Processor_LoadCompanion(const char* name) {
    companions.emplace_back();
    std::string problem =
        loadCompanion(beside(setting("ZEMVOLT_IMAGE"), name), name, &companions.back());
    if (problem.empty()) return moduleOf(companions.back());
    fprintf(stderr, "processor: %s\n", problem.c_str());
    return nullptr;
}

// An export of one of the images; null for another module.
__declspec(dllexport) void* Processor_Find(HMODULE module, const char* name) {
    const Image* image = imageOf(module);
    return image ? image->exportNamed(name) : nullptr;
}

__declspec(dllexport) void* Processor_EntryPoint() { return toolkit.entryPoint(); }

__declspec(dllexport) void Processor_NoteByteResults(void* const* functions, uint32_t count) {
    noteByteResults(functions, count);
}

__declspec(dllexport) uint64_t Processor_Count() { return countInstructions(); }

__declspec(dllexport) void Processor_Report() { reportProcessor(); }
}
