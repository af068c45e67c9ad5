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
                        {controlCommand, "command notice"},
                        {controlChildMoves, "child moves"},
                        {controlSetBounds, "set bounds"},
                        {controlSetVisible, "set visible"}}) {
        shell = newShell();
        button = newButton(shell);
        call<jboolean(jint, jint, jint)>("Display_PostPointerMoveEvent", display, 70, 50);
        dispatchAll();
        listen(button);
        listen(shell);
        recorder.watch(windowOf(shell), "shell");
        recorder.watch(windowOf(button), "button");
    }
    void post(jint type) {
        call<jboolean(jint, jint, jint)>("Display_PostPointerEvent", display, type, 8);
        dispatchAll();
    }

    MessageRecorder recorder;
    jint shell, button;
};

TEST_F(SequenceTest, a_tap_goes_from_the_press_over_the_notice_to_the_selection) {
    post(1);
    post(2);
    expectSequence(vm.takeEvents(), {
                                        {"button WM_LBUTTONDOWN"},
                                        {"pointer(3, 50, 20, 0, 0)"},
                                        {"pointerDown(50, 20)"},
                                        {"pointer(1, 50, 20, 8, 0)"},
                                        {"shell WM_KILLFOCUS", Step::optional},
                                        {"focus(2)", Step::optional},
                                        {"button WM_SETFOCUS"},
                                        {"focus(1)"},
                                        {"shell WM_COMMAND", Step::optional},
                                        {"button command notice", Step::optional},
                                        {"paint(0, 0, 100, 40)", Step::optional},
                                        {"button WM_LBUTTONUP"},
                                        {"pointer(2, 50, 20, 8, 0)"},
                                        {"shell WM_COMMAND"},
                                        {"button command notice"},
                                        {"selected()"},
                                        {"pointer(3, 50, 20, 0, 0)", Step::optional},
                                        {"paint(0, 0, 100, 40)", Step::optional},
                                    });
}

TEST_F(SequenceTest, the_parent_is_told_before_a_child_is_moved) {
    call<void(jint, jint, jint, jint, jint)>("Control_SetBounds", button, 1, 2, 30, 20);
    expectSequence(vm.takeEvents(),
                   {{"shell child moves"}, {"button set bounds"}, {"button WM_SIZE"}});
}

TEST_F(SequenceTest, a_child_shell_takes_the_activation_and_gives_it_back) {
    jint child = call<jint(jint, jint)>("Shell_NewChild", shell, 0);
    recorder.watch(windowOf(child), "child");
    listen(child);
    vm.takeEvents();
    call<void(jint, jboolean)>("Control_SetVisible", child, JNI_TRUE);
    expectSequence(vm.takeEvents(), {
                                        {"child set visible"},
                                        {"shell WM_ACTIVATE"},
                                        {"window(206)"},
                                        {"child WM_ACTIVATE"},
                                        {"window(205)"},
                                        {"shell WM_KILLFOCUS", Step::optional},
                                        {"focus(2)", Step::optional},
                                        {"child WM_SETFOCUS"},
                                        {"focus(1)"},
                                        {"resize(0, 0)", Step::optional},
                                        {"child WM_SIZE", Step::optional},
                                        {"paint(0, 0, 0, 0)", Step::optional},
                                    });
    dispose(child);
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
