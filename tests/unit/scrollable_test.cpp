#include "control/scrollable.h"
#include "device.h"
#include "faults.h"

class ScrollableTest : public DeviceTest {
  protected:
    std::vector<jint> insetsOf(jint control) {
        return vm.ints(call(OS::Scrollable_GetInsets, control));
    }
};

TEST_F(ScrollableTest, window_styles_follow_the_java_style) {
    auto* style = entryPoint<DWORD(DWORD)>("_Scrollable_Style");
    EXPECT_EQ(style(0), 0x46010000u);
    EXPECT_EQ(style(0x20000), 0x46210000u);
    EXPECT_EQ(style(0x10000), 0x46110000u);
    EXPECT_EQ(style(0x800), 0x46810000u);
}

TEST_F(ScrollableTest, insets_are_the_border_and_the_scroll_bars) {
    jint shell = newShell();
    jint composite = call(OS::Composite_New, shell, 0x20000 | 0x800);
    int border = GetSystemMetrics(SM_CXBORDER);
    EXPECT_EQ(insetsOf(composite),
              (std::vector<jint>{border, border, border + GetSystemMetrics(SM_CXVSCROLL), border}));
    jint plain = call(OS::Composite_New, shell, 0x10000);
    EXPECT_EQ(insetsOf(plain), (std::vector<jint>{0, 0, 0, GetSystemMetrics(SM_CYHSCROLL)}));
}

// As a companion library's window procedure does with what it leaves alone.
TEST_F(ScrollableTest, the_common_procedure_answers_for_insets_and_leaves_the_rest_to_controls) {
    jint composite = call(OS::Composite_New, newShell(), 0x20000 | 0x800);
    auto* proc = entryPoint<LRESULT CALLBACK(HWND, UINT, WPARAM, LPARAM)>("_Scrollable_Proc");
    HWND window = windowOf(composite);
    Insets insets = {};
    EXPECT_EQ(proc(window, controlGetInsets, reinterpret_cast<WPARAM>(&insets), 0), 0);
    EXPECT_EQ((std::vector<jint>{insets.left, insets.top, insets.right, insets.bottom}),
              insetsOf(composite));
    listen(composite);
    EXPECT_EQ(proc(window, WM_CLOSE, 0, 0), 0);
    EXPECT_EQ(vm.takeEvents(), Events{fired::window(WindowEvent::closeRequested)});
}

TEST_F(ScrollableTest, a_shell_without_frame_has_no_insets) {
    EXPECT_EQ(insetsOf(newShell()), (std::vector<jint>{0, 0, 0, 0}));
}

TEST_F(ScrollableTest, capabilities) {
    EXPECT_EQ(call(OS::Platform_GetCapability, 2), 1);
    EXPECT_EQ(call(OS::Platform_GetCapability, 4), 4158);
    for (jint other : {-1, 0, 1, 3, 5, 1000})
        EXPECT_EQ(call(OS::Platform_GetCapability, other), 0) << other;
}

// What a child answers to a reflected notification.
static std::vector<HWND> notified;
static bool handlesNotification;
static WNDPROC childProc;
static LRESULT CALLBACK answerNotification(HWND window, UINT message, WPARAM wParam,
                                           LPARAM lParam) {
    if (message == controlNotify) {
        notified.push_back(window);
        reinterpret_cast<NotifyAnswer*>(wParam)->handled = handlesNotification;
        return 55;
    }
    return CallWindowProcW(childProc, window, message, wParam, lParam);
}

TEST_F(ScrollableTest, a_notification_of_a_grandchild_is_offered_to_the_child_that_holds_it) {
    jint outer = call(OS::Composite_New, newShell(), 0);
    jint child = call(OS::Composite_New, outer, 0);
    jint sibling = call(OS::Composite_New, outer, 0);
    jint grandchild = call(OS::PushButton_New, child, 0);
    for (jint each : {child, sibling})
        childProc = reinterpret_cast<WNDPROC>(SetWindowLongW(
            windowOf(each), GWL_WNDPROC, reinterpret_cast<LONG>(answerNotification)));
    NMHDR header = {windowOf(grandchild), 0, 1};
    notified.clear();
    handlesNotification = true;
    EXPECT_EQ(SendMessageW(windowOf(outer), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&header)), 55);
    EXPECT_EQ(notified, std::vector<HWND>{windowOf(child)});
    handlesNotification = false;
    EXPECT_NE(SendMessageW(windowOf(outer), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&header)), 55);
    for (jint each : {child, sibling})
        SetWindowLongW(windowOf(each), GWL_WNDPROC, reinterpret_cast<LONG>(childProc));
}

TEST_F(ScrollableTest, a_notification_of_a_stranger_is_offered_to_no_child) {
    jint shell = newShell();
    jint outer = call(OS::Composite_New, shell, 0);
    jint child = call(OS::Composite_New, outer, 0);
    jint stranger = newButton(shell);
    childProc = reinterpret_cast<WNDPROC>(
        SetWindowLongW(windowOf(child), GWL_WNDPROC, reinterpret_cast<LONG>(answerNotification)));
    handlesNotification = true;
    for (HWND sender : {windowOf(stranger), windowOf(outer), HWND(nullptr)}) {
        NMHDR header = {sender, 0, 1};
        notified.clear();
        Faults faults;
        EXPECT_EQ(SendMessageW(windowOf(outer), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&header)),
                  0);
        EXPECT_TRUE(notified.empty());
        EXPECT_EQ(faults.countCalls("SendMessageW"), 0) << "nor to no window";
    }
    SetWindowLongW(windowOf(child), GWL_WNDPROC, reinterpret_cast<LONG>(childProc));
}

TEST_F(ScrollableTest, a_composite_that_lost_the_focus_again_does_not_report_it) {
    jint composite = call(OS::Composite_New, newShell(), 0);
    listen(composite);
    EXPECT_EQ(SendMessageW(windowOf(composite), WM_SETFOCUS, 0, 0), 1);
    EXPECT_TRUE(vm.takeEvents().empty());
    call(OS::Control_SetVisible, composite, true);
    SetFocus(windowOf(composite));
    Events events = vm.takeEvents();
    EXPECT_EQ(std::count(events.begin(), events.end(), fired::focus(FocusChange::gained)), 1);
}

class ChildColorTest : public ScrollableTest {
  protected:
    ChildColorTest() {
        shell = newShell();
        button = newButton(shell, OS::Checkbox_New);
        context = GetDC(windowOf(button));
        ask(); // leaves the native colours in the context
        nativeText = GetTextColor(context);
        nativeBackground = GetBkColor(context);
    }
    ~ChildColorTest() override { ReleaseDC(windowOf(button), context); }
    HBRUSH ask() {
        return reinterpret_cast<HBRUSH>(SendMessageW(windowOf(shell), WM_CTLCOLORSTATIC,
                                                     reinterpret_cast<WPARAM>(context),
                                                     reinterpret_cast<LPARAM>(windowOf(button))));
    }
    ControlRecord* record() { return reinterpret_cast<ControlRecord*>(button); }

    jint shell, button;
    HDC context;
    COLORREF nativeText, nativeBackground;
};

TEST_F(ChildColorTest, a_child_without_colours_keeps_the_native_ones) {
    HBRUSH native = ask();
    EXPECT_NE(native, nullptr);
    EXPECT_EQ(GetTextColor(context), nativeText);
}

TEST_F(ChildColorTest, a_foreground_changes_the_text_and_keeps_the_native_brush) {
    HBRUSH native = ask();
    ColorRecord red = {RGB(255, 0, 0), nullptr};
    record()->foreground = &red;
    EXPECT_EQ(ask(), native);
    EXPECT_EQ(GetTextColor(context), RGB(255, 0, 0));
    record()->foreground = nullptr;
}

TEST_F(ChildColorTest, a_background_gives_its_own_brush) {
    ColorRecord green = {RGB(0, 255, 0), nullptr};
    record()->background = &green;
    HBRUSH brush = ask();
    EXPECT_EQ(brush, green.brush);
    EXPECT_EQ(GetBkColor(context), RGB(0, 255, 0));
    EXPECT_EQ(ask(), brush) << "the brush is made once";
    record()->background = nullptr;
    DeleteObject(green.brush);
}
