#include "recorder.h"

class WindowsTest : public RecorderTest {
  protected:
    ~WindowsTest() override { DestroyMenu(menu); }

    static HWND create(DWORD style, HWND parent, HMENU menuOrId) {
        SetLastError(ERROR_SUCCESS);
        return CreateWindowExW(0, L"STATIC", nullptr, style, 0, 0, 10, 10, parent, menuOrId,
                               nullptr, nullptr);
    }
    static ATOM registerClass(WNDCLASSW description) {
        description.lpfnWndProc = DefWindowProcW;
        description.lpszClassName = L"ClassOfTheTest";
        SetLastError(ERROR_SUCCESS);
        ATOM registered = RegisterClassW(&description);
        EXPECT_EQ(GetLastError(), registered ? ERROR_SUCCESS : DWORD(ERROR_INVALID_PARAMETER));
        if (registered) UnregisterClassW(description.lpszClassName, nullptr);
        return registered;
    }

    HMENU menu = CreatePopupMenu();
};

TEST_F(WindowsTest, that_are_no_children_take_no_menu) {
    for (DWORD style : {DWORD(WS_POPUP), DWORD(WS_OVERLAPPED)}) {
        EXPECT_EQ(create(style, nullptr, menu), nullptr);
        EXPECT_EQ(GetLastError(), DWORD(ERROR_INVALID_PARAMETER));
    }
}

TEST_F(WindowsTest, that_are_children_take_a_number_in_a_menus_place) {
    HWND child = create(WS_CHILD, newWindow(wholeScreen), reinterpret_cast<HMENU>(105));
    EXPECT_NE(child, nullptr);
    EXPECT_EQ(GetWindowLongW(child, GWL_ID), 105);
}

TEST_F(WindowsTest, always_clip_their_siblings_and_children) {
    constexpr LONG clipping = WS_CLIPSIBLINGS | WS_CLIPCHILDREN;
    HWND parent = newWindow(wholeScreen);
    for (HWND window : {parent, create(WS_CHILD, parent, nullptr)}) {
        EXPECT_EQ(GetWindowLongW(window, GWL_STYLE) & clipping, clipping);
        SetWindowLongW(window, GWL_STYLE, GetWindowLongW(window, GWL_STYLE) & ~clipping);
        EXPECT_EQ(GetWindowLongW(window, GWL_STYLE) & clipping, clipping);
    }
}

TEST_F(WindowsTest, are_of_classes_without_icons) {
    WNDCLASSW description = {};
    EXPECT_NE(registerClass(description), 0);
    description.hIcon = LoadIconW(nullptr, MAKEINTRESOURCEW(32512));
    EXPECT_EQ(registerClass(description), 0);
}

TEST_F(WindowsTest, are_of_classes_with_the_devices_styles_only) {
    constexpr UINT known =
        CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW | CS_NOCLOSE | CS_PARENTDC | CS_GLOBALCLASS;
    for (UINT bit = 1; bit; bit <<= 1) {
        WNDCLASSW description = {};
        description.style = bit;
        EXPECT_EQ(registerClass(description) != 0, (bit & known) != 0) << bit;
    }
    WNDCLASSW description = {};
    description.style = known;
    EXPECT_NE(registerClass(description), 0);
}

TEST_F(WindowsTest, keep_their_scroll_range_when_they_get_one_that_ends_before_it_begins) {
    HWND bar = CreateWindowExW(0, L"SCROLLBAR", nullptr, WS_CHILD | SBS_VERT, 0, 0, 20, 100,
                               newWindow(wholeScreen), nullptr, nullptr, nullptr);
    SCROLLINFO values = {sizeof(values), SIF_RANGE | SIF_PAGE | SIF_POS, 10, 90, 5, 20, 0};
    SetScrollInfo(bar, SB_CTL, &values, FALSE);
    values.nMax = 9;
    values.nPos = 30;
    EXPECT_EQ(SetScrollInfo(bar, SB_CTL, &values, FALSE), 30);
    SCROLLINFO now = {sizeof(now), SIF_ALL, 0, 0, 0, 0, 0};
    EXPECT_TRUE(GetScrollInfo(bar, SB_CTL, &now));
    EXPECT_EQ(now.nMin, 10);
    EXPECT_EQ(now.nMax, 90);
    EXPECT_EQ(now.nPage, 5u);
    EXPECT_EQ(now.nPos, 30);
}

TEST_F(WindowsTest, take_a_scroll_range_of_one_value) {
    HWND window = newWindow(wholeScreen, WS_POPUP | WS_VSCROLL);
    SCROLLINFO values = {sizeof(values), SIF_RANGE, 10, 10, 0, 0, 0};
    SetScrollInfo(window, SB_VERT, &values, FALSE);
    SCROLLINFO now = {sizeof(now), SIF_RANGE, 0, 0, 0, 0, 0};
    EXPECT_TRUE(GetScrollInfo(window, SB_VERT, &now));
    EXPECT_EQ(now.nMin, 10);
    EXPECT_EQ(now.nMax, 10);
}
