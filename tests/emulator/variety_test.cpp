// The device is of the variety that its settings name: run with several.

#include "recorder.h"
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

class VarietyTest : public RecorderTest {
  protected:
    // What follows "name="; null when nothing is said of it.
    static const char* setting(const char* name) {
        const char* settings = std::getenv("ZEMVOLT_DEVICE");
        const char* found = settings ? std::strstr(settings, name) : nullptr;
        return found ? found + std::strlen(name) : nullptr;
    }
    static int number(const char* name, int otherwise) {
        const char* value = setting(name);
        return value ? std::atoi(value) : otherwise;
    }

    const EmulatorVariety& device = *Emulator_GetVariety();
};

TEST_F(VarietyTest, is_what_the_settings_say) {
    int width = 240, height = 320;
    if (const char* size = setting("screen=")) std::sscanf(size, "%dx%d", &width, &height);
    EXPECT_EQ(device.screen.cx, width);
    EXPECT_EQ(device.screen.cy, height);
    EXPECT_EQ(device.dotsPerInch, number("dpi=", 96));
    EXPECT_EQ(device.taskBarHeight, number("bar=", 0));
    EXPECT_EQ(device.hasOnlyWaitCursor != FALSE, setting("cursors=wait") != nullptr);
    EXPECT_EQ(device.hasNoSystemTexts != FALSE, setting("texts=none") != nullptr);
    EXPECT_EQ(device.hasStylusOnly != FALSE, setting("pointer=stylus") != nullptr);
    EXPECT_EQ(device.choosesOneFileOnly != FALSE, setting("files=one") != nullptr);
    EXPECT_EQ(device.hasNoInputPanel != FALSE, setting("panel=none") != nullptr);
    EXPECT_EQ(device.hasTurnButton != FALSE, setting("turn=button") != nullptr);
}

TEST_F(VarietyTest, has_the_wait_cursor_always_and_the_others_on_most_devices) {
    constexpr int arrow = 32512, wait = 32514, cross = 32515, hand = 32649;
    EXPECT_NE(LoadCursorW(nullptr, MAKEINTRESOURCEW(wait)), nullptr);
    for (int type : {arrow, cross, hand}) {
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(LoadCursorW(nullptr, MAKEINTRESOURCEW(type)) == nullptr,
                  device.hasOnlyWaitCursor != FALSE);
        EXPECT_EQ(GetLastError(),
                  device.hasOnlyWaitCursor ? DWORD(ERROR_RESOURCE_NAME_NOT_FOUND) : 0);
    }
}

TEST_F(VarietyTest, has_texts_of_errors_on_most_devices) {
    wchar_t text[200];
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM, nullptr, ERROR_ACCESS_DENIED, 0x400,
                                  text, ARRAYSIZE(text), nullptr);
    EXPECT_EQ(length == 0, device.hasNoSystemTexts != FALSE);
}

TEST_F(VarietyTest, has_a_pointer_that_moves_without_a_touch_where_there_is_a_mouse) {
    newShownWindow(wholeScreen);
    tap(60, 150);
    movePointer(90, 170);
    dispatchAll();
    POINT place;
    EXPECT_TRUE(GetCursorPos(&place));
    EXPECT_EQ(place.x, device.hasStylusOnly ? 60 : 90);
    EXPECT_EQ(place.y, device.hasStylusOnly ? 150 : 170);
}

TEST_F(VarietyTest, has_a_pointer_that_moves_with_what_holds_it) {
    newShownWindow(wholeScreen);
    movePointer(60, 150);
    press();
    movePointer(90, 170);
    dispatchAll();
    POINT held, left;
    EXPECT_TRUE(GetCursorPos(&held));
    release();
    dispatchAll();
    EXPECT_TRUE(GetCursorPos(&left));
    for (POINT place : {held, left}) {
        EXPECT_EQ(place.x, 90);
        EXPECT_EQ(place.y, 170);
    }
}

// The bar at the top of the screen.
class TaskBarTest : public VarietyTest {
  protected:
    void SetUp() override {
        newShownWindow(wholeScreen);
        if (!device.taskBarHeight) GTEST_SKIP() << "this device has none";
    }
    // How many of the bar's pixels have the title's colour.
    LONG titlePixels() {
        std::vector<DWORD> shown = pixels({0, 0, 100, device.taskBarHeight});
        return std::count(shown.begin(), shown.end(), 0xFFFFFFu);
    }
};

TEST_F(TaskBarTest, stands_above_all_windows) {
    HWND bar = FindWindowW(taskBarClass, nullptr);
    RECT place;
    ASSERT_TRUE(GetWindowRect(bar, &place));
    RECT expected = {0, 0, screen().cx, device.taskBarHeight};
    EXPECT_TRUE(EqualRect(&place, &expected));
    EXPECT_EQ(WindowFromPoint({5, 5}), bar);
}

TEST_F(TaskBarTest, shows_the_title_of_the_window_in_use) {
    HWND untitled = newShownWindow(wholeScreen);
    EXPECT_EQ(titlePixels(), 0);
    SetWindowTextW(untitled, L"MMM");
    EXPECT_GT(titlePixels(), 0);
    newShownWindow(wholeScreen);
    EXPECT_EQ(titlePixels(), 0);
    SetWindowTextW(untitled, L"WWW");
    EXPECT_EQ(titlePixels(), 0) << "it is not in use";
    SetForegroundWindow(untitled);
    EXPECT_GT(titlePixels(), 0);
    DestroyWindow(untitled);
}

TEST_F(TaskBarTest, takes_the_activation_from_nobody) {
    HWND window = newShownWindow(wholeScreen);
    tap(20, 10);
    EXPECT_EQ(GetActiveWindow(), window);
    EXPECT_TRUE(received(WM_ACTIVATE).empty());
}
