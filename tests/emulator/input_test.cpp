#include "recorder.h"

class InputTest : public RecorderTest {
  protected:
    // Wherever a device without a mouse says that it is.
    static POINT pointer() {
        static auto* ask = reinterpret_cast<decltype(&GetCursorPos)>(reinterpret_cast<void*>(
            GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetCursorPos")));
        POINT place;
        ask(&place);
        return place;
    }

    static void moveBy(LONG dx, LONG dy) {
        INPUT input = {};
        input.type = INPUT_MOUSE;
        input.mi = {dx, dy, 0, MOUSEEVENTF_MOVE, 0, 0};
        EXPECT_EQ(SendInput(1, &input, sizeof(input)), 1u);
    }
};

TEST_F(InputTest, moves_the_pointer_to_every_column_and_row) {
    for (int x = 0; x < screen().cx; ++x) {
        movePointer(x, 7);
        EXPECT_EQ(pointer().x, x);
        EXPECT_EQ(pointer().y, 7);
    }
    for (int y = 0; y < screen().cy; ++y) {
        movePointer(5, y);
        EXPECT_EQ(pointer().y, y);
    }
}

TEST_F(InputTest, moves_the_pointer_by_whole_pixels) {
    movePointer(100, 100);
    moveBy(-30, 7);
    EXPECT_EQ(pointer().x, 70);
    EXPECT_EQ(pointer().y, 107);
}

TEST_F(InputTest, keeps_the_pointer_on_the_screen) {
    movePointer(100, 100);
    moveBy(1000, 1000);
    EXPECT_EQ(pointer().x, screen().cx - 1);
    EXPECT_EQ(pointer().y, screen().cy - 1);
    moveBy(-1000, -1000);
    EXPECT_EQ(pointer().x, 0);
    EXPECT_EQ(pointer().y, 0);
}

TEST_F(InputTest, reaches_the_window_under_the_pointer) {
    HWND window = newShownWindow({40, 50, 140, 150});
    tap(60, 90);
    std::vector<Recorded> presses = received(WM_LBUTTONDOWN);
    ASSERT_EQ(presses.size(), 1u);
    EXPECT_EQ(presses[0].window, window);
    EXPECT_EQ(presses[0].lParam, MAKELPARAM(20, 40));
    EXPECT_EQ(received(WM_LBUTTONUP).size(), 1u);
}

TEST_F(InputTest, sends_several_at_once) {
    newShownWindow(wholeScreen);
    movePointer(60, 60);
    INPUT tap[2] = {};
    tap[0].type = tap[1].type = INPUT_MOUSE;
    tap[0].mi.dwFlags = MOUSEEVENTF_LEFTDOWN;
    tap[1].mi.dwFlags = MOUSEEVENTF_LEFTUP;
    EXPECT_EQ(SendInput(2, tap, sizeof(INPUT)), 2u);
    EXPECT_EQ(received(WM_LBUTTONDOWN).size(), 1u);
    EXPECT_EQ(received(WM_LBUTTONUP).size(), 1u);
}

TEST_F(InputTest, is_known_of_the_keys_that_change_others_only) {
    newShownWindow(wholeScreen);
    BYTE known[] = {VK_SHIFT,    VK_CONTROL, VK_MENU,  VK_LSHIFT,  VK_RSHIFT, VK_LCONTROL,
                    VK_RCONTROL, VK_LMENU,   VK_RMENU, VK_CAPITAL, VK_NUMLOCK};
    BYTE keys[256];
    memset(keys, 0x80, sizeof(keys));
    ASSERT_TRUE(SetKeyboardState(keys));
    for (int key = 1; key < 256; ++key) {
        bool isKnown = memchr(known, key, sizeof(known));
        EXPECT_EQ(GetKeyState(key) < 0, isKnown) << key;
    }
    memset(keys, 0, sizeof(keys));
    SetKeyboardState(keys);
}
