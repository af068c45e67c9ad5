#include "unix_side.h"
#include <stdlib.h>

PreloadTable* unixSide() {
    static PreloadTable* table;
    if (table) return table;
    const char* address = getenv("ZJAVA_PRELOAD");
    if (address) table = reinterpret_cast<PreloadTable*>(strtoul(address, nullptr, 10));
    return table;
}

void* unixSymbol(void* library, const char* name) {
    return reinterpret_cast<void*>(callUnix(unixSide()->dlsym, library, name));
}

const char* unixSetting(const char* name) {
    static void* environment = unixSymbol(nullptr, "getenv");
    return reinterpret_cast<const char*>(callUnix(environment, name));
}

namespace {

struct ThreadStart {
    void* run;
    void* argument;
    HANDLE started;
    uint32_t unixId;
};

} // namespace

static DWORD WINAPI threadMain(void* parameter) {
    auto* start = static_cast<ThreadStart*>(parameter);
    void* run = start->run;
    void* argument = start->argument;
    start->unixId = callUnix(unixSymbol(nullptr, "pthread_self"));
    SetEvent(start->started); // the creator's frame, and with it start, may go now
    callUnix(run, argument);
    callUnix(unixSymbol(nullptr, "zjava_end_thread_unstopped"));
    return 0;
}

static int createThread(void* run, void* argument, uint32_t stackSize, uint32_t* unixId) {
    constexpr int tryAgain = 11;
    ThreadStart start = {run, argument, CreateEventW(nullptr, TRUE, FALSE, nullptr), 0};
    HANDLE thread = CreateThread(nullptr, stackSize, threadMain, &start,
                                 STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    if (thread) {
        WaitForSingleObject(start.started, INFINITE);
        CloseHandle(thread);
    }
    CloseHandle(start.started);
    *unixId = start.unixId;
    return thread ? 0 : tryAgain;
}

void shareThreads() { unixSide()->createThread = reinterpret_cast<void*>(createThread); }
