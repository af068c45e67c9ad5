// A radio button takes the focus for a click, unless a press of the pointer brought it.

#include "control_classes.h"

static thread_local HWND pressed; // handles a press at present

static bool isRadioButton(HWND window) {
    LONG type = GetWindowLongW(window, GWL_STYLE) & BS_TYPEMASK;
    return type == BS_RADIOBUTTON || type == BS_AUTORADIOBUTTON;
}

static LRESULT callDesk(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return CallWindowProcW(buttonClass.deskProc, window, message, wParam, lParam);
}

static LRESULT press(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    HWND before = pressed;
    pressed = window;
    LRESULT result = callDesk(window, message, wParam, lParam);
    pressed = before;
    return result;
}

static LRESULT CALLBACK buttonProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK)
        return press(window, message, wParam, lParam);
    LRESULT result = callDesk(window, message, wParam, lParam);
    if (message == WM_SETFOCUS && isRadioButton(window) && pressed != window)
        notifyParent(window, BN_CLICKED);
    return result;
}

ControlClass buttonClass = {L"BUTTON", L"DeviceButton", buttonProc, nullptr};
