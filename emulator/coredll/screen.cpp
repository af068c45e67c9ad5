#include "screen.h"
#include "emulator.h"
#include <utility>

static SRWLOCK screenLock = SRWLOCK_INIT;
static SIZE screen = Emulator_GetVariety()->screen;

SIZE screenSize() {
    AcquireSRWLockShared(&screenLock);
    SIZE size = screen;
    ReleaseSRWLockShared(&screenLock);
    return size;
}

void swapScreenSides() {
    AcquireSRWLockExclusive(&screenLock);
    std::swap(screen.cx, screen.cy);
    ReleaseSRWLockExclusive(&screenLock);
}

// Menu bars take nothing from it: they belong to their top-level windows.
RECT wholeWorkArea() {
    SIZE size = screenSize();
    return {0, Emulator_GetVariety()->taskBarHeight, size.cx, size.cy};
}

static RECT usable = wholeWorkArea();

// How long a busy window may keep the others from hearing of a change, milliseconds.
static constexpr UINT answerTime = 1000;

RECT workArea() {
    AcquireSRWLockShared(&screenLock);
    RECT area = usable;
    ReleaseSRWLockShared(&screenLock);
    return area;
}

static void setWorkArea(const RECT& area) {
    AcquireSRWLockExclusive(&screenLock);
    usable = area;
    ReleaseSRWLockExclusive(&screenLock);
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

void WINAPI Emulator_GetScreen(SIZE* size) { *size = screenSize(); }

int WINAPI Device_GetSystemMetrics(int index) {
    switch (index) {
    case SM_CXSCREEN:
    case SM_CXVIRTUALSCREEN:
        return screenSize().cx;
    case SM_CYSCREEN:
    case SM_CYVIRTUALSCREEN:
        return screenSize().cy;
    default:
        return GetSystemMetrics(index);
    }
}

int WINAPI Device_GetDeviceCaps(HDC context, int index) {
    switch (index) {
    case HORZRES:
        return screenSize().cx;
    case VERTRES:
        return screenSize().cy;
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
