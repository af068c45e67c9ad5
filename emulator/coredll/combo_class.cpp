// The device asks for a combo box's parts by a message of another number.

#include "control_classes.h"

static constexpr UINT deviceGetComboBoxInfo = 0x162;

static LRESULT CALLBACK comboProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == deviceGetComboBoxInfo) message = CB_GETCOMBOBOXINFO;
    return CallWindowProcW(comboClass.deskProc, window, message, wParam, lParam);
}

ControlClass comboClass = {L"COMBOBOX", L"DeviceComboBox", comboProc, nullptr};
