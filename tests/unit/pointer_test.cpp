#include "aygshell.h"
#include "control/input.h"
#include "device.h"
#include "faults.h"

// Events are pointer(type, x, y, button, modifiers): type 1 press, 2 release, 3 move, 4 enter,
// 5 exit, 6 drag, 7 double click.
class PointerTest : public DeviceTest {
  protected:
    PointerTest() {
        shell = newShell();
        control = call(OS::Composite_New, shell, 0);
        call(OS::Control_SetBounds, control, 50, 60, 100, 80);
        call(OS::Control_SetVisible, control, true);
        dispatchAll();
        moveTo(200, 200);
        listen(control);
    }
    ~PointerTest() override { ReleaseCapture(); }

    // In the shell.
    void moveTo(int x, int y) {
        POINT point = {x, y};
        ClientToScreen(windowOf(shell), &point);
        call(OS::Display_PostPointerMoveEvent, display, point.x, point.y);
        dispatchAll();
    }
    void button(int type, int which) {
        call(OS::Display_PostPointerEvent, display, type, which);
        dispatchAll();
    }
    void send(UINT message, WPARAM wParam, int x, int y) {
        SendMessageW(windowOf(control), message, wParam, MAKELPARAM(x, y));
    }
    // The events but for those of moving.
    Events takePresses() {
        Events events = fired::without(vm.takeEvents(), {"paint"});
        std::erase_if(events, [](const std::string& event) {
            return fired::isPointer(event, pointerMove) || fired::isPointer(event, pointerEnter);
        });
        return events;
    }
    PointerState& pointer() { return reinterpret_cast<DisplayRecord*>(display)->pointer; }

    jint shell, control;
};

TEST_F(PointerTest, a_real_tap_presses_and_releases_in_the_controls_coordinates) {
    moveTo(60, 75);
    vm.takeEvents();
    button(pointerPress, buttonLeft);
    button(pointerRelease, buttonLeft);
    EXPECT_EQ(takePresses(),
              (Events{fired::pointerDown(10, 15), fired::pointer(pointerPress, 10, 15, buttonLeft),
                      fired::pointer(pointerRelease, 10, 15, buttonLeft)}));
}

TEST_F(PointerTest, a_press_is_preceded_by_a_move) {
    send(WM_LBUTTONDOWN, MK_LBUTTON, 5, 6);
    Events events = vm.takeEvents();
    ASSERT_GE(events.size(), 3u);
    EXPECT_EQ(events[events.size() - 3], fired::pointer(pointerMove, 5, 6, buttonNone));
    EXPECT_EQ(events[events.size() - 2], fired::pointerDown(5, 6));
    EXPECT_EQ(events[events.size() - 1], fired::pointer(pointerPress, 5, 6, buttonLeft));
    send(WM_LBUTTONUP, 0, 5, 6);
}

TEST_F(PointerTest, a_press_takes_the_capture_and_the_release_gives_it_back) {
    send(WM_LBUTTONDOWN, MK_LBUTTON, 5, 6);
    EXPECT_EQ(GetCapture(), windowOf(control));
    send(WM_LBUTTONUP, 0, 5, 6);
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(pointer().lastPress, nullptr);
}

TEST_F(PointerTest, the_capture_stays_while_another_button_is_down) {
    send(WM_LBUTTONDOWN, MK_LBUTTON, 5, 6);
    send(WM_RBUTTONDOWN, MK_LBUTTON | MK_RBUTTON, 5, 6);
    send(WM_LBUTTONUP, MK_RBUTTON, 5, 6);
    EXPECT_EQ(GetCapture(), windowOf(control));
    EXPECT_EQ(pointer().lastPress, windowOf(control));
    send(WM_RBUTTONUP, 0, 5, 6);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(PointerTest, the_other_buttons_press_and_release) {
    send(WM_RBUTTONDOWN, MK_RBUTTON, 5, 6);
    send(WM_RBUTTONUP, 0, 5, 6);
    send(WM_MBUTTONDOWN, MK_MBUTTON, 7, 8);
    send(WM_MBUTTONUP, 0, 7, 8);
    EXPECT_EQ(takePresses(),
              (Events{fired::pointer(pointerPress, 5, 6, buttonRight),
                      fired::pointer(pointerRelease, 5, 6, buttonRight, modifierContextGesture),
                      fired::pointer(pointerPress, 7, 8, buttonMiddle),
                      fired::pointer(pointerRelease, 7, 8, buttonMiddle)}));
}

TEST_F(PointerTest, a_release_of_the_right_button_is_always_a_context_gesture) {
    send(WM_RBUTTONUP, 0, 5, 6);
    EXPECT_EQ(vm.takeEvents(),
              Events{fired::pointer(pointerRelease, 5, 6, buttonRight, modifierContextGesture)});
}

TEST_F(PointerTest, companion_libraries_have_presses_told_for_their_windows) {
    using Process = void(HWND, WPARAM, LPARAM);
    auto* left = entryPoint<Process>("_Control_ProcessWmLButtonDown");
    auto* right = entryPoint<Process>("_Control_ProcessWmRButtonDown");
    left(windowOf(control), MK_LBUTTON, MAKELPARAM(5, 6));
    right(windowOf(control), MK_LBUTTON | MK_RBUTTON, MAKELPARAM(7, 8));
    EXPECT_EQ(takePresses(),
              (Events{fired::pointerDown(5, 6), fired::pointer(pointerPress, 5, 6, buttonLeft),
                      fired::pointer(pointerPress, 7, 8, buttonRight, modifierLeftButton)}));
    EXPECT_EQ(pointer().lastPress, windowOf(control));
    HWND stranger = CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP, 0, 0, 5, 5, nullptr, nullptr,
                                    nullptr, nullptr);
    for (auto* press : {left, right}) press(stranger, MK_LBUTTON, MAKELPARAM(1, 1));
    EXPECT_EQ(takePresses(), Events{});
    DestroyWindow(stranger);
}

TEST_F(PointerTest, double_clicks_of_all_buttons) {
    send(WM_LBUTTONDBLCLK, MK_LBUTTON, 1, 2);
    send(WM_RBUTTONDBLCLK, MK_RBUTTON, 3, 4);
    send(WM_MBUTTONDBLCLK, MK_MBUTTON, 5, 6);
    EXPECT_EQ(vm.takeEvents(), (Events{fired::pointer(pointerDoubleClick, 1, 2, buttonLeft),
                                       fired::pointer(pointerDoubleClick, 3, 4, buttonRight),
                                       fired::pointer(pointerDoubleClick, 5, 6, buttonMiddle)}));
}

TEST_F(PointerTest, modifiers_tell_the_other_buttons_only) {
    send(WM_RBUTTONDOWN, MK_LBUTTON | MK_MBUTTON | MK_RBUTTON, 5, 6);
    EXPECT_EQ(takePresses(), Events{fired::pointer(pointerPress, 5, 6, buttonRight,
                                                   modifierLeftButton | modifierMiddleButton)});
    send(WM_RBUTTONUP, 0, 5, 6);
}

TEST_F(PointerTest, coordinates_are_signed) {
    send(WM_RBUTTONUP, 0, -5, -6);
    EXPECT_EQ(vm.takeEvents(),
              Events{fired::pointer(pointerRelease, -5, -6, buttonRight, modifierContextGesture)});
}

TEST_F(PointerTest, a_move_with_the_button_held_becomes_a_drag_when_it_leaves_the_area) {
    for (int press : {1, 2}) {
        send(WM_LBUTTONDOWN, MK_LBUTTON, 40, 90);
        vm.takeEvents();
        pointer().doubleClickDeadline = GetTickCount() + 60000;
        send(WM_MOUSEMOVE, MK_LBUTTON, 41, 90);
        EXPECT_EQ(vm.takeEvents().back(),
                  fired::pointer(pointerMove, 41, 90, buttonNone, modifierLeftButton));
        send(WM_MOUSEMOVE, MK_LBUTTON, 60, 90);
        EXPECT_EQ(vm.takeEvents().back(),
                  fired::pointer(pointerDrag, 60, 90, buttonNone, modifierLeftButton));
        send(WM_MOUSEMOVE, MK_LBUTTON, 40, 90);
        EXPECT_EQ(vm.takeEvents().back(),
                  fired::pointer(pointerDrag, 40, 90, buttonNone, modifierLeftButton))
            << "it stays a drag, of press " << press;
        send(WM_LBUTTONUP, 0, 40, 90);
    }
}

TEST_F(PointerTest, a_move_without_the_capture_or_the_press_is_a_move) {
    pointer().doubleClickDeadline = GetTickCount() - 1;
    send(WM_MOUSEMOVE, 0, 3, 4);
    EXPECT_EQ(vm.takeEvents().back(), fired::pointer(pointerMove, 3, 4, buttonNone));
    SetCapture(windowOf(control));
    send(WM_MOUSEMOVE, 0, 3, 4);
    EXPECT_EQ(vm.takeEvents().back(), fired::pointer(pointerMove, 3, 4, buttonNone));
}

TEST_F(PointerTest, a_press_held_long_in_its_place_is_released_as_a_context_gesture) {
    send(WM_LBUTTONDOWN, MK_LBUTTON, 40, 40);
    pointer().tap.pressTick = GetTickCount() - 1000;
    vm.takeEvents();
    send(WM_LBUTTONUP, 0, 41, 41);
    EXPECT_EQ(vm.takeEvents().front(),
              fired::pointer(pointerRelease, 41, 41, buttonLeft, modifierContextGesture));
    EXPECT_NE(pointer().tap.control, nullptr) << "the tap stays remembered";
}

TEST_F(PointerTest, a_press_that_moved_away_is_no_context_gesture) {
    send(WM_LBUTTONDOWN, MK_LBUTTON, 40, 40);
    pointer().tap.pressTick = GetTickCount() - 1000;
    send(WM_MOUSEMOVE, MK_LBUTTON, 70, 40);
    EXPECT_EQ(pointer().tap.control, nullptr);
    send(WM_MOUSEMOVE, MK_LBUTTON, 40, 40);
    vm.takeEvents();
    send(WM_LBUTTONUP, 0, 40, 40);
    EXPECT_EQ(vm.takeEvents().front(), fired::pointer(pointerRelease, 40, 40, buttonLeft));
}

TEST_F(PointerTest, a_short_press_is_no_context_gesture) {
    send(WM_LBUTTONDOWN, MK_LBUTTON, 40, 40);
    pointer().tap.pressTick = GetTickCount();
    vm.takeEvents();
    send(WM_LBUTTONUP, 0, 40, 40);
    EXPECT_EQ(vm.takeEvents().front(), fired::pointer(pointerRelease, 40, 40, buttonLeft));
    EXPECT_EQ(pointer().tap.control, nullptr);
}

TEST_F(PointerTest, a_tap_ends_with_the_release_of_any_other_button) {
    const struct {
        UINT release;
        bool isOver;
    } rows[] = {{WM_MBUTTONUP, true}, {WM_RBUTTONUP, true}, {WM_MOUSEMOVE, false}};
    for (const auto& row : rows) {
        send(WM_LBUTTONDOWN, MK_LBUTTON, 40, 40);
        send(row.release, MK_LBUTTON, 40, 40);
        EXPECT_EQ(pointer().tap.control == nullptr, row.isOver) << row.release;
        send(WM_LBUTTONUP, 0, 40, 40);
    }
}

TEST_F(PointerTest, a_window_without_record_is_part_of_the_control_that_holds_it) {
    HWND inner = CreateWindowExW(0, L"EDIT", nullptr, WS_CHILD | WS_VISIBLE, 0, 0, 30, 30,
                                 windowOf(control), nullptr, nullptr, nullptr);
    send(WM_MOUSEMOVE, 0, 3, 4);
    EXPECT_EQ(vm.takeEvents(), (Events{fired::pointer(pointerEnter, 3, 4, buttonNone),
                                       fired::pointer(pointerMove, 3, 4, buttonNone)}));
    DestroyWindow(inner);
}

static SHRGINFO gestureRequest;
static DWORD WINAPI recognizeContextMenu(SHRGINFO* request) {
    gestureRequest = *request;
    return GN_CONTEXTMENU;
}
static DWORD WINAPI recognizeNothing(SHRGINFO*) { return 0; }

TEST_F(PointerTest, the_shell_recognises_the_gesture_when_java_asks_for_it) {
    Faults faults;
    faults.replace("SHRecognizeGesture", reinterpret_cast<void*>(recognizeContextMenu));
    vm.behavior["pointerDown"] = [](const std::vector<jint>&) { return 1; };
    send(WM_LBUTTONDOWN, MK_LBUTTON, 12, 13);
    EXPECT_EQ(vm.takeEvents().back(),
              fired::pointer(pointerPress, 12, 13, buttonLeft, modifierContextGesture));
    EXPECT_EQ(gestureRequest.cbSize, 20u);
    EXPECT_EQ(gestureRequest.hwndClient, windowOf(control));
    EXPECT_EQ(gestureRequest.ptDown.x, 12);
    EXPECT_EQ(gestureRequest.ptDown.y, 13);
    EXPECT_EQ(gestureRequest.dwFlags, 1u);
    send(WM_LBUTTONUP, 0, 12, 13);

    faults.replace("SHRecognizeGesture", reinterpret_cast<void*>(recognizeNothing));
    send(WM_LBUTTONDOWN, MK_LBUTTON, 12, 13);
    EXPECT_EQ(vm.takeEvents().back(), fired::pointer(pointerPress, 12, 13, buttonLeft));
    send(WM_LBUTTONUP, 0, 12, 13);
}

static std::function<void()> whileRecognizing;
static DWORD WINAPI recognizeMeanwhile(SHRGINFO*) {
    whileRecognizing();
    return 0;
}

// Each step of a press may dispose of what is pressed.
TEST_F(PointerTest, nothing_more_is_told_of_a_control_that_goes_while_it_is_pressed) {
    Faults faults;
    faults.replace("SHRecognizeGesture", reinterpret_cast<void*>(recognizeMeanwhile));
    for (std::string step : {"move", "question", "gesture"}) {
        SCOPED_TRACE(step);
        jint victim = newControl(OS::Composite_New, shell);
        listen(victim);
        HWND window = windowOf(victim);
        auto end = [&](bool now) {
            if (now && victim) dispose(std::exchange(victim, 0));
        };
        whileRecognizing = [&] { end(step == "gesture"); };
        vm.behavior["pointer"] = [&](const std::vector<jint>&) {
            end(step == "move");
            return 0;
        };
        vm.behavior["pointerDown"] = [&](const std::vector<jint>&) {
            end(step == "question");
            return 1;
        };
        vm.takeEvents();
        SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 6));
        EXPECT_EQ(victim, 0);
        Events events = vm.takeEvents();
        EXPECT_EQ(std::count(events.begin(), events.end(), fired::pointerDown(5, 6)),
                  step != "move");
        for (const std::string& event : events)
            EXPECT_FALSE(fired::isPointer(event, pointerPress)) << event;
        EXPECT_EQ(pointer().lastPress, nullptr);
        vm.behavior.clear();
    }
}

TEST_F(PointerTest, a_tap_is_over_when_the_pointer_moves_to_another_control) {
    jint other = call(OS::Composite_New, shell, 0);
    for (jint moved : {control, other}) {
        send(WM_LBUTTONDOWN, MK_LBUTTON, 12, 13);
        SendMessageW(windowOf(moved), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(12, 13));
        EXPECT_EQ(pointer().tap.control != nullptr, moved == control);
        send(WM_LBUTTONUP, 0, 12, 13);
    }
}

TEST_F(PointerTest, any_other_answer_of_java_recognises_no_gesture) {
    send(WM_LBUTTONDOWN, MK_LBUTTON, 12, 13);
    EXPECT_NE(pointer().tap.control, nullptr);
    send(WM_LBUTTONUP, 0, 12, 13);
    vm.behavior["pointerDown"] = [](const std::vector<jint>&) { return 2; };
    send(WM_LBUTTONDOWN, MK_LBUTTON, 12, 13);
    EXPECT_EQ(pointer().tap.control, nullptr);
    send(WM_LBUTTONUP, 0, 12, 13);
}

TEST_F(PointerTest, the_pointer_enters_and_exits_controls) {
    moveTo(60, 75);
    Events events = vm.takeEvents();
    ASSERT_GE(events.size(), 2u);
    EXPECT_EQ(events[0], fired::pointer(pointerEnter, 10, 15, buttonNone));
    EXPECT_EQ(events[1], fired::pointer(pointerMove, 10, 15, buttonNone));
    moveTo(70, 75);
    EXPECT_EQ(vm.takeEvents(), Events{fired::pointer(pointerMove, 20, 15, buttonNone)})
        << "still the same control";
    moveTo(200, 150);
    EXPECT_EQ(vm.takeEvents(), Events{fired::pointer(pointerExit, 150, 90, buttonNone)});
}

TEST_F(PointerTest, a_control_of_a_shell_that_the_display_does_not_list_is_not_entered) {
    call(OS::Control_SetEnabled, shell, false);
    send(WM_MOUSEMOVE, 0, 3, 4);
    EXPECT_EQ(vm.takeEvents(), Events{fired::pointer(pointerMove, 3, 4, buttonNone)});
    call(OS::Control_SetEnabled, shell, true);
}

TEST_F(PointerTest, a_control_is_entered_in_a_shell_that_the_display_lists_only) {
    call(OS::Control_SetEnabled, shell, false);
    EnableWindow(windowOf(shell), TRUE); // by somebody else
    send(WM_MOUSEMOVE, 0, 3, 4);
    EXPECT_EQ(vm.takeEvents(), Events{fired::pointer(pointerMove, 3, 4, buttonNone)});
    call(OS::Control_SetEnabled, shell, true);
    send(WM_MOUSEMOVE, 0, 3, 4);
    EXPECT_EQ(vm.takeEvents(), (Events{fired::pointer(pointerEnter, 3, 4, buttonNone),
                                       fired::pointer(pointerMove, 3, 4, buttonNone)}));
}

static HWND theMenuBar;
static HWND WINAPI answerMenuBar(HWND) { return theMenuBar; }

TEST_F(PointerTest, a_menu_bar_is_not_entered) {
    Faults faults;
    faults.replace("SHFindMenuBar", reinterpret_cast<void*>(answerMenuBar));
    theMenuBar = windowOf(control);
    send(WM_MOUSEMOVE, 0, 3, 4);
    EXPECT_EQ(vm.takeEvents(), Events{fired::pointer(pointerMove, 3, 4, buttonNone)});
    EXPECT_EQ(pointer().under, nullptr);
}

// As a companion library's window is, or a dialog's.
TEST_F(PointerTest, over_a_window_outside_all_controls_nothing_is_entered) {
    send(WM_MOUSEMOVE, 0, 3, 4);
    vm.takeEvents();
    RECT place;
    GetWindowRect(windowOf(control), &place);
    HWND stranger =
        CreateWindowExW(WS_EX_TOPMOST, L"EDIT", nullptr, WS_POPUP | WS_VISIBLE, place.left,
                        place.top, 40, 40, nullptr, nullptr, nullptr, nullptr);
    send(WM_MOUSEMOVE, 0, 3, 4);
    EXPECT_EQ(vm.takeEvents(), (Events{fired::pointer(pointerExit, 3, 4, buttonNone),
                                       fired::pointer(pointerMove, 3, 4, buttonNone)}));
    EXPECT_EQ(pointer().under, nullptr);
    DestroyWindow(stranger);
}

static DWORD WINAPI answerOtherThread(HWND, DWORD*) { return 1; }

TEST_F(PointerTest, a_window_of_another_thread_is_not_entered_whatever_it_keeps) {
    Faults faults;
    faults.replace("GetWindowThreadProcessId", reinterpret_cast<void*>(answerOtherThread));
    send(WM_MOUSEMOVE, 0, 3, 4);
    EXPECT_EQ(vm.takeEvents(), Events{fired::pointer(pointerMove, 3, 4, buttonNone)});
}

TEST_F(PointerTest, a_control_outside_all_shells_is_not_entered) {
    HWND stranger = CreateWindowExW(WS_EX_TOPMOST, L"STATIC", nullptr, WS_POPUP | WS_VISIBLE, 0, 0,
                                    200, 200, nullptr, nullptr, nullptr, nullptr);
    SetParent(windowOf(control), stranger);
    vm.takeEvents();
    send(WM_MOUSEMOVE, 0, 3, 4);
    EXPECT_EQ(vm.takeEvents(), Events{fired::pointer(pointerMove, 3, 4, buttonNone)});
    SetParent(windowOf(control), windowOf(shell));
    DestroyWindow(stranger);
}

// A key that is held while the pointer is used, and its bit.
struct HeldKey {
    BYTE virtualKey;
    jint modifier;
};

class HeldKeyTest : public PointerTest, public testing::WithParamInterface<HeldKey> {
  protected:
    HeldKeyTest() {
        call(OS::Control_ForceFocus, control);
        keybd_event(GetParam().virtualKey, 0, 0, 0);
        dispatchAll();
        vm.takeEvents();
    }
    ~HeldKeyTest() override {
        keybd_event(GetParam().virtualKey, 0, KEYEVENTF_KEYUP, 0);
        dispatchAll();
    }
    // The last number of what the message fires; further: bits beside the key's.
    void expectTold(UINT message, WPARAM wParam, jint further = 0) {
        vm.takeEvents();
        send(message, wParam, 5, 6);
        Events events = vm.takeEvents();
        ASSERT_FALSE(events.empty());
        std::string end = ", " + std::to_string(GetParam().modifier | further);
        std::string told = events.back();
        bool isWheel = fired::isOf(told, "wheel");
        EXPECT_NE(told.find(end + (isWheel ? ", " : ")")), std::string::npos) << told;
    }
};

TEST_P(HeldKeyTest, is_told_by_every_event_of_the_pointer) {
    constexpr jint context = 64;
    expectTold(WM_MOUSEMOVE, 0);
    expectTold(WM_LBUTTONDOWN, MK_LBUTTON);
    expectTold(WM_LBUTTONUP, 0);
    expectTold(WM_LBUTTONDBLCLK, MK_LBUTTON);
    expectTold(WM_MBUTTONDOWN, MK_MBUTTON);
    expectTold(WM_MBUTTONUP, 0);
    expectTold(WM_MBUTTONDBLCLK, MK_MBUTTON);
    expectTold(WM_RBUTTONDOWN, MK_RBUTTON);
    expectTold(WM_RBUTTONUP, 0, context);
    expectTold(WM_RBUTTONDBLCLK, MK_RBUTTON);
    expectTold(WM_MOUSEWHEEL, MAKEWPARAM(0, 120));
}

INSTANTIATE_TEST_SUITE_P(keys, HeldKeyTest,
                         testing::Values(HeldKey{VK_MENU, 1}, HeldKey{VK_SHIFT, 2},
                                         HeldKey{VK_CONTROL, 4}),
                         [](const auto& key) { return std::to_string(key.param.modifier); });

class WheelTest : public PointerTest {
  protected:
    static UINT lines;
    static BOOL WINAPI answerLines(UINT action, UINT, void* data, UINT) {
        if (action != SPI_GETWHEELSCROLLLINES) return FALSE;
        *static_cast<UINT*>(data) = lines;
        return TRUE;
    }
    Events turn(int delta, UINT linesPerNotch) {
        Faults faults;
        lines = linesPerNotch;
        faults.replace("SystemParametersInfoW", reinterpret_cast<void*>(answerLines));
        send(WM_MOUSEWHEEL, MAKEWPARAM(MK_LBUTTON | MK_RBUTTON, delta), 70, 80);
        return vm.takeEvents();
    }
};
UINT WheelTest::lines;

TEST_F(WheelTest, a_notch_forward_is_minus_one_by_lines_at_the_screen_position) {
    EXPECT_EQ(turn(120, 5), Events{fired::wheel(wheelByLines, 70, 80, modifierRightButton, 5, -1)});
}

TEST_F(WheelTest, notches_are_truncated) {
    EXPECT_EQ(turn(-300, 3), Events{fired::wheel(wheelByLines, 70, 80, modifierRightButton, 3, 2)});
    EXPECT_EQ(turn(119, 3), Events{fired::wheel(wheelByLines, 70, 80, modifierRightButton, 3, 0)});
}

TEST_F(WheelTest, a_system_that_scrolls_by_pages_says_so) {
    EXPECT_EQ(turn(-120, WHEEL_PAGESCROLL),
              Events{fired::wheel(wheelByPage, 70, 80, modifierRightButton, 1, 1)});
}

TEST_F(WheelTest, a_control_that_goes_while_the_system_is_asked_hears_nothing) {
    jint victim = newControl(OS::Composite_New, shell);
    listen(victim);
    HWND window = windowOf(victim);
    Faults faults;
    faults.watch([&](const std::string& function) {
        if (function == "SystemParametersInfoW" && victim) dispose(std::exchange(victim, 0));
    });
    vm.takeEvents();
    SendMessageW(window, WM_MOUSEWHEEL, MAKEWPARAM(0, 120), MAKELPARAM(5, 5));
    EXPECT_EQ(victim, 0);
    EXPECT_EQ(fired::only(vm.takeEvents(), {"wheel"}), Events{});
}

TEST_F(WheelTest, without_the_systems_answer_it_is_three_lines) {
    Faults faults;
    faults.fail("SystemParametersInfoW");
    send(WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 70, 80);
    EXPECT_EQ(vm.takeEvents(), Events{fired::wheel(wheelByLines, 70, 80, 0, 3, -1)});
}
