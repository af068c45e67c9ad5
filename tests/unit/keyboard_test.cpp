#include "device.h"
#include "faults.h"
#include "leaks.h"

// Real keys through the emulated device.
class KeyboardTest : public DeviceTest {
  protected:
    KeyboardTest() {
        jint shell = newShell();
        control = call(OS::Composite_New, shell, 0);
        call(OS::Control_SetBounds, control, 0, 0, 100, 60);
        call(OS::Control_SetVisible, control, true);
        call(OS::Control_ForceFocus, control);
        dispatchAll();
        listen(control);
    }
    ~KeyboardTest() override {
        for (BYTE key : held) keybd_event(key, 0, KEYEVENTF_KEYUP, 0);
        dispatchAll();
    }
    void press(BYTE virtualKey) {
        held.insert(virtualKey);
        keybd_event(virtualKey, 0, 0, 0);
        dispatchAll();
    }
    void release(BYTE virtualKey) {
        held.erase(virtualKey);
        keybd_event(virtualKey, 0, KEYEVENTF_KEYUP, 0);
        dispatchAll();
    }
    Events stroke(BYTE virtualKey) {
        press(virtualKey);
        release(virtualKey);
        return vm.takeEvents();
    }
    LRESULT send(UINT message, WPARAM wParam, LPARAM lParam = 0) {
        return SendMessageW(windowOf(control), message, wParam, lParam);
    }

    jint control;
    std::set<BYTE> held;
};

TEST_F(KeyboardTest, shift_is_reported_once_without_itself_and_released_with_itself) {
    press(VK_SHIFT);
    EXPECT_EQ(vm.takeEvents(), Events{fired::key(KeyKind::pressed, fired::noCharacter, keyShift)});
    send(WM_KEYDOWN, VK_SHIFT, 1 << 30);
    EXPECT_TRUE(vm.takeEvents().empty()) << "auto-repeat";
    release(VK_SHIFT);
    EXPECT_EQ(vm.takeEvents(),
              Events{fired::key(KeyKind::released, VK_SHIFT, keyShift, modifierShift)});
}

TEST_F(KeyboardTest, auto_repeats_of_modifiers_and_locks_are_dropped) {
    for (WPARAM key : {VK_NUMLOCK, VK_SCROLL, VK_CAPITAL, VK_SHIFT, VK_CONTROL, VK_MENU})
        send(WM_KEYDOWN, key, 1 << 30);
    EXPECT_TRUE(vm.takeEvents().empty());
}

TEST_F(KeyboardTest, auto_repeats_of_other_keys_are_reported) {
    send(WM_KEYDOWN, VK_LEFT, 1 << 30);
    EXPECT_EQ(vm.takeEvents(), Events{fired::key(KeyKind::pressed, fired::noCharacter, keyLeft)});
}

TEST_F(KeyboardTest, a_letter_is_reported_with_its_character_and_untranslated_code) {
    press('A');
    EXPECT_EQ(vm.takeEvents(), Events{fired::key(KeyKind::pressed, 'a', 'A')});
    release('A');
    EXPECT_EQ(vm.takeEvents(), Events{fired::key(KeyKind::released, 'a', 'A')});
}

TEST_F(KeyboardTest, enter_comes_from_its_character_with_its_code) {
    EXPECT_EQ(stroke(VK_RETURN), (Events{fired::key(KeyKind::pressed, '\r', keyEnter),
                                         fired::key(KeyKind::released, '\r', keyEnter)}));
}

TEST_F(KeyboardTest, an_arrow_has_no_character_when_pressed) {
    EXPECT_EQ(stroke(VK_LEFT), (Events{fired::key(KeyKind::pressed, fired::noCharacter, keyLeft),
                                       fired::key(KeyKind::released, VK_LEFT, keyLeft)}));
}

TEST_F(KeyboardTest, delete_is_reported_on_release_only) {
    EXPECT_EQ(stroke(VK_DELETE), Events{fired::key(KeyKind::released, VK_DELETE, keyDelete)});
}

TEST_F(KeyboardTest, f14_and_f15_act_as_tab_and_only_on_release) {
    EXPECT_EQ(stroke(VK_F14), Events{fired::key(KeyKind::released, VK_F14, keyTab)});
    EXPECT_EQ(stroke(VK_F15), Events{fired::key(KeyKind::released, VK_F15, keyTab)});
}

TEST_F(KeyboardTest, f15_with_control_is_reported_when_pressed) {
    press(VK_CONTROL);
    vm.takeEvents();
    press(VK_F15);
    EXPECT_EQ(vm.takeEvents(),
              Events{fired::key(KeyKind::pressed, fired::noCharacter, keyTab, modifierControl)});
}

TEST_F(KeyboardTest, a_number_pad_key_is_reported_when_pressed_and_again_as_character) {
    send(WM_KEYDOWN, VK_NUMPAD5);
    EXPECT_EQ(vm.takeEvents(), Events{fired::key(KeyKind::pressed, '5', keyNumpad5)});
    send(WM_CHAR, '5');
    EXPECT_EQ(vm.takeEvents(), Events{fired::key(KeyKind::pressed, '5', keyNumpad5)});
    send(WM_KEYUP, VK_NUMPAD5);
    EXPECT_EQ(vm.takeEvents(), Events{fired::key(KeyKind::released, '5', keyNumpad5)});
}

TEST_F(KeyboardTest, ctrl_shift_and_a_letter_make_the_control_character) {
    press(VK_CONTROL);
    press(VK_SHIFT);
    vm.takeEvents();
    send(WM_KEYDOWN, 'A');
    EXPECT_EQ(vm.takeEvents(),
              Events{fired::key(KeyKind::pressed, 1, 'A', modifierShift | modifierControl)});
}

TEST_F(KeyboardTest, ctrl_shift_and_the_at_sign_is_no_event) {
    press(VK_CONTROL);
    press(VK_SHIFT);
    vm.takeEvents();
    send(WM_KEYDOWN, '@');
    EXPECT_TRUE(vm.takeEvents().empty());
}

TEST_F(KeyboardTest, ctrl_alone_makes_no_character) {
    press(VK_CONTROL);
    vm.takeEvents();
    send(WM_KEYDOWN, 'A');
    EXPECT_EQ(vm.takeEvents(),
              Events{fired::key(KeyKind::pressed, fired::noCharacter, 'A', modifierControl)});
}

TEST_F(KeyboardTest, a_held_alt_is_told_by_every_key) {
    press(VK_MENU);
    vm.takeEvents();
    EXPECT_EQ(stroke(VK_UP),
              (Events{fired::key(KeyKind::pressed, fired::noCharacter, keyUp, modifierAlt),
                      fired::key(KeyKind::released, VK_UP, keyUp, modifierAlt)}));
}

TEST_F(KeyboardTest, ctrl_shift_and_a_key_without_a_letter_is_reported_by_its_own_number) {
    press(VK_CONTROL);
    press(VK_SHIFT);
    vm.takeEvents();
    for (WPARAM unknown : {0x35, 0x7F, VK_OEM_3}) {
        send(WM_KEYDOWN, unknown);
        EXPECT_EQ(vm.takeEvents(), Events{fired::key(KeyKind::pressed, unknown, unknown,
                                                     modifierShift | modifierControl)});
    }
}

TEST_F(KeyboardTest, ctrl_shift_and_the_last_of_the_letters_makes_the_last_control_character) {
    press(VK_CONTROL);
    press(VK_SHIFT);
    vm.takeEvents();
    send(WM_KEYDOWN, '_');
    EXPECT_EQ(vm.takeEvents(),
              Events{fired::key(KeyKind::pressed, 31, 95, modifierShift | modifierControl)});
}

TEST_F(KeyboardTest, a_dead_key_with_an_arrow_is_reported_with_its_character_by_the_arrows_number) {
    PostMessageW(windowOf(control), WM_DEADCHAR, '^', 0);
    send(WM_KEYDOWN, VK_LEFT);
    EXPECT_TRUE(vm.takeEvents().empty());
    MSG message;
    PeekMessageW(&message, windowOf(control), WM_DEADCHAR, WM_DEADCHAR, PM_REMOVE);
    send(WM_CHAR, '^');
    EXPECT_EQ(vm.takeEvents(), Events{fired::key(KeyKind::pressed, 94, keyLeft)});
}

TEST_F(KeyboardTest, a_dead_key_is_reported_with_the_character_that_follows) {
    PostMessageW(windowOf(control), WM_DEADCHAR, '^', 0);
    send(WM_KEYDOWN, 'E');
    EXPECT_TRUE(vm.takeEvents().empty());
    send(WM_KEYUP, 'E');
    EXPECT_TRUE(vm.takeEvents().empty()) << "the release is swallowed";
    MSG message;
    PeekMessageW(&message, windowOf(control), WM_DEADCHAR, WM_DEADCHAR, PM_REMOVE);
    send(WM_CHAR, 0xEA);
    EXPECT_EQ(vm.takeEvents(), Events{fired::key(KeyKind::pressed, 234, 'E')});
}

TEST_F(KeyboardTest, companion_libraries_have_keys_told_for_their_windows) {
    using Process = jint(HWND, WPARAM, LPARAM);
    auto* keyDown = entryPoint<Process>("_Control_ProcessWmKeyDown");
    auto* character = entryPoint<Process>("_Control_ProcessWmChar");
    HWND window = windowOf(control);
    for (jint answer : {0, 1}) {
        vm.behavior["key"] = [=](const std::vector<jint>&) { return answer; };
        EXPECT_EQ(keyDown(window, VK_LEFT, 1), answer);
        EXPECT_EQ(vm.takeEvents(),
                  Events{fired::key(KeyKind::pressed, fired::noCharacter, keyLeft)});
        EXPECT_EQ(keyDown(window, 'X', 1), 0);
        EXPECT_EQ(character(window, 'x', 1), answer);
        EXPECT_EQ(vm.takeEvents(), Events{fired::key(KeyKind::pressed, 'x', 'X')});
    }
    EXPECT_EQ(keyDown(window, VK_SHIFT, 1 << 30), 0) << "the details of the message count";
    EXPECT_TRUE(vm.takeEvents().empty());
}

TEST_F(KeyboardTest, keys_of_windows_without_control_are_told_to_nobody) {
    using Process = jint(HWND, WPARAM, LPARAM);
    HWND stranger = CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP, 0, 0, 5, 5, nullptr, nullptr,
                                    nullptr, nullptr);
    for (const char* entry : {"_Control_ProcessWmKeyDown", "_Control_ProcessWmChar"})
        EXPECT_EQ(entryPoint<Process>(entry)(stranger, VK_LEFT, 1), 0);
    EXPECT_TRUE(vm.takeEvents().empty());
    DestroyWindow(stranger);
}

TEST_F(KeyboardTest, a_dead_key_of_a_window_within_the_control_is_not_its_own) {
    HWND inner = CreateWindowExW(0, L"STATIC", nullptr, WS_CHILD, 0, 0, 5, 5, windowOf(control),
                                 nullptr, nullptr, nullptr);
    PostMessageW(inner, WM_DEADCHAR, '^', 0);
    send(WM_KEYDOWN, VK_LEFT);
    EXPECT_EQ(vm.takeEvents(), Events{fired::key(KeyKind::pressed, fired::noCharacter, keyLeft)});
    DestroyWindow(inner);
}

// Looking for a dead key lets other threads' requests in.
TEST_F(KeyboardTest, a_key_of_a_control_that_goes_meanwhile_is_told_to_nobody) {
    jint victim = newControl(OS::Composite_New, newShell());
    listen(victim);
    HWND window = windowOf(victim);
    Faults faults;
    faults.watch([&](const std::string& function) {
        if (function == "PeekMessageW" && victim) dispose(std::exchange(victim, 0));
    });
    vm.takeEvents();
    EXPECT_EQ(SendMessageW(window, WM_KEYDOWN, VK_LEFT, 1), 0);
    EXPECT_EQ(victim, 0);
    EXPECT_EQ(fired::only(vm.takeEvents(), {"key"}), Events{});
}

// Its number has more bits than a character has.
TEST_F(KeyboardTest, a_character_that_is_none_is_told_without_modifiers) {
    constexpr jint unresolved = -1;
    send(WM_CHAR, 0x10000);
    EXPECT_EQ(vm.takeEvents(), Events{fired::key(KeyKind::pressed, 0, 0, unresolved)});
}

TEST_F(KeyboardTest, a_character_of_zero_is_a_character) {
    send(WM_CHAR, 0);
    EXPECT_EQ(vm.takeEvents(), Events{fired::key(KeyKind::pressed, 0, 0)});
}

static int releases;
static LRESULT CALLBACK answerReleases(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_KEYUP) return DefWindowProcW(window, message, wParam, lParam);
    ++releases;
    return 7;
}

// The window's class is asked in its place.
TEST_F(KeyboardTest, a_release_while_a_character_is_due_is_not_answered_for) {
    releases = 0;
    ControlRecord* record = reinterpret_cast<ControlRecord*>(control);
    WNDPROC classProc = record->classProc;
    record->classProc = answerReleases;
    vm.behavior["key"] = [](const std::vector<jint>&) { return 1; };
    PostMessageW(windowOf(control), WM_DEADCHAR, '^', 0);
    EXPECT_EQ(send(WM_KEYDOWN, 'E'), 0);
    EXPECT_EQ(send(WM_KEYUP, 'E'), 7);
    EXPECT_EQ(releases, 1);
    record->classProc = classProc;
    MSG message;
    PeekMessageW(&message, windowOf(control), WM_DEADCHAR, WM_DEADCHAR, PM_REMOVE);
}

TEST_F(KeyboardTest, a_key_up_without_key_down_is_nothing) {
    send(WM_KEYUP, 'Q');
    EXPECT_TRUE(vm.takeEvents().empty());
}

TEST_F(KeyboardTest, a_handled_key_does_not_reach_the_class) {
    vm.behavior["key"] = [](const std::vector<jint>&) { return 1; };
    EXPECT_EQ(send(WM_KEYDOWN, VK_LEFT), 1);
    EXPECT_EQ(send(WM_CHAR, 'x'), 1);
    EXPECT_EQ(send(WM_KEYUP, VK_LEFT), 1);
}

// Its code is looked up in the table twice, and lost.
TEST_F(KeyboardTest, cancel_is_a_key_without_code) {
    send(WM_KEYDOWN, VK_CANCEL);
    send(WM_CHAR, 3);
    send(WM_KEYUP, VK_CANCEL);
    EXPECT_EQ(vm.takeEvents(),
              (Events{fired::key(KeyKind::pressed, 3, 0), fired::key(KeyKind::released, 3, 0)}));
}

TEST_F(KeyboardTest, system_keys_are_keys) {
    send(WM_SYSKEYDOWN, VK_UP, 1 << 29);
    send(WM_SYSKEYUP, VK_UP, 1 << 29);
    EXPECT_EQ(vm.takeEvents(), (Events{fired::key(KeyKind::pressed, fired::noCharacter, keyUp),
                                       fired::key(KeyKind::released, VK_UP, keyUp)}));
}

TEST_F(KeyboardTest, the_table_of_keys) {
    const struct {
        BYTE virtualKey;
        int code;
    } rows[] = {
        {VK_UP, keyUp},
        {VK_DOWN, keyDown},
        {VK_RIGHT, keyRight},
        {VK_MENU, keyAlt},
        {VK_ADD, keyNumpadAdd},
        {VK_SUBTRACT, keyNumpadSubtract},
        {VK_DECIMAL, keyNumpadDecimal},
        {VK_DIVIDE, keyNumpadDivide},
        {VK_NUMPAD0, keyNumpad0},
        {VK_NUMPAD9, keyNumpad9},
        {VK_MULTIPLY, keyNumpadMultiply},
        {VK_CONTROL, keyControl},
    };
    for (const auto& row : rows) {
        send(WM_KEYUP, row.virtualKey);
        Events events = vm.takeEvents();
        if (events.empty()) { // keys with a character report their release after a press only
            send(WM_KEYDOWN, row.virtualKey);
            send(WM_KEYUP, row.virtualKey);
            events = vm.takeEvents();
        }
        ASSERT_FALSE(events.empty()) << int(row.virtualKey);
        EXPECT_NE(events.back().find(", " + std::to_string(row.code) + ", "), std::string::npos)
            << events.back();
    }
}

TEST_F(KeyboardTest, keys_that_type_are_coded_by_the_table_too) {
    const struct {
        BYTE virtualKey;
        int code;
    } rows[] = {
        {VK_PRIOR, keyPageUp},    {VK_NEXT, keyPageDown},
        {VK_HOME, keyHome},       {VK_END, keyEnd},
        {VK_INSERT, keyInsert},   {VK_BACK, keyBackspace},
        {VK_ESCAPE, keyEscape},   {VK_F1, keyF1},
        {VK_F13, keyF13},         {VK_CAPITAL, keyCapsLock},
        {VK_NUMLOCK, keyNumLock}, {VK_SCROLL, keyScrollLock},
        {VK_PAUSE, keyPause},     {VK_SNAPSHOT, keyPrintScreen},
    };
    for (const auto& row : rows) {
        send(WM_KEYDOWN, row.virtualKey);
        vm.takeEvents();
        send(WM_KEYUP, row.virtualKey);
        EXPECT_EQ(vm.takeEvents(), Events{fired::key(KeyKind::released, row.virtualKey, row.code)});
    }
}
