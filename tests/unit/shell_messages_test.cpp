// What shells make of commands and of changes of their bounds.

#include "aygshell.h"
#include "control/shell.h"
#include "device.h"
#include "display/shells.h"
#include "faults.h"
#include "variety.h"
#include <algorithm>
#include <thread>

class ShellMessagesTest : public DeviceTest {
  protected:
    bool wasAskedToClose(jint asked) {
        listen(asked);
        dispatchAll();
        Events events = vm.takeEvents();
        return std::count(events.begin(), events.end(),
                          fired::window(WindowEvent::closeRequested)) == 1;
    }
    jint shell = newShell();
};

TEST_F(ShellMessagesTest, the_ok_button_is_the_captions_and_no_control_of_its_number) {
    HWND window = windowOf(shell);
    const struct {
        WPARAM command;
        HWND sender;
        bool closes;
    } rows[] = {{IDOK, nullptr, true},
                {IDOK, window, true},
                {IDOK, windowOf(newButton(shell)), false},
                {IDCANCEL, nullptr, false},
                {IDCANCEL, window, false}};
    for (const auto& row : rows) {
        vm.takeEvents();
        EXPECT_EQ(sendTo(shell, WM_COMMAND, row.command, reinterpret_cast<LPARAM>(row.sender)), 0);
        EXPECT_EQ(wasAskedToClose(shell), row.closes) << row.command << " " << row.sender;
    }
}

static std::function<void()> whileActivated;
static BOOL WINAPI activateMeanwhile(HWND, WPARAM, LPARAM, SHACTIVATEINFO*, DWORD) {
    if (whileActivated) std::exchange(whileActivated, nullptr)();
    return TRUE;
}

// The system, its listener and its menu bar may each dispose of it.
TEST_F(ShellMessagesTest, a_shell_that_goes_while_it_is_activated_is_not_touched_again) {
    for (std::string step : {"system", "listener", "bar"}) {
        SCOPED_TRACE(step);
        jint victim = newShell();
        listen(victim);
        HWND window = windowOf(victim);
        auto end = [&] {
            if (victim) dispose(std::exchange(victim, 0));
        };
        Faults faults;
        faults.replace("SHHandleWMActivate", reinterpret_cast<void*>(activateMeanwhile));
        whileActivated = nullptr;
        if (step == "system") whileActivated = end;
        if (step == "listener")
            vm.behavior["window"] = [&](const std::vector<jint>&) {
                end();
                return 0;
            };
        if (step == "bar")
            faults.watch([&](const std::string& function) {
                if (function == "ShowWindow") end();
            });
        SendMessageW(window, WM_ACTIVATE, WA_ACTIVE, 0);
        vm.behavior.clear();
        EXPECT_EQ(victim, 0);
        EXPECT_FALSE(IsWindow(window));
        EXPECT_EQ(faults.countCalls("SystemParametersInfoW"), 0) << "nothing is maximised";
    }
}

TEST_F(ShellMessagesTest, a_child_shell_that_goes_while_it_is_moved_tells_nothing) {
    jint child = call(OS::Shell_NewChild, shell, 0);
    listen(child);
    Faults faults;
    bool asked = false;
    faults.watch([&](const std::string& function) {
        asked |= function == "SetWindowPos";
        if (function == "SetWindowPos" && child) dispose(std::exchange(child, 0));
    });
    vm.takeEvents();
    call(OS::Control_SetBounds, child, 1, 2, 30, 40);
    EXPECT_TRUE(asked);
    vm.reports.clear(); // its window is not there to be moved
    EXPECT_EQ(fired::only(vm.takeEvents(), {"resize", "move"}), Events{});
}

static BOOL WINAPI answerDisabled(HWND) { return FALSE; }

TEST_F(ShellMessagesTest, a_shell_that_the_system_makes_disabled_is_not_listed) {
    jint made;
    {
        Faults faults;
        faults.replace("IsWindowEnabled", reinterpret_cast<void*>(answerDisabled));
        made = call(OS::Shell_New, display, 0);
    }
    for (const ShellNode* node = reinterpret_cast<DisplayRecord*>(display)->listedShells; node;
         node = node->next)
        EXPECT_NE(reinterpret_cast<jint>(node->shell), made);
    dispose(made);
}

TEST_F(ShellMessagesTest, a_shell_without_any_bar_takes_one_on) {
    auto* record = reinterpret_cast<ShellRecord*>(shell);
    MenuRecord* itsOwn = record->defaultMenuBar;
    record->defaultMenuBar = nullptr;
    jint bar = call(OS::MenuBar_New, shell);
    {
        Faults faults;
        call(OS::Shell_SetMenuBar, shell, bar);
        EXPECT_EQ(faults.countCalls("ShowWindow"), 1) << "there is none to hide";
        call(OS::Shell_SetMenuBar, shell, 0);
        EXPECT_EQ(faults.countCalls("ShowWindow"), 2) << "and none to show";
    }
    record->defaultMenuBar = itsOwn;
    dispose(bar);
}

TEST_F(ShellMessagesTest, a_shell_without_a_bar_of_its_own_goes) {
    jint other = newShell();
    auto* record = reinterpret_cast<ShellRecord*>(other);
    jint itsOwn = reinterpret_cast<jint>(std::exchange(record->defaultMenuBar, nullptr));
    HWND window = windowOf(other);
    dispose(other);
    EXPECT_FALSE(IsWindow(window));
    EXPECT_TRUE(vm.reports.empty());
    call(OS::Widget_Dispose, itsOwn);
}

// Where another thread's message does not arrive any more, it does the work itself.
static LRESULT WINAPI deliverNothing(HWND, UINT, WPARAM, LPARAM) { return 0; }

TEST_F(ShellMessagesTest, a_dialog_goes_although_its_displays_thread_answers_to_nobody) {
    jint dialog = call(OS::FileDialog_New, shell, 0);
    ASSERT_NE(dialog, 0);
    Faults faults;
    faults.replace("SendMessageW", reinterpret_cast<void*>(deliverNothing));
    int freed = faults.countCalls("LocalFree");
    std::thread([&] { call(OS::Widget_Dispose, dialog); }).join();
    EXPECT_GT(faults.countCalls("LocalFree"), freed);
}

static struct {
    RECT place;
    UINT flags;
    DWORD style, extendedStyle;
} asked;
static BOOL WINAPI recordAsked(HWND window, HWND, int x, int y, int width, int height, UINT flags) {
    asked = {{x, y, width, height},
             flags,
             static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE)),
             static_cast<DWORD>(GetWindowLongW(window, GWL_EXSTYLE))};
    return TRUE;
}

// The frame is gone before the place is asked for.
TEST_F(ShellMessagesTest, a_maximised_shell_fills_the_work_area_and_loses_the_border_it_asked_for) {
    constexpr jint border = 0x800;
    constexpr DWORD edges = WS_EX_CLIENTEDGE | WS_EX_STATICEDGE;
    constexpr UINT always = SWP_NOZORDER | SWP_NOACTIVATE;
    std::vector<jint> whole = boundsOf(shell);
    const struct {
        jint style;
        bool hasTheSize;
        UINT flags;
        bool keepsEdges;
    } rows[] = {{border, false, always | SWP_FRAMECHANGED, false},
                {border, true, always | SWP_NOSIZE, false},
                {0, false, always | SWP_FRAMECHANGED, true},
                {0, true, always | SWP_NOSIZE, true}};
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.style << " " << row.hasTheSize);
        jint bordered = newShell(true, row.style);
        HWND window = windowOf(bordered);
        SetWindowLongW(window, GWL_STYLE, GetWindowLongW(window, GWL_STYLE) | WS_BORDER);
        SetWindowLongW(window, GWL_EXSTYLE, GetWindowLongW(window, GWL_EXSTYLE) | edges);
        SetWindowPos(window, nullptr, 5, 5, whole[2] - !row.hasTheSize, whole[3], always);
        Faults faults;
        faults.replace("SetWindowPos", reinterpret_cast<void*>(recordAsked));
        call(OS::Shell_SetMaximized, bordered, true);
        EXPECT_EQ((std::vector<jint>{asked.place.left, asked.place.top, asked.place.right,
                                     asked.place.bottom}),
                  whole);
        EXPECT_EQ(asked.flags, row.flags);
        EXPECT_EQ(asked.style & WS_BORDER, row.keepsEdges ? WS_BORDER : 0u);
        EXPECT_EQ(asked.extendedStyle & edges, row.keepsEdges ? edges : 0u);
        EXPECT_EQ(asked.style & WS_CLIPCHILDREN, DWORD{WS_CLIPCHILDREN}) << "and nothing else";
    }
}

TEST_F(ShellMessagesTest, a_shell_without_a_visible_menu_bar_fills_the_whole_work_area) {
    jint hidden = newShell(false);
    call(OS::Shell_SetMaximized, hidden, true);
    jint top = theDevice().taskBarHeight;
    EXPECT_EQ(boundsOf(hidden),
              (std::vector<jint>{0, top, theDevice().screen.cx, theDevice().screen.cy - top}));
}

TEST_F(ShellMessagesTest, a_shell_that_a_modal_one_holds_back_stays_disabled_and_answers_nothing) {
    constexpr jint modal = 0x40;
    jint child = call(OS::Shell_NewChild, shell, modal);
    call(OS::Control_SetVisible, child, true);
    ErrorRecord error = {};
    EXPECT_EQ(sendTo(shell, controlSetEnabled, true, reinterpret_cast<LPARAM>(&error)), 0);
    EXPECT_FALSE(IsWindowEnabled(windowOf(shell)));
    dispose(child);
}
