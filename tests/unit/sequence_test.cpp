// What happens in which order: messages and callbacks in one list.

#include "control/control.h"
#include "device.h"
#include "messages.h"
#include <gtest/gtest-spi.h>

class SequenceTest : public DeviceTest {
  protected:
    SequenceTest()
        : recorder(vm, {{WM_LBUTTONDOWN, "WM_LBUTTONDOWN"},
                        {WM_LBUTTONUP, "WM_LBUTTONUP"},
                        {WM_COMMAND, "WM_COMMAND"},
                        {WM_CLOSE, "WM_CLOSE"},
                        {WM_ACTIVATE, "WM_ACTIVATE"},
                        {WM_SETFOCUS, "WM_SETFOCUS"},
                        {WM_KILLFOCUS, "WM_KILLFOCUS"},
                        {WM_SIZE, "WM_SIZE"},
                        {WM_ENABLE, "WM_ENABLE"},
                        {WM_VSCROLL, "WM_VSCROLL"},
                        {WM_KEYDOWN, "WM_KEYDOWN"},
                        {WM_ENTERMENULOOP, "WM_ENTERMENULOOP"},
                        {WM_EXITMENULOOP, "WM_EXITMENULOOP"},
                        {controlTrackMenu, "track menu"},
                        {controlCommand, "command notice"},
                        {controlChildMoves, "child moves"},
                        {controlSetBounds, "set bounds"},
                        {controlSetVisible, "set visible"}}) {
        shell = newShell();
        button = newButton(shell);
        POINT middle = {50, 20};
        ClientToScreen(windowOf(button), &middle);
        call(OS::Display_PostPointerMoveEvent, display, middle.x, middle.y);
        dispatchAll();
        listen(button);
        listen(shell);
        recorder.watch(windowOf(shell), "shell");
        recorder.watch(windowOf(button), "button");
    }
    void post(jint type) {
        call(OS::Display_PostPointerEvent, display, type, buttonLeft);
        dispatchAll();
    }

    MessageRecorder recorder;
    jint shell, button;
};

TEST_F(SequenceTest, a_tap_goes_from_the_press_over_the_notice_to_the_selection) {
    post(pointerPress);
    post(pointerRelease);
    expectSequence(vm.takeEvents(),
                   {
                       {"button WM_LBUTTONDOWN"},
                       {fired::pointer(pointerMove, 50, 20, buttonNone)},
                       {fired::pointerDown(50, 20)},
                       {fired::pointer(pointerPress, 50, 20, buttonLeft)},
                       {"shell WM_KILLFOCUS", Step::optional},
                       {fired::focus(FocusChange::lost), Step::optional},
                       {"button WM_SETFOCUS"},
                       {fired::focus(FocusChange::gained)},
                       {"shell WM_COMMAND", Step::optional},
                       {"button command notice", Step::optional},
                       {fired::paint(0, 0, 100, 40), Step::optional},
                       {"button WM_LBUTTONUP"},
                       {fired::pointer(pointerRelease, 50, 20, buttonLeft)},
                       {"shell WM_COMMAND"},
                       {"button command notice"},
                       {fired::selected()},
                       {fired::pointer(pointerMove, 50, 20, buttonNone), Step::optional},
                       {fired::paint(0, 0, 100, 40), Step::optional},
                   });
}

TEST_F(SequenceTest, the_parent_is_told_before_a_child_is_moved) {
    call(OS::Control_SetBounds, button, 1, 2, 30, 20);
    expectSequence(vm.takeEvents(),
                   {{"shell child moves"}, {"button set bounds"}, {"button WM_SIZE"}});
}

TEST_F(SequenceTest, a_child_shell_takes_the_activation_and_gives_it_back) {
    jint child = call(OS::Shell_NewChild, shell, 0);
    recorder.watch(windowOf(child), "child");
    listen(child);
    vm.takeEvents();
    call(OS::Control_SetVisible, child, true);
    expectSequence(vm.takeEvents(), {
                                        {"child set visible"},
                                        {"shell WM_ACTIVATE"},
                                        {fired::window(WindowEvent::deactivated)},
                                        {"child WM_ACTIVATE"},
                                        {fired::window(WindowEvent::activated)},
                                        {"shell WM_KILLFOCUS", Step::optional},
                                        {fired::focus(FocusChange::lost), Step::optional},
                                        {"child WM_SETFOCUS"},
                                        {fired::focus(FocusChange::gained)},
                                        {fired::resize(0, 0), Step::optional},
                                        {"child WM_SIZE", Step::optional},
                                        {fired::paint(0, 0, 0, 0), Step::optional},
                                    });
    dispose(child);
}

TEST_F(SequenceTest, a_modal_shell_disables_its_parent_before_it_shows_and_enables_it_after) {
    constexpr jint modal = 0x40;
    jint child = call(OS::Shell_NewChild, shell, modal);
    RECT client;
    GetClientRect(windowOf(shell), &client);
    const std::string resized = fired::resize(client.right, client.bottom);
    recorder.watch(windowOf(child), "child");
    vm.takeEvents();
    call(OS::Control_SetVisible, child, true);
    expectSequence(vm.takeEvents(), {
                                        {"child set visible"},
                                        {"shell WM_KILLFOCUS", Step::optional},
                                        {fired::focus(FocusChange::lost), Step::optional},
                                        {"shell WM_ENABLE"},
                                        {"shell WM_ACTIVATE"},
                                        {fired::window(WindowEvent::deactivated)},
                                        {"child WM_ACTIVATE"},
                                        {"shell WM_KILLFOCUS", Step::optional},
                                        {fired::focus(FocusChange::lost), Step::optional},
                                        {"child WM_SETFOCUS"},
                                        {"child WM_SIZE", Step::optional},
                                    });
    call(OS::Control_SetVisible, child, false);
    expectSequence(vm.takeEvents(), {
                                        {"child set visible"},
                                        {"shell WM_ENABLE"},
                                        {"child WM_ACTIVATE", Step::optional},
                                        {"shell WM_ACTIVATE"},
                                        {fired::window(WindowEvent::activated)},
                                        {"child WM_KILLFOCUS", Step::optional},
                                        {"shell WM_SETFOCUS", Step::optional},
                                        {fired::focus(FocusChange::gained), Step::optional},
                                        {resized.c_str(), Step::optional},
                                        {"shell WM_SIZE", Step::optional},
                                    });
    dispose(child);
}

class MenuSequenceTest : public SequenceTest {
  protected:
    MenuSequenceTest() {
        menu = call(OS::PopupMenu_New, shell);
        item = call(OS::PushMenuItem_New, menu, 0);
        listen(item);
    }
    ~MenuSequenceTest() override {
        dispose(item);
        dispose(menu);
    }
    static void press(BYTE key) { keybd_event(key, 0, 0, 0); }
    static void release(BYTE key) { keybd_event(key, 0, KEYEVENTF_KEYUP, 0); }
    jint menu, item;
};

TEST_F(MenuSequenceTest, a_chosen_item_fires_after_the_menu_has_gone) {
    press(VK_DOWN);
    release(VK_DOWN);
    press(VK_RETURN);
    release(VK_RETURN);
    call(OS::PopupMenu_Show, menu, 10, 10);
    dispatchAll();
    expectSequence(vm.takeEvents(), {
                                        {"shell track menu"},
                                        {"shell WM_ENTERMENULOOP"},
                                        {"shell WM_EXITMENULOOP"},
                                        {"shell WM_COMMAND"},
                                        {fired::menu()},
                                    });
}

TEST_F(MenuSequenceTest, a_control_shift_accelerator_is_a_command_to_the_focused_window) {
    call(OS::LabeledMenuItem_SetAccelerator, item, 6 << 16 | 'g');
    SetFocus(windowOf(button));
    dispatchAll();
    vm.takeEvents();
    for (BYTE key : {BYTE(VK_CONTROL), BYTE(VK_SHIFT), BYTE('G')}) press(key);
    dispatchAll();
    expectSequence(
        vm.takeEvents(),
        {
            {"button WM_KEYDOWN"},
            {fired::key(KeyKind::pressed, fired::noCharacter, keyControl)},
            {"button WM_KEYDOWN"},
            {fired::key(KeyKind::pressed, fired::noCharacter, keyShift, modifierControl)},
            {"button WM_COMMAND"},
            {fired::menu()},
        });
    for (BYTE key : {BYTE('G'), BYTE(VK_SHIFT), BYTE(VK_CONTROL)}) release(key);
    dispatchAll();
}

TEST_F(SequenceTest, a_scroll_code_is_a_message_to_the_parent_and_one_event_of_the_bar) {
    jint bar = call(OS::Scrollbar_New, shell);
    call(OS::Control_SetBounds, bar, 200, 30, 13, 100);
    call(OS::Control_SetVisible, bar, true);
    dispatchAll();
    recorder.watch(windowOf(bar), "bar");
    listen(bar);
    SetFocus(windowOf(bar));
    dispatchAll();
    vm.takeEvents();
    keybd_event(VK_DOWN, 0, 0, 0);
    dispatchAll();
    expectSequence(vm.takeEvents(), {
                                        {"bar WM_KEYDOWN"},
                                        {fired::key(KeyKind::pressed, fired::noCharacter, keyDown)},
                                        {"shell WM_VSCROLL"},
                                        {fired::scrolled(1, ScrollKind::lineDown)},
                                    });
    keybd_event(VK_DOWN, 0, KEYEVENTF_KEYUP, 0);
    dispatchAll();
}

TEST_F(SequenceTest, a_sequence_that_differs_is_shown_with_a_mark) {
    testing::TestPartResultArray failures;
    {
        testing::ScopedFakeTestPartResultReporter capture(&failures);
        expectSequence({"a", "c"}, {{"a"}, {"b"}, {"c", Step::optional}});
        expectSequence({"a", "b"}, {{"a"}});
    }
    ASSERT_EQ(failures.size(), 2);
    EXPECT_NE(std::string(failures.GetTestPartResult(0).message()).find("  > c"),
              std::string::npos);
    EXPECT_NE(std::string(failures.GetTestPartResult(0).message()).find("  > b"),
              std::string::npos);
    EXPECT_NE(std::string(failures.GetTestPartResult(1).message()).find("  > (nothing more)"),
              std::string::npos);
}
