// The device asks for a combo box's parts by a message of another number, and selects no item where
// the one that is asked for is missing.

#include "control_classes.h"

static constexpr UINT deviceGetComboBoxInfo = 0x162;

static LRESULT callDesk(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return CallWindowProcW(comboClass.deskProc, window, message, wParam, lParam);
}

static LRESULT selectItem(HWND window, WPARAM index) {
    constexpr WPARAM none = static_cast<WPARAM>(-1);
    auto count = static_cast<WPARAM>(callDesk(window, CB_GETCOUNT, 0, 0));
    return callDesk(window, CB_SETCURSEL, index < count ? index : none, 0);
}

static LRESULT CALLBACK comboProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case deviceGetComboBoxInfo:
        if (reinterpret_cast<const COMBOBOXINFO*>(lParam)->cbSize != sizeof(COMBOBOXINFO)) return 0;
        return callDesk(window, CB_GETCOMBOBOXINFO, wParam, lParam);
    case CB_SETCURSEL:
        return selectItem(window, wParam);
    default:
        return callDesk(window, message, wParam, lParam);
    }
}

ControlClass comboClass = {L"COMBOBOX", L"DeviceComboBox", comboProc, nullptr};
