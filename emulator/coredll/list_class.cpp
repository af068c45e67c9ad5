// An item that is not there cannot be scrolled to the top.

#include "control_classes.h"

static LRESULT CALLBACK listProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto callDesk = [=](UINT asked, WPARAM first) {
        return CallWindowProcW(listClass.deskProc, window, asked, first, lParam);
    };
    bool isMissing = message == LB_SETTOPINDEX &&
                     wParam >= static_cast<WPARAM>(callDesk(LB_GETCOUNT, 0)); // or negative
    return isMissing ? LB_ERR : callDesk(message, wParam);
}

ControlClass listClass = {L"LISTBOX", L"DeviceListBox", listProc, nullptr};
