// Text that a program sets is a change for many lines as it is for one; a selection that a program
// makes does not scroll lines; and the border is a part of the window's frame.

#include "control_classes.h"

static LRESULT callDesk(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return CallWindowProcW(editClass.deskProc, window, message, wParam, lParam);
}

static bool hasLines(HWND window) { return GetWindowLongW(window, GWL_STYLE) & ES_MULTILINE; }

// The desk's class takes the border from the window and draws one of its own, unless it does not
// hear of it.
static LRESULT create(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    CREATESTRUCTW description = *reinterpret_cast<const CREATESTRUCTW*>(lParam);
    description.style &= ~WS_BORDER;
    return callDesk(window, message, wParam, reinterpret_cast<LPARAM>(&description));
}

static LRESULT setText(HWND window, WPARAM wParam, LPARAM lParam) {
    LRESULT result = callDesk(window, WM_SETTEXT, wParam, lParam);
    if (hasLines(window) && result) notifyParent(window, EN_CHANGE);
    return result;
}

static LRESULT firstLine(HWND window) { return callDesk(window, EM_GETFIRSTVISIBLELINE, 0, 0); }

static LRESULT select(HWND window, WPARAM wParam, LPARAM lParam) {
    LRESULT before = firstLine(window);
    LRESULT result = callDesk(window, EM_SETSEL, wParam, lParam);
    if (hasLines(window)) callDesk(window, EM_LINESCROLL, 0, before - firstLine(window));
    return result;
}

static LRESULT CALLBACK editProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_NCCREATE:
    case WM_CREATE:
        return create(window, message, wParam, lParam);
    case WM_SETTEXT:
        return setText(window, wParam, lParam);
    case EM_SETSEL:
        return select(window, wParam, lParam);
    default:
        return callDesk(window, message, wParam, lParam);
    }
}

ControlClass editClass = {L"EDIT", L"DeviceEdit", editProc, nullptr};
