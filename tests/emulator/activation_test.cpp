#include "recorder.h"

class ActivationTest : public RecorderTest {
  protected:
    HWND newButton() {
        HWND button = CreateWindowExW(0, L"BUTTON", nullptr, WS_CHILD | WS_VISIBLE, 0, 0, 50, 20,
                                      window, nullptr, nullptr, nullptr);
        EXPECT_NE(button, nullptr);
        return button;
    }
    void activate(WORD state) { SHHandleWMActivate(window, state, 0, &info, 0); }

    HWND window = newShownWindow(wholeScreen);
    HWND first = newButton();
    HWND second = newButton();
    SHACTIVATEINFO info = {sizeof(info), nullptr, 0};
};

TEST_F(ActivationTest, gives_the_focus_back_to_the_control_that_had_it) {
    SetFocus(second);
    activate(WA_INACTIVE);
    EXPECT_EQ(info.hwndLastFocus, second);
    SetFocus(first);
    activate(WA_ACTIVE);
    EXPECT_EQ(GetFocus(), second);
}

TEST_F(ActivationTest, gives_nothing_to_a_control_that_is_gone) {
    SetFocus(second);
    activate(WA_INACTIVE);
    DestroyWindow(second);
    SetFocus(first);
    activate(WA_CLICKACTIVE);
    EXPECT_EQ(GetFocus(), first);
}

TEST_F(ActivationTest, remembers_no_control_of_another_window) {
    SetFocus(second);
    activate(WA_INACTIVE);
    SetFocus(newWindow(wholeScreen));
    activate(WA_INACTIVE);
    EXPECT_EQ(info.hwndLastFocus, nullptr);
}

TEST_F(ActivationTest, leaves_the_window_in_place_on_a_new_setting) {
    RECT before;
    GetWindowRect(window, &before);
    EXPECT_TRUE(SHHandleWMSettingChange(window, SPI_SETWORKAREA, 0, &info));
    RECT after;
    GetWindowRect(window, &after);
    EXPECT_TRUE(EqualRect(&before, &after));
}
