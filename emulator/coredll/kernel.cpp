#include "device_clock.h"
#include "emulator.h"
#include "refusal.h"

static constexpr DWORD eventPulse = 1;
static constexpr DWORD eventReset = 2;
static constexpr DWORD eventSet = 3;

static volatile LONG waits;

extern "C" {

LONG WINAPI Emulator_CountWaits() { return waits; }

BOOL WINAPI Device_EventModify(HANDLE event, DWORD action) {
    switch (action) {
    case eventPulse:
        return PulseEvent(event);
    case eventReset:
        return ResetEvent(event);
    case eventSet:
        return SetEvent(event);
    default:
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
}

// The device waits for the first of several, never for all.
DWORD WINAPI Device_WaitForMultipleObjects(DWORD count, const HANDLE* objects, BOOL forAll,
                                           DWORD milliseconds) {
    if (!isAllowed(!forAll)) return WAIT_FAILED;
    return WaitForMultipleObjects(count, objects, FALSE, milliseconds);
}

DWORD WINAPI Device_MsgWaitForMultipleObjectsEx(DWORD count, const HANDLE* objects,
                                                DWORD milliseconds, DWORD input, DWORD flags) {
    constexpr DWORD anyInput = 0x7F; // later systems know more kinds
    if (!isAllowed(!(input & ~anyInput) && !(flags & MWMO_WAITALL))) return WAIT_FAILED;
    DWORD ready = MsgWaitForMultipleObjectsEx(count, objects, 0, input, flags);
    if (ready != WAIT_TIMEOUT || !milliseconds) return ready;
    InterlockedIncrement(&waits);
    return waitOnClock(count, objects, milliseconds, input, flags);
}

// Export names are plain ASCII.
FARPROC WINAPI Device_GetProcAddressW(HMODULE module, LPCWSTR name) {
    char narrow[256];
    if (!WideCharToMultiByte(CP_ACP, 0, name, -1, narrow, sizeof(narrow), nullptr, nullptr))
        return nullptr;
    return GetProcAddress(module, narrow);
}
}
