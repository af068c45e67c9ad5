// What the device's shell does for a top-level window that is activated or meets a new setting.

#include "aygshell.h"

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

// The device's screen has no input panel that could cover the window.
BOOL WINAPI SHHandleWMSettingChange(HWND, WPARAM, LPARAM, SHACTIVATEINFO*) { return TRUE; }
}
