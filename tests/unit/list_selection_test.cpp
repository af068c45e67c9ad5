// What of a list is selected, by the program and by a person.

#include "faults.h"
#include "leaks.h"
#include "list_fixture.h"
#include "messages.h"

TEST_F(ListTest, in_single_mode_one_item_is_selected) {
    jint list = newList(0, {u"a", u"b", u"c"});
    EXPECT_EQ(selectionCount(list), 0);
    EXPECT_EQ(selectionIndex(list), -1);
    EXPECT_EQ(selection(list), std::vector<jint>{});
    select(list, 1);
    select(list, 2);
    EXPECT_EQ(selectionCount(list), 1);
    EXPECT_EQ(selectionIndex(list), 2);
    EXPECT_EQ(selection(list), std::vector<jint>{2});
    EXPECT_FALSE(isSelected(list, 1));
    EXPECT_TRUE(isSelected(list, 2));
}

TEST_F(ListTest, in_multiple_mode_items_are_added_to_the_selection) {
    jint list = newList(multiple, {u"a", u"b", u"c"});
    EXPECT_EQ(selectionCount(list), 0);
    EXPECT_EQ(selectionIndex(list), -1);
    EXPECT_EQ(selection(list), std::vector<jint>{});
    select(list, 2);
    select(list, 0);
    EXPECT_EQ(selectionCount(list), 2);
    EXPECT_EQ(selectionIndex(list), 0);
    EXPECT_EQ(selection(list), (std::vector<jint>{0, 2}));
    EXPECT_FALSE(isSelected(list, 1));
}

TEST_F(ListTest, an_index_without_item_is_not_selected) {
    for (jint style : {plain, multiple}) {
        jint list = newList(style, {u"a", u"b"});
        select(list, 0);
        for (jint index : {-1, 2, 100}) {
            select(list, index);
            EXPECT_FALSE(isSelected(list, index));
        }
        EXPECT_EQ(selection(list), std::vector<jint>{0});
    }
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(ListTest, a_selection_by_the_program_is_drawn_and_fires_nothing) {
    jint list = newList(0, {u"a", u"b"});
    listen(list);
    ValidateRect(windowOf(list), nullptr);
    select(list, 1);
    EXPECT_TRUE(GetUpdateRect(windowOf(list), nullptr, FALSE));
    EXPECT_EQ(record(list)->redraw, 1);
    dispatchAll();
    EXPECT_TRUE(selectionEvents().empty());
    ValidateRect(windowOf(list), nullptr);
    select(list, 5);
    EXPECT_FALSE(GetUpdateRect(windowOf(list), nullptr, FALSE)) << "nothing was selected";
}

TEST_F(ListTest, an_item_is_selected_after_a_look_at_the_top_item) {
    for (jint style : {plain, multiple}) {
        jint list = newList(style, {u"a", u"b"});
        MessageRecorder messages(vm, {{LB_GETTOPINDEX, "LB_GETTOPINDEX"},
                                      {LB_SETCURSEL, "LB_SETCURSEL"},
                                      {LB_SETSEL, "LB_SETSEL"}});
        messages.watch(windowOf(list), "list");
        select(list, 1);
        const char* selecting = style == multiple ? "list LB_SETSEL" : "list LB_SETCURSEL";
        expectSequence(vm.takeEvents(), {{"list LB_GETTOPINDEX"}, {selecting}});
    }
}

TEST_F(ListTest, several_indices_are_selected_in_multiple_mode_only) {
    jint single = newList(0, {u"a", u"b", u"c"});
    selectAll(single, {0, 1}, 2);
    EXPECT_EQ(selectionIndex(single), -1);
    selectAll(single, {1, 2}, 1);
    EXPECT_EQ(selectionIndex(single), 1);
    jint several = newList(multiple, {u"a", u"b", u"c"});
    selectAll(several, {2, 0}, 2);
    EXPECT_EQ(selection(several), (std::vector<jint>{0, 2}));
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(ListTest, no_indices_select_nothing) {
    jint list = newList(multiple, {u"a", u"b"});
    selectAll(list, {0, 1}, 0);
    selectAll(list, {0, 1}, -1);
    call(OS::List_SelectIndices, list, nullptr, 2);
    EXPECT_EQ(selectionCount(list), 0);
}

TEST_F(ListTest, a_count_beyond_the_indices_reads_no_further) {
    jint list = newList(multiple, {u"a", u"b", u"c"});
    selectAll(list, {1}, 1000000);
    EXPECT_EQ(selection(list), std::vector<jint>{1});
}

TEST_F(ListTest, only_the_current_item_of_single_mode_is_deselected) {
    jint list = newList(0, {u"a", u"b"});
    select(list, 1);
    deselect(list, 0);
    deselect(list, -1);
    EXPECT_EQ(selectionIndex(list), 1);
    deselect(list, 1);
    EXPECT_EQ(selectionIndex(list), -1);
    select(list, 0);
    deselect(list, 0);
    EXPECT_EQ(selectionIndex(list), -1) << "the first one too";
}

TEST_F(ListTest, items_are_deselected_one_by_one_in_multiple_mode) {
    jint list = newList(multiple, {u"a", u"b", u"c"});
    selectAll(list, {0, 1, 2}, 3);
    deselect(list, 1);
    deselect(list, -1);
    deselect(list, 7);
    EXPECT_EQ(selection(list), (std::vector<jint>{0, 2}));
    deselect(list, 0);
    EXPECT_EQ(selection(list), std::vector<jint>{2});
}

TEST_F(ListTest, queries_that_fail_are_errors) {
    jint list = newList(multiple, {u"a", u"b", u"c"});
    selectAll(list, {0, 2}, 2);
    auto count = [&] { return call(OS::List_GetSelectionCount, list) != 0; };
    auto index = [&] { return call(OS::List_GetSelectionIndex, list) != 0; };
    auto indices = [&] { return call(OS::List_GetSelectionIndices, list) != nullptr; };
    const struct {
        const char* function;
        std::function<bool()> isAnswered;
        int nth;
        DWORD answer;
        const char16_t* message;
    } rows[] = {
        {"List_GetSelectionCount", count, 1, DWORD(-1),
         u"Unable to get selection count from multiple select listbox::"},
        {"List_GetSelectionIndex", index, 1, DWORD(-1),
         u"Unable to get selection count from multiple-select list box::"},
        {"List_GetSelectionIndex", index, 2, 0,
         u"Unable to get selection from multiple select listbox::"},
        {"List_GetSelectionIndices", indices, 1, DWORD(-1),
         u"Unable to get selection count from list"},
        {"List_GetSelectionIndices", indices, 2, 1, u"Unable to get selection from list::"},
    };
    for (const auto& row : rows) {
        NoLeaks noLeaks;
        Faults faults;
        faults.fail("SendMessageW", row.nth, ERROR_INVALID_WINDOW_HANDLE, row.answer);
        EXPECT_FALSE(row.isAnswered());
        expectReport(row.function, -3, row.message);
    }
}

TEST_F(ListTest, a_selection_without_memory_for_it_is_an_error) {
    for (jint style : {plain, multiple}) {
        jint list = newList(style, {u"a"});
        select(list, 0);
        Faults faults;
        faults.fail("LocalAlloc", 1);
        EXPECT_EQ(call(OS::List_GetSelectionIndices, list), nullptr);
        expectReport("List_GetSelectionIndices", -4, u"Unable to get selection from list");
    }
}

TEST_F(ListTest, a_selection_that_java_cannot_take_is_not_leaked) {
    jint list = newList(multiple, {u"a"});
    select(list, 0);
    NoLeaks noLeaks;
    vm.failCall("NewIntArray");
    EXPECT_EQ(call(OS::List_GetSelectionIndices, list), nullptr);
    EXPECT_FALSE(vm.pendingException.empty());
    vm.clearException();
}

TEST_F(ListTest, an_item_is_scrolled_to_the_top) {
    jint list = newLongList(50);
    setTop(list, 20);
    EXPECT_EQ(topOf(list), 20);
    setTop(list, 0);
    EXPECT_EQ(topOf(list), 0);
}

TEST_F(ListTest, a_missing_top_item_scrolls_to_the_end) {
    jint list = newLongList(50);
    setTop(list, 49);
    jint last = topOf(list);
    EXPECT_GT(last, 30);
    setTop(list, 0);
    setTop(list, -5);
    EXPECT_EQ(topOf(list), last);
    EXPECT_TRUE(vm.reports.empty());
}

static std::vector<int> tops;
static LRESULT WINAPI recordTops(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == LB_SETTOPINDEX) tops.push_back(static_cast<int>(wParam));
    return SendMessageW(window, message, wParam, lParam);
}

TEST_F(ListTest, the_larger_of_a_missing_top_item_and_the_last_is_tried) {
    const struct {
        int items;
        jint index;
        std::vector<int> tried;
    } rows[] = {{50, 60, {60, 60}}, {50, -5, {-5, 49}}, {50, -1, {-1, 49}}, {50, 7, {7}},
                {0, 3, {3, 3}},     {0, -5, {-5, 0}},   {0, -1, {-1, 0}}};
    for (const auto& row : rows) {
        jint list = newLongList(row.items);
        tops.clear();
        Faults faults;
        faults.replace("SendMessageW", reinterpret_cast<void*>(recordTops));
        setTop(list, row.index);
        EXPECT_EQ(tops, row.tried) << row.index << " of " << row.items;
    }
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(ListTest, a_tap_on_an_item_selects_it) {
    jint list = newList(0, {u"a", u"b", u"c"});
    listen(list);
    tapItem(list, 1);
    EXPECT_EQ(selectionEvents(), Events{fired::listSelected(1, ListSelection::changed)});
    EXPECT_EQ(selectionIndex(list), 1);
    tapItem(list, 0);
    EXPECT_EQ(selectionEvents(), Events{fired::listSelected(0, ListSelection::changed)})
        << "also the first";
}

TEST_F(ListTest, a_tap_is_reported_in_the_order_in_which_it_happens) {
    jint list = newList(0, {u"a", u"b", u"c"});
    call(OS::Control_ForceFocus, shell);
    dispatchAll();
    listen(list);
    tapItem(list, 1);
    Events events = fired::without(vm.takeEvents(), {"paint"});
    std::erase_if(events, [](const std::string& event) {
        return fired::isPointer(event, pointerEnter) || fired::isPointer(event, pointerMove);
    });
    expectSequence(events, {
                               {fired::pointerDown(10, 24)},
                               {fired::pointer(pointerPress, 10, 24, buttonLeft)},
                               {fired::focus(FocusChange::gained), Step::optional},
                               {fired::pointer(pointerRelease, 10, 24, buttonLeft)},
                               {fired::listSelected(1, ListSelection::changed)},
                           });
}

TEST_F(ListTest, a_double_tap_chooses_an_item) {
    jint list = newList(0, {u"a", u"b", u"c"});
    listen(list);
    tapItem(list, 2);
    tapItem(list, 2);
    Events events = selectionEvents();
    EXPECT_EQ(std::count(events.begin(), events.end(),
                         fired::listSelected(2, ListSelection::doubleClicked)),
              1);
    EXPECT_EQ(events.front(), fired::listSelected(2, ListSelection::changed));
}

TEST_F(ListTest, taps_in_multiple_mode_select_and_deselect) {
    jint list = newList(multiple, {u"a", u"b", u"c"});
    listen(list);
    tapItem(list, 2);
    tapItem(list, 0);
    EXPECT_EQ(selection(list), (std::vector<jint>{0, 2}));
    EXPECT_EQ(selectionEvents(), (Events{fired::listSelected(2, ListSelection::changed),
                                         fired::listSelected(0, ListSelection::changed)}));
    tapItem(list, 2);
    EXPECT_EQ(selection(list), std::vector<jint>{0});
    EXPECT_EQ(selectionEvents(), Events{fired::listSelected(2, ListSelection::changed)});
}

TEST_F(ListTest, keys_move_the_selection) {
    jint list = newList(0, {u"a", u"b", u"c"});
    EXPECT_TRUE(call(OS::Control_ForceFocus, list));
    listen(list);
    pressKey(keyDown);
    pressKey(keyEnd);
    pressKey(keyUp);
    EXPECT_EQ(selectionIndex(list), 1);
    Events events = selectionEvents();
    EXPECT_EQ(events.back(), fired::listSelected(1, ListSelection::changed));
    EXPECT_EQ(events.size(), 3u);
}

TEST_F(ListTest, notifications_tell_where_the_caret_is) {
    jint list = newList(multiple, {u"a", u"b", u"c"});
    EXPECT_EQ(notify(list, LBN_SELCHANGE), Events{fired::listSelected(0, ListSelection::changed)});
    ask(list, LB_SETCARETINDEX, 2);
    EXPECT_EQ(notify(list, LBN_SELCHANGE), Events{fired::listSelected(2, ListSelection::changed)});
    EXPECT_EQ(notify(list, LBN_DBLCLK),
              Events{fired::listSelected(2, ListSelection::doubleClicked)});
}

TEST_F(ListTest, a_notification_of_an_empty_list_tells_no_item) {
    jint list = newList();
    EXPECT_EQ(notify(list, LBN_SELCHANGE), Events{fired::listSelected(-1, ListSelection::changed)});
    EXPECT_EQ(notify(list, LBN_DBLCLK),
              Events{fired::listSelected(-1, ListSelection::doubleClicked)});
}

TEST_F(ListTest, other_notifications_are_ignored) {
    jint list = newList(0, {u"a"});
    for (WORD code : {LBN_SELCANCEL, LBN_SETFOCUS, LBN_KILLFOCUS}) {
        EXPECT_TRUE(notify(list, code).empty());
        EXPECT_EQ(SendMessageW(windowOf(list), controlCommand, MAKEWPARAM(0, code), 0), 0);
    }
}

TEST_F(ListTest, a_listener_may_dispose_of_the_list_it_hears) {
    jint list = newList(0, {u"a", u"b"});
    listen(list);
    vm.behavior["listSelected"] = [&](const std::vector<jint>&) {
        dispose(list);
        return 0;
    };
    tapItem(list, 1);
    EXPECT_EQ(selectionEvents(), Events{fired::listSelected(1, ListSelection::changed)});
    tapAt(shell, 60, 60);
}
