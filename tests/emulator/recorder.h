#pragma once
// Top-level windows of the emulated device whose messages are recorded, and a person at them.

#include "aygshell.h"
#include "emulator.h"
#include <gtest/gtest.h>
#include <vector>

struct Recorded {
    HWND window;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};

class RecorderTest : public testing::Test {
  protected:
    // Destroys what the test left.
    ~RecorderTest() override;

    // A window of the class "Dialog", not shown yet.
    HWND newWindow(RECT place, DWORD style = WS_POPUP, DWORD extendedStyle = 0);

    // Shown, and the one that gets the keys.
    HWND newShownWindow(RECT place, DWORD style = WS_POPUP, DWORD extendedStyle = 0);

    // What the windows got of one message, in order. Dispatches what waits before.
    std::vector<Recorded> received(UINT message);
    static void forgetReceived();

    static void dispatchAll();

    static void movePointer(int x, int y);
    static void press();
    static void release();
    static void tap(int x, int y);

    // Of the screen, as 0xRRGGBB.
    static DWORD pixel(int x, int y);
    static std::vector<DWORD> pixels(RECT place); // row by row
};

inline SIZE screen() { return Emulator_GetVariety()->screen; }

const RECT wholeScreen = {0, 0, screen().cx, screen().cy};
