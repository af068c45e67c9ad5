// Choices whose field can be typed into. No native makes one, so that they are made directly.

#include "device.h"
#include "leaks.h"
#include "widgets/choice.h"
#include <algorithm>

class ChoiceEditTest : public DeviceTest {
  protected:
    ChoiceEditTest() {
        ErrorRecord error = {};
        record = static_cast<ChoiceRecord*>(
            Choice_Create(reinterpret_cast<ControlRecord*>(shell), 0, &error));
        choice = reinterpret_cast<jint>(record);
        edit = GetDlgItem(record->hwnd, 1001);
        call(OS::Control_SetBounds, choice, 20, 30, 100, 24);
        call(OS::Control_SetVisible, choice, true);
        dispatchAll();
        listen(choice);
    }
    ~ChoiceEditTest() override { dispose(choice); }

    // Puts a window procedure behind the choice's own that records what reaches it, and does
    // nothing.
    void recordPassedOn() {
        passedOn.clear();
        record->editProc = recordMessage;
    }
    static LRESULT CALLBACK recordMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == CB_GETDROPPEDSTATE) return droppedState;
        passedOn.push_back(message);
        constexpr LRESULT fromBehind = 77;
        return message >= WM_KEYFIRST && message <= WM_KEYLAST
                   ? fromBehind
                   : DefWindowProcW(window, message, wParam, lParam);
    }
    LRESULT sendEdit(UINT message, WPARAM wParam, LPARAM lParam = 0) {
        return SendMessageW(edit, message, wParam, lParam);
    }
    Events eventsOf(const char* method) { return fired::only(vm.takeEvents(), {method}); }
    void handleKeys() {
        vm.behavior["key"] = [](const std::vector<jint>&) { return 1; };
    }

    static std::vector<UINT> passedOn;
    static LRESULT droppedState;
    jint shell = newShell();
    ChoiceRecord* record;
    jint choice;
    HWND edit;
};
std::vector<UINT> ChoiceEditTest::passedOn;
LRESULT ChoiceEditTest::droppedState;

TEST_F(ChoiceEditTest, puts_itself_before_its_edit_field) {
    ASSERT_TRUE(edit);
    EXPECT_EQ(GetWindowLongW(record->hwnd, GWL_STYLE) & 3, CBS_DROPDOWN);
    EXPECT_EQ(record->dropDownList, FALSE);
    EXPECT_TRUE(record->editProc);
    EXPECT_NE(record->editProc, reinterpret_cast<WNDPROC>(GetWindowLongW(edit, GWL_WNDPROC)));
    EXPECT_EQ(controlOf(edit), record);
}

TEST_F(ChoiceEditTest, takes_what_is_typed_and_tells_of_the_keys) {
    SetFocus(edit);
    vm.takeEvents();
    type("ab");
    EXPECT_EQ(windowText(choice), L"ab");
    EXPECT_EQ(
        eventsOf("key"),
        (Events{fired::key(KeyKind::pressed, 'a', 'A'), fired::key(KeyKind::released, 'a', 'A'),
                fired::key(KeyKind::pressed, 'b', 'B'), fired::key(KeyKind::released, 'b', 'B')}));
    handleKeys();
    type("c");
    EXPECT_EQ(windowText(choice), L"ab");
}

TEST_F(ChoiceEditTest, keys_that_java_handles_are_not_passed_on) {
    constexpr LPARAM plain = 1;
    recordPassedOn();
    EXPECT_EQ(sendEdit(WM_KEYDOWN, VK_LEFT, plain), 77);
    EXPECT_EQ(sendEdit(WM_KEYUP, VK_LEFT, plain), 77);
    EXPECT_EQ(sendEdit(WM_CHAR, 'a', plain), 77);
    EXPECT_EQ(passedOn, (std::vector<UINT>{WM_KEYDOWN, WM_KEYUP, WM_CHAR}));
    handleKeys();
    passedOn.clear();
    EXPECT_EQ(sendEdit(WM_KEYDOWN, VK_LEFT, plain), 1);
    EXPECT_EQ(sendEdit(WM_KEYUP, VK_LEFT, plain), 1);
    EXPECT_EQ(sendEdit(WM_CHAR, 'a', plain), 1);
    EXPECT_TRUE(passedOn.empty());
}

TEST_F(ChoiceEditTest, swallows_the_tabulator) {
    recordPassedOn();
    EXPECT_EQ(sendEdit(WM_CHAR, VK_TAB), 0);
    EXPECT_TRUE(passedOn.empty());
    EXPECT_EQ(eventsOf("key").size(), 1u) << "the listener hears of it";
}

TEST_F(ChoiceEditTest, swallows_the_escape_of_a_clipped_field_that_shows_no_list) {
    recordPassedOn();
    LONG style = GetWindowLongW(edit, GWL_STYLE);
    EXPECT_FALSE(style & WS_CLIPSIBLINGS);
    const struct {
        bool isClipped; // which the device does not take back
        LRESULT dropped, result;
    } rows[] = {{false, 0, 77}, {false, 1, 77}, {true, 0, 0}, {true, 1, 77}};
    for (const auto& row : rows) {
        if (row.isClipped) SetWindowLongW(edit, GWL_STYLE, style | WS_CLIPSIBLINGS);
        droppedState = row.dropped;
        passedOn.clear();
        EXPECT_EQ(sendEdit(WM_CHAR, VK_ESCAPE), row.result);
        EXPECT_EQ(passedOn.size(), row.result ? 1u : 0u);
    }
}

TEST_F(ChoiceEditTest, focus_that_moves_within_is_not_told) {
    SetFocus(windowOf(shell));
    vm.takeEvents();
    EXPECT_TRUE(call(OS::Control_ForceFocus, choice));
    EXPECT_EQ(GetFocus(), edit);
    EXPECT_EQ(eventsOf("focus"), Events{fired::focus(FocusChange::gained)});
    SetFocus(record->hwnd);
    EXPECT_EQ(GetFocus(), edit);
    EXPECT_TRUE(eventsOf("focus").empty());
    SetFocus(windowOf(shell));
    EXPECT_EQ(eventsOf("focus"), Events{fired::focus(FocusChange::lost)});
    SetFocus(edit);
    EXPECT_EQ(eventsOf("focus"), Events{fired::focus(FocusChange::gained)});
}

TEST_F(ChoiceEditTest, focus_goes_on_to_the_field) {
    recordPassedOn();
    HWND other = windowOf(shell);
    for (HWND window : {other, record->hwnd}) {
        sendEdit(WM_SETFOCUS, reinterpret_cast<WPARAM>(window));
        sendEdit(WM_KILLFOCUS, reinterpret_cast<WPARAM>(window));
        EXPECT_EQ(eventsOf("focus"), window == other ? (Events{fired::focus(FocusChange::gained),
                                                               fired::focus(FocusChange::lost)})
                                                     : Events{});
    }
    EXPECT_EQ(passedOn, (std::vector<UINT>{WM_SETFOCUS, WM_KILLFOCUS, WM_SETFOCUS, WM_KILLFOCUS}));
}

TEST_F(ChoiceEditTest, leaves_what_comes_without_its_choice_to_the_system) {
    LONG userData = SetWindowLongW(record->hwnd, GWL_USERDATA, 0);
    recordPassedOn();
    for (UINT message : {WM_KEYDOWN, WM_KEYUP, WM_CHAR, WM_KILLFOCUS})
        EXPECT_EQ(sendEdit(message, 'A', 1), 0) << message;
    EXPECT_TRUE(passedOn.empty());
    EXPECT_TRUE(vm.takeEvents().empty());
    SetWindowLongW(record->hwnd, GWL_USERDATA, userData);
}

TEST_F(ChoiceEditTest, removing_its_last_item_repaints_nothing) {
    call(OS::Choice_AddItem, choice, vm.newString(u"item"), -1);
    dispatchAll();
    ValidateRect(record->hwnd, nullptr);
    ErrorRecord error = {};
    Choice_RemoveItem(record, 0, &error);
    EXPECT_FALSE(GetUpdateRect(record->hwnd, nullptr, FALSE));
}

TEST_F(ChoiceEditTest, leaves_nothing_behind) {
    auto round = [&] {
        ErrorRecord error = {};
        ControlRecord* made = Choice_Create(reinterpret_cast<ControlRecord*>(shell), 0, &error);
        dispose(reinterpret_cast<jint>(made));
    };
    round();
    NoLeaks noLeaks;
    for (int i = 0; i < 100; ++i) round();
}
