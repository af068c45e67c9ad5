#include "faults.h"
#include "leaks.h"
#include "menu_fixture.h"
#include <thread>

TEST_F(MenuTest, command_ids_start_at_108_and_are_used_again) {
    jint menu = newMenu(OS::DropDownMenu_New, shell);
    jint first = newItem(OS::PushMenuItem_New, menu, 0);
    jint second = newItem(OS::PushMenuItem_New, menu, 1);
    EXPECT_EQ(itemOf(first)->id, 108u);
    EXPECT_EQ(itemOf(second)->id, 109u);
    dispose(first);
    made.erase(made.begin() + 1);
    EXPECT_EQ(itemOf(newItem(OS::PushMenuItem_New, menu, 0))->id, 108u);
}

TEST_F(MenuTest, the_table_of_commands_grows_by_32_items) {
    jint menu = newMenu(OS::DropDownMenu_New, shell);
    auto* record = reinterpret_cast<DisplayRecord*>(display);
    EXPECT_EQ(record->commandItemCapacity, 0);
    for (DWORD i = 0; i < 65; ++i) {
        jint item = newItem(OS::PushMenuItem_New, menu, i);
        EXPECT_EQ(itemOf(item)->id, 108 + i);
        EXPECT_EQ(record->commandItemCapacity, i < 32 ? 32 : i < 64 ? 64 : 96);
    }
    listen(made.back());
    SendMessageW(windowOf(shell), WM_COMMAND, 108 + 64, 0);
    EXPECT_EQ(vm.takeEvents(), Events{fired::menu()});
}

TEST_F(MenuTest, items_are_inserted_at_their_index) {
    jint menu = newMenu(OS::DropDownMenu_New, shell);
    jint a = newItem(OS::PushMenuItem_New, menu, 0);
    jint b = newItem(OS::SeparatorItem_New, menu, 0);
    jint c = newItem(OS::CascadeMenuItem_New, menu, 1);
    jint d = newStateItem(menu, 3);
    HMENU handle = menuOf(menu)->menuHandle;
    EXPECT_EQ(idsIn(handle),
              (std::vector<DWORD>{itemOf(b)->id, itemOf(c)->id, itemOf(a)->id, itemOf(d)->id}));
    EXPECT_TRUE(infoAt(handle, 0).fType & MFT_SEPARATOR);
    EXPECT_FALSE(infoAt(handle, 1).fType & MFT_SEPARATOR);
}

TEST_F(MenuTest, an_index_beyond_the_items_appends) {
    jint menu = newMenu(OS::DropDownMenu_New, shell);
    for (jint index : {0, 5, -1}) newItem(OS::PushMenuItem_New, menu, index);
    EXPECT_EQ(idsIn(menuOf(menu)->menuHandle), (std::vector<DWORD>{108, 109, 110}));
}

TEST_F(MenuTest, an_item_beyond_the_others_that_cannot_be_made_leaves_no_ghost) {
    jint menu = newMenu(OS::DropDownMenu_New, shell);
    for (jint index : {5, -1}) {
        Faults faults;
        faults.fail("SetMenuItemInfoW");
        EXPECT_EQ(newItem(OS::PushMenuItem_New, menu, index), 0);
        expectReport("PushMenuItem_New", -3, u"Unable to create new menu item");
    }
    EXPECT_EQ(GetMenuItemCount(menuOf(menu)->menuHandle), 0);
}

TEST_F(MenuTest, an_item_that_cannot_be_made_is_an_error_and_leaks_nothing) {
    jint menu = newMenu(OS::DropDownMenu_New, shell);
    newItem(OS::PushMenuItem_New, menu, 0);
    HMENU handle = menuOf(menu)->menuHandle;
    long blocks = countHeapBlocks();
    for (const char* function : {"LocalAlloc", "InsertMenuW", "SetMenuItemInfoW"}) {
        Faults faults;
        faults.fail(function);
        EXPECT_EQ(newItem(OS::PushMenuItem_New, menu, 0), 0) << function;
        expectReport("PushMenuItem_New", -3, u"Unable to create new menu item");
        EXPECT_EQ(idsIn(handle), std::vector<DWORD>{108}) << function;
        EXPECT_EQ(countHeapBlocks(), blocks) << function;
    }
    EXPECT_EQ(itemOf(newItem(OS::PushMenuItem_New, menu, 0))->id, 109u) << "no id is lost";
}

TEST_F(MenuTest, a_table_of_commands_that_cannot_grow_is_an_error) {
    jint menu = newMenu(OS::DropDownMenu_New, shell);
    Faults faults;
    faults.fail("LocalAlloc", 2);
    EXPECT_EQ(newItem(OS::PushMenuItem_New, menu, 0), 0);
    expectReport("PushMenuItem_New", -3, u"Unable to create new menu item");
}

TEST_F(MenuTest, menus_that_cannot_be_made_are_errors) {
    Faults faults;
    faults.fail("CreatePopupMenu", 0, ERROR_ACCESS_DENIED);
    EXPECT_EQ(call(OS::DropDownMenu_New, shell), 0);
    expectReport("DropDownMenu_New", -3, u"Unable to create drop down menu handle!::");
    EXPECT_EQ(call(OS::PopupMenu_New, shell), 0);
    expectReport("PopupMenu_New", -3, u"Unable to create popup menu handle!::");
    faults.fail("LocalAlloc", 0);
    EXPECT_EQ(call(OS::DropDownMenu_New, shell), 0);
    expectReport("DropDownMenu_New", -4, u"Unable to create drop down menu handle!");
    EXPECT_EQ(call(OS::PopupMenu_New, shell), 0);
    expectReport("PopupMenu_New", -4, u"Unable to create popup menu handle!");
    EXPECT_EQ(call(OS::MenuBar_New, shell), 0);
    expectReport("MenuBar_New", -4, u"Unable to create menu bar!");
}

TEST_F(MenuTest, a_menu_bar_without_its_window_is_an_error_and_leaves_nothing) {
    NoLeaks noLeaks;
    Faults faults;
    faults.fail("SHCreateMenuBar");
    EXPECT_EQ(call(OS::MenuBar_New, shell), 0);
    expectReport("MenuBar_New", -4, u"Unable to create menu bar!");
}

TEST_F(MenuTest, menu_bars_and_popups_of_other_threads_are_made_on_the_displays) {
    jint bar = 0, popup = 0;
    std::thread maker([&] {
        bar = call(OS::MenuBar_New, shell);
        popup = call(OS::PopupMenu_New, shell);
        call(OS::Display_Wake, display);
    });
    while (!popup) {
        if (!call(OS::Display_ReadAndDispatch, display)) call(OS::Display_Sleep, display);
    }
    maker.join();
    EXPECT_EQ(GetWindowThreadProcessId(menuOf(bar)->menuBarWindow, nullptr), GetCurrentThreadId());
    made = {bar, popup};
}

TEST_F(MenuTest, choosing_an_item_fires_once_from_any_window_of_the_display) {
    jint menu = newMenu(OS::DropDownMenu_New, shell);
    jint item = newItem(OS::PushMenuItem_New, menu, 0);
    jint button = newButton(shell);
    listen(item);
    SendMessageW(windowOf(shell), WM_COMMAND, itemOf(item)->id, 0);
    EXPECT_EQ(vm.takeEvents(), Events{fired::menu()});
    SendMessageW(windowOf(button), WM_COMMAND, itemOf(item)->id, 0);
    EXPECT_EQ(vm.takeEvents(), Events{fired::menu()});
    SendMessageW(windowOf(shell), WM_COMMAND, itemOf(item)->id + 1, 0);
    EXPECT_TRUE(vm.takeEvents().empty());
}

TEST_F(MenuTest, a_state_item_turns_its_mark_over_before_it_fires) {
    jint menu = newMenu(OS::DropDownMenu_New, shell);
    newItem(OS::PushMenuItem_New, menu, 0);
    jint check = newStateItem(menu, 1);
    jint radio = newStateItem(menu, 2, 16);
    EXPECT_EQ(itemOf(check)->style, 32u);
    EXPECT_EQ(itemOf(radio)->style, 48u);
    HMENU handle = menuOf(menu)->menuHandle;
    for (jint item : {check, radio}) {
        int position = item == check ? 1 : 2;
        std::vector<bool> seen;
        vm.behavior["menu"] = [&](const std::vector<jint>&) {
            seen.push_back(infoAt(handle, position).fState & MFS_CHECKED);
            return 0;
        };
        listen(item);
        SendMessageW(windowOf(shell), WM_COMMAND, itemOf(item)->id, 0);
        SendMessageW(windowOf(shell), WM_COMMAND, itemOf(item)->id, 0);
        EXPECT_EQ(seen, (std::vector<bool>{true, false}));
    }
}

TEST_F(MenuTest, a_mark_is_set_and_taken_away) {
    jint menu = newMenu(OS::DropDownMenu_New, shell);
    jint item = newStateItem(menu, 0);
    listen(item);
    for (bool checked : {true, true, false}) {
        call(OS::StateMenuItem_SetSelection, item, checked);
        EXPECT_EQ(bool(infoAt(menuOf(menu)->menuHandle, 0).fState & MFS_CHECKED), checked);
    }
    EXPECT_TRUE(vm.takeEvents().empty());
}

TEST_F(MenuTest, a_mark_without_its_item_is_an_error) {
    jint item = newStateItem(newMenu(OS::DropDownMenu_New, shell), 0);
    Faults faults;
    faults.fail("CheckMenuItem", 1, 0, DWORD(-1));
    call(OS::StateMenuItem_SetSelection, item, true);
    expectReport("StateMenuItem_SetSelection", -3, u"Menu item doesn't exist");
}

TEST_F(MenuTest, items_are_enabled_and_disabled) {
    jint menu = newMenu(OS::DropDownMenu_New, shell);
    newItem(OS::PushMenuItem_New, menu, 0);
    jint item = newItem(OS::PushMenuItem_New, menu, 1);
    auto isGray = [&] { return infoAt(menuOf(menu)->menuHandle, 1).fState & MFS_GRAYED; };
    setEnabled(item, false);
    EXPECT_TRUE(isGray());
    setEnabled(item, true);
    EXPECT_FALSE(isGray());
    EXPECT_FALSE(infoAt(menuOf(menu)->menuHandle, 0).fState & MFS_GRAYED);
}

TEST_F(MenuTest, an_item_that_cannot_be_enabled_is_an_error) {
    jint item = newItem(OS::PushMenuItem_New, newMenu(OS::DropDownMenu_New, shell), 0);
    Faults faults;
    faults.fail("EnableMenuItem", 1, 0, DWORD(-1));
    setEnabled(item, false);
    expectReport("AbstractMenuItem_SetEnabled", -3, u"The menu item does not exist");
    faults.fail("GetMenuItemInfoW", 1, ERROR_MENU_ITEM_NOT_FOUND);
    setEnabled(item, false);
    expectReport("AbstractMenuItem_SetEnabled", -3, u"Unable to find the item::");
}

TEST_F(MenuTest, labels_drop_mnemonics_and_show_accelerators) {
    jint menu = newMenu(OS::DropDownMenu_New, shell);
    jint item = newItem(OS::PushMenuItem_New, menu, 0);
    HMENU handle = menuOf(menu)->menuHandle;
    setText(item, u"&Open");
    EXPECT_EQ(textAt(handle, 0), L"Open");
    setText(item, u"Save && &as", u"Ctrl+S");
    EXPECT_EQ(textAt(handle, 0), L"Save  as\tCtrl+S");
    setText(item, u"");
    EXPECT_EQ(textAt(handle, 0), L"");
    call(OS::LabeledMenuItem_SetText, item, nullptr, nullptr);
    EXPECT_EQ(textAt(handle, 0), L"");
    EXPECT_TRUE(vm.reports.empty());
    EXPECT_EQ(idsIn(handle), std::vector<DWORD>{itemOf(item)->id}) << "the id stays";
}

TEST_F(MenuTest, a_label_that_cannot_be_set_is_an_error_and_leaks_nothing) {
    jint item = newItem(OS::PushMenuItem_New, newMenu(OS::DropDownMenu_New, shell), 0);
    long blocks = countHeapBlocks();
    Faults faults;
    faults.fail("GetMenuItemInfoW", 1, ERROR_MENU_ITEM_NOT_FOUND);
    setText(item, u"Open");
    expectReport("LabeledMenuItem_SetText", -3, u"Unable to find the item::");
    faults.fail("SetMenuItemInfoW", 1, ERROR_INVALID_PARAMETER);
    setText(item, u"Open");
    expectReport("LabeledMenuItem_SetText", -3, u"Unable to update the menu item's label::");
    faults.fail("LocalAlloc", 3); // after the two Java texts
    setText(item, u"Open");
    expectReport("LabeledMenuItem_SetText", -4, u"");
    EXPECT_EQ(countHeapBlocks(), blocks);
}

TEST_F(MenuTest, a_cascade_item_shows_its_menu_and_lets_it_go) {
    jint menu = newMenu(OS::DropDownMenu_New, shell);
    newItem(OS::PushMenuItem_New, menu, 0);
    jint cascade = newItem(OS::CascadeMenuItem_New, menu, 1);
    newItem(OS::PushMenuItem_New, menu, 2);
    setText(cascade, u"More");
    jint first = newMenu(OS::DropDownMenu_New, shell);
    jint second = newMenu(OS::DropDownMenu_New, shell);
    newItem(OS::PushMenuItem_New, first, 0);
    HMENU handle = menuOf(menu)->menuHandle;
    std::vector<DWORD> ids = idsIn(handle);

    setSubMenu(cascade, first);
    EXPECT_EQ(infoAt(handle, 1).hSubMenu, menuOf(first)->menuHandle);
    EXPECT_EQ(textAt(handle, 1), L"More");
    EXPECT_EQ(idsIn(handle), ids);
    EXPECT_EQ(menuOf(first)->cascadeItem, itemOf(cascade));
    EXPECT_EQ(itemOf(cascade)->subMenu, menuOf(first));

    setSubMenu(cascade, second);
    EXPECT_EQ(infoAt(handle, 1).hSubMenu, menuOf(second)->menuHandle);
    EXPECT_EQ(menuOf(first)->cascadeItem, nullptr);
    EXPECT_EQ(GetMenuItemCount(menuOf(first)->menuHandle), 1) << "the old menu lives";

    setSubMenu(cascade, 0);
    EXPECT_EQ(infoAt(handle, 1).hSubMenu, nullptr);
    EXPECT_EQ(menuOf(second)->cascadeItem, nullptr);
    EXPECT_EQ(itemOf(cascade)->subMenu, nullptr);
    EXPECT_EQ(idsIn(handle), ids);
    EXPECT_TRUE(IsMenu(menuOf(second)->menuHandle));
}

TEST_F(MenuTest, a_cascade_item_that_cannot_be_replaced_is_an_error_and_stays) {
    jint menu = newMenu(OS::DropDownMenu_New, shell);
    jint cascade = newItem(OS::CascadeMenuItem_New, menu, 0);
    jint sub = newMenu(OS::DropDownMenu_New, shell);
    const struct {
        const char* function;
        int nth;
        const char16_t* message;
    } rows[] = {{"GetMenuItemInfoW", 1, u"Unable to find the item::"},
                {"GetMenuItemInfoW", 2, u"Unable to get the menu item text::"},
                {"InsertMenuW", 1, u"Unable to insert new cascade menu item::"},
                {"RemoveMenu", 1, u"Unable to delete old menu item::"}};
    for (const auto& row : rows) {
        Faults faults;
        faults.fail(row.function, row.nth, ERROR_ACCESS_DENIED);
        setSubMenu(cascade, sub);
        expectReport("CascadeMenuItem_SetMenu", -3, row.message);
        EXPECT_EQ(GetMenuItemCount(menuOf(menu)->menuHandle), 1);
        EXPECT_EQ(itemOf(cascade)->subMenu, nullptr);
        EXPECT_EQ(menuOf(sub)->cascadeItem, nullptr);
    }
}

TEST_F(MenuTest, a_disposed_item_leaves_its_menu_and_its_sub_menu_alive) {
    jint menu = newMenu(OS::DropDownMenu_New, shell);
    jint cascade = newItem(OS::CascadeMenuItem_New, menu, 0);
    jint sub = newMenu(OS::DropDownMenu_New, shell);
    setSubMenu(cascade, sub);
    dispose(cascade);
    made = {menu, sub};
    EXPECT_EQ(GetMenuItemCount(menuOf(menu)->menuHandle), 0);
    EXPECT_TRUE(IsMenu(menuOf(sub)->menuHandle));
    EXPECT_EQ(menuOf(sub)->cascadeItem, nullptr);
    EXPECT_EQ(reinterpret_cast<DisplayRecord*>(display)->commandItems[0], nullptr);
}

TEST_F(MenuTest, a_disposed_sub_menu_leaves_its_item_plain) {
    jint menu = newMenu(OS::DropDownMenu_New, shell);
    jint cascade = newItem(OS::CascadeMenuItem_New, menu, 0);
    jint sub = newMenu(OS::DropDownMenu_New, shell);
    setSubMenu(cascade, sub);
    dispose(sub);
    made = {menu, cascade};
    EXPECT_EQ(infoAt(menuOf(menu)->menuHandle, 0).hSubMenu, nullptr);
    EXPECT_EQ(itemOf(cascade)->subMenu, nullptr);
}

TEST_F(MenuTest, a_disposed_menu_leaves_its_sub_menus_alive_and_its_items_without_a_menu) {
    jint menu = newMenu(OS::DropDownMenu_New, shell);
    jint cascade = newItem(OS::CascadeMenuItem_New, menu, 0);
    jint sub = newMenu(OS::DropDownMenu_New, shell);
    setSubMenu(cascade, sub);
    dispose(menu);
    EXPECT_TRUE(IsMenu(menuOf(sub)->menuHandle));
    EXPECT_EQ(itemOf(cascade)->menu, nullptr);
    made = {sub};
    dispose(cascade);
    expectReport("Widget_Dispose", -3, u"Unable to find menu item::");
    EXPECT_EQ(reinterpret_cast<DisplayRecord*>(display)->commandItems[0], nullptr);
}

TEST_F(MenuTest, an_item_that_cannot_be_removed_is_an_error_and_gives_its_id_back) {
    jint menu = newMenu(OS::DropDownMenu_New, shell);
    const struct {
        const char* function;
        const char16_t* message;
    } rows[] = {{"GetMenuItemInfoW", u"Unable to find menu item::"},
                {"DeleteMenu", u"Unable to delete menu item::"}};
    for (const auto& row : rows) {
        jint item = newItem(OS::PushMenuItem_New, menu, 0);
        made.pop_back();
        EXPECT_EQ(itemOf(item)->id, 108u);
        Faults faults;
        faults.fail(row.function, 1, ERROR_MENU_ITEM_NOT_FOUND);
        dispose(item);
        expectReport("Widget_Dispose", -3, row.message);
    }
}

TEST_F(MenuTest, menus_with_items_leave_nothing_behind) {
    jint first = newItem(OS::PushMenuItem_New, newMenu(OS::DropDownMenu_New, shell), 0);
    setAccelerator(first, 'A'); // makes the tables, which stay
    NoLeaks noLeaks;
    int references = vm.globalReferences;
    for (int i = 0; i < leakRounds(); ++i) {
        jint popup = call(OS::PopupMenu_New, shell);
        jint sub = call(OS::DropDownMenu_New, shell);
        jint item = call(OS::PushMenuItem_New, sub, 0);
        jint cascade = call(OS::CascadeMenuItem_New, popup, 0);
        setText(item, u"Text", u"Ctrl+T");
        setSubMenu(cascade, sub);
        setAccelerator(item, 4 << 16 | 'T');
        if (i % 2) {
            for (jint widget : {item, cascade, sub, popup}) dispose(widget);
        } else {
            for (jint widget : {cascade, item, popup, sub}) dispose(widget);
        }
    }
    for (int i = 0; i < 1000; ++i) {
        jint bar = call(OS::MenuBar_New, shell);
        dispose(call(OS::PushMenuItem_New, bar, 0));
        dispose(bar);
    }
    EXPECT_EQ(vm.globalReferences, references);
    EXPECT_TRUE(vm.reports.empty());
}
