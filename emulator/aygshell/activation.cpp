// What the device's shell does for a top-level window that is activated or meets a new setting.

#include "aygshell.h"
#include "emulator.h"

static LONG shownHeight(HWND window) {
    if (!window || !IsWindowVisible(window)) return 0;
    RECT place;
    GetWindowRect(window, &place);
    return place.bottom - place.top;
}

extern "C" {

// Remembers which control had the focus when the window is left, and gives it back on return.
BOOL WINAPI SHHandleWMActivate(HWND window, WPARAM wParam, LPARAM, SHACTIVATEINFO* info, DWORD) {
    if (LOWORD(wParam) == WA_INACTIVE) {
        HWND focus = GetFocus();
        info->hwndLastFocus = focus && IsChild(window, focus) ? focus : nullptr;
    } else if (info->hwndLastFocus && IsChild(window, info->hwndLastFocus)) {
        SetFocus(info->hwndLastFocus);
    }
    return TRUE;
}

// Keeps a window that fills the work area above its menu bar clear of the input panel.
BOOL WINAPI SHHandleWMSettingChange(HWND window, WPARAM wParam, LPARAM, SHACTIVATEINFO*) {
    if (!window || wParam != SPI_SETWORKAREA) return TRUE;
    RECT work;
    Emulator_GetWorkArea(&work);
    SetWindowPos(window, nullptr, work.left, work.top, work.right - work.left,
                 work.bottom - work.top - shownHeight(SHFindMenuBar(window)),
                 SWP_NOZORDER | SWP_NOACTIVATE);
    return TRUE;
}
}
