// Where the pointer is, and what it looks like. A device without a mouse has no pointer that could
// be anywhere: it tells the place where the stylus was last.

#include "pointer_place.h"
#include "emulator.h"

static SRWLOCK lock = SRWLOCK_INIT;
static POINT lastTouched;
static thread_local bool isWatched;

static LRESULT CALLBACK watch(int code, WPARAM message, LPARAM lParam) {
    bool touches = message == WM_LBUTTONDOWN || message == WM_LBUTTONUP ||
                   message == WM_LBUTTONDBLCLK || GetKeyState(VK_LBUTTON) < 0;
    if (code == HC_ACTION && touches) {
        AcquireSRWLockExclusive(&lock);
        lastTouched = reinterpret_cast<const MOUSEHOOKSTRUCT*>(lParam)->pt;
        ReleaseSRWLockExclusive(&lock);
    }
    return CallNextHookEx(nullptr, code, message, lParam);
}

void watchStylus() {
    if (isWatched || !Emulator_GetVariety()->hasStylusOnly) return;
    isWatched = true;
    SetWindowsHookExW(WH_MOUSE, watch, nullptr, GetCurrentThreadId());
}

extern "C" {

BOOL WINAPI Device_GetCursorPos(POINT* place) {
    if (!Emulator_GetVariety()->hasStylusOnly || GetAsyncKeyState(VK_LBUTTON) < 0)
        return GetCursorPos(place);
    AcquireSRWLockShared(&lock);
    *place = lastTouched;
    ReleaseSRWLockShared(&lock);
    return TRUE;
}

HCURSOR WINAPI Device_LoadCursorW(HINSTANCE instance, LPCWSTR name) {
    if (instance || !Emulator_GetVariety()->hasOnlyWaitCursor || name == IDC_WAIT)
        return LoadCursorW(instance, name);
    SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
    return nullptr;
}
}
