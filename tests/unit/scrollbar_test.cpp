// Scroll bars as controls: turned, measured, and tapped by a person.

#include "adjustable_fixture.h"
#include "leaks.h"

class ScrollbarTest : public AdjustableTest {
  protected:
    void turn(jint orientation) { call(OS::Scrollbar_SetOrientation, bar, orientation); }
    bool isVertical() { return GetWindowLongW(windowOf(bar), GWL_STYLE) & SBS_VERT; }
};

TEST_F(ScrollbarTest, minimum_size_follows_the_direction) {
    EXPECT_EQ(minimumSize(bar), (std::vector<jint>{GetSystemMetrics(SM_CXVSCROLL),
                                                   10 * GetSystemMetrics(SM_CYVSCROLL)}));
    turn(16);
    EXPECT_EQ(minimumSize(bar), (std::vector<jint>{10 * GetSystemMetrics(SM_CXHSCROLL),
                                                   GetSystemMetrics(SM_CYHSCROLL)}));
}

TEST_F(ScrollbarTest, a_turned_bar_is_the_same_bar_in_the_same_place) {
    show(bar);
    set(OS::Adjustable_SetValue, 40);
    HWND old = windowOf(bar);
    RECT before, after;
    GetWindowRect(old, &before);
    turn(16);
    EXPECT_FALSE(IsWindow(old));
    GetWindowRect(windowOf(bar), &after);
    EXPECT_TRUE(EqualRect(&before, &after));
    EXPECT_FALSE(isVertical());
    EXPECT_EQ(record(bar)->orientation, 16);
    EXPECT_TRUE(IsWindowVisible(windowOf(bar)));
    EXPECT_EQ(get(OS::Adjustable_GetValue), 40);
    EXPECT_EQ(GetWindowLongW(windowOf(bar), GWL_USERDATA), LONG(bar));
    EXPECT_EQ(scroll(SB_LINEDOWN), Events{fired::scrolled(41, ScrollKind::lineDown)});
    turn(8);
    EXPECT_TRUE(isVertical());
}

TEST_F(ScrollbarTest, a_turned_bar_in_a_moved_parent_keeps_its_place_there) {
    jint composite = call(OS::Composite_New, shell, 0);
    call(OS::Control_SetBounds, composite, 50, 60, 100, 100);
    jint inner = call(OS::Scrollbar_New, composite);
    call(OS::Control_SetBounds, inner, 5, 6, 13, 70);
    call(OS::Scrollbar_SetOrientation, inner, 16);
    EXPECT_EQ(boundsOf(inner), (std::vector<jint>{5, 6, 13, 70}));
}

TEST_F(ScrollbarTest, a_bar_that_is_being_disposed_of_is_not_turned) {
    show(bar);
    call(OS::Control_ForceFocus, bar);
    listen(shell);
    bool isAsked = false;
    vm.behavior["focus"] = [&](const std::vector<jint>&) {
        isAsked = true;
        turn(16);
        return 0;
    };
    dispose(bar);
    EXPECT_TRUE(isAsked);
    EXPECT_EQ(GetWindow(windowOf(shell), GW_CHILD), nullptr);
    vm.behavior.clear();
}

TEST_F(ScrollbarTest, another_orientation_keeps_the_direction) {
    turn(3);
    EXPECT_TRUE(isVertical());
    EXPECT_EQ(record(bar)->orientation, 3);
    turn(16);
    turn(0);
    EXPECT_FALSE(isVertical());
}

TEST_F(ScrollbarTest, a_bar_that_cannot_be_turned_stays_and_tells_nobody) {
    HWND old = windowOf(bar);
    {
        Faults faults;
        faults.fail("CreateWindowExW", 1, ERROR_ACCESS_DENIED);
        turn(16);
    }
    EXPECT_TRUE(vm.reports.empty());
    EXPECT_EQ(record(bar)->orientation, 8);
    EXPECT_EQ(windowOf(bar), old);
    EXPECT_TRUE(IsWindow(old));
}

TEST_F(ScrollbarTest, background_is_the_scroll_bars) {
    EXPECT_EQ(call(OS::Control_GetBackgroundRGB, bar), 0xC0C0C0);
}

TEST_F(ScrollbarTest, a_bar_that_cannot_be_made_is_an_error) {
    NoLeaks noLeaks;
    std::vector<jint> bars;
    int failures = forEachFailure([&](Faults&) {
        jint made = call(OS::Scrollbar_New, shell);
        if (made) bars.push_back(made);
        if (vm.reports.empty()) return;
        TestVm::Report report = onlyReport();
        EXPECT_EQ(report.function, "Scrollbar_New");
        EXPECT_EQ(report.message.find(u"Unable to create handle for widget::"), 0u);
        EXPECT_EQ(made, 0);
    });
    EXPECT_GT(failures, 2);
    EXPECT_LT(static_cast<int>(bars.size()), failures) << "some failures are reported";
    for (jint made : bars) dispose(made);
    dispatchAll();
}

// The person at the bar: the arrow at its lower end is tapped while the system tracks.
class TappedScrollbarTest : public ScrollbarTest {
  protected:
    void moveTo(LONG x, LONG y) {
        POINT point = {x, y};
        ClientToScreen(windowOf(bar), &point);
        call(OS::Display_PostPointerMoveEvent, display, point.x, point.y);
    }
    void post(jint type) { call(OS::Display_PostPointerEvent, display, type, buttonLeft); }
};

TEST_F(TappedScrollbarTest, a_tap_on_an_arrow_scrolls_between_press_and_release) {
    show(bar);
    vm.behavior["pointerDown"] = [](const std::vector<jint>&) { return 0; };
    listen(bar);
    moveTo(6, 145);
    post(pointerPress);
    post(pointerRelease);
    dispatchAll();
    Events events = vm.takeEvents();
    auto at = [&](const std::string& event) {
        return std::find(events.begin(), events.end(), event) - events.begin();
    };
    EXPECT_LT(at(fired::pointer(pointerPress, 6, 145, buttonLeft)),
              at(fired::scrolled(1, ScrollKind::lineDown)))
        << testing::PrintToString(events);
    EXPECT_LT(at(fired::scrolled(1, ScrollKind::lineDown)),
              at(fired::pointer(pointerRelease, 6, 145, buttonLeft)));
    EXPECT_EQ(get(OS::Adjustable_GetValue), 1);
}

TEST_F(TappedScrollbarTest, moves_are_reported_while_the_system_tracks) {
    show(bar);
    vm.behavior["pointerDown"] = [](const std::vector<jint>&) { return 0; };
    listen(bar);
    moveTo(6, 60); // with a touch, which is where a device without a mouse has its pointer
    post(pointerPress);
    post(pointerRelease);
    dispatchAll();
    vm.takeEvents();
    record(bar)->lastPointerX = -1;
    SendMessageW(windowOf(bar), WM_TIMER, 999, 0);
    EXPECT_TRUE(vm.takeEvents().empty()) << "another timer";
    SendMessageW(windowOf(bar), WM_TIMER, 1000, 0);
    Events first = vm.takeEvents();
    EXPECT_EQ(
        std::count(first.begin(), first.end(), fired::pointer(pointerMove, 6, 60, buttonNone)), 1)
        << testing::PrintToString(first);
    EXPECT_EQ(SendMessageW(windowOf(bar), WM_TIMER, 1000, 0), 0);
    EXPECT_TRUE(vm.takeEvents().empty()) << "it did not move";
    record(bar)->lastPointerY = -1;
    SendMessageW(windowOf(bar), WM_TIMER, 1000, 0);
    EXPECT_FALSE(vm.takeEvents().empty()) << "up or down";
}
