// An item that is not there cannot be scrolled to the top. The space bar, which turns an item's
// selection over where several can be selected, tells the parent so.

#include "control_classes.h"

static LRESULT callDesk(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return CallWindowProcW(listClass.deskProc, window, message, wParam, lParam);
}

static LRESULT space(HWND window, LPARAM lParam) {
    if (!callDesk(window, LB_GETCOUNT, 0, 0)) return 0; // the desk's would look for an item
    LRESULT before = callDesk(window, LB_GETSELCOUNT, 0, 0);
    LRESULT result = callDesk(window, WM_KEYDOWN, VK_SPACE, lParam);
    bool notifies = GetWindowLongW(window, GWL_STYLE) & LBS_NOTIFY;
    if (notifies && callDesk(window, LB_GETSELCOUNT, 0, 0) != before)
        notifyParent(window, LBN_SELCHANGE);
    return result;
}

static LRESULT CALLBACK listProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_KEYDOWN && wParam == VK_SPACE) return space(window, lParam);
    bool isMissing =
        message == LB_SETTOPINDEX &&
        wParam >= static_cast<WPARAM>(callDesk(window, LB_GETCOUNT, 0, 0)); // or negative
    return isMissing ? LB_ERR : callDesk(window, message, wParam, lParam);
}

ControlClass listClass = {L"LISTBOX", L"DeviceListBox", listProc, nullptr};
