#include "emulator.h"

static constexpr LONG fullScale = 65535;

// From a position on the device's scale to the middle of the same pixel on the desk's.
static LONG rescale(LONG position, int deviceSize, int deskSize) {
    LONG pixel = MulDiv(position, deviceSize - 1, fullScale);
    return (pixel * (fullScale + 1) + (fullScale + 1) / 2) / deskSize;
}

static void rescalePointer(MOUSEINPUT* pointer) {
    if (!(pointer->dwFlags & MOUSEEVENTF_ABSOLUTE)) return;
    pointer->dx = rescale(pointer->dx, deviceScreenWidth, GetSystemMetrics(SM_CXSCREEN));
    pointer->dy = rescale(pointer->dy, deviceScreenHeight, GetSystemMetrics(SM_CYSCREEN));
}

extern "C" UINT WINAPI Device_SendInput(UINT count, INPUT* inputs, int size) {
    for (UINT i = 0; i < count; ++i) {
        INPUT input = inputs[i];
        if (input.type == INPUT_MOUSE) rescalePointer(&input.mi);
        if (!SendInput(1, &input, size)) return i;
    }
    return count;
}
