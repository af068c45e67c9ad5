#include "control/shell.h"
#include "faults.h"
#include "menu_fixture.h"

class MenuBarTest : public MenuTest {
  protected:
    MenuBarTest() {
        bar = newMenu(OS::MenuBar_New, shell);
        window = menuOf(bar)->menuBarWindow;
    }
    void showBar(jint which) { call(OS::Shell_SetMenuBar, shell, which); }
    void tapButton(DWORD id) {
        RECT place;
        EXPECT_TRUE(SendMessageW(window, TB_GETRECT, id, reinterpret_cast<LPARAM>(&place)));
        MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&place), 2);
        call(OS::Display_PostPointerMoveEvent, display, place.left + 5, place.top + 8);
        for (PointerType type : {pointerPress, pointerRelease})
            call(OS::Display_PostPointerEvent, display, type, buttonLeft);
    }
    static void typeKey(BYTE key) {
        keybd_event(key, 0, 0, 0);
        keybd_event(key, 0, KEYEVENTF_KEYUP, 0);
    }
    jint bar;
    HWND window;
};

TEST_F(MenuBarTest, starts_without_buttons_and_hidden) {
    EXPECT_EQ(SendMessageW(window, TB_BUTTONCOUNT, 0, 0), 0);
    EXPECT_FALSE(IsWindowVisible(window));
    EXPECT_EQ(menuOf(bar)->menuHandle, nullptr);
}

TEST_F(MenuBarTest, takes_the_default_bars_place_and_gives_it_back) {
    auto* record = reinterpret_cast<ShellRecord*>(shell);
    showBar(bar);
    EXPECT_TRUE(IsWindowVisible(window));
    EXPECT_FALSE(IsWindowVisible(record->defaultMenuBar->menuBarWindow));
    EXPECT_EQ(record->menuBar, menuOf(bar));
    showBar(0);
    EXPECT_FALSE(IsWindowVisible(window));
    EXPECT_TRUE(IsWindowVisible(record->defaultMenuBar->menuBarWindow));
    EXPECT_EQ(record->menuBar, nullptr);
}

TEST_F(MenuBarTest, a_new_bar_maximises_a_top_shell_again_and_leaves_a_child_shell) {
    std::vector<jint> whole = boundsOf(shell);
    SetWindowPos(windowOf(shell), nullptr, 5, 5, 50, 50, SWP_NOZORDER);
    showBar(bar);
    EXPECT_EQ(boundsOf(shell), whole);
    jint child = call(OS::Shell_NewChild, shell, 0);
    call(OS::Control_SetBounds, child, 5, 6, 70, 80);
    jint childBar = newMenu(OS::MenuBar_New, child);
    call(OS::Shell_SetMenuBar, child, childBar);
    EXPECT_EQ(boundsOf(child), (std::vector<jint>{5, 6, 70, 80}));
    disposeAll();
    dispose(child);
}

TEST_F(MenuBarTest, a_disposed_bar_gives_way_to_the_default_one) {
    showBar(bar);
    disposeAll();
    auto* record = reinterpret_cast<ShellRecord*>(shell);
    EXPECT_EQ(record->menuBar, nullptr);
    EXPECT_TRUE(IsWindowVisible(record->defaultMenuBar->menuBarWindow));
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(MenuBarTest, a_bar_may_outlive_its_shell) {
    jint other = newShell();
    jint otherBar = newMenu(OS::MenuBar_New, other);
    jint item = newItem(OS::PushMenuItem_New, otherBar, 0);
    call(OS::Shell_SetMenuBar, other, otherBar);
    setAccelerator(item, 'A');
    dispose(other);
    dispose(item);
    expectReport("Widget_Dispose", -3, u"Unable to delete menu item");
    dispose(otherBar);
    made = {bar};
}

TEST_F(MenuBarTest, items_are_buttons) {
    jint push = newItem(OS::PushMenuItem_New, bar, 0);
    jint cascade = newItem(OS::CascadeMenuItem_New, bar, 1);
    newItem(OS::SeparatorItem_New, bar, 1);
    TBBUTTON button = buttonAt(window, 0);
    EXPECT_EQ(button.idCommand, int(itemOf(push)->id));
    EXPECT_EQ(button.fsStyle, 0x10);
    EXPECT_EQ(button.fsState, TBSTATE_ENABLED);
    EXPECT_EQ(button.iBitmap, -2);
    EXPECT_EQ(buttonAt(window, 1).fsStyle, BTNS_SEP);
    EXPECT_EQ(buttonAt(window, 2).idCommand, int(itemOf(cascade)->id));
    EXPECT_EQ(buttonAt(window, 2).fsStyle, 0x98);
}

TEST_F(MenuBarTest, labels_have_neither_mnemonics_nor_accelerators) {
    jint item = newItem(OS::PushMenuItem_New, bar, 0);
    setText(item, u"&Exit", u"Ctrl+Q");
    EXPECT_EQ(buttonText(window, itemOf(item)->id), L"Exit");
}

TEST_F(MenuBarTest, items_are_enabled_and_disabled) {
    jint item = newItem(OS::PushMenuItem_New, bar, 0);
    setEnabled(item, false);
    EXPECT_FALSE(buttonAt(window, 0).fsState & TBSTATE_ENABLED);
    setEnabled(item, true);
    EXPECT_TRUE(buttonAt(window, 0).fsState & TBSTATE_ENABLED);
}

// A bar that answers nothing.
static WNDPROC barProc;
static UINT refused;
static WPARAM refusedAnswer;
static LRESULT CALLBACK refuse(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == refused) return refusedAnswer;
    return CallWindowProcW(barProc, window, message, wParam, lParam);
}

TEST_F(MenuBarTest, a_bar_that_refuses_is_an_error) {
    jint item = newItem(OS::PushMenuItem_New, bar, 0);
    barProc = reinterpret_cast<WNDPROC>(
        SetWindowLongW(window, GWL_WNDPROC, reinterpret_cast<LONG>(refuse)));
    refusedAnswer = 0;
    refused = 0x443;
    EXPECT_EQ(newItem(OS::PushMenuItem_New, bar, 0), 0);
    expectReport("PushMenuItem_New", -3, u"Unable to create new menu item");
    refused = 0x440;
    setText(item, u"Text");
    expectReport("LabeledMenuItem_SetText", -3, u"Unable to set menu item text");
    setEnabled(item, false);
    expectReport("AbstractMenuItem_SetEnabled", -3, u"Unable to set menu item enabled state");
    refused = 0x43F;
    refusedAnswer = WPARAM(-1);
    setEnabled(item, true);
    expectReport("AbstractMenuItem_SetEnabled", -3, u"Unable to set menu item enabled state");
    refused = 0x416;
    refusedAnswer = 0;
    dispose(item);
    expectReport("Widget_Dispose", -3, u"Unable to delete menu item");
    made.pop_back();
    refused = 0;
    jint next = newItem(OS::PushMenuItem_New, bar, 0);
    refused = 0x419;
    refusedAnswer = WPARAM(-1);
    dispose(next);
    expectReport("Widget_Dispose", -3, u"Unable to find menu item");
    made.pop_back();
    SetWindowLongW(window, GWL_WNDPROC, reinterpret_cast<LONG>(barProc));
}

TEST_F(MenuBarTest, an_item_is_enabled_although_the_bar_does_not_tell_its_state) {
    jint item = newItem(OS::PushMenuItem_New, bar, 0);
    setEnabled(item, false);
    barProc = reinterpret_cast<WNDPROC>(
        SetWindowLongW(window, GWL_WNDPROC, reinterpret_cast<LONG>(refuse)));
    refused = 0x43F;
    refusedAnswer = WPARAM(-1);
    setEnabled(item, true);
    onlyReport();
    SetWindowLongW(window, GWL_WNDPROC, reinterpret_cast<LONG>(barProc));
    EXPECT_TRUE(buttonAt(window, 0).fsState & TBSTATE_ENABLED);
}

TEST_F(MenuBarTest, a_disposed_item_leaves_the_bar) {
    newItem(OS::PushMenuItem_New, bar, 0);
    jint second = newItem(OS::PushMenuItem_New, bar, 1);
    DWORD id = itemOf(second)->id;
    dispose(second);
    made.pop_back();
    EXPECT_EQ(SendMessageW(window, TB_BUTTONCOUNT, 0, 0), 1);
    EXPECT_EQ(SendMessageW(window, TB_COMMANDTOINDEX, id, 0), -1);
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(MenuBarTest, a_mark_in_a_bar_is_an_error) {
    jint item = newStateItem(bar, 0);
    call(OS::StateMenuItem_SetSelection, item, true);
    expectReport("StateMenuItem_SetSelection", -3, u"Menu item doesn't exist");
}

TEST_F(MenuBarTest, a_tap_on_an_item_of_the_shown_bar_fires_once) {
    jint item = newItem(OS::PushMenuItem_New, bar, 0);
    setText(item, u"Exit");
    showBar(bar);
    listen(item);
    tapButton(itemOf(item)->id);
    dispatchAll();
    EXPECT_EQ(vm.takeEvents(), Events{fired::menu()});
    EXPECT_EQ(GetActiveWindow(), windowOf(shell)) << "the bar takes no activation";
}

TEST_F(MenuBarTest, a_command_of_a_bar_that_is_not_the_shells_fires_nothing) {
    jint item = newItem(OS::PushMenuItem_New, bar, 0);
    listen(item);
    SendMessageW(windowOf(shell), WM_COMMAND, itemOf(item)->id, reinterpret_cast<LPARAM>(window));
    EXPECT_TRUE(vm.takeEvents().empty());
}

TEST_F(MenuBarTest, commands_come_from_the_shown_bar_and_what_lies_in_it_only) {
    jint item = newItem(OS::PushMenuItem_New, bar, 0);
    listen(item);
    showBar(bar);
    HWND within = CreateWindowExW(0, L"STATIC", nullptr, WS_CHILD, 0, 0, 5, 5, window, nullptr,
                                  nullptr, nullptr);
    const struct {
        HWND sender;
        WPARAM id;
        Events events;
    } rows[] = {{window, itemOf(item)->id, {fired::menu()}},
                {within, itemOf(item)->id, {fired::menu()}},
                {windowOf(newButton(shell)), itemOf(item)->id, {}},
                {window, 5000, {}}};
    for (const auto& row : rows) {
        SendMessageW(windowOf(shell), WM_COMMAND, row.id, reinterpret_cast<LPARAM>(row.sender));
        EXPECT_EQ(fired::only(vm.takeEvents(), {"menu"}), row.events) << row.id;
    }
    DestroyWindow(within);
}

// Hiding and showing bars may let a listener or another thread in.
TEST_F(MenuBarTest, a_shell_that_goes_while_its_bar_changes_is_not_touched_again) {
    for (int nth : {1, 2}) {
        jint victim = newShell();
        jint itsBar = call(OS::MenuBar_New, victim);
        HWND victims = windowOf(victim);
        Faults faults;
        int left = nth;
        faults.watch([&](const std::string& function) {
            if (function == "ShowWindow" && --left == 0) dispose(victim);
        });
        call(OS::Shell_SetMenuBar, victim, itsBar);
        EXPECT_EQ(left, 0);
        EXPECT_FALSE(IsWindow(victims));
        EXPECT_EQ(faults.countCalls("SystemParametersInfoW"), 0) << "nothing is maximised";
        call(OS::Widget_Dispose, itsBar);
    }
}

TEST_F(MenuBarTest, a_cascade_item_drops_its_menu_down) {
    jint cascade = newItem(OS::CascadeMenuItem_New, bar, 0);
    setText(cascade, u"File");
    jint menu = newMenu(OS::DropDownMenu_New, shell);
    jint open = newItem(OS::PushMenuItem_New, menu, 0);
    jint save = newStateItem(menu, 1);
    setText(open, u"Open");
    setText(save, u"Save");
    setSubMenu(cascade, menu);
    showBar(bar);
    listen(open);
    listen(save);
    tapButton(itemOf(cascade)->id);
    typeKey(VK_DOWN);
    typeKey(VK_DOWN);
    typeKey(VK_RETURN);
    dispatchAll();
    EXPECT_EQ(vm.takeEvents(), Events{fired::menu()});
    EXPECT_TRUE(infoAt(menuOf(menu)->menuHandle, 1).fState & MFS_CHECKED) << "the second one";
}

TEST_F(MenuBarTest, a_cascade_item_and_the_menu_that_it_drops_down_know_each_other) {
    jint cascade = newItem(OS::CascadeMenuItem_New, bar, 0);
    std::vector<jint> menus = {newMenu(OS::DropDownMenu_New, shell),
                               newMenu(OS::DropDownMenu_New, shell)};
    for (jint shown : {menus[0], menus[1], jint{}, menus[0]}) {
        setSubMenu(cascade, shown);
        EXPECT_EQ(itemOf(cascade)->subMenu, menuOf(shown));
        for (jint menu : menus)
            EXPECT_EQ(menuOf(menu)->cascadeItem, menu == shown ? itemOf(cascade) : nullptr);
    }
    dispose(menus[0]);
    made = {bar, cascade, menus[1]};
    EXPECT_EQ(itemOf(cascade)->subMenu, nullptr) << "which is gone";
}
