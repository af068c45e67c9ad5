// Scroll bars whose window changes, or whose listeners act, while they are being used.

#include "control/adjustable.h"
#include "faults.h"
#include "held_bar_fixture.h"

static AdjustableRecord* record(jint bar) { return reinterpret_cast<AdjustableRecord*>(bar); }

class ScrollBarsTest : public HeldBarTest {
  protected:
    void turn(jint orientation) { call(OS::Scrollbar_SetOrientation, bar, orientation); }
    void set(jint which, const Native<void(jint, jint)>& property, jint value) {
        call(property, which, value);
    }
    jint get(jint which, const Native<jint(jint)>& property) { return call(property, which); }
    void showOwn(jint own, bool shown) {
        call(OS::Scrollable_SetAdjustableVisible, shell, own, shown);
        dispatchAll();
    }
    Events scroll(WORD code) {
        vm.takeEvents();
        SendMessageW(windowOf(shell), WM_VSCROLL, code, reinterpret_cast<LPARAM>(windowOf(bar)));
        return vm.takeEvents();
    }
};

// The system asks and tells the bar's window, which lets a listener or another thread in.
TEST_F(ScrollBarsTest, a_bar_that_goes_while_its_window_is_asked_or_told_is_not_touched_again) {
    listen(bar);
    const struct {
        const char* function;
        int nth, asked;
    } rows[] = {{"GetScrollInfo", 1, 1}, {"GetScrollInfo", 2, 2}, {"SetScrollInfo", 1, 1}};
    for (const auto& row : rows) {
        jint victim = newControl(OS::Scrollbar_New, shell);
        listen(victim);
        int left = row.nth;
        HWND window = windowOf(victim);
        Faults faults;
        faults.watch([&](const std::string& function) {
            if (function == row.function && --left == 0) dispose(victim);
        });
        vm.takeEvents();
        SendMessageW(windowOf(shell), WM_VSCROLL, SB_LINEDOWN, reinterpret_cast<LPARAM>(window));
        EXPECT_LE(left, 0);
        EXPECT_EQ(faults.countCalls("GetScrollInfo"), row.asked);
        EXPECT_FALSE(IsWindow(window));
        EXPECT_TRUE(fired::only(vm.takeEvents(), {"scrolled"}).empty());
    }
    jint victim = newControl(OS::Scrollbar_New, shell);
    Faults faults;
    faults.watch([&](const std::string& function) {
        if (function == "GetScrollInfo" && victim) dispose(std::exchange(victim, 0));
    });
    EXPECT_EQ(call(OS::Adjustable_GetValue, victim), 0);
    EXPECT_EQ(victim, 0);
}

TEST_F(ScrollBarsTest, a_scroll_of_what_is_no_bar_of_javas_is_left_to_the_window_class) {
    jint button = newButton(shell);
    HWND stranger = CreateWindowExW(0, L"SCROLLBAR", nullptr, WS_CHILD, 0, 0, 5, 5, windowOf(shell),
                                    nullptr, nullptr, nullptr);
    listen(bar);
    for (HWND sender : {stranger, windowOf(button)})
        EXPECT_EQ(SendMessageW(windowOf(shell), WM_VSCROLL, SB_LINEDOWN,
                               reinterpret_cast<LPARAM>(sender)),
                  0);
    EXPECT_TRUE(fired::only(vm.takeEvents(), {"scrolled"}).empty());
    DestroyWindow(stranger);
}

TEST_F(ScrollBarsTest, a_bar_that_goes_at_a_double_click_is_tracked_by_nobody) {
    jint victim = newControl(OS::Scrollbar_New, shell);
    listen(victim);
    HWND window = windowOf(victim);
    vm.behavior["pointer"] = [&](const std::vector<jint>& arguments) {
        if (arguments[0] == pointerDoubleClick) dispose(victim);
        return 0;
    };
    SendMessageW(window, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(5, 5));
    vm.behavior.clear();
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(reinterpret_cast<DisplayRecord*>(display)->modalLoop, nullptr);
}

TEST_F(ScrollBarsTest, moves_are_told_with_all_buttons_that_are_held) {
    const struct {
        std::vector<jint> held;
        std::string move;
    } rows[] = {
        {{8}, fired::pointer(pointerMove, 6, 60, buttonNone, modifierLeftButton)},
        {{16}, fired::pointer(pointerMove, 6, 60, buttonNone, modifierMiddleButton)},
        {{8, 32},
         fired::pointer(pointerMove, 6, 60, buttonNone, modifierLeftButton | modifierRightButton)},
        {{8, 16, 32},
         fired::pointer(pointerMove, 6, 60, buttonNone,
                        modifierLeftButton | modifierMiddleButton | modifierRightButton)}};
    listen(bar);
    moveTo(bar, {6, 60});
    dispatchAll();
    for (const auto& row : rows) {
        for (jint button : row.held) post(pointerPress, button);
        record(bar)->lastPointerX = -1;
        vm.takeEvents();
        SendMessageW(windowOf(bar), WM_TIMER, 1000, 0);
        EXPECT_EQ(vm.takeEvents().back(), row.move);
        for (jint button : row.held) post(pointerRelease, button);
        call(OS::Control_SetEnabled, bar, false); // nothing is tracked
        dispatchAll();
        call(OS::Control_SetEnabled, bar, true);
    }
}

TEST_F(ScrollBarsTest, a_move_in_one_direction_is_a_move) {
    listen(bar);
    moveTo(bar, {6, 60});
    dispatchAll();
    auto tick = [&](UINT_PTR timer, LONG lastX, LONG lastY) {
        record(bar)->lastPointerX = lastX;
        record(bar)->lastPointerY = lastY;
        vm.takeEvents();
        SendMessageW(windowOf(bar), WM_TIMER, timer, 0);
        return vm.takeEvents();
    };
    constexpr UINT_PTR ownTimer = 1000, anothers = 999;
    EXPECT_EQ(tick(ownTimer, 6, 59), Events{fired::pointer(pointerMove, 6, 60, buttonNone)});
    EXPECT_EQ(tick(ownTimer, 5, 60), Events{fired::pointer(pointerMove, 6, 60, buttonNone)});
    EXPECT_TRUE(tick(ownTimer, 6, 60).empty());
    EXPECT_TRUE(tick(anothers, 5, 59).empty()) << "it tells nothing of the pointer";
}

TEST_F(ScrollBarsTest, a_turned_bar_that_had_the_focus_tells_that_it_lost_it) {
    call(OS::Control_ForceFocus, bar);
    listen(bar);
    turn(16);
    EXPECT_EQ(vm.takeEvents(), Events{fired::focus(FocusChange::lost)});
    turn(8);
    EXPECT_TRUE(vm.takeEvents().empty()) << "it had it no longer";
}

TEST_F(ScrollBarsTest, a_bar_turned_by_its_listener_of_the_focus_is_turned_once_more) {
    call(OS::Control_ForceFocus, bar);
    listen(bar);
    vm.behavior["focus"] = [this](const std::vector<jint>&) {
        turn(8);
        return 0;
    };
    turn(16);
    EXPECT_EQ(record(bar)->orientation, 8);
    EXPECT_EQ(GetWindowLongW(windowOf(bar), GWL_USERDATA), LONG(bar));
    EXPECT_TRUE(GetWindowLongW(windowOf(bar), GWL_STYLE) & SBS_VERT);
}

TEST_F(ScrollBarsTest, a_turned_bar_keeps_its_place_among_its_siblings) {
    HWND before = GetWindow(windowOf(bar), GW_HWNDPREV);
    EXPECT_EQ(GetWindow(windowOf(bar), GW_HWNDNEXT), windowOf(other));
    turn(16);
    EXPECT_EQ(GetWindow(windowOf(bar), GW_HWNDNEXT), windowOf(other));
    EXPECT_EQ(GetWindow(windowOf(bar), GW_HWNDPREV), before);
}

TEST_F(ScrollBarsTest, a_bar_turned_while_it_scrolls_is_released_once_where_the_pointer_leaves) {
    listen(bar);
    releaseAfterScrolls([this] { turn(16); });
    Events events = hold(bar, {6, 145});
    EXPECT_EQ(countReleases(events), 0) << "the button is held";
    moveTo(shell, {150, 20});
    post(pointerRelease);
    dispatchAll();
    events = vm.takeEvents();
    EXPECT_EQ(countReleases(events), 1) << testing::PrintToString(events);
}

// As a dialog's loop that the listener runs: the bar is tracked again within its first tracking.
TEST_F(ScrollBarsTest, a_bar_pressed_again_within_its_listener_is_released_as_often_as_pressed) {
    listen(bar);
    vm.behavior["scrolled"] = [this](const std::vector<jint>&) {
        ++scrolls;
        if (scrolls <= 2) post(pointerRelease);
        if (scrolls != 1) return 0;
        dispatchAll();
        moveTo(bar, {6, 5}); // no second tap
        post(pointerPress);
        dispatchAll();
        moveTo(bar, {6, 100}); // the first tracking ends at the next message
        return 0;
    };
    Events events = hold(bar, {6, 145});
    EXPECT_EQ(countReleases(events), 2) << testing::PrintToString(events);
    EXPECT_EQ(record(bar)->follower, nullptr);
}

TEST_F(ScrollBarsTest, a_bar_whose_tracking_is_cancelled_is_released_once_although_it_is_held) {
    listen(bar);
    vm.behavior["scrolled"] = [this](const std::vector<jint>&) {
        if (++scrolls > 1) return 0;
        ReleaseCapture();
        moveTo(bar, {6, 100}); // the tracking ends at the next message
        return 0;
    };
    Events events = hold(bar, {6, 145});
    EXPECT_EQ(countReleases(events), 1) << testing::PrintToString(events);
    EXPECT_NE(GetCapture(), windowOf(bar));
    post(pointerRelease);
    dispatchAll();
}

static std::vector<UINT> periods;
static UINT_PTR WINAPI recordTimer(HWND, UINT_PTR id, UINT period, TIMERPROC) {
    if (id == 1000) periods.push_back(period);
    return id;
}

TEST_F(ScrollBarsTest, a_tracked_bar_looks_for_the_pointer_every_10_milliseconds) {
    periods.clear();
    Faults faults;
    faults.replace("SetTimer", reinterpret_cast<void*>(recordTimer));
    releaseAfterScrolls([] {});
    listen(bar);
    hold(bar, {6, 145});
    EXPECT_EQ(periods, std::vector<UINT>{10});
}

TEST_F(ScrollBarsTest, a_step_beyond_all_numbers_leads_to_the_end) {
    constexpr jint most = 0x7FFFFFFF;
    listen(bar);
    for (const auto& increment :
         {OS::Adjustable_SetUnitIncrement, OS::Adjustable_SetBlockIncrement})
        set(bar, increment, most);
    for (auto [code, event] :
         {std::pair<WORD, std::string>{SB_LINEDOWN, fired::scrolled(90, ScrollKind::lineDown)},
          {SB_PAGEDOWN, fired::scrolled(90, ScrollKind::pageDown)}}) {
        set(bar, OS::Adjustable_SetValue, 50);
        EXPECT_EQ(scroll(code), Events{event});
    }
    for (auto [code, event] :
         {std::pair<WORD, std::string>{SB_LINEUP, fired::scrolled(-100, ScrollKind::lineUp)},
          {SB_PAGEUP, fired::scrolled(-100, ScrollKind::pageUp)}}) {
        set(bar, OS::Adjustable_SetMinimum, -100);
        set(bar, OS::Adjustable_SetValue, -50);
        EXPECT_EQ(scroll(code), Events{event});
    }
    set(bar, OS::Adjustable_SetUnitIncrement, -most - 1);
    set(bar, OS::Adjustable_SetValue, 50);
    EXPECT_EQ(scroll(SB_LINEUP), Events{fired::scrolled(90, ScrollKind::lineUp)});
}

TEST_F(ScrollBarsTest, a_shown_bar_whose_range_is_empty_has_one_of_one_step) {
    jint bare = call(OS::Scrollbar_New, shell);
    set(bare, OS::Adjustable_SetMinimum, 10);
    set(bare, OS::Adjustable_SetMaximum, 5);
    call(OS::Control_SetVisible, bare, true);
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = SIF_RANGE;
    GetScrollInfo(windowOf(bare), SB_CTL, &info);
    EXPECT_EQ(info.nMin, 10);
    EXPECT_EQ(info.nMax, 11);
    EXPECT_EQ(get(bare, OS::Adjustable_GetMaximum), 5) << "as it was set";
}

// A shell's own bar, which changes the shell's size.
class OwnBarTest : public ScrollBarsTest {
  protected:
    OwnBarTest() {
        own = call(OS::Scrollable_GetVerticalBar, shell);
        set(own, OS::Adjustable_SetMaximum, 8); // less than its page
        set(own, OS::Adjustable_SetVisibleAmount, 10);
        showOwn(own, false);
        listen(shell);
    }
    ~OwnBarTest() override { vm.behavior.clear(); }
    void onResize(std::function<void()> work) {
        vm.behavior["resize"] = [this, work](const std::vector<jint>&) {
            ++resizes;
            if (resizes == 1) work();
            return 0;
        };
    }
    jint own = 0;
    int resizes = 0;
};

TEST_F(OwnBarTest, keeps_what_a_listener_sets_while_it_is_being_shown) {
    onResize([this] {
        set(own, OS::Adjustable_SetMaximum, 500);
        set(own, OS::Adjustable_SetVisibleAmount, 20);
    });
    showOwn(own, true);
    EXPECT_GT(resizes, 0);
    EXPECT_EQ(get(own, OS::Adjustable_GetMaximum), 500);
    EXPECT_EQ(get(own, OS::Adjustable_GetVisibleAmount), 20);
}

// Freed blocks are kept and filled, so that a later write to one shows.
static std::vector<std::pair<BYTE*, SIZE_T>> freed;
static HLOCAL WINAPI keepFreed(HLOCAL block) {
    SIZE_T size = LocalSize(block) & ~SIZE_T(3);
    memset(block, 0xDD, size);
    freed.push_back({static_cast<BYTE*>(block), size});
    return nullptr;
}
static bool sawFreedWindow;
static void look(HWND window) {
    if (window == reinterpret_cast<HWND>(0xDDDDDDDD)) sawFreedWindow = true;
}
static BOOL WINAPI lookAndSetPosition(HWND window, HWND after, int x, int y, int width, int height,
                                      UINT flags) {
    look(window);
    return SetWindowPos(window, after, x, y, width, height, flags);
}
static int WINAPI lookAndSetScrollInfo(HWND window, int kind, const SCROLLINFO* info, BOOL redraw) {
    look(window);
    return SetScrollInfo(window, kind, info, redraw);
}

class GoneShellTest : public OwnBarTest {
  protected:
    // The shell is disposed of by its listener while the work goes on.
    void expectNothingTouched(const std::function<void()>& work) {
        freed.clear();
        sawFreedWindow = false;
        {
            Faults faults;
            faults.replace("LocalFree", reinterpret_cast<void*>(keepFreed));
            faults.replace("SetWindowPos", reinterpret_cast<void*>(lookAndSetPosition));
            faults.replace("SetScrollInfo", reinterpret_cast<void*>(lookAndSetScrollInfo));
            onResize([this] { dispose(shell); });
            work();
        }
        EXPECT_EQ(resizes, 1);
        EXPECT_FALSE(sawFreedWindow);
        bool written = false;
        for (auto [block, size] : freed)
            written |= std::any_of(block, block + size, [](BYTE byte) { return byte != 0xDD; });
        EXPECT_FALSE(written);
        for (auto [block, size] : freed) LocalFree(block);
    }
    void expectGoneWhenShown(bool shown) {
        showOwn(own, !shown);
        resizes = 0;
        expectNothingTouched([&] { call(OS::Scrollable_SetAdjustableVisible, shell, own, shown); });
    }
};

TEST_F(GoneShellTest, is_not_touched_when_its_bar_was_being_shown) { expectGoneWhenShown(true); }

TEST_F(GoneShellTest, is_not_touched_when_its_bar_was_being_hidden) { expectGoneWhenShown(false); }

TEST_F(GoneShellTest, is_not_touched_when_its_bar_was_being_made) {
    SCROLLINFO full = {sizeof(full), SIF_RANGE | SIF_PAGE, 0, 9, 10, 0, 0};
    SetWindowLongW(windowOf(shell), GWL_STYLE,
                   GetWindowLongW(windowOf(shell), GWL_STYLE) | WS_HSCROLL);
    SetScrollInfo(windowOf(shell), SB_HORZ, &full, FALSE);
    dispatchAll();
    resizes = 0;
    jint made = -1;
    expectNothingTouched([&] { made = call(OS::Scrollable_GetHorizontalBar, shell); });
    EXPECT_EQ(made, 0);
}
