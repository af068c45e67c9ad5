#include "process_leaks.h"
#include <gtest/gtest.h>
#include <vector>
#include <windows.h>

#include <tlhelp32.h>

namespace {

// What the system tells of all handles: their number, then one of these for each.
struct HandleEntry {
    ULONG process;
    BYTE type;
    BYTE flags;
    USHORT handle;
    void* object;
    ULONG access;
};
static_assert(sizeof(HandleEntry) == 16);
constexpr int handleInformation = 16;

} // namespace

extern "C" __declspec(dllimport) LONG WINAPI
    NtQuerySystemInformation(int kind, void* buffer, ULONG size, ULONG* needed);

static int countThreads() {
    HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 entry = {};
    entry.dwSize = sizeof(entry);
    int count = 0;
    for (BOOL more = Thread32First(snapshot, &entry); more; more = Thread32Next(snapshot, &entry))
        count += entry.th32OwnerProcessID == GetCurrentProcessId();
    CloseHandle(snapshot);
    return count;
}

static int countHandles() {
    std::vector<ULONG> buffer(1 << 18);
    ULONG needed = 0;
    LONG status =
        NtQuerySystemInformation(handleInformation, buffer.data(), buffer.size() * 4, &needed);
    EXPECT_EQ(status, 0) << "handles cannot be counted";
    if (status) return -1;
    auto* entries = reinterpret_cast<const HandleEntry*>(&buffer[1]);
    int count = 0;
    for (ULONG i = 0; i < buffer[0]; ++i) count += entries[i].process == GetCurrentProcessId();
    return count;
}

ProcessCounts countProcess() { return {countThreads(), countHandles()}; }

void expectARoundWithoutHandles(const std::function<void()>& round) {
    constexpr int enoughRounds = 5;
    ProcessCounts before, after;
    for (int i = 0; i < enoughRounds; ++i) {
        before = countProcess();
        round();
        after = countProcess();
        if (after == before) return;
    }
    ADD_FAILURE() << "each round leaves " << after.threads - before.threads << " threads and "
                  << after.handles - before.handles << " handles";
}

NothingLeft::~NothingLeft() {
    ProcessCounts after = countProcess();
    EXPECT_EQ(after.threads, before.threads) << "threads";
    EXPECT_EQ(after.handles, before.handles) << "handles";
}
