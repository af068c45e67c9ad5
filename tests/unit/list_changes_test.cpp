// Lists that change while something else goes on: their mode in a listener, or with items that are
// refused; and what other threads measure and read.

#include "device.h"
#include "faults.h"
#include "other_thread.h"
#include "widgets/list.h"
#include <algorithm>

class ListChangesTest : public DeviceTest {
  protected:
    void add(jint widget, const std::u16string& item) {
        call(OS::List_Add, widget, vm.newString(item), -1);
    }
    void select(jint index) { call(OS::List_Select, list, index); }
    void switchMode(bool toMultiple) { call(OS::List_SetMultipleMode, list, toMultiple); }
    LRESULT ask(UINT message, WPARAM wParam = 0) {
        return SendMessageW(windowOf(list), message, wParam, 0);
    }
    std::vector<std::wstring> items() {
        std::vector<std::wstring> found;
        for (int i = 0; i < ask(LB_GETCOUNT); ++i) {
            wchar_t text[100];
            SendMessageW(windowOf(list), LB_GETTEXT, i, reinterpret_cast<LPARAM>(text));
            found.push_back(text);
        }
        return found;
    }

    jint shell = newShell();
    jint list = newControl(OS::List_New, shell, 0x30000, {20, 30, 140, 130});
    jint next = newButton(shell);
};

static LRESULT WINAPI refuseB(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == LB_INSERTSTRING && reinterpret_cast<const wchar_t*>(lParam)[0] == L'b')
        return LB_ERRSPACE;
    return SendMessageW(window, message, wParam, lParam);
}

TEST_F(ListChangesTest, an_item_as_wide_as_the_extent_leaves_it) {
    add(list, u"some item");
    LRESULT width = ask(LB_GETHORIZONTALEXTENT) - 3;
    for (LRESULT extent : {width - 1, width, width + 1}) {
        ask(LB_SETHORIZONTALEXTENT, extent);
        add(list, u"some item");
        EXPECT_EQ(ask(LB_GETHORIZONTALEXTENT), extent < width ? width + 3 : extent);
    }
}

static HWND oldWindow;
static Events* heard;

// What of the switch is about to destroy it.
static BOOL WINAPI lookAtOldWindow(HWND window) {
    if (window == oldWindow) {
        heard->clear();
        SendMessageW(window, WM_SETFOCUS, 0, 0);
        SendMessageW(window, WM_CHAR, 'a', 0);
        SendMessageW(window, WM_RBUTTONUP, 0, 0);
        SendMessageW(window, WM_KILLFOCUS, 0, 0);
        EXPECT_TRUE(heard->empty()) << testing::PrintToString(*heard);
        EXPECT_EQ(GetWindowLongW(window, GWL_USERDATA), 0);
    }
    return DestroyWindow(window);
}

TEST_F(ListChangesTest, the_old_window_of_a_switch_tells_nothing_any_more) {
    add(list, u"a");
    call(OS::Widget_SetData, list, vm.newObject("test/Listener"));
    oldWindow = windowOf(list);
    heard = &vm.events;
    MSG message;
    while (PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) {
    }
    {
        Faults faults;
        faults.replace("DestroyWindow", reinterpret_cast<void*>(lookAtOldWindow));
        switchMode(true);
        EXPECT_GE(faults.countCalls("DestroyWindow"), 1);
    }
    EXPECT_FALSE(IsWindow(oldWindow));
    bool quits = PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
    EXPECT_FALSE(quits) << "the list is still there";
}

TEST_F(ListChangesTest, a_refused_item_is_left_out_of_the_other_mode_and_the_rest_goes_on) {
    for (const char16_t* item : {u"a", u"b", u"c", u"d"}) add(list, item);
    select(2);
    {
        Faults faults;
        faults.replace("SendMessageW", reinterpret_cast<void*>(refuseB));
        switchMode(true);
    }
    EXPECT_EQ(items(), (std::vector<std::wstring>{L"a", L"c", L"d"}));
    EXPECT_EQ(call(OS::List_GetSelectionIndex, list), 1) << "the same item";
    vm.reports.clear();
}

TEST_F(ListChangesTest, a_refused_item_that_was_selected_leaves_none) {
    for (const char16_t* item : {u"a", u"b", u"c"}) add(list, item);
    select(1);
    {
        Faults faults;
        faults.replace("SendMessageW", reinterpret_cast<void*>(refuseB));
        switchMode(true);
    }
    EXPECT_EQ(call(OS::List_GetSelectionCount, list), 0);
    vm.reports.clear();
}

TEST_F(ListChangesTest, a_switch_keeps_the_place_among_the_siblings) {
    EXPECT_EQ(GetWindow(windowOf(list), GW_HWNDNEXT), windowOf(next));
    switchMode(true);
    EXPECT_EQ(GetWindow(windowOf(list), GW_HWNDNEXT), windowOf(next));
}

static std::vector<UINT> restored;
static LRESULT WINAPI recordRestored(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    for (UINT watched : {UINT(WM_SETFONT), UINT(LB_SETTOPINDEX), UINT(LB_SETSEL)})
        if (message == watched) restored.push_back(message);
    return SendMessageW(window, message, wParam, lParam);
}

TEST_F(ListChangesTest, a_switch_restores_font_then_top_then_selection) {
    for (int i = 0; i < 50; ++i) add(list, u"item");
    select(30);
    for (jint top : {0, 20}) {
        switchMode(false);
        call(OS::List_SetTopItemIndex, list, top);
        restored.clear();
        {
            Faults faults;
            faults.replace("SendMessageW", reinterpret_cast<void*>(recordRestored));
            switchMode(true);
        }
        std::vector<UINT> expected = {WM_SETFONT, LB_SETTOPINDEX, LB_SETSEL};
        if (top == 0) expected.erase(expected.begin() + 1);
        EXPECT_EQ(restored, expected) << top;
    }
}

TEST_F(ListChangesTest, a_list_switched_once_more_by_its_listener_ends_with_the_focus) {
    add(list, u"a");
    call(OS::Control_ForceFocus, list);
    listen(list);
    bool switched = false;
    vm.behavior["focus"] = [&](const std::vector<jint>& event) {
        if (event[0] == 2 && !switched) {
            switched = true;
            switchMode(false);
        }
        return 0;
    };
    switchMode(true);
    vm.behavior.clear();
    EXPECT_TRUE(switched);
    EXPECT_EQ(GetFocus(), windowOf(list));
    EXPECT_EQ(fired::without(vm.takeEvents(), {"paint"}),
              (Events{fired::focus(FocusChange::lost), fired::focus(FocusChange::gained)}));
    EXPECT_EQ(GetWindowLongW(windowOf(list), GWL_USERDATA), LONG(list));
}

static std::vector<DWORD> threads;
static int WINAPI recordDraw(HDC context, LPCWSTR text, int length, LPRECT area, UINT flags) {
    threads.push_back(GetCurrentThreadId());
    return DrawTextW(context, text, length, area, flags);
}
static BOOL WINAPI recordMetrics(HDC context, TEXTMETRICW* metrics) {
    threads.push_back(GetCurrentThreadId());
    return GetTextMetricsW(context, metrics);
}
static int WINAPI recordRead(HWND window, LPWSTR text, int capacity) {
    threads.push_back(GetCurrentThreadId());
    return GetWindowTextW(window, text, capacity);
}

TEST_F(ListChangesTest, what_is_asked_in_several_steps_is_asked_on_the_displays_thread) {
    for (const char16_t* item : {u"a", u"bb", u"ccc"}) add(list, item);
    jint area = newControl(OS::TextArea_New, shell, 0x30000, {0, 150, 200, 200});
    jint field = newControl(OS::TextField_New, shell, 0, {0, 210, 200, 230});
    call(OS::AbstractTextComponent_SetText, area, vm.newString(u"some text"));
    call(OS::AbstractTextComponent_SelectAll, area);
    const std::vector<std::pair<const char*, std::function<void()>>> rows = {
        {"List_Add", [&] { add(list, u"dddd"); }},
        {"List_SetItem", [&] { call(OS::List_SetItem, list, 0, vm.newString(u"eeeee")); }},
        {"List_Remove", [&] { call(OS::List_Remove, list, 0); }},
        {"List_GetMinimumSize", [&] { call(OS::List_GetMinimumSize, list, 3); }},
        {"TextField_GetMinimumSize", [&] { call(OS::TextField_GetMinimumSize, field, 3); }},
        {"TextArea_GetMinimumSize", [&] { call(OS::TextArea_GetMinimumSize, area, 3, 3); }},
        {"AbstractTextComponent_GetText", [&] { call(OS::AbstractTextComponent_GetText, area); }},
        {"AbstractTextComponent_GetSelectionText",
         [&] { call(OS::AbstractTextComponent_GetSelectionText, area); }},
    };
    Faults faults;
    faults.replace("DrawTextW", reinterpret_cast<void*>(recordDraw));
    faults.replace("GetTextMetricsW", reinterpret_cast<void*>(recordMetrics));
    faults.replace("GetWindowTextW", reinterpret_cast<void*>(recordRead));
    for (const auto& [name, work] : rows) {
        threads.clear();
        onOtherThread(vm, display, work);
        EXPECT_FALSE(threads.empty()) << name;
        for (DWORD thread : threads) EXPECT_EQ(thread, GetCurrentThreadId()) << name;
    }
}
