#include "control/shell.h"
#include "device.h"
#include "display/accelerators.h"
#include "faults.h"
#include "leaks.h"
#include "toolkit.h"
#include <thread>

using ComCtrlVersion = DWORD(DisplayRecord*, ErrorRecord*);

class DisplayTest : public DeviceTest {
  protected:
    DisplayRecord* record() { return reinterpret_cast<DisplayRecord*>(display); }
    HWND messageWindow() { return record()->messageWindow; }
};

TEST_F(DisplayTest, it_keeps_the_thread_and_the_process_that_made_it) {
    EXPECT_EQ(record()->threadId, GetCurrentThreadId());
    EXPECT_EQ(record()->processId, GetCurrentProcessId());
    std::thread([&] {
        EXPECT_NE(record()->threadId, GetCurrentThreadId());
        EXPECT_FALSE(Display_IsCurrentThread(record()));
    }).join();
    EXPECT_TRUE(Display_IsCurrentThread(record()));
}

TEST_F(DisplayTest, an_empty_queue_is_told_at_once) {
    dispatchAll();
    EXPECT_EQ(call(OS::Display_ReadAndDispatch, display), JNI_FALSE);
}

TEST_F(DisplayTest, one_message_is_dispatched_at_a_time) {
    dispatchAll();
    PostMessageW(messageWindow(), WM_NULL, 0, 0);
    PostMessageW(messageWindow(), WM_NULL, 0, 0);
    EXPECT_EQ(call(OS::Display_ReadAndDispatch, display), JNI_TRUE);
    EXPECT_EQ(call(OS::Display_ReadAndDispatch, display), JNI_TRUE);
    EXPECT_EQ(call(OS::Display_ReadAndDispatch, display), JNI_FALSE);
}

TEST_F(DisplayTest, a_wake_up_from_another_thread_ends_the_sleep) {
    dispatchAll();
    std::thread waker([&] { EXPECT_NE(call(OS::Display_Wake, display), 0); });
    EXPECT_EQ(call(OS::Display_Sleep, display), 0);
    waker.join();
    EXPECT_EQ(call(OS::Display_ReadAndDispatch, display), JNI_TRUE);
}

TEST_F(DisplayTest, a_sleep_ends_for_a_message_that_came_before_it) {
    PostMessageW(messageWindow(), WM_NULL, 0, 0);
    MSG message;
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE); // seen, but not taken
    EXPECT_EQ(call(OS::Display_Sleep, display), 0);
}

TEST_F(DisplayTest, a_second_display_in_the_same_process_works) {
    jint second = call(OS::Display_New);
    EXPECT_NE(second, 0);
    call(OS::Device_Dispose, second);
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(DisplayTest, that_ends_beside_another_leaves_its_table_of_commands_behind) {
    long blocks = countHeapBlocks();
    jint second = call(OS::Display_New);
    jint shell = call(OS::Shell_New, second, 0);
    jint menu = call(OS::DropDownMenu_New, shell);
    jint item = call(OS::PushMenuItem_New, menu, 0);
    for (jint widget : {item, menu, shell}) call(OS::Widget_Dispose, widget);
    call(OS::Device_Dispose, second);
    EXPECT_EQ(countHeapBlocks(), blocks + 1);
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(DisplayTest, its_creation_fails_without_the_class_that_it_takes_the_cursor_from) {
    Faults faults;
    faults.fail("GetClassInfoW", 1, ERROR_CLASS_DOES_NOT_EXIST);
    EXPECT_EQ(call(OS::Display_New), 0);
    TestVm::Report report = onlyReport();
    EXPECT_EQ(report.function, "Display_New");
    EXPECT_EQ(report.code, -3);
    EXPECT_EQ(report.message.find(u"Unable get \"STATIC\" class data::"), 0u);
}

TEST_F(DisplayTest, its_creation_fails_without_its_window) {
    NoLeaks noLeaks;
    Faults faults;
    faults.fail("CreateWindowExW", 1, ERROR_OUTOFMEMORY);
    EXPECT_EQ(call(OS::Display_New), 0);
    TestVm::Report report = onlyReport();
    EXPECT_EQ(report.code, -4);
    EXPECT_EQ(report.message.find(u"Unable to create message/creation window::"), 0u);
}

TEST_F(DisplayTest, whatever_fails_while_it_is_made_is_reported_once_and_leaves_nothing) {
    int failures = forEachFailure([&](Faults& faults) {
        NoLeaks noLeaks;
        jint made = call(OS::Display_New);
        EXPECT_EQ(vm.reports.size(), made ? 0u : 1u);
        vm.reports.clear();
        faults.failAnyCall(0);
        if (made) call(OS::Device_Dispose, made);
    });
    EXPECT_GE(failures, 3);
}

TEST_F(DisplayTest, the_library_of_common_controls_is_loaded_until_its_version_is_known) {
    Faults faults;
    ErrorRecord error = {};
    auto* version = entryPoint<ComCtrlVersion>("_Display_GetComCtrlMajorVersion");
    DWORD major = version(record(), &error);
    EXPECT_GE(major, 4u);
    EXPECT_EQ(version(record(), &error), major);
    EXPECT_EQ(faults.countCalls("LoadLibraryW"), 1);
    EXPECT_EQ(faults.countCalls("FreeLibrary"), 1);
    EXPECT_EQ(error.code, 0);
}

TEST_F(DisplayTest, missing_common_controls_are_an_error) {
    Faults faults;
    faults.fail("LoadLibraryW", 1, ERROR_MOD_NOT_FOUND);
    ErrorRecord error = {};
    EXPECT_EQ(entryPoint<ComCtrlVersion>("_Display_GetComCtrlMajorVersion")(record(), &error), 0u);
    EXPECT_EQ(error.code, -3);
    EXPECT_STREQ(error.message, L"Failed to load comctl32.dll");
}

TEST_F(DisplayTest, common_controls_without_version_are_an_error) {
    Faults faults;
    faults.fail("GetProcAddressW", 1, ERROR_PROC_NOT_FOUND);
    ErrorRecord error = {};
    EXPECT_EQ(entryPoint<ComCtrlVersion>("_Display_GetComCtrlMajorVersion")(record(), &error), 0u);
    EXPECT_EQ(error.code, -3);
    EXPECT_EQ(std::wstring(error.message).find(L"Unable to get comctrl version::"), 0u);
    EXPECT_EQ(faults.countCalls("FreeLibrary"), 1);
    LocalFree(const_cast<wchar_t*>(error.message));
}

TEST_F(DisplayTest, requests_that_nobody_answers_give_1) {
    for (UINT message : {UINT(WM_USER), UINT(WM_APP), UINT(WM_APP + 5), UINT(WM_APP + 0x1D)})
        EXPECT_EQ(SendMessageW(messageWindow(), message, 0, 0), 1) << message;
}

TEST_F(DisplayTest, a_sudden_quit_message_does_not_end_the_loop) {
    dispatchAll();
    PostQuitMessage(0);
    EXPECT_EQ(call(OS::Display_ReadAndDispatch, display), JNI_TRUE);
    EXPECT_EQ(call(OS::Display_ReadAndDispatch, display), JNI_FALSE);
}

TEST_F(DisplayTest, a_later_attachment_of_the_library_keeps_its_instance) {
    LibraryEntry entry = toolkitEntry();
    EXPECT_TRUE(entry(reinterpret_cast<HINSTANCE>(0x1234), DLL_PROCESS_ATTACH, nullptr));
    EXPECT_TRUE(entry(nullptr, DLL_THREAD_DETACH, nullptr));
    jint second = call(OS::Display_New);
    EXPECT_EQ(reinterpret_cast<DisplayRecord*>(second)->instance, theLibrary());
    call(OS::Device_Dispose, second);
}

class AcceleratorTest : public DisplayTest {
  protected:
    // Accelerator ids below the first that the display gives away: nothing else answers to them.
    static constexpr WORD plainId = 50;
    static constexpr WORD shiftedId = 51;

    AcceleratorTest() {
        shell = newShell();
        window = windowOf(shell);
        accelerators().entries = static_cast<ACCEL*>(LocalAlloc(LPTR, 2 * sizeof(ACCEL)));
        accelerators().entries[0] = {FVIRTKEY | FCONTROL, 'K', plainId};
        accelerators().entries[1] = {FVIRTKEY | FCONTROL | FSHIFT, 'S', shiftedId};
        accelerators().count = 2;
        accelerators().capacity = 2;
        before = reinterpret_cast<WNDPROC>(
            SetWindowLongW(window, GWL_WNDPROC, reinterpret_cast<LONG>(recordCommands)));
        commands.clear();
    }
    // The library frees what its own heap gave; these entries were not its own.
    ~AcceleratorTest() override {
        SetWindowLongW(window, GWL_WNDPROC, reinterpret_cast<LONG>(before));
        LocalFree(accelerators().entries);
        accelerators().entries = nullptr;
    }
    ShellAccelerators& accelerators() {
        return reinterpret_cast<ShellRecord*>(shell)->accelerators;
    }
    void key(jint type, int code) {
        call(OS::Display_PostKeyEvent, display, type, code, u'\0');
        dispatchAll();
    }
    static LRESULT CALLBACK recordCommands(HWND window, UINT message, WPARAM wParam,
                                           LPARAM lParam) {
        if (message == WM_COMMAND) commands.push_back(wParam);
        return CallWindowProcW(before, window, message, wParam, lParam);
    }

    static constexpr int shift = 1017;
    static constexpr int control = 1019;
    static WNDPROC before;
    static std::vector<WPARAM> commands;
    jint shell;
    HWND window;
};
WNDPROC AcceleratorTest::before;
std::vector<WPARAM> AcceleratorTest::commands;

TEST_F(AcceleratorTest, ctrl_and_a_key_reach_the_shell_as_a_command) {
    key(1, control);
    key(1, 'k');
    key(2, 'k');
    key(2, control);
    EXPECT_EQ(commands, (std::vector<WPARAM>{MAKEWPARAM(plainId, 1)}));
}

TEST_F(AcceleratorTest, ctrl_shift_and_a_key_reach_the_shell_as_a_command_of_an_accelerator) {
    key(1, control);
    key(1, shift);
    key(1, 's');
    key(2, 's');
    key(2, shift);
    key(2, control);
    EXPECT_EQ(commands, (std::vector<WPARAM>{MAKEWPARAM(shiftedId, 1)}));
}

TEST_F(AcceleratorTest, ctrl_shift_commands_are_sent_by_hand) {
    Faults faults;
    key(1, control);
    key(1, shift);
    faults.fail("TranslateAcceleratorW", 0);
    key(1, 's');
    key(2, 's');
    key(2, shift);
    key(2, control);
    EXPECT_EQ(commands, (std::vector<WPARAM>{MAKEWPARAM(shiftedId, 1)}));
}

TEST_F(AcceleratorTest, the_shift_key_is_remembered_only_with_an_accelerator_table) {
    key(1, shift);
    EXPECT_TRUE(accelerators().shiftDown);
    key(2, shift);
    EXPECT_FALSE(accelerators().shiftDown);

    LONG count = accelerators().count;
    accelerators().count = 0;
    DestroyAcceleratorTable(accelerators().table);
    accelerators().table = nullptr;
    key(1, shift);
    EXPECT_FALSE(accelerators().shiftDown);
    key(2, shift);
    accelerators().count = count;
}

TEST_F(AcceleratorTest, only_messages_of_keys_are_looked_up) {
    constexpr UINT first = 0x100, last = 0x108;
    for (UINT message = first - 1; message <= last + 1; ++message) {
        Faults faults;
        PostMessageW(window, message, 'X', 0);
        dispatchAll();
        bool isOfKeys = message >= first && message <= last;
        EXPECT_EQ(faults.countCalls("TranslateAcceleratorW") != 0, isOfKeys) << message;
    }
}

TEST_F(AcceleratorTest, shift_is_known_by_its_key_and_not_by_a_character_of_its_number) {
    for (UINT message = 0x100; message <= 0x108; ++message)
        for (BYTE before : {FALSE, TRUE}) {
            bool isKey = message <= 0x101 || message == 0x104 || message == 0x105;
            accelerators().shiftDown = before;
            PostMessageW(window, message, VK_SHIFT, 0);
            dispatchAll();
            bool expected = isKey ? message == WM_KEYDOWN : before;
            EXPECT_EQ(accelerators().shiftDown != FALSE, expected) << message << " " << int(before);
        }
}

TEST_F(AcceleratorTest, a_key_without_accelerator_is_an_ordinary_key) {
    listen(shell);
    key(1, 'x');
    key(2, 'x');
    EXPECT_TRUE(commands.empty());
    Events events = vm.takeEvents();
    EXPECT_EQ(events, (Events{fired::key(KeyKind::pressed, 'x', 'X'),
                              fired::key(KeyKind::released, 'x', 'X')}));
}
