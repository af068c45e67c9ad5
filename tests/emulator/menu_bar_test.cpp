#include "menu_bar_class.h"
#include "recorder.h"
#include <commctrl.h>

// The test's own resources.
enum ToolBar : UINT { oneButton = 100, twoButtons, cutOffToolBar, noToolBar };

class MenuBarTest : public RecorderTest {
  protected:
    static SHMENUBARINFO describe(HWND owner, UINT toolBar = oneButton, DWORD flags = 0) {
        SHMENUBARINFO info = {};
        info.cbSize = sizeof(info);
        info.hwndParent = owner;
        info.dwFlags = SHCMBF_EMPTYBAR | flags;
        info.nToolBarId = toolBar;
        info.hInstRes = GetModuleHandleW(nullptr);
        return info;
    }
    static HWND newBar(HWND owner) {
        SHMENUBARINFO info = describe(owner);
        EXPECT_TRUE(SHCreateMenuBar(&info));
        return info.hwndMB;
    }
    static bool isRefused(SHMENUBARINFO info, DWORD error) {
        info.hwndMB = info.hwndParent;
        SetLastError(ERROR_SUCCESS);
        bool refused = !SHCreateMenuBar(&info) && !info.hwndMB;
        EXPECT_EQ(GetLastError(), error);
        return refused;
    }

    static HWND newShownBar(HWND owner) {
        HWND bar = newBar(owner);
        SendMessageW(bar, TB_DELETEBUTTON, 0, 0);
        ShowWindow(bar, SW_SHOW);
        return bar;
    }

    static void addButton(HWND bar, int command, BYTE style, const wchar_t* text) {
        TBBUTTON button = {};
        button.iBitmap = I_IMAGENONE;
        button.idCommand = command;
        button.fsState = TBSTATE_ENABLED;
        button.fsStyle = style;
        LRESULT count = SendMessageW(bar, TB_BUTTONCOUNT, 0, 0);
        EXPECT_TRUE(SendMessageW(bar, TB_INSERTBUTTONW, count, reinterpret_cast<LPARAM>(&button)));
        TBBUTTONINFOW label = {};
        label.cbSize = sizeof(label);
        label.dwMask = TBIF_TEXT;
        label.pszText = const_cast<wchar_t*>(text);
        EXPECT_TRUE(
            SendMessageW(bar, TB_SETBUTTONINFOW, command, reinterpret_cast<LPARAM>(&label)));
    }

    static void tapButton(HWND bar, int command) {
        RECT place;
        EXPECT_TRUE(SendMessageW(bar, TB_GETRECT, command, reinterpret_cast<LPARAM>(&place)));
        MapWindowPoints(bar, nullptr, reinterpret_cast<POINT*>(&place), 2);
        movePointer((place.left + place.right) / 2, (place.top + place.bottom) / 2);
        press();
        release();
    }

    static void typeKey(BYTE key) {
        keybd_event(key, 0, 0, 0);
        keybd_event(key, 0, KEYEVENTF_KEYUP, 0);
    }

    HWND window = newShownWindow({0, 0, 240, 294});
};

TEST_F(MenuBarTest, stands_at_the_bottom_of_the_screen_when_it_is_shown) {
    HWND bar = newBar(window);
    EXPECT_FALSE(IsWindowVisible(bar));
    ShowWindow(bar, SW_SHOW);
    RECT place;
    GetWindowRect(bar, &place);
    RECT expected = {0, screen().cy - menuBarHeight(), screen().cx, screen().cy};
    EXPECT_TRUE(EqualRect(&place, &expected));
    EXPECT_EQ(GetWindow(bar, GW_OWNER), window);
}

TEST_F(MenuBarTest, has_buttons_that_fill_it_but_for_a_rim) {
    HWND bar = newShownBar(window);
    addButton(bar, 108, BTNS_AUTOSIZE, L"Exit");
    RECT place;
    EXPECT_TRUE(SendMessageW(bar, TB_GETRECT, 108, reinterpret_cast<LPARAM>(&place)));
    EXPECT_EQ(place.bottom - place.top, scaledToScreen(22));
}

TEST_F(MenuBarTest, comes_with_the_buttons_of_its_resource) {
    SHMENUBARINFO info = describe(window, twoButtons);
    ASSERT_TRUE(SHCreateMenuBar(&info));
    EXPECT_EQ(SendMessageW(info.hwndMB, TB_BUTTONCOUNT, 0, 0), 2);
    EXPECT_EQ(SendMessageW(info.hwndMB, TB_COMMANDTOINDEX, 7, 0), 1);
    EXPECT_TRUE(SendMessageW(info.hwndMB, TB_DELETEBUTTON, 0, 0));
    EXPECT_EQ(SendMessageW(info.hwndMB, TB_COMMANDTOINDEX, 7, 0), 0);
}

TEST_F(MenuBarTest, comes_without_buttons_when_it_is_to_have_no_resource) {
    constexpr DWORD withoutResource = 1;
    SHMENUBARINFO info = describe(window, noToolBar, withoutResource);
    ASSERT_TRUE(SHCreateMenuBar(&info));
    EXPECT_EQ(SendMessageW(info.hwndMB, TB_BUTTONCOUNT, 0, 0), 0);
}

TEST_F(MenuBarTest, is_refused_without_its_resource) {
    EXPECT_TRUE(isRefused(describe(window, noToolBar), ERROR_RESOURCE_NAME_NOT_FOUND));
    EXPECT_TRUE(isRefused(describe(window, cutOffToolBar), ERROR_INVALID_DATA));
    SHMENUBARINFO withOther = describe(window);
    withOther.hInstRes = GetModuleHandleW(L"kernel32.dll");
    EXPECT_FALSE(SHCreateMenuBar(&withOther));
    EXPECT_EQ(SHFindMenuBar(window), nullptr) << "nothing is left of it";
}

TEST_F(MenuBarTest, takes_the_activation_from_nobody) {
    HWND bar = newShownBar(window);
    addButton(bar, 108, BTNS_AUTOSIZE, L"Exit");
    tapButton(bar, 108);
    dispatchAll();
    EXPECT_EQ(GetActiveWindow(), window);
    EXPECT_TRUE(received(WM_ACTIVATE).empty());
}

TEST_F(MenuBarTest, sends_the_command_of_a_tapped_button_to_its_owner) {
    HWND bar = newShownBar(window);
    addButton(bar, 108, BTNS_AUTOSIZE, L"Exit");
    tapButton(bar, 108);
    std::vector<Recorded> commands = received(WM_COMMAND);
    ASSERT_EQ(commands.size(), 1u);
    EXPECT_EQ(commands[0].window, window);
    EXPECT_EQ(LOWORD(commands[0].wParam), 108);
    EXPECT_EQ(commands[0].lParam, reinterpret_cast<LPARAM>(bar));
}

TEST_F(MenuBarTest, drops_down_the_menu_of_a_button) {
    HWND bar = newShownBar(window);
    addButton(bar, 108, BTNS_AUTOSIZE | BTNS_DROPDOWN | BTNS_WHOLEDROPDOWN, L"File");
    HMENU menu = CreatePopupMenu();
    InsertMenuW(menu, 0, MF_BYPOSITION, 120, L"Open");
    InsertMenuW(menu, 1, MF_BYPOSITION, 121, L"Save");
    SendMessageW(bar, SHCMBM_SETSUBMENU, 108, reinterpret_cast<LPARAM>(menu));
    tapButton(bar, 108);
    typeKey(VK_DOWN);
    typeKey(VK_DOWN);
    typeKey(VK_RETURN);
    std::vector<Recorded> commands = received(WM_COMMAND);
    ASSERT_EQ(commands.size(), 1u);
    EXPECT_EQ(commands[0].window, window);
    EXPECT_EQ(commands[0].wParam, 121u);
    EXPECT_EQ(commands[0].lParam, 0);
    DestroyMenu(menu);
}

TEST_F(MenuBarTest, drops_nothing_down_when_the_menu_was_taken_away) {
    HWND bar = newShownBar(window);
    addButton(bar, 108, BTNS_AUTOSIZE | BTNS_DROPDOWN | BTNS_WHOLEDROPDOWN, L"File");
    HMENU menu = CreatePopupMenu();
    SendMessageW(bar, SHCMBM_SETSUBMENU, 108, reinterpret_cast<LPARAM>(menu));
    SendMessageW(bar, SHCMBM_SETSUBMENU, 108, 0);
    tapButton(bar, 108);
    EXPECT_TRUE(received(WM_ENTERMENULOOP).empty());
    DestroyMenu(menu);
}

TEST_F(MenuBarTest, keeps_its_user_data_for_programs) {
    HWND bar = newBar(window);
    EXPECT_EQ(GetWindowLongW(bar, GWL_USERDATA), 0);
    EXPECT_EQ(GetWindowLongW(GetWindow(bar, GW_CHILD), GWL_USERDATA), 0);
}

TEST_F(MenuBarTest, is_found_from_its_owner_the_shown_one_first) {
    EXPECT_EQ(SHFindMenuBar(window), nullptr);
    HWND first = newBar(window);
    EXPECT_EQ(SHFindMenuBar(window), first);
    HWND second = newBar(window);
    ShowWindow(first, SW_SHOW);
    EXPECT_EQ(SHFindMenuBar(window), first);
    ShowWindow(first, SW_HIDE);
    ShowWindow(second, SW_SHOW);
    EXPECT_EQ(SHFindMenuBar(window), second);
    EXPECT_EQ(SHFindMenuBar(newWindow(wholeScreen)), nullptr);
}

TEST_F(MenuBarTest, leaves_the_screen_with_its_owner) {
    HWND bar = newShownBar(window);
    HWND other = newShownWindow(wholeScreen);
    HWND otherBar = newShownBar(other);
    ShowWindow(window, SW_HIDE);
    EXPECT_FALSE(IsWindowVisible(bar));
    EXPECT_TRUE(IsWindowVisible(otherBar));
}

TEST_F(MenuBarTest, ends_with_its_owner) {
    HWND owner = newWindow(wholeScreen);
    HWND bar = newBar(owner);
    DestroyWindow(owner);
    EXPECT_FALSE(IsWindow(bar));
}

TEST_F(MenuBarTest, is_refused_without_an_owner_or_with_a_record_of_another_size) {
    EXPECT_TRUE(isRefused(describe(nullptr), ERROR_INVALID_PARAMETER));
    SHMENUBARINFO shorter = describe(window);
    shorter.cbSize -= 4;
    EXPECT_TRUE(isRefused(shorter, ERROR_INVALID_PARAMETER));
}
