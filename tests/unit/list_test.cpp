#include "control/adjustable.h"
#include "device.h"
#include "faults.h"
#include "leaks.h"
#include "messages.h"
#include "other_thread.h"
#include "widgets/list.h"

static constexpr jint plain = 0, multiple = 0x800000, withBars = 0x30000, bordered = 0x800;

class ListTest : public DeviceTest {
  protected:
    jint newList(jint style = 0, const std::vector<std::u16string>& items = {}) {
        jint list = newControl(OS::List_New, shell, style, {20, 30, 140, 130});
        for (const std::u16string& item : items) add(list, item);
        dispatchAll();
        return list;
    }
    // Items "0", "1" and so on.
    jint newLongList(int count, jint style = 0x20000) {
        jint list = newList(style);
        for (int i = 0; i < count; ++i) add(list, numbered(i));
        dispatchAll();
        return list;
    }
    static std::u16string numbered(int number) {
        std::string digits = std::to_string(number);
        return {digits.begin(), digits.end()};
    }
    void add(jint list, const std::u16string& item, jint index = -1) {
        call(OS::List_Add, list, vm.newString(item), index);
    }
    void setItem(jint list, jint index, const std::u16string& item) {
        call(OS::List_SetItem, list, index, vm.newString(item));
    }
    void remove(jint list, jint index) { call(OS::List_Remove, list, index); }
    void select(jint list, jint index) { call(OS::List_Select, list, index); }
    void selectAll(jint list, const std::vector<jint>& indices, jint count) {
        call(OS::List_SelectIndices, list, vm.newInts(indices), count);
    }
    void deselect(jint list, jint index) { call(OS::List_Deselect, list, index); }
    bool isSelected(jint list, jint index) { return call(OS::List_IsSelected, list, index); }
    jint selectionCount(jint list) { return call(OS::List_GetSelectionCount, list); }
    jint selectionIndex(jint list) { return call(OS::List_GetSelectionIndex, list); }
    std::vector<jint> selection(jint list) {
        jobject indices = call(OS::List_GetSelectionIndices, list);
        EXPECT_NE(indices, nullptr);
        return vm.ints(indices);
    }
    void switchMode(jint list, bool toMultiple) {
        call(OS::List_SetMultipleMode, list, toMultiple);
    }
    void setTop(jint list, jint index) { call(OS::List_SetTopItemIndex, list, index); }
    std::vector<jint> minimumSize(jint list, jint rows) {
        return vm.ints(call(OS::List_GetMinimumSize, list, rows));
    }
    static LRESULT ask(jint list, UINT message, WPARAM wParam = 0) {
        return SendMessageW(windowOf(list), message, wParam, 0);
    }
    static jint countOf(jint list) { return ask(list, LB_GETCOUNT); }
    static jint topOf(jint list) { return ask(list, LB_GETTOPINDEX); }
    static LRESULT extentOf(jint list) { return ask(list, LB_GETHORIZONTALEXTENT); }
    static std::vector<std::u16string> itemsOf(jint list) {
        std::vector<std::u16string> items;
        for (jint i = 0; i < countOf(list); ++i) {
            std::u16string text(ask(list, LB_GETTEXTLEN, i) + 1, u'\0');
            SendMessageW(windowOf(list), LB_GETTEXT, i, reinterpret_cast<LPARAM>(text.data()));
            text.pop_back();
            items.push_back(text);
        }
        return items;
    }
    static ListRecord* record(jint list) { return reinterpret_cast<ListRecord*>(list); }
    // As the font that the list has lays it out, or the default one.
    static LONG widthOf(const wchar_t* text, UINT flags = 0xC20,
                        HGDIOBJ font = GetStockObject(SYSTEM_FONT)) {
        HDC context = GetDC(nullptr);
        HGDIOBJ before = SelectObject(context, font);
        RECT area = {};
        DrawTextW(context, text, -1, &area, flags);
        SelectObject(context, before);
        ReleaseDC(nullptr, context);
        return area.right;
    }
    // What the list tells Java when its window sends this notification.
    Events notify(jint list, WORD code) {
        listen(list);
        SendMessageW(windowOf(shell), WM_COMMAND, MAKEWPARAM(0, code),
                     reinterpret_cast<LPARAM>(windowOf(list)));
        return vm.takeEvents();
    }
    void tapItem(jint list, jint index) {
        RECT place;
        SendMessageW(windowOf(list), LB_GETITEMRECT, index, reinterpret_cast<LPARAM>(&place));
        tapAt(list, 10, (place.top + place.bottom) / 2);
    }
    Events selectionEvents() { return fired::only(vm.takeEvents(), {"listSelected"}); }

    jint shell = newShell();
};

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

// Takes some items more, and then none.
static int insertionsTaken;
static LRESULT WINAPI refuseInsertions(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != LB_INSERTSTRING || insertionsTaken-- > 0)
        return SendMessageW(window, message, wParam, lParam);
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return LB_ERRSPACE;
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
}

TEST_F(ListTest, items_are_deselected_one_by_one_in_multiple_mode) {
    jint list = newList(multiple, {u"a", u"b", u"c"});
    selectAll(list, {0, 1, 2}, 3);
    deselect(list, 1);
    deselect(list, -1);
    deselect(list, 7);
    EXPECT_EQ(selection(list), (std::vector<jint>{0, 2}));
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
    jint list = newLongList(50);
    auto asked = [&](jint index) {
        tops.clear();
        Faults faults;
        faults.replace("SendMessageW", reinterpret_cast<void*>(recordTops));
        setTop(list, index);
        return tops;
    };
    EXPECT_EQ(asked(60), (std::vector<int>{60, 60}));
    EXPECT_EQ(asked(-5), (std::vector<int>{-5, 49}));
    EXPECT_EQ(asked(7), std::vector<int>{7});
    EXPECT_EQ(topOf(list), 7);
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
