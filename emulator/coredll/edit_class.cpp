// Text that a program sets is a change for many lines as it is for one.

#include "control_classes.h"

static LRESULT CALLBACK editProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = CallWindowProcW(editClass.deskProc, window, message, wParam, lParam);
    bool hasLines = GetWindowLongW(window, GWL_STYLE) & ES_MULTILINE;
    if (message == WM_SETTEXT && hasLines && result) notifyParent(window, EN_CHANGE);
    return result;
}

ControlClass editClass = {L"EDIT", L"DeviceEdit", editProc, nullptr};
