// The device's system colours: their indices come marked, and two of them the desk does not have.

#include "refusal.h"

static constexpr int systemColorFlag = 0x40000000;

static bool isSystemColor(int index) { return isAllowed(index & systemColorFlag); }

static int deskColor(int index) {
    constexpr int staticBackground = 25; // other colours on the desk
    constexpr int staticText = 26;
    index &= ~systemColorFlag;
    if (index == staticBackground) return COLOR_BTNFACE;
    if (index == staticText) return COLOR_WINDOWTEXT;
    return index;
}

extern "C" {

DWORD WINAPI Device_GetSysColor(int index) {
    return isSystemColor(index) ? GetSysColor(deskColor(index)) : 0;
}

HBRUSH WINAPI Device_GetSysColorBrush(int index) {
    return isSystemColor(index) ? GetSysColorBrush(deskColor(index)) : nullptr;
}
}
