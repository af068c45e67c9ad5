#include "menu_bar_class.h"
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

// The keyboard at the bottom of the screen.
class InputPanelTest : public ActivationTest {
  protected:
    static constexpr LONG panelHeight = 80;

    ~InputPanelTest() override { Emulator_ShowInputPanel(FALSE); }
    HWND newMenuBar() {
        SHMENUBARINFO bar = {};
        bar.cbSize = sizeof(bar);
        bar.hwndParent = window;
        bar.nToolBarId = 100; // of the tests
        bar.hInstRes = GetModuleHandleW(nullptr);
        EXPECT_TRUE(SHCreateMenuBar(&bar));
        ShowWindow(bar.hwndMB, SW_SHOW);
        return bar.hwndMB;
    }
    static LONG workAreaBottom() {
        RECT area;
        SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
        return area.bottom;
    }
    static LONG panelTop() { return screen().cy - panelHeight; } // as the work area ends there
    LONG windowBottom() const {
        RECT place;
        GetWindowRect(window, &place);
        return place.bottom;
    }
};

TEST_F(InputPanelTest, takes_its_room_from_the_work_area_and_says_so) {
    Emulator_ShowInputPanel(TRUE);
    EXPECT_TRUE(Emulator_IsInputPanelShown());
    EXPECT_EQ(workAreaBottom(), panelTop());
    std::vector<Recorded> told = received(WM_SETTINGCHANGE);
    ASSERT_EQ(told.size(), 1u);
    EXPECT_EQ(told[0].wParam, WPARAM(SPI_SETWORKAREA));
    Emulator_ShowInputPanel(FALSE);
    EXPECT_EQ(workAreaBottom(), screen().cy);
    EXPECT_EQ(received(WM_SETTINGCHANGE).size(), 2u);
    Emulator_ShowInputPanel(FALSE);
    EXPECT_EQ(received(WM_SETTINGCHANGE).size(), 2u) << "nothing changed";
}

TEST_F(InputPanelTest, is_kept_clear_of_by_a_window_that_asks_for_it) {
    Emulator_ShowInputPanel(TRUE);
    EXPECT_TRUE(SHHandleWMSettingChange(nullptr, SPI_SETWORKAREA, 0, &info));
    EXPECT_TRUE(SHHandleWMSettingChange(window, SPI_SETWHEELSCROLLLINES, 0, &info));
    EXPECT_EQ(windowBottom(), screen().cy);
    EXPECT_TRUE(SHHandleWMSettingChange(window, SPI_SETWORKAREA, 0, &info));
    EXPECT_EQ(windowBottom(), panelTop());
    newMenuBar();
    EXPECT_TRUE(SHHandleWMSettingChange(window, SPI_SETWORKAREA, 0, &info));
    EXPECT_EQ(windowBottom(), panelTop() - menuBarHeight());
}

TEST_F(InputPanelTest, types_into_the_window_that_keeps_the_focus) {
    Emulator_ShowInputPanel(TRUE);
    dispatchAll();
    LONG keyWidth = screen().cx / 10; // q is the first from the left, w the next
    tap(keyWidth + 6, panelTop() - menuBarHeight() + 26);
    EXPECT_EQ(GetActiveWindow(), window);
    std::vector<Recorded> typed = received(WM_CHAR);
    ASSERT_EQ(typed.size(), 1u);
    EXPECT_EQ(typed[0].wParam, WPARAM('w'));
}

TEST_F(InputPanelTest, is_shown_and_hidden_by_the_menu_bars_button_where_there_is_one) {
    newMenuBar();
    tap(screen().cx - 10, screen().cy - 12);
    EXPECT_EQ(Emulator_IsInputPanelShown(), !Emulator_GetVariety()->hasNoInputPanel);
    tap(screen().cx - 10, screen().cy - 12);
    EXPECT_FALSE(Emulator_IsInputPanelShown());
}
