#include "input.h"
#include "emulator.h"

using SendInputs = UINT(WINAPI*)(UINT, INPUT*, int);

// The device's own, which keeps the pointer on the screen.
static void send(INPUT input) {
    static auto sendInput = reinterpret_cast<SendInputs>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"coredll.dll"), "SendInput")));
    sendInput(1, &input, sizeof(input));
}

// The middle of the pixel on the device's scale, which is rounded to the nearest pixel.
static LONG onScale(int position, LONG size) {
    constexpr LONG fullScale = 65535;
    return MulDiv(position, fullScale, size - 1);
}

static void sendPointer(int x, int y, DWORD flags) {
    SIZE screen;
    Emulator_GetScreen(&screen);
    INPUT input = {};
    input.type = INPUT_MOUSE;
    input.mi.dx = onScale(x, screen.cx);
    input.mi.dy = onScale(y, screen.cy);
    input.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE | flags;
    send(input);
}

void movePointer(int x, int y) { sendPointer(x, y, 0); }

void pressPointer(int x, int y, bool down) {
    sendPointer(x, y, down ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_LEFTUP);
}

void pressKey(int key, bool down) {
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = static_cast<WORD>(key);
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = down ? 0 : KEYEVENTF_KEYUP;
    send(input);
}

static void sendCharacter(wchar_t character, DWORD flags) {
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wScan = character;
    input.ki.dwFlags = KEYEVENTF_UNICODE | flags;
    send(input);
}

void typeCharacter(wchar_t character) {
    constexpr int shift = 1, withoutOthers = 1;
    SHORT keys = VkKeyScanW(character);
    if (keys == -1 || HIBYTE(keys) > withoutOthers) {
        sendCharacter(character, 0);
        sendCharacter(character, KEYEVENTF_KEYUP);
        return;
    }
    bool shifted = HIBYTE(keys) & shift;
    if (shifted) pressKey(VK_SHIFT, true);
    pressKey(LOBYTE(keys), true);
    pressKey(LOBYTE(keys), false);
    if (shifted) pressKey(VK_SHIFT, false);
}
