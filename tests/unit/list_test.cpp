#include "faults.h"
#include "leaks.h"
#include "list_fixture.h"
#include "other_thread.h"

// What a window was asked for that is not made.
static std::wstring refusedClass;
static DWORD refusedStyle, refusedExtendedStyle;
static HWND WINAPI refuseWindow(DWORD extendedStyle, LPCWSTR className, LPCWSTR, DWORD style, int,
                                int, int, int, HWND, HMENU, HINSTANCE, LPVOID) {
    refusedClass = className;
    refusedStyle = style;
    refusedExtendedStyle = extendedStyle;
    return nullptr;
}

TEST_F(ListTest, window_styles_follow_the_java_style) {
    EXPECT_EQ(styleOf(newList()), 0x46010000u | 0x101);
    EXPECT_EQ(styleOf(newList(bordered)), 0x46810000u | 0x101);
    EXPECT_EQ(styleOf(newList(multiple)), 0x46010000u | 0x109);
    Faults faults;
    faults.replace("CreateWindowExW", reinterpret_cast<void*>(refuseWindow));
    EXPECT_EQ(call(OS::List_New, shell, withBars | bordered), 0);
    EXPECT_EQ(onlyReport().function, "List_New");
    EXPECT_EQ(refusedClass, L"LISTBOX");
    EXPECT_EQ(refusedStyle, 0x46010000u | 0x200000 | 0x100000 | 0x800000 | 0x101);
    EXPECT_EQ(refusedExtendedStyle, 0u);
}

TEST_F(ListTest, a_new_list_has_its_record_filled) {
    jint list = newList(0x20000);
    EXPECT_EQ(record(list)->ctlColorMessage, 0x134u);
    EXPECT_TRUE(record(list)->singleSelect);
    EXPECT_EQ(record(list)->style, 0x20000u);
    EXPECT_EQ(record(list)->dispose,
              reinterpret_cast<WidgetDispose>(exportOf("_Dispose_Scrollable")));
    EXPECT_EQ(countOf(list), 0);
}

TEST_F(ListTest, items_are_inserted_where_they_are_told_to) {
    jint list = newList();
    add(list, u"b");
    add(list, u"c", -1);
    add(list, u"a", 0);
    add(list, u"d", 3);
    call(OS::List_Add, list, nullptr, 1);
    EXPECT_EQ(itemsOf(list), (std::vector<std::u16string>{u"a", u"", u"b", u"c", u"d"}));
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(ListTest, an_item_of_an_empty_list_is_inserted_at_0_or_appended) {
    for (jint index : {0, -1}) {
        jint list = newList();
        add(list, u"a", index);
        EXPECT_EQ(itemsOf(list), std::vector<std::u16string>{u"a"});
    }
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(ListTest, an_index_behind_the_end_is_an_error) {
    jint list = newList();
    add(list, u"a", 1);
    expectReport("List_Add", -3, u"Index is out of valid range for list::");
    EXPECT_EQ(countOf(list), 0);
    add(list, u"a");
    add(list, u"b", 2);
    expectReport("List_Add", -3, u"Index is out of valid range for list::");
    EXPECT_EQ(countOf(list), 1);
}

TEST_F(ListTest, an_item_that_cannot_be_added_is_an_error) {
    jint list = newList(0, {u"a", u"b"});
    const struct {
        jint index;
        DWORD answer, lastError;
        jint code;
        const char16_t* message;
    } rows[] = {
        {0, DWORD(LB_ERRSPACE), ERROR_NOT_ENOUGH_MEMORY, -4, u"Unable to add item to list::"},
        {-1, DWORD(LB_ERR), ERROR_GEN_FAILURE, -3, u"Unable to add item to list::"},
        {1, DWORD(LB_ERRSPACE), ERROR_OUTOFMEMORY, -4, u"Index is out of valid range for list::"},
    };
    for (const auto& row : rows) {
        Faults faults;
        faults.fail("SendMessageW", 1, row.lastError, row.answer);
        add(list, u"c", row.index);
        expectReport("List_Add", row.code, row.message);
    }
    EXPECT_EQ(countOf(list), 2);
    jint empty = newList();
    Faults faults;
    faults.fail("SendMessageW", 1, ERROR_GEN_FAILURE, DWORD(LB_ERR));
    add(empty, u"c", 0);
    expectReport("List_Add", -3, u"Index is out of valid range for list::");
}

TEST_F(ListTest, the_widest_item_can_be_scrolled_to) {
    jint list = newList(withBars);
    EXPECT_EQ(extentOf(list), 0);
    add(list, u"short");
    EXPECT_EQ(extentOf(list), widthOf(L"short") + 3);
    add(list, u"a & very much longer item", 0);
    EXPECT_EQ(extentOf(list), widthOf(L"a & very much longer item") + 3);
    add(list, u"short");
    EXPECT_EQ(extentOf(list), widthOf(L"a & very much longer item") + 3);
}

TEST_F(ListTest, without_a_horizontal_bar_adding_leaves_the_extent_alone) {
    jint list = newList(0x20000, {u"a very much longer item"});
    EXPECT_EQ(extentOf(list), 0);
}

TEST_F(ListTest, the_extent_follows_removed_items) {
    for (jint style : {withBars, plain}) {
        jint list = newList(style, {u"a", u"wide wide", u"wi"});
        remove(list, 0);
        EXPECT_EQ(extentOf(list), widthOf(L"wide wide") + 3);
        remove(list, 0);
        EXPECT_EQ(extentOf(list), widthOf(L"wi") + 3);
        remove(list, 0);
        EXPECT_EQ(extentOf(list), 3);
    }
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(ListTest, the_extent_is_measured_in_the_lists_font) {
    jint list = newList(withBars, {u"some text"});
    jint font = call(OS::Font_NewLogical, display, 2, 30, 0);
    call(OS::Control_SetFont, list, font);
    HFONT handle = reinterpret_cast<HFONT>(ask(list, WM_GETFONT));
    add(list, u"some text");
    LONG width = widthOf(L"some text", 0xC20, handle);
    EXPECT_GT(width, widthOf(L"some text"));
    EXPECT_EQ(extentOf(list), width + 3);
    call(OS::Control_SetFont, list, 0);
    call(OS::Font_Dispose, font);
}

TEST_F(ListTest, an_item_without_memory_to_measure_it_counts_as_empty) {
    jint list = newList(withBars, {u"a", u"b", u"wide wide"});
    Faults faults;
    faults.fail("LocalAlloc", 2);
    remove(list, 0);
    EXPECT_EQ(extentOf(list), widthOf(L"b") + 3);
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(ListTest, removing_a_missing_item_is_an_error) {
    jint list = newList(0, {u"a", u"b"});
    for (jint index : {2, -1, 100}) {
        remove(list, index);
        expectReport("List_Remove", -3, u"Invalid index of item to remove from list::");
    }
    jint empty = newList();
    remove(empty, 0);
    expectReport("List_Remove", -3, u"Invalid index of item to remove from list::");
    EXPECT_EQ(countOf(list), 2);
    EXPECT_EQ(topOf(list), 0);
}

TEST_F(ListTest, an_item_that_cannot_be_removed_is_an_error) {
    jint list = newList(0, {u"a", u"b"});
    Faults faults;
    faults.fail("SendMessageW", 2, ERROR_GEN_FAILURE, DWORD(LB_ERR));
    remove(list, 1);
    expectReport("List_Remove", -3, u"Unable to remove item from list::");
    EXPECT_EQ(countOf(list), 2);
}

TEST_F(ListTest, items_in_view_stay_when_one_above_them_is_removed) {
    jint list = newLongList(50);
    setTop(list, 10);
    remove(list, 4);
    EXPECT_EQ(topOf(list), 9);
    EXPECT_EQ(itemsOf(list)[9], u"10");
    remove(list, 9);
    EXPECT_EQ(topOf(list), 9) << "the top item itself";
    remove(list, 20);
    EXPECT_EQ(topOf(list), 9);
}

TEST_F(ListTest, a_failed_removal_still_adjusts_the_view_and_the_extent) {
    jint list = newLongList(50, withBars);
    setTop(list, 10);
    ask(list, LB_SETHORIZONTALEXTENT, 500);
    remove(list, -3);
    EXPECT_EQ(onlyReport().function, "List_Remove");
    EXPECT_EQ(topOf(list), 9);
    EXPECT_EQ(extentOf(list), widthOf(L"40") + 3);
}

TEST_F(ListTest, a_replaced_item_keeps_its_place_and_selection) {
    jint list = newLongList(50);
    select(list, 12);
    setTop(list, 10);
    setItem(list, 12, u"new");
    setItem(list, 5, u"above");
    EXPECT_EQ(itemsOf(list)[12], u"new");
    EXPECT_EQ(itemsOf(list)[5], u"above");
    EXPECT_EQ(countOf(list), 50);
    EXPECT_EQ(selection(list), std::vector<jint>{12});
    EXPECT_EQ(topOf(list), 10);
}

TEST_F(ListTest, a_replaced_item_of_several_stays_selected_among_them) {
    jint list = newList(multiple, {u"a", u"b", u"c"});
    selectAll(list, {0, 2}, 2);
    setItem(list, 2, u"C");
    setItem(list, 1, u"B");
    EXPECT_EQ(itemsOf(list), (std::vector<std::u16string>{u"a", u"B", u"C"}));
    EXPECT_EQ(selection(list), (std::vector<jint>{0, 2}));
}

TEST_F(ListTest, the_extent_follows_replaced_items) {
    jint list = newList(withBars, {u"wide wide", u"a"});
    setItem(list, 0, u"b");
    EXPECT_EQ(extentOf(list), (std::max)(widthOf(L"a"), widthOf(L"b")) + 3);
    setItem(list, 1, u"wider wider");
    EXPECT_EQ(extentOf(list), widthOf(L"wider wider") + 3);
    call(OS::List_SetItem, list, 1, nullptr);
    EXPECT_EQ(itemsOf(list)[1], u"");
}

TEST_F(ListTest, replacing_a_missing_item_is_one_error_and_adds_nothing) {
    jint list = newList(0, {u"a", u"b"});
    for (jint index : {2, -1}) {
        NoLeaks noLeaks;
        setItem(list, index, u"c");
        expectReport("List_SetItem", -3, u"Invalid index of item to remove from list::");
    }
    EXPECT_EQ(itemsOf(list), (std::vector<std::u16string>{u"a", u"b"}));
}

TEST_F(ListTest, a_replacement_that_cannot_be_inserted_is_an_error) {
    jint list = newList(0, {u"a", u"b"});
    Faults faults;
    insertionsTaken = 0;
    faults.replace("SendMessageW", reinterpret_cast<void*>(refuseInsertions));
    setItem(list, 0, u"c");
    expectReport("List_SetItem", -4, u"Unable to add item to list::");
}

TEST_F(ListTest, all_items_are_removed_at_once) {
    jint list = newList(withBars, {u"an item that is wider than the list is", u"b"});
    select(list, 1);
    call(OS::List_RemoveAll, list);
    EXPECT_EQ(countOf(list), 0);
    EXPECT_EQ(selectionIndex(list), -1);
    EXPECT_EQ(extentOf(list), 0);
    EXPECT_FALSE(styleOf(list) & WS_HSCROLL) << "there is nothing to scroll to";
}

TEST_F(ListTest, removing_all_of_a_window_without_bar_leaves_the_extent_alone) {
    jint list = newList(0, {u"a"});
    ask(list, LB_SETHORIZONTALEXTENT, 77);
    call(OS::List_RemoveAll, list);
    EXPECT_EQ(extentOf(list), 77);
}

TEST_F(ListTest, other_threads_use_a_list) {
    jint list = newList();
    onOtherThread(vm, display, [&] {
        vm.attachedThreads.insert(GetCurrentThreadId());
        add(list, u"a");
        add(list, u"b");
        switchMode(list, true);
        select(list, 1);
    });
    EXPECT_EQ(itemsOf(list), (std::vector<std::u16string>{u"a", u"b"}));
    EXPECT_EQ(selection(list), std::vector<jint>{1});
    EXPECT_EQ(GetWindowThreadProcessId(windowOf(list), nullptr), GetCurrentThreadId());
}

TEST_F(ListTest, ten_thousand_items_are_kept_and_found) {
    jint list = newLongList(10000, withBars);
    EXPECT_EQ(countOf(list), 10000);
    EXPECT_EQ(extentOf(list), widthOf(L"1000") + 3);
    select(list, 9999);
    setTop(list, 5000);
    EXPECT_EQ(selectionIndex(list), 9999);
    EXPECT_EQ(topOf(list), 5000);
    remove(list, 0);
    EXPECT_EQ(topOf(list), 4999);
    EXPECT_EQ(selectionIndex(list), 9998);
    switchMode(list, true);
    EXPECT_EQ(countOf(list), 9999);
    EXPECT_EQ(itemsOf(list).back(), u"9999");
    EXPECT_EQ(selection(list), std::vector<jint>{9998});
    std::vector<jint> all(9999);
    for (jint i = 0; i < 9999; ++i) all[i] = i;
    for (jint i : all) SendMessageW(windowOf(list), LB_SETSEL, TRUE, i);
    EXPECT_EQ(selection(list), all);
    call(OS::List_RemoveAll, list);
    EXPECT_EQ(countOf(list), 0);
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(ListTest, the_least_size_of_an_empty_list_is_that_of_six_characters) {
    HDC context = GetDC(nullptr);
    HGDIOBJ before = SelectObject(context, GetStockObject(SYSTEM_FONT));
    TEXTMETRICW metrics;
    GetTextMetricsW(context, &metrics);
    SelectObject(context, before);
    ReleaseDC(nullptr, context);
    LONG average = metrics.tmAveCharWidth;
    jint list = newList();
    LONG row = ask(list, LB_GETITEMHEIGHT);
    EXPECT_EQ(minimumSize(list, 4), (std::vector<jint>{9 * average, 4 * row}));
    EXPECT_EQ(minimumSize(list, 0), (std::vector<jint>{9 * average, 0}));
    // The most characters count, not the most pixels, and the first of equals.
    for (const char16_t* item : {u"MMM", u"i&i\tii", u"MMMMMM"}) add(list, item);
    LONG width = widthOf(L"i&i\tii", 0xC00) + 3 * average;
    EXPECT_EQ(minimumSize(list, 2), (std::vector<jint>{width, 2 * row}));
}

TEST_F(ListTest, the_least_size_holds_bars_and_border) {
    jint bare = newList();
    std::vector<jint> size = minimumSize(bare, 3);
    auto grown = [&](jint style, DWORD extendedStyle) {
        jint list = newList(style);
        SetWindowLongW(windowOf(list), GWL_EXSTYLE, extendedStyle);
        std::vector<jint> other = minimumSize(list, 3);
        return std::vector<jint>{other[0] - size[0], other[1] - size[1]};
    };
    jint bar = GetSystemMetrics(SM_CXVSCROLL), foot = GetSystemMetrics(SM_CYHSCROLL);
    jint line = 2 * GetSystemMetrics(SM_CXBORDER), edge = 2 * GetSystemMetrics(SM_CXEDGE);
    EXPECT_EQ(grown(0x20000, 0), (std::vector<jint>{bar, 0}));
    EXPECT_EQ(grown(0x10000, 0), (std::vector<jint>{0, foot}));
    EXPECT_EQ(grown(bordered, 0), (std::vector<jint>{line, line}));
    EXPECT_EQ(grown(0, WS_EX_STATICEDGE), (std::vector<jint>{line, line}));
    EXPECT_EQ(grown(bordered, WS_EX_CLIENTEDGE), (std::vector<jint>{edge, edge}));
    EXPECT_EQ(grown(withBars | bordered, 0), (std::vector<jint>{bar + line, foot + line}));
}

static WNDPROC procBeforeMargins;
static LRESULT CALLBACK tellMargins(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == EM_GETMARGINS) return MAKELONG(5, 7);
    return CallWindowProcW(procBeforeMargins, window, message, wParam, lParam);
}

TEST_F(ListTest, the_least_size_holds_the_margins_that_the_window_tells) {
    jint list = newList();
    std::vector<jint> size = minimumSize(list, 3);
    procBeforeMargins = reinterpret_cast<WNDPROC>(
        SetWindowLongW(windowOf(list), GWL_WNDPROC, reinterpret_cast<LONG>(tellMargins)));
    EXPECT_EQ(minimumSize(list, 3), (std::vector<jint>{size[0] + 12, size[1]}));
}

TEST_F(ListTest, a_list_that_cannot_be_made_is_an_error_and_leaves_nothing) {
    expectFailedCreationsReported([&] { return call(OS::List_New, shell, withBars); });
}

TEST_F(ListTest, lists_leave_nothing_behind) {
    NoLeaks noLeaks;
    for (int i = 0; i < leakRounds(); ++i) {
        jint list = call(OS::List_New, shell, i % 2 ? withBars : multiple);
        add(list, u"text");
        add(list, u"text", 5);
        setItem(list, 0, u"other text");
        select(list, 0);
        selection(list);
        remove(list, 1);
        if (i % 10 == 0) switchMode(list, i % 2);
        dispose(list);
        vm.reports.clear();
    }
    dispatchAll();
}
