// The screen is turned while a program runs.

#include "menu_bar_class.h"
#include "recorder.h"

class TurningTest : public RecorderTest {
  protected:
    TurningTest() {
        SHMENUBARINFO info = {};
        info.cbSize = sizeof(info);
        info.hwndParent = window;
        info.nToolBarId = 100; // of the tests
        info.hInstRes = GetModuleHandleW(nullptr);
        EXPECT_TRUE(SHCreateMenuBar(&info));
        menuBar = info.hwndMB;
        ShowWindow(menuBar, SW_SHOW);
        forgetReceived();
    }
    ~TurningTest() override {
        Emulator_ShowInputPanel(FALSE);
        if (GetSystemMetrics(SM_CXSCREEN) != screen().cx) Emulator_TurnScreen();
    }

    static void expectPlace(HWND placed, const RECT& expected) {
        RECT place = {};
        GetWindowRect(placed, &place);
        EXPECT_TRUE(EqualRect(&place, &expected))
            << place.left << " " << place.top << " " << place.right << " " << place.bottom;
    }
    static RECT workArea() {
        RECT area = {};
        SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
        return area;
    }

    // The task bar has a thread of its own.
    void awaitTold(size_t times) {
        constexpr DWORD longest = 10000; // milliseconds
        while (received(WM_SETTINGCHANGE).size() < times &&
               MsgWaitForMultipleObjects(0, nullptr, FALSE, longest, QS_ALLINPUT) ==
                   WAIT_OBJECT_0) {
        }
    }

    const LONG taskBar = Emulator_GetVariety()->taskBarHeight;
    const SIZE turned = {screen().cy, screen().cx};
    HWND window = newShownWindow(wholeScreen);
    HWND menuBar;
};

TEST_F(TurningTest, makes_the_width_the_height) {
    Emulator_TurnScreen();
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), turned.cx);
    EXPECT_EQ(GetSystemMetrics(SM_CYSCREEN), turned.cy);
    HDC context = GetDC(nullptr);
    EXPECT_EQ(GetDeviceCaps(context, HORZRES), turned.cx);
    EXPECT_EQ(GetDeviceCaps(context, VERTRES), turned.cy);
    ReleaseDC(nullptr, context);
    Emulator_TurnScreen();
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), screen().cx);
    EXPECT_EQ(GetSystemMetrics(SM_CYSCREEN), screen().cy);
}

TEST_F(TurningTest, changes_the_work_area_and_says_so_once) {
    Emulator_TurnScreen();
    RECT area = workArea(), expected = {0, taskBar, turned.cx, turned.cy};
    EXPECT_TRUE(EqualRect(&area, &expected));
    std::vector<Recorded> told = received(WM_SETTINGCHANGE);
    ASSERT_EQ(told.size(), 1u);
    EXPECT_EQ(told[0].window, window);
    EXPECT_EQ(told[0].wParam, WPARAM(SPI_SETWORKAREA));
}

TEST_F(TurningTest, lets_a_window_fill_what_its_menu_bar_leaves) {
    Emulator_TurnScreen();
    SHACTIVATEINFO info = {sizeof(info), nullptr, 0};
    EXPECT_TRUE(SHHandleWMSettingChange(window, SPI_SETWORKAREA, 0, &info));
    const LONG top = turned.cy - menuBarHeight();
    expectPlace(window, {0, taskBar, turned.cx, top});
    expectPlace(menuBar, {0, top, turned.cx, turned.cy});
}

TEST_F(TurningTest, takes_task_bar_and_input_panel_along) {
    Emulator_ShowInputPanel(TRUE);
    Emulator_TurnScreen();
    if (taskBar) expectPlace(FindWindowW(taskBarClass, nullptr), {0, 0, turned.cx, taskBar});
    const LONG bottom = turned.cy - menuBarHeight(), height = 80;
    expectPlace(FindWindowW(L"SipWndClass", nullptr), {0, bottom - height, turned.cx, bottom});
    EXPECT_EQ(workArea().bottom, turned.cy - height);
}

TEST_F(TurningTest, lets_the_pointer_reach_all_of_the_screen) {
    Emulator_TurnScreen();
    SHACTIVATEINFO info = {sizeof(info), nullptr, 0};
    SHHandleWMSettingChange(window, SPI_SETWORKAREA, 0, &info);
    dispatchAll();
    tap(turned.cx - 5, turned.cy - menuBarHeight() - 5);
    std::vector<Recorded> presses = received(WM_LBUTTONDOWN);
    ASSERT_EQ(presses.size(), 1u);
    EXPECT_EQ(LOWORD(presses[0].lParam), turned.cx - 5);
}

TEST_F(TurningTest, is_what_the_task_bars_button_does_where_there_is_one) {
    if (!taskBar) GTEST_SKIP() << "this device has no task bar";
    const bool turns = Emulator_GetVariety()->hasTurnButton;
    tap(screen().cx - 5, taskBar / 2);
    awaitTold(turns ? 1 : 0);
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), turns ? turned.cx : screen().cx);
    EXPECT_EQ(GetActiveWindow(), window);
    if (!turns) return;
    tap(turned.cx - 5, taskBar / 2);
    awaitTold(2);
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), screen().cx);
}
