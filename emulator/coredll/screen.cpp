// The device's screen. The desk's own may be larger: the device's is then its top left corner.

#include "emulator.h"

extern "C" {

int WINAPI Device_GetSystemMetrics(int index) {
    switch (index) {
    case SM_CXSCREEN:
        return deviceScreenWidth;
    case SM_CYSCREEN:
        return deviceScreenHeight;
    default:
        return GetSystemMetrics(index);
    }
}

int WINAPI Device_GetDeviceCaps(HDC context, int index) {
    switch (index) {
    case HORZRES:
        return deviceScreenWidth;
    case VERTRES:
        return deviceScreenHeight;
    default:
        return GetDeviceCaps(context, index);
    }
}

// No bar of the system's takes from the screen: menu bars belong to their shells.
BOOL WINAPI Device_SystemParametersInfoW(UINT action, UINT number, PVOID data, UINT update) {
    if (action != SPI_GETWORKAREA) return SystemParametersInfoW(action, number, data, update);
    *static_cast<RECT*>(data) = {0, 0, deviceScreenWidth, deviceScreenHeight};
    return TRUE;
}

DWORD WINAPI Device_GetSysColor(int index) {
    constexpr int systemColorFlag = 0x40000000;
    constexpr int staticBackground = 25; // other colours on the desktop
    constexpr int staticText = 26;
    index &= ~systemColorFlag;
    if (index == staticBackground) index = COLOR_BTNFACE;
    if (index == staticText) index = COLOR_WINDOWTEXT;
    return GetSysColor(index);
}
}
