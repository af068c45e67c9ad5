// What a window's scroll bars hold. A maximum below the minimum leaves the range as it was.

#include "refusal.h"

static bool isOfDevice(const SCROLLINFO* values) {
    return isAllowed(values && values->cbSize == sizeof(SCROLLINFO));
}

static int positionOf(HWND window, int bar) {
    SCROLLINFO now = {};
    now.cbSize = sizeof(now);
    now.fMask = SIF_POS;
    return GetScrollInfo(window, bar, &now) ? now.nPos : 0;
}

extern "C" {

BOOL WINAPI Device_GetScrollInfo(HWND window, int bar, SCROLLINFO* values) {
    return isOfDevice(values) && GetScrollInfo(window, bar, values);
}

int WINAPI Device_SetScrollInfo(HWND window, int bar, const SCROLLINFO* values, BOOL redraw) {
    if (!isOfDevice(values)) return positionOf(window, bar);
    SCROLLINFO kept = *values;
    if (kept.nMax < kept.nMin) kept.fMask &= ~SIF_RANGE;
    return SetScrollInfo(window, bar, &kept, redraw);
}
}
