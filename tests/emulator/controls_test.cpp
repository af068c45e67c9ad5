#include "recorder.h"
#include <algorithm>

// The device's controls in a window that records what it is told.
class ControlsTest : public RecorderTest {
  protected:
    HWND newControl(const wchar_t* className, DWORD style, LONG top = 20) {
        return CreateWindowExW(0, className, nullptr, WS_CHILD | WS_VISIBLE | style, 20, top, 100,
                               60, parent, nullptr, GetModuleHandleW(nullptr), nullptr);
    }
    // The codes that the control notified its parent of since the last look.
    std::vector<int> notices(HWND control) {
        std::vector<int> codes;
        for (const Recorded& command : received(WM_COMMAND))
            if (command.lParam == reinterpret_cast<LPARAM>(control))
                codes.push_back(HIWORD(command.wParam));
        forgetReceived();
        return codes;
    }

    HWND parent = newShownWindow(wholeScreen);
};

TEST_F(ControlsTest, are_described_under_the_names_that_programs_know) {
    for (const wchar_t* name : {L"BUTTON", L"combobox", L"Edit", L"LISTBOX", L"STATIC"}) {
        WNDCLASSW description;
        ASSERT_TRUE(GetClassInfoW(GetModuleHandleW(nullptr), name, &description));
        EXPECT_STREQ(description.lpszClassName, name);
        HWND control = newControl(name, 0);
        EXPECT_EQ(reinterpret_cast<WNDPROC>(GetWindowLongW(control, GWL_WNDPROC)),
                  description.lpfnWndProc);
    }
    WNDCLASSW description;
    EXPECT_FALSE(GetClassInfoW(GetModuleHandleW(nullptr), L"NONE", &description));
}

TEST_F(ControlsTest, a_radio_button_takes_the_focus_for_a_click) {
    for (DWORD type : {BS_RADIOBUTTON, BS_AUTORADIOBUTTON}) {
        HWND radio = newControl(L"BUTTON", type);
        SetFocus(radio);
        EXPECT_EQ(notices(radio), std::vector<int>{BN_CLICKED});
    }
    for (DWORD type : {BS_PUSHBUTTON, BS_CHECKBOX}) {
        HWND other = newControl(L"BUTTON", type);
        SetFocus(other);
        EXPECT_TRUE(notices(other).empty());
    }
}

TEST_F(ControlsTest, a_tapped_radio_button_is_clicked_once) {
    HWND radio = newControl(L"BUTTON", BS_RADIOBUTTON);
    tap(40, 70);
    EXPECT_EQ(GetFocus(), radio);
    EXPECT_EQ(notices(radio), std::vector<int>{BN_CLICKED});
}

TEST_F(ControlsTest, text_that_is_set_is_a_change) {
    for (LONG style : {0L, ES_MULTILINE}) {
        HWND edit = newControl(L"EDIT", style);
        auto isChange = [&](const wchar_t* text) {
            SetWindowTextW(edit, text);
            std::vector<int> codes = notices(edit);
            return std::count(codes.begin(), codes.end(), EN_CHANGE) == 1;
        };
        EXPECT_TRUE(isChange(L"text")) << style;
        EXPECT_TRUE(isChange(L"text")) << "the same again";
        EXPECT_TRUE(isChange(L"")) << style;
    }
}

TEST_F(ControlsTest, the_border_of_an_edit_is_its_frame) {
    for (LONG style : {0L, ES_MULTILINE}) {
        HWND plain = newControl(L"EDIT", style), bordered = newControl(L"EDIT", style | WS_BORDER);
        EXPECT_FALSE(GetWindowLongW(plain, GWL_STYLE) & WS_BORDER);
        EXPECT_TRUE(GetWindowLongW(bordered, GWL_STYLE) & WS_BORDER);
        RECT client;
        GetClientRect(plain, &client);
        EXPECT_EQ(client.right, 100);
        GetClientRect(bordered, &client);
        EXPECT_EQ(client.right, 100 - 2 * GetSystemMetrics(SM_CXBORDER));
        EXPECT_EQ(client.bottom, 60 - 2 * GetSystemMetrics(SM_CYBORDER));
    }
}

TEST_F(ControlsTest, a_selection_does_not_scroll_lines) {
    HWND edit = newControl(L"EDIT", ES_MULTILINE | ES_AUTOVSCROLL);
    std::wstring text;
    for (int i = 0; i < 100; ++i) text += L"line\r\n";
    SetWindowTextW(edit, text.c_str());
    auto firstLine = [&] { return SendMessageW(edit, EM_GETFIRSTVISIBLELINE, 0, 0); };
    SendMessageW(edit, EM_SETSEL, 0, -1);
    EXPECT_EQ(firstLine(), 0);
    SendMessageW(edit, EM_SCROLLCARET, 0, 0);
    EXPECT_GT(firstLine(), 90);
    SendMessageW(edit, EM_SETSEL, 0, 0);
    EXPECT_GT(firstLine(), 90);
    EXPECT_EQ(SendMessageW(edit, EM_GETSEL, 0, 0), 0);
}

TEST_F(ControlsTest, only_an_item_that_is_there_is_scrolled_to_the_top) {
    HWND list = newControl(L"LISTBOX", WS_VSCROLL);
    auto setTop = [&](int index) { return SendMessageW(list, LB_SETTOPINDEX, index, 0); };
    EXPECT_EQ(setTop(0), LB_ERR) << "an empty list";
    for (int i = 0; i < 50; ++i) SendMessageW(list, LB_ADDSTRING, 0, LPARAM(L"item"));
    EXPECT_EQ(setTop(20), 0);
    EXPECT_EQ(SendMessageW(list, LB_GETTOPINDEX, 0, 0), 20);
    for (int missing : {-1, 50, 1000}) EXPECT_EQ(setTop(missing), LB_ERR) << missing;
    EXPECT_EQ(SendMessageW(list, LB_GETTOPINDEX, 0, 0), 20);
}

TEST_F(ControlsTest, the_space_bar_selects_an_item_and_tells_so) {
    for (DWORD notifies : {DWORD(LBS_NOTIFY), DWORD(0)}) {
        HWND list = newControl(L"LISTBOX", LBS_MULTIPLESEL | notifies);
        auto space = [&] {
            SendMessageW(list, WM_KEYDOWN, VK_SPACE, 0);
            return SendMessageW(list, LB_GETSELCOUNT, 0, 0);
        };
        const auto told = notifies ? std::vector<int>{LBN_SELCHANGE} : std::vector<int>{};
        EXPECT_EQ(space(), 0) << "an empty list";
        EXPECT_TRUE(notices(list).empty());
        SendMessageW(list, LB_ADDSTRING, 0, LPARAM(L"item"));
        EXPECT_EQ(space(), 1);
        EXPECT_EQ(notices(list), told);
        EXPECT_EQ(space(), 0);
        EXPECT_EQ(notices(list), told);
    }
}

TEST_F(ControlsTest, a_combo_box_tells_of_its_parts) {
    constexpr UINT getInfo = 0x162;
    HWND combo = newControl(L"COMBOBOX", CBS_DROPDOWNLIST);
    COMBOBOXINFO info = {};
    info.cbSize = sizeof(info);
    EXPECT_TRUE(SendMessageW(combo, getInfo, 0, reinterpret_cast<LPARAM>(&info)));
    EXPECT_EQ(info.hwndCombo, combo);
    EXPECT_GT(info.rcButton.right, info.rcButton.left);
    info.cbSize = 1;
    EXPECT_FALSE(SendMessageW(combo, getInfo, 0, reinterpret_cast<LPARAM>(&info)));
}

TEST_F(ControlsTest, a_combo_box_selects_none_where_the_item_is_missing) {
    HWND combo = newControl(L"COMBOBOX", CBS_DROPDOWNLIST);
    auto select = [&](int index) { return SendMessageW(combo, CB_SETCURSEL, index, 0); };
    for (int i = 0; i < 3; ++i) SendMessageW(combo, CB_ADDSTRING, 0, LPARAM(L"item"));
    for (int missing : {3, 100, -1, -2}) {
        EXPECT_EQ(select(2), 2);
        EXPECT_EQ(SendMessageW(combo, CB_GETCURSEL, 0, 0), 2);
        EXPECT_EQ(select(missing), CB_ERR);
        EXPECT_EQ(SendMessageW(combo, CB_GETCURSEL, 0, 0), CB_ERR) << missing;
    }
}
