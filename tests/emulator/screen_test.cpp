#include "recorder.h"

class ScreenTest : public RecorderTest {
  protected:
    ~ScreenTest() override { SystemParametersInfoW(SPI_SETWORKAREA, 0, &before, 0); }

    static RECT workArea() {
        RECT area = {};
        EXPECT_TRUE(SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0));
        return area;
    }

    RECT before = workArea();
};

TEST_F(ScreenTest, is_that_of_the_variety) {
    const EmulatorVariety& device = *Emulator_GetVariety();
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), device.screen.cx);
    EXPECT_EQ(GetSystemMetrics(SM_CYSCREEN), device.screen.cy);
    HDC context = GetDC(nullptr);
    EXPECT_EQ(GetDeviceCaps(context, HORZRES), device.screen.cx);
    EXPECT_EQ(GetDeviceCaps(context, VERTRES), device.screen.cy);
    for (int index : {LOGPIXELSX, LOGPIXELSY})
        EXPECT_EQ(GetDeviceCaps(context, index), device.dotsPerInch);
    ReleaseDC(nullptr, context);
}

TEST_F(ScreenTest, is_all_work_area_below_the_task_bar) {
    RECT area = workArea();
    RECT expected = {0, Emulator_GetVariety()->taskBarHeight, screen().cx, screen().cy};
    EXPECT_TRUE(EqualRect(&area, &expected));
}

TEST_F(ScreenTest, tells_every_window_of_a_new_work_area) {
    HWND window = newWindow(wholeScreen);
    RECT smaller = {0, 26, 240, 240};
    EXPECT_TRUE(SystemParametersInfoW(SPI_SETWORKAREA, 0, &smaller, SPIF_SENDCHANGE));
    RECT area = workArea();
    EXPECT_TRUE(EqualRect(&area, &smaller));
    std::vector<Recorded> told = received(WM_SETTINGCHANGE);
    ASSERT_EQ(told.size(), 1u);
    EXPECT_EQ(told[0].window, window);
    EXPECT_EQ(told[0].wParam, WPARAM(SPI_SETWORKAREA));
}

TEST_F(ScreenTest, is_filled_by_a_window_of_default_size) {
    RECT smaller = {10, 26, 230, 240};
    SystemParametersInfoW(SPI_SETWORKAREA, 0, &smaller, 0);
    HWND window =
        CreateWindowExW(0, DIALOG_CLASS, nullptr, 0, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                        CW_USEDEFAULT, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    RECT place;
    GetWindowRect(window, &place);
    EXPECT_TRUE(EqualRect(&place, &smaller));
    DestroyWindow(window);
}

TEST_F(ScreenTest, has_the_other_metrics_of_the_system) {
    EXPECT_EQ(GetSystemMetrics(SM_CXVSCROLL), 13);
    EXPECT_EQ(GetSystemMetrics(SM_CYHSCROLL), 13);
    UINT lines = 0;
    EXPECT_TRUE(SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0));
    EXPECT_EQ(lines, 3u);
}

TEST_F(ScreenTest, comes_to_rest_when_a_clipped_window_is_redrawn) {
    HWND window = newShownWindow({0, 0, 100, 100});
    HWND clipped = CreateWindowExW(0, L"STATIC", nullptr, WS_CHILD | WS_VISIBLE, 10, 150, 50, 20,
                                   window, nullptr, nullptr, nullptr);
    for (HWND redrawn : {clipped, window}) {
        RedrawWindow(redrawn, nullptr, nullptr,
                     RDW_INVALIDATE | RDW_INTERNALPAINT | RDW_ERASE | RDW_ALLCHILDREN);
        dispatchAll();
        EXPECT_EQ(MsgWaitForMultipleObjectsEx(0, nullptr, 0, QS_PAINT, MWMO_INPUTAVAILABLE),
                  DWORD(WAIT_TIMEOUT));
    }
}
