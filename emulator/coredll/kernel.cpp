#include <windows.h>

static constexpr DWORD eventPulse = 1;
static constexpr DWORD eventReset = 2;
static constexpr DWORD eventSet = 3;

extern "C" {

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

// Export names are plain ASCII.
FARPROC WINAPI Device_GetProcAddressW(HMODULE module, LPCWSTR name) {
    char narrow[256];
    if (!WideCharToMultiByte(CP_ACP, 0, name, -1, narrow, sizeof(narrow), nullptr, nullptr))
        return nullptr;
    return GetProcAddress(module, narrow);
}
}
