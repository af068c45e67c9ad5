#include "control/shell.h"
#include "device.h"
#include "faults.h"
#include "leaks.h"
#include "other_thread.h"

using ControlNew = ControlRecord*(const wchar_t*, UINT, WNDPROC, ControlRecord*, DWORD, DWORD,
                                  DWORD, ErrorRecord*);
using BorderWidth = int(HWND);

class ControlTest : public DeviceTest {
  protected:
    static ControlRecord* record(jint control) { return reinterpret_cast<ControlRecord*>(control); }
    template <class Work>
    void onOtherThread(Work work) {
        ::onOtherThread(vm, display, work);
    }
};

TEST_F(ControlTest, every_child_control_starts_from_the_same_window_style) {
    EXPECT_EQ(entryPoint<DWORD()>("_Control_Style")(), 0x46010000u);
}

TEST_F(ControlTest, a_fresh_control_is_last_in_its_parents_order) {
    jint shell = newShell();
    jint first = call(OS::PushButton_New, shell, 0);
    jint second = call(OS::PushButton_New, shell, 0);
    EXPECT_EQ(GetWindow(windowOf(first), GW_HWNDNEXT), windowOf(second));
    EXPECT_EQ(GetWindow(windowOf(second), GW_HWNDNEXT), nullptr);
}

TEST_F(ControlTest, a_fresh_control_has_the_system_font_draws_and_has_no_target) {
    jint shell = newShell();
    jint button = call(OS::PushButton_New, shell, 5);
    EXPECT_EQ(SendMessageW(windowOf(button), WM_GETFONT, 0, 0),
              reinterpret_cast<LRESULT>(GetStockObject(SYSTEM_FONT)));
    const ControlRecord& head = *record(button);
    EXPECT_EQ(head.redraw, TRUE);
    EXPECT_EQ(head.callbackTarget, nullptr);
    EXPECT_EQ(head.style, 5u);
    EXPECT_EQ(head.parent, record(shell));
    EXPECT_EQ(head.ctlColorMessage, UINT(WM_CTLCOLORSTATIC));
    EXPECT_EQ(head.background, nullptr);
    EXPECT_EQ(head.foreground, nullptr);
    EXPECT_EQ(head.inheritsBackground, FALSE);
    EXPECT_EQ(head.cursor, nullptr);
    EXPECT_EQ(GetWindowLongW(windowOf(button), GWL_USERDATA), LONG(button));
}

TEST_F(ControlTest, a_control_without_listener_fires_nothing) {
    jint button = newButton(newShell());
    SendMessageW(windowOf(button), WM_CLOSE, 0, 0);
    EXPECT_TRUE(vm.takeEvents().empty());
}

TEST_F(ControlTest, a_control_made_on_another_thread_belongs_to_the_displays) {
    jint shell = newShell();
    jint button = 0;
    onOtherThread([&] { button = call(OS::PushButton_New, shell, 0); });
    ASSERT_NE(button, 0);
    EXPECT_EQ(GetWindowThreadProcessId(windowOf(button), nullptr), GetCurrentThreadId());
    EXPECT_EQ(record(button)->parent, record(shell));
}

TEST_F(ControlTest, a_control_disposed_on_another_thread_takes_its_window_along) {
    jint button = newButton(newShell());
    HWND window = windowOf(button);
    onOtherThread([&] { call(OS::Widget_Dispose, button); });
    EXPECT_FALSE(IsWindow(window));
}

// The system keeps it, and with it nothing of the control.
TEST_F(ControlTest, a_window_that_is_not_destroyed_is_left_to_its_class) {
    jint button = newButton(newShell());
    HWND window = windowOf(button);
    WNDPROC classProc = record(button)->classProc;
    long blocks = countHeapBlocks();
    {
        Faults faults;
        faults.fail("DestroyWindow", 0, ERROR_ACCESS_DENIED);
        dispose(button);
    }
    EXPECT_LT(countHeapBlocks(), blocks);
    ASSERT_TRUE(IsWindow(window));
    EXPECT_EQ(GetWindowLongW(window, GWL_USERDATA), 0);
    EXPECT_EQ(GetWindowLongW(window, GWL_WNDPROC), reinterpret_cast<LONG>(classProc));
    EXPECT_TRUE(vm.reports.empty());
    DestroyWindow(window);
}

TEST_F(ControlTest, what_lies_in_a_window_that_is_not_destroyed_has_no_parent) {
    jint composite = call(OS::Composite_New, newShell(), 0);
    HWND window = windowOf(composite);
    jint first = newButton(composite), second = newButton(composite);
    HWND stranger = CreateWindowExW(0, L"STATIC", nullptr, WS_CHILD, 0, 0, 5, 5, window, nullptr,
                                    nullptr, nullptr);
    jint other = newShell();
    jint guest = newButton(other); // which the system alone has put there
    SetParent(windowOf(guest), window);
    jint inner = call(OS::Composite_New, composite, 0);
    jint innermost = newButton(inner);
    {
        Faults faults;
        faults.fail("DestroyWindow", 0, ERROR_ACCESS_DENIED);
        dispose(composite);
    }
    for (jint child : {first, second, inner}) EXPECT_EQ(record(child)->parent, nullptr);
    EXPECT_EQ(record(innermost)->parent, record(inner));
    EXPECT_EQ(record(guest)->parent, record(other));
    dispose(guest);
    EXPECT_TRUE(IsWindow(stranger));
    for (jint child : {first, second, innermost, inner}) dispose(child);
    EXPECT_EQ(GetWindow(window, GW_CHILD), stranger);
    DestroyWindow(window);
}

TEST_F(ControlTest, a_listener_set_on_another_thread_hears_events) {
    jint button = newButton(newShell());
    onOtherThread([&] {
        vm.attachedThreads.insert(GetCurrentThreadId());
        listen(button);
    });
    SendMessageW(windowOf(button), WM_CLOSE, 0, 0);
    EXPECT_EQ(vm.takeEvents(), Events{fired::window(WindowEvent::closeRequested)});
}

TEST_F(ControlTest, a_control_without_window_procedure_gets_the_common_one) {
    jint shell = newShell();
    ErrorRecord error = {};
    ControlRecord* made = entryPoint<ControlNew>("_Control_New")(
        L"STATIC", sizeof(ControlRecord), nullptr, record(shell), 0, 0x46010000, 0, &error);
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(GetWindowLongW(made->hwnd, GWL_WNDPROC),
              reinterpret_cast<LONG>(exportOf("_Control_Proc")));
    WNDCLASSW info;
    GetClassInfoW(nullptr, L"STATIC", &info);
    EXPECT_EQ(made->classProc, info.lpfnWndProc);
    dispose(reinterpret_cast<jint>(made));
}

// The default procedure stands in for it.
TEST_F(ControlTest, every_window_whose_class_is_not_described_has_no_class_procedure) {
    jint shell = newShell();
    Faults faults;
    faults.fail("GetClassInfoW", 0);
    std::vector<jint> made = {call(OS::Shell_New, display, 0), call(OS::Shell_NewChild, shell, 0),
                              call(OS::Choice_New, shell), call(OS::Scrollbar_New, shell)};
    for (const Maker& kind : {OS::PushButton_New, OS::Checkbox_New, OS::RadioButton_New,
                              OS::List_New, OS::TextField_New, OS::TextArea_New, OS::Composite_New})
        made.push_back(call(kind, shell, 0));
    for (jint control : made) {
        ASSERT_NE(control, 0);
        EXPECT_EQ(record(control)->classProc, nullptr);
    }
    EXPECT_TRUE(vm.reports.empty());
    for (; !made.empty(); made.pop_back()) dispose(made.back());
}

TEST_F(ControlTest, a_window_goes_whose_class_has_no_name_either) {
    jint shell = newShell();
    NoLeaks noLeaks;
    Faults faults;
    faults.fail("GetClassInfoW", 0);
    faults.fail("GetClassNameW", 0);
    jint button = call(OS::PushButton_New, shell, 0);
    HWND window = windowOf(button);
    dispose(button);
    EXPECT_TRUE(faults.hasFailed());
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(ControlTest, a_composite_without_parent_is_refused) {
    NoLeaks noLeaks;
    EXPECT_EQ(call(OS::Composite_New, 0, 0), 0);
    TestVm::Report report = onlyReport();
    EXPECT_EQ(report.function, "Composite_New");
    EXPECT_EQ(report.code, -3);
    EXPECT_EQ(report.message, u"Argument invalid, need parent");
}

TEST_F(ControlTest, a_composite_inherits_its_background) {
    jint composite = call(OS::Composite_New, newShell(), 0);
    EXPECT_EQ(record(composite)->inheritsBackground, TRUE);
}

TEST_F(ControlTest, a_composite_whose_window_cannot_be_made_has_no_handle) {
    jint shell = newShell();
    Faults faults;
    faults.fail("CreateWindowExW", 1, ERROR_ACCESS_DENIED);
    EXPECT_EQ(call(OS::Composite_New, shell, 0), 0);
    TestVm::Report report = onlyReport();
    EXPECT_EQ(report.code, -3);
    EXPECT_EQ(report.message.find(u"Unable to create handle for widget::"), 0u);
}

TEST_F(ControlTest, a_control_without_memory_for_its_record_is_destroyed_again) {
    jint shell = newShell();
    NoLeaks noLeaks;
    {
        Faults faults;
        faults.fail("LocalAlloc");
        EXPECT_EQ(call(OS::PushButton_New, shell, 0), 0);
    }
    TestVm::Report report = onlyReport();
    EXPECT_EQ(report.code, -4);
    EXPECT_EQ(report.message.find(u"Unable to create handle for widget"), 0u);
}

TEST_F(ControlTest, whatever_fails_while_one_is_made_leaves_nothing_behind) {
    jint shell = newShell();
    int failures = forEachFailure([&](Faults& faults) {
        NoLeaks noLeaks;
        jint button = call(OS::Checkbox_New, shell, 0);
        EXPECT_LE(vm.reports.size(), 1u);
        EXPECT_TRUE(button || vm.reports.size() == 1) << "a failed creation is reported";
        vm.reports.clear();
        faults.failAnyCall(0);
        if (button) dispose(button);
    });
    EXPECT_GE(failures, 3);
}

TEST_F(ControlTest, bounds_of_a_child_are_relative_to_its_parent) {
    jint shell = newShell();
    jint composite = call(OS::Composite_New, shell, 0);
    call(OS::Control_SetBounds, composite, 11, 22, 100, 80);
    jint button = call(OS::PushButton_New, composite, 0);
    call(OS::Control_SetBounds, button, 3, 4, 50, 20);
    EXPECT_EQ(boundsOf(button), (std::vector<jint>{3, 4, 50, 20}));
    EXPECT_EQ(boundsOf(composite), (std::vector<jint>{11, 22, 100, 80}));
}

TEST_F(ControlTest, bounds_of_a_shell_are_on_the_screen) {
    jint child = call(OS::Shell_NewChild, newShell(), 0);
    call(OS::Control_SetBounds, child, 30, 40, 120, 90);
    EXPECT_EQ(boundsOf(child), (std::vector<jint>{30, 40, 120, 90}));
    dispose(child);
}

TEST_F(ControlTest, bounds_that_the_system_refuses_are_an_error) {
    jint button = newButton(newShell());
    std::vector<jint> before = boundsOf(button);
    Faults faults;
    faults.fail("SetWindowPos", 1, ERROR_ACCESS_DENIED);
    call(OS::Control_SetBounds, button, 1, 2, 3, 4);
    TestVm::Report report = onlyReport();
    EXPECT_EQ(report.function, "Control_SetBounds");
    EXPECT_EQ(report.message.find(u"Could not change the size of the control::"), 0u);
    EXPECT_EQ(boundsOf(button), before);
}

static RECT place;
static BOOL WINAPI recordPlace(HWND, HWND, int x, int y, int width, int height, UINT) {
    place = {x, y, width, height};
    return TRUE;
}

TEST_F(ControlTest, bounds_beyond_all_numbers_end_where_numbers_do) {
    constexpr jint most = 0x7FFFFFFF;
    jint shell = newShell();
    jint child = call(OS::Shell_NewChild, shell, 0);
    for (jint control : {newButton(shell), child}) {
        Faults faults;
        faults.replace("SetWindowPos", reinterpret_cast<void*>(recordPlace));
        call(OS::Control_SetBounds, control, 10, 20, most, most);
        EXPECT_EQ(place.left, 10);
        EXPECT_EQ(place.top, 20);
        EXPECT_EQ(place.right, most - 10);
        EXPECT_EQ(place.bottom, most - 20);
    }
    vm.takeEvents();
    dispose(child);
}

TEST_F(ControlTest, a_client_edge_counts_before_a_border) {
    jint button = call(OS::PushButton_New, newShell(), 0);
    HWND window = windowOf(button);
    auto* width = entryPoint<BorderWidth>("_Control_GetBorderWidth");
    EXPECT_EQ(width(window), 0);
    SetWindowLongW(window, GWL_STYLE, GetWindowLongW(window, GWL_STYLE) | WS_BORDER);
    EXPECT_EQ(width(window), GetSystemMetrics(SM_CXBORDER));
    SetWindowLongW(window, GWL_EXSTYLE, WS_EX_CLIENTEDGE);
    EXPECT_EQ(width(window), GetSystemMetrics(SM_CXEDGE));
    SetWindowLongW(window, GWL_EXSTYLE, WS_EX_STATICEDGE);
    EXPECT_EQ(width(window), GetSystemMetrics(SM_CXBORDER));
}

// A block of the library's, as the device gives it up.
static HLOCAL freeOnDevice(void* block) {
    auto free = reinterpret_cast<HLOCAL(WINAPI*)(HLOCAL)>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"coredll.dll"), "LocalFree")));
    return free(block);
}

TEST_F(ControlTest, disposing_of_a_control_fires_nothing) {
    jint button = newButton(newShell());
    listen(button);
    call(OS::Control_ForceFocus, button);
    vm.takeEvents();
    auto* target = record(button)->callbackTarget;
    call(OS::Widget_Dispose, button);
    dispatchAll();
    EXPECT_TRUE(vm.takeEvents().empty());
    // The target outlives the widget.
    vm.env()->DeleteGlobalRef(target->object);
    freeOnDevice(target);
}

TEST_F(ControlTest, a_listener_that_is_still_there_outlives_its_control) {
    jint button = newButton(newShell());
    listen(button);
    auto* target = record(button)->callbackTarget;
    int references = vm.globalReferences;
    call(OS::Widget_Dispose, button);
    EXPECT_EQ(vm.globalReferences, references);
    EXPECT_EQ(target->widget, record(button)) << "is told of nothing";
    vm.env()->DeleteGlobalRef(target->object);
    EXPECT_EQ(freeOnDevice(target), nullptr);
}

TEST_F(ControlTest, a_control_without_parent_or_display_has_none) {
    ControlRecord child = {}, parent = {};
    child.parent = &parent;
    auto* displayOf = entryPoint<DisplayRecord*(ControlRecord*)>("Control_GetDisplay");
    EXPECT_EQ(displayOf(&parent), nullptr);
    EXPECT_EQ(displayOf(&child), nullptr);
}

TEST_F(ControlTest, a_display_that_is_not_known_yet_is_the_parents) {
    jint shell = newShell();
    jint button = newButton(shell);
    record(button)->display = nullptr;
    using GetDisplay = DisplayRecord*(ControlRecord*);
    EXPECT_EQ(entryPoint<GetDisplay>("Control_GetDisplay")(record(button)), record(shell)->display);
    EXPECT_EQ(record(button)->display, record(shell)->display);
}

TEST_F(ControlTest, hiding_and_showing) {
    jint button = newButton(newShell());
    call(OS::Control_SetVisible, button, false);
    EXPECT_FALSE(IsWindowVisible(windowOf(button)));
    call(OS::Control_SetVisible, button, true);
    EXPECT_TRUE(IsWindowVisible(windowOf(button)));
}

TEST_F(ControlTest, the_focus_goes_to_an_enabled_and_visible_control_only) {
    jint shell = newShell();
    jint button = newButton(shell);
    EXPECT_EQ(call(OS::Control_ForceFocus, button), JNI_TRUE);
    EXPECT_EQ(GetFocus(), windowOf(button));
    EXPECT_EQ(call(OS::Control_ForceFocus, button), JNI_TRUE);

    jint other = newButton(shell);
    call(OS::Control_SetVisible, other, false);
    EXPECT_EQ(call(OS::Control_ForceFocus, other), JNI_FALSE);
    call(OS::Control_SetVisible, other, true);
    call(OS::Control_SetEnabled, shell, false);
    EXPECT_EQ(call(OS::Control_ForceFocus, other), JNI_FALSE);
    call(OS::Control_SetEnabled, shell, true);
}

TEST_F(ControlTest, controls_leave_nothing_behind) {
    jint shell = newShell();
    int references = vm.globalReferences;
    NoLeaks noLeaks;
    for (int i = 0; i < leakRounds(); ++i) {
        jint button = call(OS::PushButton_New, shell, 0);
        listen(button);
        dispose(button);
        vm.calls.clear();
    }
    dispatchAll();
    EXPECT_EQ(vm.globalReferences, references);
}
