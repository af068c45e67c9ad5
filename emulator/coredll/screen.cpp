#include "screen.h"
#include "emulator.h"

static SIZE screen() { return Emulator_GetVariety()->screen; }

// Menu bars take nothing from it: they belong to their top-level windows.
RECT wholeWorkArea() { return {0, Emulator_GetVariety()->taskBarHeight, screen().cx, screen().cy}; }

static RECT usable = wholeWorkArea();

// How long a busy window may keep the others from hearing of a change, milliseconds.
static constexpr UINT answerTime = 1000;

static SRWLOCK usableLock = SRWLOCK_INIT;

RECT workArea() {
    AcquireSRWLockShared(&usableLock);
    RECT area = usable;
    ReleaseSRWLockShared(&usableLock);
    return area;
}

static void setWorkArea(const RECT& area) {
    AcquireSRWLockExclusive(&usableLock);
    usable = area;
    ReleaseSRWLockExclusive(&usableLock);
}

static BOOL CALLBACK tellOfNewWorkArea(HWND window, LPARAM) {
    DWORD process;
    GetWindowThreadProcessId(window, &process);
    if (process == GetCurrentProcessId())
        SendMessageTimeoutW(window, WM_SETTINGCHANGE, SPI_SETWORKAREA, 0, SMTO_ABORTIFHUNG,
                            answerTime, nullptr);
    return TRUE;
}

void changeWorkArea(const RECT& area) {
    setWorkArea(area);
    EnumWindows(tellOfNewWorkArea, 0);
}

extern "C" {

void WINAPI Emulator_GetWorkArea(RECT* area) { *area = workArea(); }

int WINAPI Device_GetSystemMetrics(int index) {
    switch (index) {
    case SM_CXSCREEN:
    case SM_CXVIRTUALSCREEN:
        return screen().cx;
    case SM_CYSCREEN:
    case SM_CYVIRTUALSCREEN:
        return screen().cy;
    default:
        return GetSystemMetrics(index);
    }
}

int WINAPI Device_GetDeviceCaps(HDC context, int index) {
    switch (index) {
    case HORZRES:
        return screen().cx;
    case VERTRES:
        return screen().cy;
    case LOGPIXELSX:
    case LOGPIXELSY:
        return Emulator_GetVariety()->dotsPerInch;
    default:
        return GetDeviceCaps(context, index);
    }
}

BOOL WINAPI Device_SystemParametersInfoW(UINT action, UINT number, PVOID data, UINT update) {
    switch (action) {
    case SPI_GETWORKAREA:
        *static_cast<RECT*>(data) = workArea();
        return TRUE;
    case SPI_SETWORKAREA:
        if (update & SPIF_SENDCHANGE)
            changeWorkArea(*static_cast<const RECT*>(data));
        else
            setWorkArea(*static_cast<const RECT*>(data));
        return TRUE;
    default:
        return SystemParametersInfoW(action, number, data, update);
    }
}
}
