// Pointer input on the device's scale, at the time of its clock. The pointer stays on the device's
// screen.

#include "device_clock.h"
#include "refusal.h"
#include "screen.h"

static constexpr LONG fullScale = 65535;

static LONG clamp(LONG position, LONG limit) {
    if (position < 0) return 0;
    return position < limit ? position : limit - 1;
}

static LONG pixelOf(LONG position, LONG deviceSize) {
    return clamp(MulDiv(position, deviceSize - 1, fullScale), deviceSize);
}

// On the desk's scale, the middle of the pixel.
static LONG deskPosition(LONG pixel, LONG deskSize) {
    return (pixel * (fullScale + 1) + (fullScale + 1) / 2) / deskSize;
}

static POINT target(const MOUSEINPUT& pointer) {
    SIZE screen = screenSize();
    if (pointer.dwFlags & MOUSEEVENTF_ABSOLUTE)
        return {pixelOf(pointer.dx, screen.cx), pixelOf(pointer.dy, screen.cy)};
    POINT now;
    GetCursorPos(&now);
    return {clamp(now.x + pointer.dx, screen.cx), clamp(now.y + pointer.dy, screen.cy)};
}

static void moveOnDesk(MOUSEINPUT* pointer) {
    if (!(pointer->dwFlags & MOUSEEVENTF_MOVE)) return;
    POINT pixel = target(*pointer);
    pointer->dx = deskPosition(pixel.x, GetSystemMetrics(SM_CXSCREEN));
    pointer->dy = deskPosition(pixel.y, GetSystemMetrics(SM_CYSCREEN));
    pointer->dwFlags |= MOUSEEVENTF_ABSOLUTE;
}

// Two taps are a double tap by the device's clock.
static void stamp(INPUT* input) {
    DWORD* time = input->type == INPUT_MOUSE ? &input->mi.time : &input->ki.time;
    if (!*time) *time = static_cast<DWORD>(deviceTime());
}

extern "C" {

UINT WINAPI Device_SendInput(UINT count, INPUT* inputs, int size) {
    if (!isAllowed(size == sizeof(INPUT))) return 0;
    for (UINT i = 0; i < count; ++i) {
        INPUT input = inputs[i];
        if (input.type == INPUT_MOUSE) moveOnDesk(&input.mi);
        stamp(&input);
        if (!SendInput(1, &input, size)) return i;
    }
    stirWaits();
    return count;
}

// Of the keys that change what others mean, and no others.
SHORT WINAPI Device_GetKeyState(int key) {
    switch (key) {
    case VK_SHIFT:
    case VK_CONTROL:
    case VK_MENU:
    case VK_CAPITAL:
    case VK_NUMLOCK:
        return GetKeyState(key);
    default:
        return key >= VK_LSHIFT && key <= VK_RMENU ? GetKeyState(key) : 0;
    }
}
}
