#include "adjustable_fixture.h"
#include "control/scrollable.h"
#include "leaks.h"

TEST_F(AdjustableTest, a_block_is_one_step_at_least) {
    jint value = 0;
    for (jint block : {1, 0, -1}) {
        set(OS::Adjustable_SetBlockIncrement, block);
        EXPECT_EQ(scroll(SB_PAGEDOWN), Events{fired::scrolled(++value, ScrollKind::pageDown)});
    }
}

TEST_F(AdjustableTest, a_new_bar_has_its_values) {
    EXPECT_EQ(get(OS::Adjustable_GetMinimum), 0);
    EXPECT_EQ(get(OS::Adjustable_GetMaximum), 100);
    EXPECT_EQ(get(OS::Adjustable_GetValue), 0);
    EXPECT_EQ(get(OS::Adjustable_GetVisibleAmount), 10);
    EXPECT_EQ(record(bar)->unitIncrement, 1);
    EXPECT_EQ(record(bar)->blockIncrement, 10);
    EXPECT_EQ(record(bar)->orientation, 8);
    SCROLLINFO info = infoOf(bar);
    EXPECT_EQ(info.nMax, 100) << "the window has them at once";
    EXPECT_EQ(info.nPage, 11u);
    EXPECT_EQ(GetWindowLongW(windowOf(bar), GWL_STYLE) & ~WS_VISIBLE, 0x46010001);
}

TEST_F(AdjustableTest, a_new_bar_tells_the_window_its_values) {
    jint other = 0;
    EXPECT_EQ(recordWhile([&] { other = call(OS::Scrollbar_New, shell); }),
              (std::vector<Told>{{SB_CTL, 23, 0, 100, 11, 0, TRUE}}));
    EXPECT_FALSE(record(other)->visible);
    EXPECT_TRUE(record(other)->enabled);
}

TEST_F(AdjustableTest, a_visible_amount_is_kept_as_a_page_one_larger) {
    for (jint amount : {0, 5, 1, 99}) {
        set(OS::Adjustable_SetVisibleAmount, amount);
        EXPECT_EQ(get(OS::Adjustable_GetVisibleAmount), amount);
        EXPECT_EQ(record(bar)->info.nPage, amount ? UINT(amount) + 1 : 0u);
    }
}

TEST_F(AdjustableTest, a_hidden_or_disabled_bar_keeps_new_values_to_itself) {
    auto setAll = [&] {
        set(OS::Adjustable_SetMinimum, 5);
        set(OS::Adjustable_SetMaximum, 50);
        set(OS::Adjustable_SetValue, 20);
        set(OS::Adjustable_SetVisibleAmount, 3);
    };
    EXPECT_TRUE(recordWhile(setAll).empty());
    show(bar);
    call(OS::Control_SetEnabled, bar, false);
    EXPECT_TRUE(recordWhile(setAll).empty());
    EXPECT_EQ(get(OS::Adjustable_GetMinimum), 5);
    EXPECT_EQ(get(OS::Adjustable_GetMaximum), 50);
    EXPECT_EQ(get(OS::Adjustable_GetValue), 20);
    call(OS::Control_SetEnabled, bar, true);
    EXPECT_EQ(recordWhile(setAll), (std::vector<Told>{{SB_CTL, 9, 5, 50, 4, 20, TRUE},
                                                      {SB_CTL, 9, 5, 50, 4, 20, TRUE},
                                                      {SB_CTL, 4, 5, 50, 4, 20, TRUE},
                                                      {SB_CTL, 11, 5, 50, 4, 20, TRUE}}));
}

TEST_F(AdjustableTest, a_bar_without_range_is_shown_with_one_step_and_told_its_own_range) {
    set(OS::Adjustable_SetVisibleAmount, 0);
    for (jint maximum : {9, 10, 11}) {
        set(OS::Adjustable_SetMinimum, 10);
        set(OS::Adjustable_SetMaximum, maximum);
        auto shown = recordWhile([&] { show(bar); });
        ASSERT_EQ(shown.size(), maximum > 10 ? 1u : 2u) << maximum;
        EXPECT_EQ(shown.front(), (Told{SB_CTL, 31, 10, 11, 0, 0, TRUE})) << maximum;
        EXPECT_EQ(shown.back().maximum, maximum);
        show(bar, false);
    }
}

TEST_F(AdjustableTest, the_value_of_a_live_bar_is_the_windows) {
    show(bar);
    set(OS::Adjustable_SetValue, 95);
    EXPECT_EQ(get(OS::Adjustable_GetValue), 90) << "as the window clamped it";
    Faults faults;
    faults.fail("GetScrollInfo");
    EXPECT_EQ(get(OS::Adjustable_GetValue), 0);
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(AdjustableTest, a_block_increment_is_at_least_1) {
    set(OS::Adjustable_SetBlockIncrement, 7);
    EXPECT_EQ(record(bar)->blockIncrement, 7);
    for (jint wrong : {0, -1, -100}) {
        set(OS::Adjustable_SetBlockIncrement, wrong);
        EXPECT_EQ(record(bar)->blockIncrement, 7);
    }
    set(OS::Adjustable_SetUnitIncrement, -3);
    EXPECT_EQ(record(bar)->unitIncrement, -3) << "unchecked";
}

TEST_F(AdjustableTest, a_focused_bar_redraws_its_focus_mark_for_a_new_amount) {
    show(bar);
    SetFocus(windowOf(bar));
    dispatchAll();
    listen(bar);
    set(OS::Adjustable_SetVisibleAmount, 30);
    dispatchAll();
    EXPECT_EQ(vm.takeEvents(), Events{fired::focus(FocusChange::gained)});
    SetFocus(windowOf(shell));
    dispatchAll();
    vm.takeEvents();
    set(OS::Adjustable_SetVisibleAmount, 20);
    dispatchAll();
    EXPECT_TRUE(vm.takeEvents().empty());
}

class ScrollTest : public AdjustableTest {
  protected:
    ScrollTest() {
        show(bar);
        set(OS::Adjustable_SetMinimum, 10);
        set(OS::Adjustable_SetUnitIncrement, 2);
        set(OS::Adjustable_SetValue, 50);
        dispatchAll();
    }
};

TEST_F(ScrollTest, every_code_moves_the_value_and_fires) {
    EXPECT_EQ(scroll(SB_LINEDOWN), Events{fired::scrolled(52, ScrollKind::lineDown)});
    EXPECT_EQ(scroll(SB_LINEUP), Events{fired::scrolled(50, ScrollKind::lineUp)});
    EXPECT_EQ(scroll(SB_PAGEDOWN), Events{fired::scrolled(60, ScrollKind::pageDown)});
    EXPECT_EQ(scroll(SB_PAGEUP), Events{fired::scrolled(50, ScrollKind::pageUp)});
    EXPECT_EQ(scroll(SB_TOP), Events{fired::scrolled(10, ScrollKind::top)});
    EXPECT_EQ(scroll(SB_BOTTOM), Events{fired::scrolled(90, ScrollKind::bottom)})
        << "clamped by the window";
    EXPECT_EQ(get(OS::Adjustable_GetValue), 90);
}

TEST_F(ScrollTest, going_up_stops_at_the_minimum_and_fires_still) {
    set(OS::Adjustable_SetValue, 11);
    EXPECT_EQ(scroll(SB_LINEUP), Events{fired::scrolled(10, ScrollKind::lineUp)});
    EXPECT_EQ(scroll(SB_LINEUP), Events{fired::scrolled(10, ScrollKind::lineUp)});
    EXPECT_EQ(scroll(SB_PAGEUP), Events{fired::scrolled(10, ScrollKind::pageUp)});
}

TEST_F(ScrollTest, the_end_of_scrolling_fires_nothing) {
    EXPECT_TRUE(scroll(SB_ENDSCROLL).empty());
    EXPECT_EQ(get(OS::Adjustable_GetValue), 50);
}

// The thumb is tracked at 30.
static BOOL WINAPI answerTrackPosition(HWND window, int kind, SCROLLINFO* info) {
    BOOL result = GetScrollInfo(window, kind, info);
    if (info->fMask & SIF_TRACKPOS) info->nTrackPos = 30;
    return result;
}

TEST_F(ScrollTest, the_thumb_moves_the_value_to_its_place_above_the_minimum) {
    Faults faults;
    faults.replace("GetScrollInfo", reinterpret_cast<void*>(answerTrackPosition));
    faults.replace("SetScrollInfo", reinterpret_cast<void*>(recordScrollInfo));
    told.clear();
    EXPECT_EQ(scroll(SB_THUMBTRACK), Events{fired::scrolled(40, ScrollKind::thumbDrag)});
    EXPECT_EQ(told.back().redraw, FALSE) << "the thumb is drawn already";
    set(OS::Adjustable_SetValue, 50);
    EXPECT_TRUE(scroll(SB_THUMBPOSITION).empty());
    EXPECT_EQ(told.back().redraw, TRUE);
    EXPECT_EQ(told.back().mask, UINT(SIF_POS));
    EXPECT_EQ(get(OS::Adjustable_GetValue), 40);
}

TEST_F(ScrollTest, values_that_cannot_be_read_fire_nothing) {
    for (int nth : {1, 2}) {
        Faults faults;
        faults.fail("GetScrollInfo", nth);
        EXPECT_TRUE(scroll(SB_LINEDOWN).empty()) << nth;
        EXPECT_EQ(faults.countCalls("SetScrollInfo"), nth - 1);
    }
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(ScrollTest, a_scroll_message_of_a_control_that_is_no_bar_is_left_alone) {
    jint button = newButton(shell);
    listen(button);
    SendMessageW(windowOf(shell), WM_VSCROLL, SB_LINEDOWN,
                 reinterpret_cast<LPARAM>(windowOf(button)));
    EXPECT_TRUE(vm.takeEvents().empty());
}

class ShowingTest : public AdjustableTest {};

TEST_F(ShowingTest, a_shown_bar_gets_its_values) {
    EXPECT_EQ(recordWhile([&] { show(bar); }),
              (std::vector<Told>{{SB_CTL, 31, 0, 100, 11, 0, TRUE}}));
    EXPECT_TRUE(IsWindowVisible(windowOf(bar)));
}

TEST_F(ShowingTest, a_range_of_nothing_is_shown_as_one_and_kept) {
    set(OS::Adjustable_SetMinimum, 10);
    set(OS::Adjustable_SetMaximum, 5);
    set(OS::Adjustable_SetVisibleAmount, 0);
    EXPECT_EQ(
        recordWhile([&] { show(bar); }),
        (std::vector<Told>{{SB_CTL, 31, 10, 11, 0, 0, TRUE}, {SB_CTL, 11, 10, 5, 0, 0, TRUE}}));
    EXPECT_EQ(get(OS::Adjustable_GetMaximum), 5);
}

TEST_F(ShowingTest, a_page_is_shown_within_the_range_and_kept) {
    set(OS::Adjustable_SetMaximum, 8);
    EXPECT_EQ(recordWhile([&] { show(bar); }),
              (std::vector<Told>{{SB_CTL, 31, 0, 8, 8, 0, TRUE}, {SB_CTL, 11, 0, 8, 11, 0, TRUE}}));
    EXPECT_EQ(get(OS::Adjustable_GetVisibleAmount), 10);
}

TEST_F(ShowingTest, a_hidden_bar_is_blank) {
    show(bar);
    EXPECT_EQ(recordWhile([&] { show(bar, false); }),
              (std::vector<Told>{{SB_CTL, 23, 0, 0, 0, 0, TRUE}}));
    EXPECT_FALSE(IsWindowVisible(windowOf(bar)));
    EXPECT_EQ(get(OS::Adjustable_GetMaximum), 100);
}

TEST_F(ShowingTest, a_disabled_bar_is_shown_blank) {
    call(OS::Control_SetEnabled, bar, false);
    EXPECT_EQ(
        recordWhile([&] { show(bar); }),
        (std::vector<Told>{{SB_CTL, 31, 0, 100, 11, 0, FALSE}, {SB_CTL, 31, 0, 0, 1, 0, TRUE}}));
}

TEST_F(ShowingTest, disabling_blanks_a_shown_bar_and_enabling_gives_its_values_back) {
    auto enable = [&](jboolean enabled) {
        return recordWhile([&] { call(OS::Control_SetEnabled, bar, enabled); });
    };
    EXPECT_TRUE(enable(JNI_FALSE).empty()) << "hidden";
    EXPECT_TRUE(enable(JNI_TRUE).empty());
    show(bar);
    EXPECT_EQ(enable(JNI_FALSE), (std::vector<Told>{{SB_CTL, 31, 0, 0, 0, 0, TRUE}}));
    EXPECT_FALSE(IsWindowEnabled(windowOf(bar)));
    EXPECT_EQ(enable(JNI_TRUE), (std::vector<Told>{{SB_CTL, 23, 0, 100, 11, 0, TRUE}}));
    EXPECT_TRUE(IsWindowEnabled(windowOf(bar)));
}

// A scrollable's own bars.
class OwnBarsTest : public AdjustableTest {
  protected:
    OwnBarsTest() {
        composite = call(OS::Composite_New, shell, 0x30000);
        call(OS::Control_SetBounds, composite, 0, 0, 100, 100);
        show(composite);
        horizontal = call(OS::Scrollable_GetHorizontalBar, composite);
        bar = call(OS::Scrollable_GetVerticalBar, composite);
    }
    Events scrollOwn(UINT message, WORD code, HWND sender) {
        SendMessageW(windowOf(composite), message, code, reinterpret_cast<LPARAM>(sender));
        return vm.takeEvents();
    }
    jint composite, horizontal;
};

TEST_F(OwnBarsTest, are_made_once_and_only_when_asked_for) {
    jint other = call(OS::Composite_New, shell, 0x30000);
    auto* scrollable = reinterpret_cast<ScrollableRecord*>(other);
    EXPECT_EQ(scrollable->horizontalBar, nullptr);
    jint made = call(OS::Scrollable_GetHorizontalBar, other);
    EXPECT_EQ(reinterpret_cast<jint>(scrollable->horizontalBar), made);
    EXPECT_EQ(scrollable->verticalBar, nullptr);
    EXPECT_EQ(call(OS::Scrollable_GetHorizontalBar, other), made);
    EXPECT_NE(horizontal, bar);
}

TEST_F(OwnBarsTest, start_with_the_windows_values) {
    EXPECT_EQ(record(bar)->barKind, SB_VERT);
    EXPECT_EQ(record(horizontal)->barKind, SB_HORZ);
    EXPECT_EQ(record(bar)->hwnd, windowOf(composite));
    EXPECT_EQ(record(bar)->unitIncrement, 1);
    EXPECT_EQ(record(bar)->blockIncrement, 10);
    EXPECT_TRUE(record(bar)->visible && record(bar)->enabled);
    EXPECT_EQ(get(OS::Adjustable_GetMaximum), 100);
}

TEST_F(OwnBarsTest, a_page_that_fills_the_range_is_nudged_into_its_proper_state) {
    jint other = call(OS::Composite_New, shell, 0x20000);
    SCROLLINFO full = {sizeof(full), SIF_RANGE | SIF_PAGE | SIF_DISABLENOSCROLL, 0, 9, 10, 0, 0};
    SetScrollInfo(windowOf(other), SB_VERT, &full, FALSE);
    std::vector<Told> calls = recordWhile([&] { call(OS::Scrollable_GetVerticalBar, other); });
    EXPECT_EQ(calls, (std::vector<Told>{{SB_VERT, 11, 0, 10, 10, 0, FALSE},
                                        {SB_VERT, 11, 0, 9, 10, 0, TRUE}}));
}

TEST_F(OwnBarsTest, scroll_with_messages_of_the_window_itself) {
    listen(bar);
    listen(horizontal);
    EXPECT_EQ(scrollOwn(WM_VSCROLL, SB_LINEDOWN, nullptr),
              Events{fired::scrolled(1, ScrollKind::lineDown)});
    EXPECT_EQ(get(OS::Adjustable_GetValue), 1);
    EXPECT_EQ(call(OS::Adjustable_GetValue, horizontal), 0);
    EXPECT_EQ(scrollOwn(WM_HSCROLL, SB_PAGEDOWN, windowOf(composite)),
              Events{fired::scrolled(10, ScrollKind::pageDown)});
}

TEST_F(OwnBarsTest, that_are_not_made_scroll_nothing) {
    jint other = call(OS::Composite_New, shell, 0x20000);
    SendMessageW(windowOf(other), WM_VSCROLL, SB_LINEDOWN, 0);
    EXPECT_EQ(GetScrollPos(windowOf(other), SB_VERT), 0);
}

TEST_F(OwnBarsTest, take_room_along_the_edges) {
    RECT client;
    GetClientRect(windowOf(composite), &client);
    auto boundsOf = [&](jint which) {
        return vm.ints(call(OS::Scrollable_GetAdjustableBounds, composite, which));
    };
    EXPECT_EQ(boundsOf(horizontal), (std::vector<jint>{0, 0, client.right, 13}));
    EXPECT_EQ(boundsOf(bar), (std::vector<jint>{0, 0, 13, client.bottom}));
}

TEST_F(OwnBarsTest, are_enabled_and_shown_without_touching_the_window) {
    auto setBar = [&](const auto& what, bool on) {
        return recordWhile([&] { call(what, composite, bar, on); });
    };
    EXPECT_EQ(setBar(OS::Scrollable_SetAdjustableEnabled, false),
              (std::vector<Told>{{SB_VERT, 31, 0, 0, 0, 0, TRUE}}));
    EXPECT_TRUE(IsWindowEnabled(windowOf(composite)));
    setBar(OS::Scrollable_SetAdjustableEnabled, true);
    EXPECT_EQ(setBar(OS::Scrollable_SetAdjustableVisible, false),
              (std::vector<Told>{{SB_VERT, 23, 0, 0, 0, 0, TRUE}}));
    EXPECT_TRUE(IsWindowVisible(windowOf(composite)));
    EXPECT_EQ(setBar(OS::Scrollable_SetAdjustableVisible, true).front().mask, 31u);
}

TEST_F(OwnBarsTest, cannot_be_disposed_of) {
    long blocks = countHeapBlocks();
    call(OS::Widget_Dispose, bar);
    TestVm::Report report = onlyReport();
    EXPECT_EQ(report.function, "Widget_Dispose");
    EXPECT_EQ(report.code, -3);
    EXPECT_EQ(report.message, u"Invalid disposal of a scrollable's scrollbars");
    EXPECT_EQ(countHeapBlocks(), blocks);
    EXPECT_EQ(get(OS::Adjustable_GetMaximum), 100);
}

TEST_F(OwnBarsTest, without_memory_are_an_error) {
    jint other = call(OS::Composite_New, shell, 0x20000);
    Faults faults;
    faults.fail("LocalAlloc", 0);
    EXPECT_EQ(call(OS::Scrollable_GetVerticalBar, other), 0);
    TestVm::Report report = onlyReport();
    EXPECT_EQ(report.code, -4);
    EXPECT_EQ(report.message, u"Unable to create scroll bar");
}

TEST_F(OwnBarsTest, go_with_their_scrollable) {
    NoLeaks noLeaks;
    for (int i = 0; i < 1000; ++i) {
        jint other = call(OS::Composite_New, shell, 0x30000);
        call(OS::Scrollable_GetVerticalBar, other);
        call(OS::Scrollable_GetHorizontalBar, other);
        dispose(other);
        jint single = call(OS::Scrollbar_New, shell);
        call(OS::Scrollbar_SetOrientation, single, 16);
        dispose(single);
    }
    dispatchAll();
}
