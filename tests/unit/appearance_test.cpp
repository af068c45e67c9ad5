#include "control/appearance.h"
#include "device.h"
#include "faults.h"
#include "graphics/color.h"

class AppearanceTest : public DeviceTest {
  protected:
    jint shell = newShell();
    jint newComposite(jint parent) {
        jint composite = call(OS::Composite_New, parent, 0);
        call(OS::Control_SetBounds, composite, 0, 0, 100, 100);
        call(OS::Control_SetVisible, composite, true);
        dispatchAll();
        return composite;
    }
    void set(const Native<void(jint, jint)>& property, jint control, jint value) {
        call(property, control, value);
    }
    jint get(const Native<jint(jint)>& property, jint control) { return call(property, control); }
    void move(const Native<void(jint, jint)>& where, jint control, jint other) {
        call(where, control, other);
    }
    // The children of a window from top to bottom.
    static std::vector<HWND> stackOf(jint parent) {
        std::vector<HWND> stack;
        for (HWND child = GetWindow(windowOf(parent), GW_CHILD); child;
             child = GetWindow(child, GW_HWNDNEXT))
            stack.push_back(child);
        return stack;
    }
};

// A parent that colours its children with a brush of its own.
static HBRUSH parentBrush;
static WNDPROC parentProc;
static LRESULT CALLBACK colorChildren(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_CTLCOLORSTATIC) return reinterpret_cast<LRESULT>(parentBrush);
    return CallWindowProcW(parentProc, window, message, wParam, lParam);
}

TEST_F(AppearanceTest, the_default_background_is_the_brush_that_the_parent_colours_with) {
    jint composite = newComposite(shell);
    jint child = newComposite(composite);
    parentBrush = CreateSolidBrush(RGB(1, 2, 3));
    parentProc = reinterpret_cast<WNDPROC>(
        SetWindowLongW(windowOf(composite), GWL_WNDPROC, reinterpret_cast<LONG>(colorChildren)));
    EXPECT_EQ(get(OS::Control_GetBackgroundRGB, child), 0x010203);
    SetWindowLongW(windowOf(composite), GWL_WNDPROC, reinterpret_cast<LONG>(parentProc));
    DeleteObject(parentBrush);
}

TEST_F(AppearanceTest, what_its_class_does_not_erase_is_filled_with_the_brush_of_the_parent) {
    constexpr COLORREF color = RGB(1, 200, 3);
    jint composite = newComposite(shell);
    parentBrush = CreateSolidBrush(color);
    parentProc = reinterpret_cast<WNDPROC>(
        SetWindowLongW(windowOf(shell), GWL_WNDPROC, reinterpret_cast<LONG>(colorChildren)));
    RedrawWindow(windowOf(composite), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    EXPECT_EQ(pixelOf(composite, 50, 50), color);
    SetWindowLongW(windowOf(shell), GWL_WNDPROC, reinterpret_cast<LONG>(parentProc));
    DeleteObject(parentBrush);
}

TEST_F(AppearanceTest, a_background_is_told_in_javas_order_and_taken_back) {
    jint button = newButton(shell);
    jint before = get(OS::Control_GetBackgroundRGB, button);
    ColorRecord color = {RGB(0x11, 0x22, 0x33), nullptr};
    set(OS::Control_SetBackground, button, reinterpret_cast<jint>(&color));
    EXPECT_EQ(get(OS::Control_GetBackgroundRGB, button), 0x112233);
    set(OS::Control_SetBackground, button, 0);
    EXPECT_EQ(get(OS::Control_GetBackgroundRGB, button), before);
}

TEST_F(AppearanceTest, setting_a_colour_redraws_the_control) {
    jint button = newButton(shell);
    ColorRecord color = {RGB(0x11, 0x22, 0x33), nullptr};
    for (const auto& property : {OS::Control_SetBackground, OS::Control_SetForeground}) {
        for (ColorRecord* value : {&color, static_cast<ColorRecord*>(nullptr)}) {
            dispatchAll();
            EXPECT_FALSE(GetUpdateRect(windowOf(button), nullptr, FALSE));
            set(property, button, reinterpret_cast<jint>(value));
            EXPECT_TRUE(GetUpdateRect(windowOf(button), nullptr, FALSE)) << property;
        }
    }
    DeleteObject(color.brush);
}

TEST_F(AppearanceTest, a_redrawn_control_that_its_parent_hides_comes_to_rest) {
    jint composite = newComposite(shell); // 100 by 100
    jint inside = newButton(composite, OS::Checkbox_New);
    jint outside = newButton(composite, OS::Checkbox_New);
    call(OS::Control_SetBounds, outside, 10, 150, 80, 20);
    dispatchAll();
    ColorRecord color = {RGB(0x11, 0x22, 0x33), nullptr};
    for (jint control : {inside, outside, composite}) {
        set(OS::Control_SetBackground, control, reinterpret_cast<jint>(&color));
        dispatchAll();
        EXPECT_EQ(MsgWaitForMultipleObjectsEx(0, nullptr, 0, QS_PAINT, MWMO_INPUTAVAILABLE),
                  DWORD(WAIT_TIMEOUT))
            << control;
        set(OS::Control_SetBackground, control, 0);
    }
    DeleteObject(color.brush);
}

TEST_F(AppearanceTest, a_foreground_is_told_and_taken_back) {
    jint button = newButton(shell);
    EXPECT_EQ(get(OS::Control_GetForegroundRGB, button), 0x000000) << "window text";
    ColorRecord color = {RGB(0xFE, 0x22, 0x33), nullptr};
    set(OS::Control_SetForeground, button, reinterpret_cast<jint>(&color));
    EXPECT_EQ(get(OS::Control_GetForegroundRGB, button), 0xFE2233);
    set(OS::Control_SetForeground, button, 0);
    EXPECT_EQ(get(OS::Control_GetForegroundRGB, button), 0x000000);
}

TEST_F(AppearanceTest, companions_set_colours_by_their_entry_points) {
    auto* record = reinterpret_cast<ControlRecord*>(newButton(shell));
    ColorRecord color = {RGB(1, 2, 3), nullptr};
    using Set = void(ControlRecord*, ColorRecord*, ErrorRecord*);
    entryPoint<Set>("_Control_SetBackground")(record, &color, nullptr);
    entryPoint<Set>("_Control_SetForeground")(record, &color, nullptr);
    EXPECT_EQ(record->background, &color);
    EXPECT_EQ(record->foreground, &color);
    record->background = nullptr;
    record->foreground = nullptr;
}

TEST_F(AppearanceTest, shells_and_composites_inherit_the_background_push_buttons_do_not) {
    auto inherits = [&](jint control) { return call(OS::Control_InheritsBackground, control); };
    EXPECT_TRUE(inherits(shell));
    EXPECT_TRUE(inherits(newComposite(shell)));
    EXPECT_TRUE(inherits(newButton(shell, OS::Checkbox_New)));
    EXPECT_FALSE(inherits(newButton(shell)));
}

TEST_F(AppearanceTest, only_the_low_byte_of_the_flag_says_that_a_background_is_inherited) {
    jint composite = newComposite(shell);
    auto* record = reinterpret_cast<ControlRecord*>(composite);
    const struct {
        BOOL flag;
        bool inherits;
    } rows[] = {{0, false}, {1, true}, {0x100, false}, {0x7FFFFF00, false}, {0x101, true}};
    for (const auto& row : rows) {
        record->inheritsBackground = row.flag;
        bool inherits = call(OS::Control_InheritsBackground, composite);
        EXPECT_EQ(inherits, row.inherits) << row.flag;
    }
    record->inheritsBackground = TRUE;
}

TEST_F(AppearanceTest, a_cursor_is_kept_and_shown_at_once) {
    jint button = newButton(shell);
    HCURSOR hand = LoadCursorW(nullptr, IDC_HAND);
    set(OS::Control_SetCursor, button, reinterpret_cast<jint>(hand));
    EXPECT_EQ(reinterpret_cast<ControlRecord*>(button)->cursor, hand);
    EXPECT_EQ(GetCursor(), hand);
    set(OS::Control_SetCursor, button, 0);
    EXPECT_EQ(reinterpret_cast<ControlRecord*>(button)->cursor, nullptr);
}

class StackingTest : public AppearanceTest {
  protected:
    jint parent = newComposite(shell);
    jint a = newComposite(parent);
    jint b = newComposite(parent);
    jint c = newComposite(parent);
    HWND A = windowOf(a), B = windowOf(b), C = windowOf(c);
    using Stack = std::vector<HWND>;
};

TEST_F(StackingTest, a_new_control_lies_below_the_others) {
    EXPECT_EQ(stackOf(parent), (Stack{A, B, C}));
}

TEST_F(StackingTest, a_control_moves_above_another) {
    move(OS::Control_MoveAbove, c, b);
    EXPECT_EQ(stackOf(parent), (Stack{A, C, B}));
    move(OS::Control_MoveAbove, b, a);
    EXPECT_EQ(stackOf(parent), (Stack{B, A, C})) << "above the uppermost";
    move(OS::Control_MoveAbove, b, a);
    EXPECT_EQ(stackOf(parent), (Stack{B, A, C})) << "where it is already";
    move(OS::Control_MoveAbove, c, c);
    EXPECT_EQ(stackOf(parent), (Stack{B, A, C})) << "above itself";
}

static HWND WINAPI answerWithItself(HWND window, UINT) { return window; }

TEST_F(StackingTest, above_a_control_that_the_system_lists_above_itself_is_above_all) {
    Faults faults;
    faults.replace("GetWindow", reinterpret_cast<void*>(answerWithItself));
    move(OS::Control_MoveAbove, c, b);
    EXPECT_EQ(stackOf(parent), (Stack{C, A, B}));
}

TEST_F(StackingTest, a_control_moves_above_all) {
    move(OS::Control_MoveAbove, c, 0);
    EXPECT_EQ(stackOf(parent), (Stack{C, A, B}));
}

TEST_F(StackingTest, a_control_moves_below_another) {
    move(OS::Control_MoveBelow, a, b);
    EXPECT_EQ(stackOf(parent), (Stack{B, A, C}));
    move(OS::Control_MoveBelow, b, 0);
    EXPECT_EQ(stackOf(parent), (Stack{A, C, B}));
    move(OS::Control_MoveBelow, b, b);
    EXPECT_EQ(stackOf(parent), (Stack{A, C, B}));
}

TEST_F(StackingTest, a_control_of_another_parent_stays) {
    jint stranger = newComposite(shell);
    std::vector<HWND> before = stackOf(shell);
    move(OS::Control_MoveAbove, stranger, a);
    move(OS::Control_MoveBelow, stranger, a);
    EXPECT_EQ(stackOf(shell), before);
    EXPECT_EQ(stackOf(parent), (Stack{A, B, C}));
}

TEST_F(StackingTest, a_shell_above_another_does_not_come_to_the_foreground) {
    jint other = newShell();
    Faults faults;
    move(OS::Control_MoveAbove, shell, other);
    EXPECT_EQ(faults.countCalls("SetForegroundWindow"), 0);
    EXPECT_EQ(GetForegroundWindow(), windowOf(other));
}

TEST_F(StackingTest, a_shell_above_all_comes_to_the_foreground) {
    jint other = newShell();
    EXPECT_EQ(GetForegroundWindow(), windowOf(other));
    move(OS::Control_MoveAbove, shell, 0);
    EXPECT_EQ(GetForegroundWindow(), windowOf(shell));
}

TEST_F(StackingTest, a_control_keeps_its_place_when_its_bounds_or_its_bars_change) {
    constexpr jint withBars = 0x30000;
    jint lowest = newControl(OS::Composite_New, parent, withBars);
    Stack before = stackOf(parent);
    jint bars[] = {call(OS::Scrollable_GetHorizontalBar, lowest),
                   call(OS::Scrollable_GetVerticalBar, lowest)};
    for (jint bar : bars)
        for (bool shown : {false, true}) {
            call(OS::Scrollable_SetAdjustableVisible, lowest, bar, shown);
            EXPECT_EQ(stackOf(parent), before);
        }
    call(OS::Control_SetBounds, lowest, 7, 8, 50, 60);
    EXPECT_EQ(stackOf(parent), before);
}

TEST_F(StackingTest, a_child_shell_stays_below_the_active_one_when_its_frame_changes) {
    constexpr jint withTitleAndBars = 0x30020;
    jint shells[] = {call(OS::Shell_NewChild, shell, withTitleAndBars),
                     call(OS::Shell_NewChild, shell, 0)};
    for (jint each : shells) {
        call(OS::Control_SetBounds, each, 20, 40, 100, 90);
        call(OS::Control_SetVisible, each, true);
    }
    auto [below, active] = shells;
    auto expectBelow = [&, window = windowOf(below)] {
        EXPECT_EQ(GetActiveWindow(), windowOf(active));
        HWND next = windowOf(active);
        while (next && next != window) next = GetWindow(next, GW_HWNDNEXT);
        EXPECT_EQ(next, window);
    };
    expectBelow();
    for (bool on : {true, false}) {
        call(OS::Shell_SetResizable, below, on);
        expectBelow();
        call(OS::Scrollable_SetAdjustableVisible, below, call(OS::Scrollable_GetVerticalBar, below),
             !on);
        expectBelow();
    }
    for (jint each : {active, below}) dispose(each);
}

TEST_F(AppearanceTest, drawing_that_is_turned_on_redraws_unless_the_parent_has_it_off) {
    jint parent = newComposite(shell);
    jint child = newComposite(parent);
    dispatchAll();
    auto setRedraw = [&](jint control, bool redraw) {
        call(OS::Control_SetRedraw, control, redraw);
        bool redrawn = GetUpdateRect(windowOf(child), nullptr, FALSE);
        dispatchAll();
        return redrawn;
    };
    EXPECT_FALSE(setRedraw(parent, false));
    EXPECT_FALSE(setRedraw(child, false));
    EXPECT_FALSE(setRedraw(child, true));
    EXPECT_TRUE(setRedraw(parent, true));
    EXPECT_TRUE(setRedraw(child, true));
}

TEST_F(AppearanceTest, focus_cannot_be_forced_on_what_is_hidden_or_disabled) {
    jint parent = newComposite(shell);
    jint child = newButton(parent);
    SetFocus(windowOf(shell));
    auto force = [&] { return call(OS::Control_ForceFocus, child); };
    call(OS::Control_SetVisible, child, false);
    EXPECT_FALSE(force());
    call(OS::Control_SetVisible, child, true);
    call(OS::Control_SetEnabled, child, false);
    EXPECT_FALSE(force());
    call(OS::Control_SetEnabled, child, true);
    call(OS::Control_SetEnabled, parent, false);
    EXPECT_FALSE(force());
    EXPECT_EQ(GetFocus(), windowOf(shell));
    call(OS::Control_SetEnabled, parent, true);
    EXPECT_TRUE(force());
    EXPECT_TRUE(force()) << "it has the focus already";
    EXPECT_EQ(GetFocus(), windowOf(child));
}
