#include "device.h"
#include "faults.h"
#include "leaks.h"
#include <algorithm>

class ButtonTest : public DeviceTest {
  protected:
    // A person's tap in the middle of the control.
    void tap(jint control) {
        RECT rect;
        GetWindowRect(windowOf(control), &rect);
        call<jboolean(jint, jint, jint)>("Display_PostPointerMoveEvent", display,
                                         (rect.left + rect.right) / 2,
                                         (rect.top + rect.bottom) / 2);
        call<jboolean(jint, jint, jint)>("Display_PostPointerEvent", display, 1, 8);
        dispatchAll();
        call<jboolean(jint, jint, jint)>("Display_PostPointerEvent", display, 2, 8);
        dispatchAll();
    }

    static LRESULT checkState(jint button) {
        return SendMessageW(windowOf(button), BM_GETCHECK, 0, 0);
    }

    int countSelections() {
        Events events = vm.takeEvents();
        return static_cast<int>(std::count(events.begin(), events.end(), "selected()"));
    }
};

TEST_F(ButtonTest, a_tap_on_a_push_button_fires_one_selection) {
    jint button = newButton(newShell());
    listen(button);
    tap(button);
    EXPECT_EQ(countSelections(), 1);
}

TEST_F(ButtonTest, a_click_on_a_checked_check_box_clears_it_and_fires_one_selection) {
    jint box = newButton(newShell(), "Checkbox");
    call<void(jint, jboolean)>("Button_SetSelection", box, JNI_TRUE);
    listen(box);
    tap(box);
    EXPECT_EQ(checkState(box), BST_UNCHECKED);
    EXPECT_EQ(countSelections(), 1);
}

TEST_F(ButtonTest, a_click_on_a_checked_radio_button_clears_it_and_fires_one_selection) {
    jint radio = newButton(newShell(), "RadioButton");
    call<void(jint, jboolean)>("Button_SetSelection", radio, JNI_TRUE);
    listen(radio);
    tap(radio);
    EXPECT_EQ(checkState(radio), BST_UNCHECKED);
    EXPECT_EQ(countSelections(), 1);
}

TEST_F(ButtonTest, a_radio_button_that_is_given_the_focus_ignores_the_click_of_that) {
    jint shell = newShell();
    jint radio = newButton(shell, "RadioButton");
    listen(radio);
    auto* record = reinterpret_cast<DWORD*>(radio);
    constexpr int focusingField = 14;
    record[focusingField] = TRUE;
    SendMessageW(windowOf(shell), WM_COMMAND, MAKEWPARAM(0, BN_CLICKED),
                 reinterpret_cast<LPARAM>(windowOf(radio)));
    EXPECT_EQ(countSelections(), 0);
    record[focusingField] = FALSE;
    SendMessageW(windowOf(shell), WM_COMMAND, MAKEWPARAM(0, BN_CLICKED),
                 reinterpret_cast<LPARAM>(windowOf(radio)));
    EXPECT_EQ(countSelections(), 1);
}

TEST_F(ButtonTest, setting_the_selection_keeps_the_window_style) {
    jint radio = newButton(newShell(), "RadioButton");
    SetWindowLongW(windowOf(radio), GWL_STYLE,
                   GetWindowLongW(windowOf(radio), GWL_STYLE) & ~WS_TABSTOP);
    LONG style = GetWindowLongW(windowOf(radio), GWL_STYLE);
    call<void(jint, jboolean)>("Button_SetSelection", radio, JNI_TRUE);
    EXPECT_EQ(GetWindowLongW(windowOf(radio), GWL_STYLE), style);
    EXPECT_EQ(checkState(radio), BST_CHECKED);
}

TEST_F(ButtonTest, the_label_is_shown_as_given) {
    jint button = newButton(newShell());
    call<void(jint, jstring)>("Button_SetLabel", button, vm.newString(u"line\nbreak & all"));
    wchar_t text[40];
    GetWindowTextW(windowOf(button), text, 40);
    EXPECT_STREQ(text, L"line\nbreak & all");
}

TEST_F(ButtonTest, a_null_label_is_the_empty_text) {
    jint button = newButton(newShell());
    call<void(jint, jstring)>("Button_SetLabel", button, vm.newString(u"text"));
    call<void(jint, jstring)>("Button_SetLabel", button, static_cast<jstring>(nullptr));
    EXPECT_EQ(GetWindowTextLengthW(windowOf(button)), 0);
}

TEST_F(ButtonTest, an_empty_check_box_is_as_high_as_its_box) {
    jint box = newButton(newShell(), "Checkbox");
    std::vector<jint> size = vm.ints(call<jobject(jint)>("Control_GetMinimumSize", box));
    EXPECT_EQ(size, (std::vector<jint>{GetSystemMetrics(SM_CXSMICON),
                                       GetSystemMetrics(SM_CYSMICON) + 3}));
}

TEST_F(ButtonTest, an_empty_push_button_is_a_line_and_its_margins_high) {
    jint button = call<jint(jint, jint)>("PushButton_New", newShell(), 0x800);
    HDC context = GetDC(nullptr);
    SelectObject(context, GetStockObject(SYSTEM_FONT));
    TEXTMETRICW metrics;
    GetTextMetricsW(context, &metrics);
    ReleaseDC(nullptr, context);
    int edge = GetSystemMetrics(SM_CXEDGE);
    std::vector<jint> size = vm.ints(call<jobject(jint)>("Control_GetMinimumSize", button));
    EXPECT_EQ(size, (std::vector<jint>{12 + 2 * edge, metrics.tmHeight + 10 + 2 * edge}));
}

TEST_F(ButtonTest, a_failed_creation_reports_once_and_gives_no_handle) {
    jint shell = newShell();
    Faults faults;
    faults.fail("CreateWindowExW", 1, ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_EQ((call<jint(jint, jint)>("RadioButton_New", shell, 0)), 0);
    TestVm::Report report = onlyReport();
    EXPECT_EQ(report.function, "RadioButton_New");
    EXPECT_EQ(report.code, -4);
    EXPECT_EQ(report.message.find(u"Unable to create handle for widget::"), 0u);
}
