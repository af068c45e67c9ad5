#include "aygshell.h"
#include "control/shell.h"
#include "device.h"
#include "emulator.h"
#include "faults.h"
#include "leaks.h"
#include "variety.h"
#include <thread>

class ShellTest : public DeviceTest {
  protected:
    static ShellRecord* record(jint shell) { return reinterpret_cast<ShellRecord*>(shell); }
    void show(jint shell, bool shown = true) {
        call(OS::Control_SetVisible, shell, shown);
        dispatchAll();
    }
};

TEST_F(ShellTest, a_top_shell_fills_the_work_area_above_its_menu_bar) {
    jint shell = newShell();
    RECT bar;
    HWND window = SHFindMenuBar(windowOf(shell));
    ASSERT_TRUE(IsWindowVisible(window));
    GetWindowRect(window, &bar);
    jint top = theDevice().taskBarHeight;
    EXPECT_EQ(boundsOf(shell), (std::vector<jint>{0, top, theDevice().screen.cx, bar.top - top}));
    EXPECT_EQ(bar.bottom, theDevice().screen.cy);
}

TEST_F(ShellTest, the_menu_bar_leaves_the_activation_to_its_shell) {
    jint shell = newShell();
    EXPECT_EQ(GetActiveWindow(), windowOf(shell));
}

TEST_F(ShellTest, setting_the_bounds_of_a_top_shell_leaves_it_and_reports_size_then_place) {
    jint shell = newShell();
    std::vector<jint> before = boundsOf(shell);
    listen(shell);
    call(OS::Control_SetBounds, shell, 10, 20, 30, 40);
    EXPECT_EQ(boundsOf(shell), before);
    EXPECT_EQ(vm.takeEvents(),
              (Events{fired::resize(before[2], before[3]), fired::move(0, before[1])}));
}

TEST_F(ShellTest, a_child_shell_moves_and_sizes) {
    jint child = call(OS::Shell_NewChild, newShell(), 0x20);
    listen(child);
    call(OS::Control_SetBounds, child, 10, 20, 130, 140);
    EXPECT_EQ(boundsOf(child), (std::vector<jint>{10, 20, 130, 140}));
    Events events = vm.takeEvents();
    EXPECT_EQ(Events(events.end() - 2, events.end()),
              (Events{fired::resize(130, 140), fired::move(10, 20)}));
    dispose(child);
}

TEST_F(ShellTest, a_child_shell_that_cannot_be_moved_is_an_error) {
    jint child = call(OS::Shell_NewChild, newShell(), 0);
    {
        Faults faults;
        faults.fail("SetWindowPos", 1, ERROR_ACCESS_DENIED);
        call(OS::Control_SetBounds, child, 10, 20, 130, 140);
    }
    TestVm::Report report = onlyReport();
    EXPECT_EQ(report.function, "Control_SetBounds");
    EXPECT_EQ(report.code, -3);
    EXPECT_EQ(report.message.find(u"Could not change the size of the shell::"), 0u);
    dispose(child);
}

TEST_F(ShellTest, the_caption_button_asks_to_close_and_closes_nothing) {
    jint child = call(OS::Shell_NewChild, newShell(), 0x21);
    show(child);
    listen(child);
    HWND window = windowOf(child);
    SendMessageW(window, WM_COMMAND, IDOK, 0);
    EXPECT_TRUE(vm.takeEvents().empty()) << "the request is posted";
    dispatchAll();
    Events events = vm.takeEvents();
    EXPECT_EQ(std::count(events.begin(), events.end(), fired::window(WindowEvent::closeRequested)),
              1);
    EXPECT_TRUE(IsWindow(window));
    dispose(child);
}

TEST_F(ShellTest, activation_and_deactivation_are_reported) {
    jint shell = newShell();
    jint child = call(OS::Shell_NewChild, shell, 0);
    listen(shell);
    show(child);
    Events events = vm.takeEvents();
    EXPECT_EQ(std::count(events.begin(), events.end(), fired::window(WindowEvent::deactivated)), 1);
    dispose(child);
    dispatchAll();
    events = vm.takeEvents();
    EXPECT_EQ(std::count(events.begin(), events.end(), fired::window(WindowEvent::activated)), 1);
}

static RECT smallerWorkArea = {0, 0, 240, 240};
static BOOL WINAPI answerSmallerWorkArea(UINT action, UINT size, void* data, UINT profile) {
    if (action != SPI_GETWORKAREA || size || profile) return FALSE;
    *static_cast<RECT*>(data) = smallerWorkArea;
    return TRUE;
}

TEST_F(ShellTest, an_activated_top_shell_takes_on_a_changed_work_area) {
    jint shell = newShell();
    int bar = theDevice().screen.cy - boundsOf(shell)[1] - boundsOf(shell)[3];
    Faults faults;
    faults.replace("SystemParametersInfoW", reinterpret_cast<void*>(answerSmallerWorkArea));
    SendMessageW(windowOf(shell), WM_ACTIVATE, WA_ACTIVE, 0);
    EXPECT_EQ(boundsOf(shell), (std::vector<jint>{0, 0, 240, 240 - bar}));
}

TEST_F(ShellTest, only_asking_to_maximise_moves_a_shell) {
    jint shell = newShell();
    SetWindowPos(windowOf(shell), nullptr, 5, 5, 50, 50, SWP_NOZORDER);
    call(OS::Shell_SetMaximized, shell, false);
    EXPECT_EQ(boundsOf(shell)[2], 50);
    call(OS::Shell_SetMaximized, shell, true);
    EXPECT_EQ(boundsOf(shell)[2], theDevice().screen.cx);
}

TEST_F(ShellTest, a_minimised_shell_says_so) {
    jint shell = newShell();
    listen(shell);
    SendMessageW(windowOf(shell), WM_SIZE, SIZE_MINIMIZED, 0);
    EXPECT_EQ(vm.takeEvents(), Events{fired::window(WindowEvent::minimized)});
}

TEST_F(ShellTest, what_the_system_tells_of_its_size_is_told_in_pixels_of_its_window) {
    jint child = call(OS::Shell_NewChild, newShell(), 0x20);
    call(OS::Control_SetBounds, child, 10, 20, 130, 140);
    listen(child);
    HWND window = windowOf(child);
    SetWindowPos(window, nullptr, 0, 0, 90, 70, SWP_NOZORDER | SWP_NOMOVE | SWP_NOACTIVATE);
    EXPECT_EQ(vm.takeEvents(), Events{fired::resize(90, 70)}) << "wherever it lies";
    for (WPARAM told : {SIZE_RESTORED, SIZE_MAXIMIZED}) {
        SendMessageW(window, WM_SIZE, told, 0);
        EXPECT_EQ(vm.takeEvents(), Events{fired::resize(90, 70)}) << told;
    }
    for (WPARAM ofOthers : {SIZE_MAXSHOW, SIZE_MAXHIDE}) {
        SendMessageW(window, WM_SIZE, ofOthers, 0);
        EXPECT_TRUE(vm.takeEvents().empty()) << ofOthers;
    }
    dispose(child);
}

TEST_F(ShellTest, that_is_moved_tells_where_its_window_is_on_the_screen) {
    jint child = call(OS::Shell_NewChild, newShell(), 0x20);
    call(OS::Control_SetBounds, child, 10, 20, 130, 140);
    listen(child);
    SetWindowPos(windowOf(child), nullptr, 31, 52, 0, 0,
                 SWP_NOZORDER | SWP_NOSIZE | SWP_NOACTIVATE);
    EXPECT_EQ(vm.takeEvents(), Events{fired::move(31, 52)});
    dispose(child);
}

TEST_F(ShellTest, activated_while_it_is_minimised_is_not_in_use) {
    jint shell = newShell();
    SetWindowPos(windowOf(shell), nullptr, 5, 5, 50, 50, SWP_NOZORDER);
    listen(shell);
    constexpr WORD minimized = 1;
    SendMessageW(windowOf(shell), WM_ACTIVATE, MAKEWPARAM(WA_ACTIVE, minimized), 0);
    EXPECT_TRUE(vm.takeEvents().empty());
    EXPECT_EQ(boundsOf(shell)[2], 50) << "it does not fill the work area";
    SendMessageW(windowOf(shell), WM_ACTIVATE, MAKEWPARAM(WA_INACTIVE, minimized), 0);
    EXPECT_EQ(vm.takeEvents(), Events{fired::window(WindowEvent::deactivated)});
}

TEST_F(ShellTest, wants_no_room_and_neither_does_a_composite) {
    jint shell = newShell();
    jint child = call(OS::Shell_NewChild, shell, 0);
    jint composite = call(OS::Composite_New, shell, 0);
    for (jint control : {shell, child, composite})
        EXPECT_EQ(minimumSize(control), (std::vector<jint>{0, 0}));
    dispose(child);
}

static SHMENUBARINFO askedBar;
static BOOL WINAPI recordMenuBar(SHMENUBARINFO* info) {
    askedBar = *info;
    return FALSE;
}

TEST_F(ShellTest, asks_for_the_tool_bar_of_the_librarys_own_resource) {
    constexpr UINT toolBar = 100, emptyBar = 2;
    Faults faults;
    faults.replace("SHCreateMenuBar", reinterpret_cast<void*>(recordMenuBar));
    EXPECT_EQ(call(OS::Shell_New, display, 0), 0);
    EXPECT_EQ(askedBar.cbSize, sizeof(askedBar));
    EXPECT_EQ(askedBar.dwFlags, emptyBar);
    EXPECT_EQ(askedBar.nToolBarId, toolBar);
    EXPECT_EQ(askedBar.hInstRes, theLibrary());
    vm.reports.clear();
}

TEST_F(ShellTest, the_title_is_set) {
    jint shell = newShell();
    call(OS::Shell_SetText, shell, vm.newString(u"A title"));
    wchar_t text[20];
    GetWindowTextW(windowOf(shell), text, 20);
    EXPECT_STREQ(text, L"A title");
    call(OS::Shell_SetText, shell, nullptr);
    EXPECT_EQ(GetWindowTextLengthW(windowOf(shell)), 0);
}

TEST_F(ShellTest, styles_of_shells) {
    jint top = newShell(false, 0x1);
    LONG style = GetWindowLongW(windowOf(top), GWL_STYLE);
    EXPECT_EQ(style & (WS_SYSMENU | WS_CAPTION | WS_POPUP | WS_CHILD | WS_TABSTOP), WS_SYSMENU);
    jint child = call(OS::Shell_NewChild, top, 0x20);
    style = GetWindowLongW(windowOf(child), GWL_STYLE);
    EXPECT_EQ(style & WS_CAPTION, WS_CAPTION);
    EXPECT_TRUE(style & WS_POPUP);
    EXPECT_EQ(GetWindow(windowOf(child), GW_OWNER), windowOf(top));
    jint plain = call(OS::Shell_NewChild, top, 0x800);
    style = GetWindowLongW(windowOf(plain), GWL_STYLE);
    EXPECT_EQ(style & WS_CAPTION, WS_BORDER);
    dispose(plain);
    dispose(child);
}

TEST_F(ShellTest, a_window_that_cannot_be_made_is_an_error) {
    NoLeaks noLeaks;
    Faults faults;
    faults.fail("CreateWindowExW", 1, ERROR_ACCESS_DENIED);
    EXPECT_EQ(call(OS::Shell_New, display, 0), 0);
    TestVm::Report report = onlyReport();
    EXPECT_EQ(report.function, "Shell_New");
    EXPECT_EQ(report.code, -3);
    EXPECT_EQ(report.message.find(u"Unable to create window::"), 0u);
}

TEST_F(ShellTest, no_memory_for_a_shell_gives_none_and_no_error) {
    Faults faults;
    faults.fail("LocalAlloc");
    EXPECT_EQ(call(OS::Shell_New, display, 0), 0);
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(ShellTest, a_menu_bar_that_cannot_be_made_is_an_error) {
    NoLeaks noLeaks;
    Faults faults;
    faults.fail("SHCreateMenuBar");
    call(OS::Shell_New, display, 0);
    TestVm::Report report = onlyReport();
    EXPECT_EQ(report.code, -4);
    EXPECT_EQ(report.message, u"Unable to create menu bar!");
}

TEST_F(ShellTest, a_shell_that_cannot_be_listed_is_an_error) {
    NoLeaks noLeaks;
    Faults faults;
    faults.fail("LocalAlloc", 3);
    call(OS::Shell_New, display, 0);
    TestVm::Report report = onlyReport();
    EXPECT_EQ(report.code, -3);
    EXPECT_EQ(report.message, u"Could not add control to control list");
}

TEST_F(ShellTest, a_shell_made_on_another_thread_belongs_to_the_displays) {
    jint shell = 0;
    std::thread maker([&] {
        shell = call(OS::Shell_New, display, 0);
        call(OS::Display_Wake, display);
    });
    while (!shell) {
        if (!call(OS::Display_ReadAndDispatch, display)) call(OS::Display_Sleep, display);
    }
    maker.join();
    EXPECT_EQ(GetWindowThreadProcessId(windowOf(shell), nullptr), GetCurrentThreadId());
    dispose(shell);
}

TEST_F(ShellTest, minimising_and_images_are_not_this_platforms) {
    jint shell = newShell();
    Faults faults;
    call(OS::Shell_SetMinimized, shell, true);
    EXPECT_FALSE(call(OS::Shell_GetMinimized, shell));
    call(OS::Shell_SetImage, shell, 1);
    EXPECT_TRUE(faults.calls().empty()) << "nothing is done";
}

TEST_F(ShellTest, a_child_shell_becomes_resizable_a_top_shell_does_not) {
    jint top = newShell();
    jint child = call(OS::Shell_NewChild, top, 0x20);
    auto isResizable = [](jint shell) {
        return (GetWindowLongW(windowOf(shell), GWL_STYLE) & WS_THICKFRAME) != 0;
    };
    for (jint shell : {top, child}) {
        call(OS::Shell_SetResizable, shell, true);
        EXPECT_EQ(isResizable(shell), shell == child);
        call(OS::Shell_SetResizable, shell, false);
        EXPECT_FALSE(isResizable(shell));
    }
    dispose(child);
}

TEST_F(ShellTest, a_frame_that_makes_a_shell_resizable_is_there_at_once) {
    jint child = call(OS::Shell_NewChild, newShell(), 0x20);
    call(OS::Control_SetBounds, child, 20, 40, 160, 100);
    show(child);
    RECT before, after;
    GetClientRect(windowOf(child), &before);
    call(OS::Shell_SetResizable, child, true);
    GetClientRect(windowOf(child), &after);
    EXPECT_LT(after.right, before.right);
    dispose(child);
}

// The person at the device taps the caption's OK button.
TEST_F(ShellTest, a_tapped_ok_button_asks_to_close_where_there_is_one) {
    for (jint closeBox : {0x0, 0x1}) {
        jint child = call(OS::Shell_NewChild, newShell(), 0x20 | closeBox);
        call(OS::Control_SetBounds, child, 20, 40, 160, 100);
        show(child);
        POINT corner = {0, 0};
        ClientToScreen(windowOf(child), &corner);
        listen(child);
        call(OS::Display_PostPointerMoveEvent, display, 163, (40 + corner.y) / 2 + 1);
        for (PointerType type : {pointerPress, pointerRelease})
            call(OS::Display_PostPointerEvent, display, type, buttonLeft);
        dispatchAll();
        Events events = vm.takeEvents();
        EXPECT_EQ(
            std::count(events.begin(), events.end(), fired::window(WindowEvent::closeRequested)),
            closeBox)
            << testing::PrintToString(events);
        dispose(child);
    }
}

template <class Function>
static Function ofTheDevice(const char* name) {
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"coredll.dll"), name)));
}

class ShownInputPanel {
  public:
    ShownInputPanel() { show(TRUE); }
    ~ShownInputPanel() { show(FALSE); }

  private:
    static void show(BOOL shown) {
        ofTheDevice<decltype(&Emulator_ShowInputPanel)>("Emulator_ShowInputPanel")(shown);
    }
};

class TurnedScreen {
  public:
    TurnedScreen() { turn(); }
    ~TurnedScreen() { turn(); }

  private:
    static void turn() { ofTheDevice<decltype(&Emulator_TurnScreen)>("Emulator_TurnScreen")(); }
};

TEST_F(ShellTest, a_top_shell_fills_a_turned_screen_and_a_child_shell_stays) {
    jint shell = newShell();
    jint child = call(OS::Shell_NewChild, shell, 0);
    call(OS::Control_SetBounds, child, 10, 20, 130, 90);
    std::vector<jint> before = boundsOf(shell);
    const SIZE screen = theDevice().screen;
    const jint height = screen.cx - before[1] - (screen.cy - before[1] - before[3]);
    listen(shell);
    {
        TurnedScreen turned;
        EXPECT_EQ(boundsOf(shell), (std::vector<jint>{0, before[1], screen.cy, height}));
        Events resized = {fired::resize(screen.cy, height)};
        if (screen.cx == screen.cy) resized.clear();
        EXPECT_EQ(vm.takeEvents(), resized);
        EXPECT_EQ(vm.ints(call(OS::Device_GetBounds, display)),
                  (std::vector<jint>{0, 0, screen.cy, screen.cx}));
        EXPECT_EQ(boundsOf(child), (std::vector<jint>{10, 20, 130, 90}));
    }
    EXPECT_EQ(boundsOf(shell), before);
    dispose(child);
}

TEST_F(ShellTest, a_top_shell_keeps_clear_of_the_input_panel_and_a_child_shell_stays) {
    jint shell = newShell();
    jint child = call(OS::Shell_NewChild, shell, 0);
    call(OS::Control_SetBounds, child, 10, 20, 130, 290);
    std::vector<jint> whole = boundsOf(shell);
    listen(shell);
    {
        ShownInputPanel panel;
        EXPECT_EQ(boundsOf(shell), (std::vector<jint>{0, whole[1], whole[2], whole[3] - 80}));
        EXPECT_EQ(vm.takeEvents(), Events{fired::resize(whole[2], whole[3] - 80)});
        EXPECT_EQ(boundsOf(child), (std::vector<jint>{10, 20, 130, 290}));
        jint late = newShell();
        EXPECT_EQ(boundsOf(late)[3], whole[3] - 80) << "a new shell too";
        dispose(late);
    }
    EXPECT_EQ(boundsOf(shell), whole);
    dispose(child);
}

TEST_F(ShellTest, shells_leave_nothing_behind) {
    newShell();
    NoLeaks noLeaks;
    int references = vm.globalReferences;
    for (int i = 0; i < leakRounds(); ++i) {
        jint shell = call(OS::Shell_New, display, 0x30800);
        if (i % 10 == 0) {
            jint child = call(OS::Shell_NewChild, shell, 0x61);
            dispose(child);
        }
        dispose(shell);
    }
    dispatchAll();
    EXPECT_EQ(vm.globalReferences, references);
}

// Modality: which shells are enabled while others are modal.
class ModalityTest : public ShellTest {
  protected:
    ModalityTest() {
        main = newShell();
        other = newShell();
        first = call(OS::Shell_NewChild, main, modal);
        inFirst = call(OS::Shell_NewChild, first, 0);
        second = call(OS::Shell_NewChild, inFirst, modal);
    }
    ~ModalityTest() override {
        dispose(second);
        dispose(inFirst);
        dispose(first);
    }
    std::vector<bool> enabled() {
        std::vector<bool> list;
        for (jint shell : {main, other, first, inFirst, second})
            list.push_back(IsWindowEnabled(windowOf(shell)));
        return list;
    }

    static constexpr jint modal = 0x40;
    jint main, other, first, inFirst, second;
};

TEST_F(ModalityTest, a_modal_shell_disables_all_shells_that_are_not_inside_it) {
    show(first);
    EXPECT_EQ(enabled(), (std::vector<bool>{false, false, true, true, true}));
    show(first, false);
    EXPECT_EQ(enabled(), (std::vector<bool>{true, true, true, true, true}));
}

TEST_F(ModalityTest, ending_the_upper_of_two_enables_what_is_inside_the_lower) {
    show(first);
    show(second);
    EXPECT_EQ(enabled(), (std::vector<bool>{false, false, false, false, true}));
    show(second, false);
    EXPECT_EQ(enabled(), (std::vector<bool>{false, false, true, true, true}));
    show(first, false);
}

TEST_F(ModalityTest, a_new_shell_outside_the_modal_one_is_disabled_until_that_ends) {
    show(first);
    jint late = call(OS::Shell_NewChild, other, 0);
    EXPECT_FALSE(IsWindowEnabled(windowOf(late)));
    show(first, false);
    dispose(late);
}

TEST_F(ModalityTest, a_shell_that_is_disabled_stays_so_when_modality_changes) {
    call(OS::Control_SetEnabled, other, false);
    show(first);
    show(first, false);
    EXPECT_EQ(enabled(), (std::vector<bool>{true, false, true, true, true}));
    call(OS::Control_SetEnabled, other, true);
    EXPECT_TRUE(IsWindowEnabled(windowOf(other)));
}

TEST_F(ModalityTest, a_shell_outside_the_modal_one_cannot_be_enabled) {
    show(first);
    call(OS::Control_SetEnabled, other, true);
    EXPECT_FALSE(IsWindowEnabled(windowOf(other)));
    show(first, false);
}

TEST_F(ModalityTest, a_modal_shell_that_is_disposed_of_ends_its_modality) {
    jint third = call(OS::Shell_NewChild, other, modal);
    show(third);
    EXPECT_EQ(enabled(), (std::vector<bool>{false, false, false, false, false}));
    dispose(third);
    EXPECT_EQ(enabled(), (std::vector<bool>{true, true, true, true, true}));
}
