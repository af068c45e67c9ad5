#include "recorder.h"

static LONG deskExtendedStyle(HWND window) {
    using Function = LONG(WINAPI*)(HWND, int);
    auto* function = reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetWindowLongW")));
    return function(window, GWL_EXSTYLE);
}

class DialogTest : public RecorderTest {
  protected:
    static constexpr RECT place = {20, 40, 180, 140};
    static constexpr DWORD captioned = WS_POPUP | WS_CAPTION;

    static constexpr int buttonX = 163; // the middle of the caption's OK button
    static int buttonY(HWND window) {
        RECT client;
        GetClientRect(window, &client);
        POINT corner = {0, 0};
        ClientToScreen(window, &corner);
        return (place.top + corner.y) / 2 + 1;
    }

    static bool showsButton(HWND window) { // the hit test says where it is
        return SendMessageW(window, WM_NCHITTEST, 0, MAKELPARAM(buttonX, buttonY(window))) ==
               HTOBJECT;
    }
};

TEST_F(DialogTest, is_a_class_for_every_module) {
    WNDCLASSW description;
    EXPECT_TRUE(GetClassInfoW(GetModuleHandleW(nullptr), DIALOG_CLASS, &description));
    EXPECT_NE(description.lpfnWndProc, nullptr);
}

TEST_F(DialogTest, outlives_a_close_request_and_sends_no_command) {
    HWND window = newShownWindow(place);
    SendMessageW(window, WM_CLOSE, 0, 0);
    EXPECT_TRUE(received(WM_COMMAND).empty());
    EXPECT_TRUE(IsWindow(window));
    EXPECT_TRUE(IsWindowVisible(window));
}

TEST_F(DialogTest, keeps_the_ok_button_style_from_the_desk) {
    HWND window = newWindow(place, captioned, WS_EX_CAPTIONOKBTN | WS_EX_DLGMODALFRAME);
    EXPECT_EQ(GetWindowLongW(window, GWL_EXSTYLE) & LONG(WS_EX_CAPTIONOKBTN | 1),
              LONG(WS_EX_CAPTIONOKBTN | WS_EX_DLGMODALFRAME));
    EXPECT_EQ(deskExtendedStyle(window) & LONG(WS_EX_CAPTIONOKBTN), 0);
}

TEST_F(DialogTest, gains_and_loses_the_ok_button) {
    HWND window = newShownWindow(place, captioned);
    LONG plain = GetWindowLongW(window, GWL_EXSTYLE);
    EXPECT_FALSE(showsButton(window));
    EXPECT_EQ(SetWindowLongW(window, GWL_EXSTYLE, plain | LONG(WS_EX_CAPTIONOKBTN)), plain);
    EXPECT_TRUE(showsButton(window));
    EXPECT_EQ(deskExtendedStyle(window), plain);
    EXPECT_EQ(SetWindowLongW(window, GWL_EXSTYLE, plain), plain | LONG(WS_EX_CAPTIONOKBTN));
    EXPECT_FALSE(showsButton(window));
}

TEST_F(DialogTest, sends_ok_without_a_control_when_its_button_is_tapped) {
    HWND window = newShownWindow(place, captioned, WS_EX_CAPTIONOKBTN);
    tap(buttonX, buttonY(window));
    std::vector<Recorded> commands = received(WM_COMMAND);
    ASSERT_EQ(commands.size(), 1u);
    EXPECT_EQ(commands[0].wParam, WPARAM(IDOK));
    EXPECT_EQ(commands[0].lParam, 0);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(DialogTest, sends_nothing_when_the_pointer_leaves_the_pressed_button) {
    HWND window = newShownWindow(place, captioned, WS_EX_CAPTIONOKBTN);
    movePointer(buttonX, buttonY(window));
    press();
    movePointer(buttonX, 120);
    release();
    EXPECT_TRUE(received(WM_COMMAND).empty());
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(DialogTest, has_no_button_without_a_caption) {
    HWND window = newShownWindow(place, WS_POPUP | WS_BORDER, WS_EX_CAPTIONOKBTN);
    tap(buttonX, place.top + 8);
    EXPECT_TRUE(received(WM_COMMAND).empty());
    EXPECT_EQ(GetWindowLongW(window, GWL_EXSTYLE) & LONG(WS_EX_CAPTIONOKBTN),
              LONG(WS_EX_CAPTIONOKBTN));
}

TEST_F(DialogTest, shows_the_button_in_its_caption) {
    HWND window = newShownWindow(place, captioned, WS_EX_CAPTIONOKBTN);
    int edge = buttonX - 8; // left of the text
    EXPECT_EQ(pixel(edge, buttonY(window)),
              0xFFFFFF & GetSysColor(COLOR_BTNFACE | SYS_COLOR_INDEX_FLAG));
    SetWindowLongW(window, GWL_EXSTYLE, 0);
    dispatchAll();
    EXPECT_NE(pixel(edge, buttonY(window)),
              0xFFFFFF & GetSysColor(COLOR_BTNFACE | SYS_COLOR_INDEX_FLAG));
}

TEST_F(DialogTest, of_another_class_has_no_ok_button) {
    HWND button = CreateWindowExW(WS_EX_CAPTIONOKBTN, L"BUTTON", nullptr, WS_POPUP, 0, 0, 9, 9,
                                  nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    EXPECT_EQ(GetWindowLongW(button, GWL_EXSTYLE) & LONG(WS_EX_CAPTIONOKBTN), 0);
    EXPECT_EQ(deskExtendedStyle(button) & LONG(WS_EX_CAPTIONOKBTN), 0);
    DestroyWindow(button);
}
