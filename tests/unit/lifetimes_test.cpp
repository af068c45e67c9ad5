// Widgets that end in any order, while others still refer to them. The blocks of the heap have
// pages of their own here, so that a touch of what is gone ends the program.

#include "control/shell.h"
#include "device.h"
#include "display/display.h"
#include "faults.h"
#include "leaks.h"
#include "menu/menu.h"
#include "menu/menu_item.h"
#include "other_thread.h"
#include <set>
#include <thread>

class LifetimesTest : public DeviceTest {
  protected:
    static constexpr jint modal = 0x40;

    jint newChildShell(jint parent, jint style = 0) {
        return call(OS::Shell_NewChild, parent, style);
    }
    jint newComposite(jint parent) { return call(OS::Composite_New, parent, 0); }
    jint newMenu(const Native<jint(jint owner)>& kind, jint owner) { return call(kind, owner); }
    jint newItem(const Native<jint(jint menu, jint index)>& kind, jint menu) {
        return call(kind, menu, 0);
    }
    void setSubMenu(jint item, jint menu) { call(OS::CascadeMenuItem_SetMenu, item, menu); }
    // A menu with two items that show the same one.
    struct SharedSubMenu {
        jint menu, subMenu, items[2];
    };
    SharedSubMenu newSharedSubMenu() {
        jint shell = newShell();
        jint menu = newMenu(OS::DropDownMenu_New, shell);
        SharedSubMenu all = {
            menu,
            newMenu(OS::DropDownMenu_New, shell),
            {newItem(OS::CascadeMenuItem_New, menu), newItem(OS::CascadeMenuItem_New, menu)}};
        for (jint item : all.items) setSubMenu(item, all.subMenu);
        return all;
    }
    void setAccelerator(jint item, jint accelerator) {
        call(OS::LabeledMenuItem_SetAccelerator, item, accelerator);
    }
    void show(jint control, bool shown = true) { call(OS::Control_SetVisible, control, shown); }
    void setBounds(jint control) { call(OS::Control_SetBounds, control, 1, 2, 30, 40); }
    static ControlRecord* record(jint control) { return reinterpret_cast<ControlRecord*>(control); }
    static LONG acceleratorsOf(jint shell) {
        return reinterpret_cast<ShellRecord*>(shell)->accelerators.count;
    }
};

TEST_F(LifetimesTest, controls_go_after_their_parent) {
    jint first = newShell(); // what the system makes for its first windows stays
    show(newButton(first));
    dispatchAll();
    NoLeaks noLeaks;
    jint shell = newShell();
    jint composite = newComposite(shell);
    jint button = newButton(composite);
    dispose(shell);
    EXPECT_EQ(record(composite)->parent, nullptr);
    EXPECT_EQ(record(button)->parent, nullptr);
    EXPECT_FALSE(IsWindow(windowOf(button)));
    setBounds(button);
    vm.reports.clear(); // it has no window to move
    call(OS::Control_SetRedraw, button, true);
    dispose(composite);
    dispose(button);
    dispatchAll();
}

TEST_F(LifetimesTest, child_shells_go_after_their_owner) {
    NoLeaks noLeaks;
    jint shell = newShell();
    jint child = newChildShell(shell, modal);
    jint other = newShell();
    show(child);
    EXPECT_FALSE(IsWindowEnabled(windowOf(other)));
    dispose(shell);
    EXPECT_TRUE(IsWindowEnabled(windowOf(other))) << "the modal shell went with its owner";
    show(other);
    dispose(child);
    dispose(other);
    dispatchAll();
}

TEST_F(LifetimesTest, child_shells_outlive_an_owner_whose_window_stays) {
    jint shell = newShell();
    HWND window = windowOf(shell);
    jint child = newChildShell(shell, modal);
    {
        Faults faults;
        faults.fail("DestroyWindow", 0);
        dispose(shell);
    }
    EXPECT_EQ(record(child)->parent, nullptr);
    show(child);
    dispose(child);
    DestroyWindow(window);
}

TEST_F(LifetimesTest, widgets_go_after_their_display) {
    long blocks = countHeapBlocks();
    jint second = call(OS::Display_New);
    jint shell = call(OS::Shell_New, second, 0);
    jint button = newButton(shell);
    jint menu = newMenu(OS::PopupMenu_New, button);
    jint item = newItem(OS::PushMenuItem_New, menu);
    jint dialog = call(OS::FileDialog_New, shell, 0);
    call(OS::Device_Dispose, second);
    for (jint widget : {dialog, menu, item, button, shell}) {
        call(OS::Widget_Dispose, widget);
        vm.reports.clear(); // the item finds no menu any more
    }
    dispatchAll();
    EXPECT_EQ(countHeapBlocks(), blocks + 1) << "the command table, as another display lives";
}

TEST_F(LifetimesTest, a_control_goes_after_its_display_on_another_thread_too) {
    jint second = call(OS::Display_New);
    jint shell = call(OS::Shell_New, second, 0);
    jint button = newButton(shell);
    HWND window = windowOf(button);
    call(OS::Device_Dispose, second);
    onOtherThread(vm, display, [&] { call(OS::Widget_Dispose, button); });
    EXPECT_FALSE(IsWindow(window));
    EXPECT_TRUE(vm.reports.empty());
    call(OS::Widget_Dispose, shell);
}

// Making a window may let a listener or another thread's request in.
TEST_F(LifetimesTest, a_control_whose_parent_goes_while_it_is_made_is_an_error) {
    jint shell = newShell();
    NoLeaks noLeaks;
    jint parent = newComposite(shell);
    {
        Faults faults;
        faults.watch([&](const std::string& function) {
            if (function == "SetWindowPos" && parent) dispose(std::exchange(parent, 0));
        });
        EXPECT_EQ(call(OS::PushButton_New, parent, 0), 0);
    }
    EXPECT_EQ(parent, 0);
    expectReport("PushButton_New", -3, u"Unable to create handle for widget::");
    EXPECT_EQ(GetWindow(windowOf(shell), GW_CHILD), nullptr);
}

TEST_F(LifetimesTest, a_child_shell_whose_owner_goes_while_it_is_made_is_an_error) {
    dispose(newChildShell(newShell())); // what the system makes for its first windows stays
    NoLeaks noLeaks;
    jint owner = call(OS::Shell_New, display, 0);
    {
        Faults faults;
        faults.watch([&](const std::string& function) {
            if (function == "SetWindowPos" && owner) dispose(std::exchange(owner, 0));
        });
        EXPECT_EQ(newChildShell(owner), 0);
    }
    EXPECT_EQ(owner, 0);
    expectReport("Shell_NewChild", -3, u"Unable to create window::");
}

TEST_F(LifetimesTest,
       a_default_font_that_is_asked_for_after_the_display_goes_with_the_last_widget) {
    NoLeaks noLeaks;
    jint second = call(OS::Display_New);
    jint shell = call(OS::Shell_New, second, 0);
    call(OS::Device_Dispose, second);
    EXPECT_NE(call(OS::Control_GetDefaultFont, shell), 0);
    call(OS::Widget_Dispose, shell);
    dispatchAll();
}

TEST_F(LifetimesTest, a_display_ends_on_its_own_thread) {
    NoLeaks noLeaks;
    jint second = call(OS::Display_New);
    HWND messageWindow = reinterpret_cast<DisplayRecord*>(second)->messageWindow;
    std::thread other([&] {
        call(OS::Device_Dispose, second);
        call(OS::Display_Wake, display);
    });
    while (IsWindow(messageWindow))
        if (!call(OS::Display_ReadAndDispatch, display)) call(OS::Display_Sleep, display);
    other.join();
    dispatchAll();
}

// As a pop-up does that closes when it loses the focus.
TEST_F(LifetimesTest, a_shell_is_disposed_of_while_modality_takes_its_focus) {
    constexpr jint lost = 2, deactivated = 206;
    for (auto [method, code] : {std::pair("focus", lost), std::pair("window", deactivated)}) {
        SCOPED_TRACE(method);
        jint shell = newShell();
        jint closing = newChildShell(shell);
        show(closing);
        SetFocus(windowOf(closing));
        jint modalShell = newChildShell(shell, modal);
        listen(closing);
        vm.behavior[method] = [&, code = code](const std::vector<jint>& arguments) {
            if (arguments[0] == code && closing) dispose(std::exchange(closing, 0));
            return 0;
        };
        show(modalShell);
        EXPECT_EQ(closing, 0);
        EXPECT_FALSE(IsWindowEnabled(windowOf(shell)));
        EXPECT_TRUE(IsWindowEnabled(windowOf(modalShell)));
        vm.behavior.clear();
        dispose(modalShell);
        dispose(shell);
        dispatchAll();
    }
}

// The button's window loses the focus while its shell's is destroyed.
TEST_F(LifetimesTest, a_listener_disposes_of_what_is_being_disposed_of) {
    jint shell = call(OS::Shell_New, display, 0);
    jint button = newButton(shell);
    show(shell);
    show(button);
    SetFocus(windowOf(button));
    dispatchAll();
    listen(button);
    int asked = 0;
    vm.behavior["focus"] = [&](const std::vector<jint>&) {
        ++asked;
        call(OS::Widget_Dispose, shell);
        return 0;
    };
    call(OS::Widget_Dispose, shell);
    vm.behavior.clear();
    EXPECT_EQ(asked, 1);
    dispose(button);
    dispatchAll();
}

TEST_F(LifetimesTest, a_sub_menu_leaves_every_item_that_shows_it) {
    auto [menu, subMenu, items] = newSharedSubMenu();
    HMENU native = reinterpret_cast<MenuRecord*>(menu)->menuHandle;
    dispose(subMenu);
    for (int position : {0, 1}) EXPECT_EQ(GetSubMenu(native, position), nullptr) << position;
    for (jint item : items) {
        EXPECT_EQ(reinterpret_cast<MenuItemRecord*>(item)->subMenu, nullptr);
        dispose(item);
    }
    dispose(menu);
}

TEST_F(LifetimesTest, an_item_that_goes_leaves_a_sub_menu_with_the_last_that_showed_it) {
    auto [menu, subMenu, items] = newSharedSubMenu();
    auto showing = [shown = reinterpret_cast<MenuRecord*>(subMenu)] {
        return reinterpret_cast<jint>(shown->cascadeItem);
    };
    dispose(items[0]);
    EXPECT_EQ(showing(), items[1]);
    dispose(items[1]);
    EXPECT_EQ(showing(), 0);
    dispose(subMenu);
    dispose(menu);
}

TEST_F(LifetimesTest, an_item_whose_menu_went_shows_no_sub_menu) {
    jint shell = newShell();
    jint menu = newMenu(OS::DropDownMenu_New, shell);
    jint subMenu = newMenu(OS::DropDownMenu_New, shell);
    jint item = newItem(OS::CascadeMenuItem_New, menu);
    dispose(menu);
    setSubMenu(item, subMenu);
    expectReport("CascadeMenuItem_SetMenu", -3, u"Unable to find the item::");
    EXPECT_EQ(reinterpret_cast<MenuItemRecord*>(item)->subMenu, nullptr);
    EXPECT_EQ(reinterpret_cast<MenuRecord*>(subMenu)->cascadeItem, nullptr);
    dispose(item);
    vm.reports.clear(); // it finds no menu any more
    dispose(subMenu);
}

TEST_F(LifetimesTest, a_menu_that_goes_leaves_the_items_of_other_menus_alone) {
    jint shell = newShell();
    jint menu = newMenu(OS::DropDownMenu_New, shell);
    jint going = newMenu(OS::DropDownMenu_New, shell);
    jint staying = newMenu(OS::DropDownMenu_New, shell);
    jint item = newItem(OS::CascadeMenuItem_New, menu);
    setSubMenu(item, staying);
    dispose(going);
    EXPECT_EQ(reinterpret_cast<jint>(reinterpret_cast<MenuItemRecord*>(item)->subMenu), staying);
    for (jint widget : {item, staying, menu}) dispose(widget);
}

TEST_F(LifetimesTest, a_menu_bar_leaves_every_shell_that_shows_it) {
    jint shells[] = {newShell(), newShell()};
    jint bar = newMenu(OS::MenuBar_New, shells[0]);
    for (jint shell : shells) call(OS::Shell_SetMenuBar, shell, bar);
    dispose(bar);
    for (jint shell : shells) {
        EXPECT_EQ(reinterpret_cast<ShellRecord*>(shell)->menuBar, nullptr);
        call(OS::Shell_SetMaximized, shell, true);
    }
}

TEST_F(LifetimesTest, an_accelerator_goes_with_its_item_after_its_menu) {
    jint shell = newShell();
    jint button = newButton(shell);
    jint menu = newMenu(OS::PopupMenu_New, button);
    jint item = newItem(OS::PushMenuItem_New, menu);
    setAccelerator(item, 0x40000 | 'A');
    EXPECT_EQ(acceleratorsOf(shell), 1);
    dispose(menu);
    dispose(button);
    dispose(item);
    EXPECT_EQ(acceleratorsOf(shell), 0);
    expectReport("Widget_Dispose", -3, u"Unable to find menu item::");
}

TEST_F(LifetimesTest, a_key_is_told_while_a_quit_message_waits) {
    jint shell = newShell();
    jint button = newButton(shell);
    jint gone = newButton(shell);
    show(button);
    SetFocus(windowOf(button));
    dispatchAll();
    listen(button);
    dispose(gone);
    SendMessageW(windowOf(button), WM_KEYDOWN, VK_LEFT, 1);
    SendMessageW(windowOf(button), WM_KEYUP, VK_LEFT, 1);
    EXPECT_EQ(vm.takeEvents(), (Events{fired::key(KeyKind::pressed, fired::noCharacter, keyLeft),
                                       fired::key(KeyKind::released, VK_LEFT, keyLeft)}));
    dispose(button);
}

TEST_F(LifetimesTest, a_press_leaves_nothing_of_a_window_that_goes) {
    jint shell = newShell();
    jint button = newControl(OS::PushButton_New, shell);
    listen(button);
    HWND window = windowOf(button);
    SendMessageW(window, WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
    SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    const PointerState& pointer = reinterpret_cast<DisplayRecord*>(display)->pointer;
    EXPECT_EQ(pointer.lastPress, window);
    EXPECT_EQ(pointer.under, window);
    EXPECT_EQ(reinterpret_cast<jint>(pointer.tap.control), button);
    DestroyWindow(window);
    EXPECT_EQ(pointer.lastPress, nullptr);
    EXPECT_EQ(pointer.under, nullptr);
    EXPECT_EQ(pointer.tap.control, nullptr);
    dispose(button);
}

TEST_F(LifetimesTest, a_menu_bar_forgets_its_window_with_the_shell) {
    jint shell = newShell();
    jint bar = newMenu(OS::MenuBar_New, shell);
    const auto* menu = reinterpret_cast<MenuRecord*>(bar);
    EXPECT_TRUE(IsWindow(menu->menuBarWindow));
    dispose(shell);
    EXPECT_EQ(menu->menuBarWindow, goneWindow()) << "the old one may be another's by now";
    dispose(bar);
}

// Other windows of the display's thread may keep anything in their user data.
TEST_F(LifetimesTest, windows_that_are_no_controls_are_taken_for_none) {
    HWND stranger = CreateWindowW(L"STATIC", L"title", WS_POPUP, 0, 0, 50, 50, nullptr, nullptr,
                                  nullptr, nullptr);
    auto* proc = entryPoint<LRESULT CALLBACK(HWND, UINT, WPARAM, LPARAM)>("_Control_Proc");
    for (LONG anything : {1L, 0xFFFCL, display + 1, display + 2}) {
        SetWindowLongW(stranger, GWL_USERDATA, anything);
        EXPECT_EQ(proc(stranger, WM_GETTEXTLENGTH, 0, 0), 5) << anything;
    }
    SetWindowLongW(stranger, GWL_USERDATA, display);
    jint button = newControl(OS::PushButton_New, newShell());
    SetParent(windowOf(button), stranger);
    listen(button);
    PostMessageW(windowOf(button), WM_KEYDOWN, VK_LEFT, 1);
    PostMessageW(windowOf(button), WM_MOUSEMOVE, 0, MAKELPARAM(3, 3));
    PostMessageW(stranger, WM_MOUSEMOVE, 0, MAKELPARAM(3, 3));
    dispatchAll();
    vm.takeEvents();
    dispose(button);
    DestroyWindow(stranger);
}

TEST_F(LifetimesTest, a_composite_without_record_gets_the_focus) {
    jint composite = newComposite(newShell());
    HWND window = windowOf(composite);
    LONG userData = SetWindowLongW(window, GWL_USERDATA, 0);
    SetFocus(window);
    EXPECT_EQ(GetFocus(), window);
    for (UINT bar : {WM_HSCROLL, WM_VSCROLL})
        EXPECT_EQ(SendMessageW(window, bar, SB_LINEDOWN, 0), 0);
    SetWindowLongW(window, GWL_USERDATA, userData);
}

// A shell is listed last of all, so that is the last block that can be missing.
TEST_F(LifetimesTest, a_shell_that_cannot_be_listed_stays_disabled_beside_a_modal_one) {
    jint modalShell = newChildShell(newShell(), modal);
    show(modalShell);
    int blocks;
    {
        Faults faults;
        jint shell = newShell(false);
        blocks = faults.countCalls("LocalAlloc");
        dispose(shell);
    }
    Faults faults;
    faults.fail("LocalAlloc", blocks);
    EXPECT_EQ(call(OS::Shell_New, display, 0), 0);
    EXPECT_TRUE(faults.hasFailed());
    EXPECT_EQ(faults.countCalls("EnableWindow"), 1);
    expectReport("Shell_New", -3, u"Could not add control to control list");
}

TEST_F(LifetimesTest, another_threads_accelerators_are_changed_on_the_displays) {
    jint shell = newShell();
    jint item = newItem(OS::PushMenuItem_New, newMenu(OS::DropDownMenu_New, shell));
    DWORD displayThread = GetCurrentThreadId();
    std::set<DWORD> changing;
    Faults faults;
    std::thread other([&] {
        setAccelerator(item, 0x40000 | 'A');
        call(OS::Display_Wake, display);
    });
    faults.watch([&](const std::string& function) {
        if (function == "LocalAlloc" || function == "LocalFree")
            changing.insert(GetCurrentThreadId());
    });
    while (!acceleratorsOf(shell))
        if (!call(OS::Display_ReadAndDispatch, display)) call(OS::Display_Sleep, display);
    other.join();
    EXPECT_EQ(changing, std::set<DWORD>{displayThread});
    dispose(item);
}

// The second thread begins while the first one makes room for its item's id, and waits for it.
TEST_F(LifetimesTest, two_threads_make_items_of_different_ids) {
    jint shell = newShell();
    jint menus[] = {newMenu(OS::DropDownMenu_New, shell), newMenu(OS::DropDownMenu_New, shell)};
    jint second = 0;
    std::thread other;
    HANDLE waits = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    DWORD displayThread = GetCurrentThreadId();
    int locks = 0;
    Faults faults;
    faults.watch([&](const std::string& function) {
        if (GetCurrentThreadId() != displayThread) {
            if (function == "EnterCriticalSection") SetEvent(waits);
            return;
        }
        locks += function == "EnterCriticalSection";
        locks -= function == "LeaveCriticalSection";
        if (function != "LocalAlloc" || !locks || other.joinable()) return;
        other = std::thread([&] {
            second = newItem(OS::PushMenuItem_New, menus[1]);
            call(OS::Display_Wake, display);
        });
        WaitForSingleObject(waits, INFINITE);
    });
    jint first = newItem(OS::PushMenuItem_New, menus[0]);
    ASSERT_TRUE(other.joinable());
    while (!second)
        if (!call(OS::Display_ReadAndDispatch, display)) call(OS::Display_Sleep, display);
    other.join();
    CloseHandle(waits);
    auto idOf = [](jint item) { return reinterpret_cast<MenuItemRecord*>(item)->id; };
    EXPECT_NE(idOf(first), idOf(second));
    dispose(first);
    dispose(second);
}

TEST_F(LifetimesTest, a_shell_that_goes_when_it_hears_of_its_size_is_not_told_of_its_place) {
    jint shell = newShell();
    listen(shell);
    HWND window = windowOf(shell);
    vm.behavior["resize"] = [&](const std::vector<jint>&) {
        if (shell) dispose(std::exchange(shell, 0));
        return 0;
    };
    vm.takeEvents();
    setBounds(shell);
    vm.behavior.clear();
    EXPECT_EQ(shell, 0);
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(fired::only(vm.takeEvents(), {"move"}), Events{});
}
