// Lists that are switched between single and multiple selection.

#include "faults.h"
#include "leaks.h"
#include "list_fixture.h"

class ListModeTest : public ListTest {};

TEST_F(ListModeTest, the_mode_that_a_list_has_stays_as_it_is) {
    for (jint style : {plain, multiple}) {
        jint list = newList(style, {u"a"});
        HWND window = windowOf(list);
        switchMode(list, style != 0);
        EXPECT_EQ(windowOf(list), window);
    }
}

TEST_F(ListModeTest, a_switch_gives_the_list_a_window_of_the_other_mode) {
    jint list = newList(bordered, {u"a", u"b"});
    HWND window = windowOf(list);
    switchMode(list, true);
    EXPECT_NE(windowOf(list), window);
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(styleOf(list), 0x46810000u | 0x109);
    EXPECT_EQ(record(list)->style, DWORD(bordered | multiple));
    EXPECT_FALSE(record(list)->singleSelect);
    EXPECT_EQ(GetDlgCtrlID(windowOf(list)), 0);
    EXPECT_EQ(GetParent(windowOf(list)), windowOf(shell));
    switchMode(list, false);
    EXPECT_EQ(styleOf(list), 0x46810000u | 0x101);
    EXPECT_EQ(record(list)->style, DWORD(bordered));
    EXPECT_TRUE(record(list)->singleSelect);
    EXPECT_EQ(itemsOf(list), (std::vector<std::u16string>{u"a", u"b"}));
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(ListModeTest, a_list_that_goes_while_its_new_window_is_made_needs_none) {
    NoLeaks noLeaks;
    jint list = newList(plain, {u"a"});
    Faults faults;
    bool isMade = false;
    faults.watch([&](const std::string& function) {
        isMade |= function == "CreateWindowExW";
        if (function == "SetWindowPos" && isMade && list) dispose(std::exchange(list, 0));
    });
    switchMode(list, true);
    EXPECT_EQ(list, 0);
    EXPECT_TRUE(vm.reports.empty());
    EXPECT_EQ(GetWindow(windowOf(shell), GW_CHILD), nullptr);
}

TEST_F(ListModeTest, a_list_that_is_being_disposed_of_gets_no_new_window) {
    jint list = newList(plain, {u"a"});
    call(OS::Control_ForceFocus, list);
    listen(shell);
    bool isAsked = false;
    vm.behavior["focus"] = [&](const std::vector<jint>&) {
        isAsked = true;
        switchMode(list, true);
        return 0;
    };
    dispose(list);
    EXPECT_TRUE(isAsked);
    EXPECT_EQ(GetWindow(windowOf(shell), GW_CHILD), nullptr);
    vm.behavior.clear();
}

TEST_F(ListModeTest, a_switch_keeps_place_visibility_and_state) {
    jint list = newList(withBars, {u"a"});
    auto bounds = [&] { return boundsOf(list); };
    std::vector<jint> before = bounds();
    EXPECT_EQ(before, (std::vector<jint>{20, 30, 120, 100}));
    call(OS::Control_SetEnabled, list, false);
    switchMode(list, true);
    EXPECT_EQ(bounds(), before);
    EXPECT_TRUE(IsWindowVisible(windowOf(list)));
    EXPECT_FALSE(IsWindowEnabled(windowOf(list)));
    call(OS::Control_SetVisible, list, false);
    call(OS::Control_SetEnabled, list, true);
    switchMode(list, false);
    EXPECT_FALSE(IsWindowVisible(windowOf(list)));
    EXPECT_TRUE(IsWindowEnabled(windowOf(list)));
}

TEST_F(ListModeTest, a_switch_keeps_font_extent_and_what_is_in_view) {
    jint list = newLongList(50, withBars);
    NoLeaks noLeaks; // the font ends with the window that wears it last
    jint font = call(OS::Font_NewLogical, display, 2, 14, 0);
    call(OS::Control_SetFont, list, font);
    add(list, u"a quite wide item, wider than the list");
    setTop(list, 20);
    LRESULT handle = ask(list, WM_GETFONT), height = ask(list, LB_GETITEMHEIGHT),
            extent = extentOf(list);
    for (bool toMultiple : {true, false}) {
        switchMode(list, toMultiple);
        EXPECT_EQ(ask(list, WM_GETFONT), handle);
        EXPECT_EQ(ask(list, LB_GETITEMHEIGHT), height);
        EXPECT_EQ(extentOf(list), extent);
        EXPECT_EQ(topOf(list), 20);
        EXPECT_EQ(countOf(list), 51);
    }
    call(OS::Control_SetFont, list, 0);
    call(OS::Font_Dispose, font);
}

TEST_F(ListModeTest, bars_that_are_not_needed_now_come_when_they_are) {
    jint list = newList(withBars, {u"a"});
    dispatchAll();
    switchMode(list, true);
    for (int i = 0; i < 50; ++i) add(list, u"a quite wide item, wider than the list");
    dispatchAll();
    EXPECT_EQ(styleOf(list) & (WS_HSCROLL | WS_VSCROLL), DWORD(WS_HSCROLL | WS_VSCROLL));
}

TEST_F(ListModeTest, a_switch_to_multiple_keeps_the_selection) {
    jint list = newList(0, {u"a", u"b", u"c"});
    select(list, 1);
    switchMode(list, true);
    EXPECT_EQ(selection(list), std::vector<jint>{1});
    jint none = newList(0, {u"a", u"b", u"c"});
    switchMode(none, true);
    EXPECT_EQ(selection(none), std::vector<jint>{});
}

TEST_F(ListModeTest, a_switch_to_single_keeps_the_first_selected_item) {
    jint list = newList(multiple, {u"a", u"b", u"c"});
    selectAll(list, {0, 2}, 2);
    switchMode(list, false);
    EXPECT_EQ(selection(list), std::vector<jint>{0});
    jint last = newList(multiple, {u"a", u"b", u"c"});
    select(last, 2);
    switchMode(last, false);
    EXPECT_EQ(selectionIndex(last), 2);
    jint none = newList(multiple, {u"a"});
    switchMode(none, false);
    EXPECT_EQ(selectionIndex(none), -1);
}

TEST_F(ListModeTest, a_switch_keeps_the_focus_and_tells_java) {
    jint list = newList(0, {u"a"});
    EXPECT_TRUE(call(OS::Control_ForceFocus, list));
    listen(list);
    switchMode(list, true);
    EXPECT_EQ(GetFocus(), windowOf(list));
    EXPECT_EQ(fired::only(vm.takeEvents(), {"focus"}),
              (Events{fired::focus(FocusChange::lost), fired::focus(FocusChange::gained)}));
}

TEST_F(ListModeTest, a_switch_without_the_focus_leaves_it_where_it_is) {
    jint button = newButton(shell);
    jint list = newList(0, {u"a"});
    EXPECT_TRUE(call(OS::Control_ForceFocus, button));
    listen(list);
    switchMode(list, true);
    EXPECT_EQ(GetFocus(), windowOf(button));
    EXPECT_TRUE(fired::only(vm.takeEvents(), {"focus"}).empty());
}

TEST_F(ListModeTest, a_switched_list_hears_taps) {
    jint list = newList(0, {u"a", u"b"});
    switchMode(list, true);
    listen(list);
    tapItem(list, 1);
    EXPECT_EQ(selectionEvents(), Events{fired::listSelected(1, ListSelection::changed)});
}

TEST_F(ListModeTest, the_bars_of_a_switched_list_belong_to_its_window) {
    jint list = newLongList(50, withBars);
    jint bar = call(OS::Scrollable_GetVerticalBar, list);
    jint foot = call(OS::Scrollable_GetHorizontalBar, list);
    switchMode(list, true);
    EXPECT_EQ(windowOf(bar), windowOf(list));
    EXPECT_EQ(windowOf(foot), windowOf(list));
    EXPECT_EQ(call(OS::Scrollable_GetVerticalBar, list), bar);
}

TEST_F(ListModeTest, a_listener_may_dispose_of_a_list_that_is_switched) {
    for (jint change : {1, 2}) {
        jint list = newList(0, {u"a"});
        EXPECT_TRUE(call(OS::Control_ForceFocus, list));
        listen(list);
        bool disposed = false;
        vm.behavior["focus"] = [&](const std::vector<jint>& arguments) {
            if (arguments[0] == change && !disposed) dispose(list);
            disposed = disposed || arguments[0] == change;
            return 0;
        };
        HWND window = windowOf(list);
        switchMode(list, true);
        EXPECT_TRUE(disposed);
        vm.behavior.clear();
        EXPECT_FALSE(IsWindow(window));
        EXPECT_EQ(FindWindowExW(windowOf(shell), nullptr, L"DeviceListBox", nullptr), nullptr);
    }
}

TEST_F(ListModeTest, a_switch_without_a_window_is_an_error_and_changes_nothing) {
    jint list = newList(0, {u"a", u"b"});
    select(list, 1);
    HWND window = windowOf(list);
    NoLeaks noLeaks;
    Faults faults;
    faults.fail("CreateWindowExW", 1, ERROR_INVALID_WINDOW_HANDLE);
    switchMode(list, true);
    expectReport("List_SetMultipleMode", -3, u"Unable to create handle for widget::");
    EXPECT_EQ(windowOf(list), window);
    EXPECT_EQ(record(list)->style, 0u);
    EXPECT_EQ(selectionIndex(list), 1);
}

TEST_F(ListModeTest, a_switch_without_memory_is_an_error_and_changes_nothing) {
    jint list = newList(0, {u"a", u"b"});
    HWND window = windowOf(list);
    for (int nth : {1, 2, 3}) {
        NoLeaks noLeaks;
        Faults faults;
        faults.fail("LocalAlloc", nth);
        switchMode(list, true);
        expectReport("List_SetMultipleMode", -4, u"Unable to add item to list");
    }
    EXPECT_EQ(windowOf(list), window);
    EXPECT_EQ(countOf(list), 2);
}

TEST_F(ListModeTest, items_that_the_new_window_does_not_take_are_one_error) {
    jint list = newList(0, {u"a", u"b", u"c"});
    NoLeaks noLeaks;
    Faults faults;
    insertionsTaken = 1;
    faults.replace("SendMessageW", reinterpret_cast<void*>(refuseInsertions));
    switchMode(list, true);
    EXPECT_EQ(insertionsTaken, -2) << "each is tried";
    expectReport("List_SetMultipleMode", -4, u"Index is out of valid range for list::");
    EXPECT_EQ(itemsOf(list), std::vector<std::u16string>{u"a"});
}

// What a failing DestroyWindow or ReleaseDC leaves is the system's; memory is the library's.
TEST_F(ListModeTest, any_failing_call_leaves_no_memory_behind) {
    jint list = newList(withBars, {u"a", u"b"});
    auto run = [&](const std::function<void()>& step) {
        step();
        vm.reports.clear();
        vm.clearException();
    };
    long blocks = countHeapBlocks();
    int failures = forEachFailure([&](Faults&) {
        run([&] { add(list, u"c"); });
        run([&] { switchMode(list, !List_IsMultiple(record(list))); });
        run([&] { setItem(list, 0, u"d"); });
        run([&] { remove(list, 1); });
        run([&] { call(OS::List_GetMinimumSize, list, 2); });
        run([&] { call(OS::List_GetSelectionIndices, list); });
    });
    EXPECT_GT(failures, 40);
    EXPECT_EQ(countHeapBlocks(), blocks);
}

TEST_F(ListModeTest, the_message_that_switches_answers_nothing) {
    jint list = newList(withBars, {u"a"});
    for (bool toMultiple : {true, false}) {
        ErrorRecord error = {};
        EXPECT_EQ(sendTo(list, controlSetListMode, toMultiple, reinterpret_cast<LPARAM>(&error)),
                  0);
    }
}
