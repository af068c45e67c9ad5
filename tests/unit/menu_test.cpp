#include "aygshell.h"
#include "control/shell.h"
#include "device.h"
#include "faults.h"
#include "leaks.h"
#include "menu/menu_item.h"
#include <commctrl.h>
#include <thread>

class MenuTest : public DeviceTest {
  protected:
    static MenuRecord* menuOf(jint handle) { return reinterpret_cast<MenuRecord*>(handle); }
    static MenuItemRecord* itemOf(jint handle) { return reinterpret_cast<MenuItemRecord*>(handle); }

    jint newMenu(const Native<jint(jint owner)>& kind, jint owner) {
        jint menu = call(kind, owner);
        made.push_back(menu);
        return menu;
    }
    jint newItem(const Native<jint(jint menu, jint index)>& kind, jint menu, jint index) {
        jint item = call(kind, menu, index);
        if (item) made.push_back(item);
        return item;
    }
    jint newStateItem(jint menu, jint index, jint style = 0) {
        jint item = call(OS::StateMenuItem_New, menu, index, style);
        made.push_back(item);
        return item;
    }
    void disposeAll() {
        for (; !made.empty(); made.pop_back()) dispose(made.back());
    }
    ~MenuTest() override { disposeAll(); }

    void setText(jint item, const std::u16string& text, const std::u16string& accelerator = u"") {
        call(OS::LabeledMenuItem_SetText, item, vm.newString(text), vm.newString(accelerator));
    }
    void setAccelerator(jint item, jint accelerator) {
        call(OS::LabeledMenuItem_SetAccelerator, item, accelerator);
    }
    void setEnabled(jint item, bool enabled) {
        call(OS::AbstractMenuItem_SetEnabled, item, enabled);
    }
    void setSubMenu(jint item, jint menu) { call(OS::CascadeMenuItem_SetMenu, item, menu); }

    static MENUITEMINFOW infoAt(HMENU menu, int position) {
        static wchar_t text[200];
        MENUITEMINFOW info = {};
        info.cbSize = sizeof(info);
        info.fMask = MIIM_TYPE | MIIM_STATE | MIIM_DATA | MIIM_SUBMENU | MIIM_ID;
        info.dwTypeData = text;
        info.cch = 200;
        EXPECT_TRUE(GetMenuItemInfoW(menu, position, TRUE, &info)) << position;
        return info;
    }
    static std::vector<DWORD> idsIn(HMENU menu) {
        std::vector<DWORD> ids;
        for (int i = 0; i < GetMenuItemCount(menu); ++i) ids.push_back(infoAt(menu, i).dwItemData);
        return ids;
    }
    static std::wstring textAt(HMENU menu, int position) {
        return infoAt(menu, position).dwTypeData;
    }
    static TBBUTTON buttonAt(HWND bar, int index) {
        TBBUTTON button = {};
        EXPECT_TRUE(SendMessageW(bar, TB_GETBUTTON, index, reinterpret_cast<LPARAM>(&button)));
        return button;
    }
    static std::wstring buttonText(HWND bar, int id) {
        wchar_t text[200] = L"";
        SendMessageW(bar, TB_GETBUTTONTEXTW, id, reinterpret_cast<LPARAM>(text));
        return text;
    }

    jint shell = newShell();
    std::vector<jint> made; // disposed of in reverse
};

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

TEST_F(MenuTest, fonts_of_menus_are_the_systems) {
    jint menu = newMenu(OS::DropDownMenu_New, shell);
    jint item = newItem(OS::PushMenuItem_New, menu, 0);
    Faults faults;
    call(OS::Menu_SetFont, menu, 1);
    call(OS::LabeledMenuItem_SetFont, item, 1);
    EXPECT_TRUE(faults.calls().empty());
}

TEST_F(MenuTest, an_item_that_the_menu_asks_to_measure_answers) {
    jint item = newItem(OS::PushMenuItem_New, newMenu(OS::DropDownMenu_New, shell), 0);
    MEASUREITEMSTRUCT measuring = {};
    measuring.CtlType = ODT_MENU;
    measuring.itemData = itemOf(item)->id;
    auto ask = [&] {
        return SendMessageW(windowOf(shell), WM_MEASUREITEM, 0,
                            reinterpret_cast<LPARAM>(&measuring));
    };
    EXPECT_EQ(ask(), 1);
    measuring.CtlType = ODT_BUTTON;
    EXPECT_EQ(ask(), 0);
    measuring.CtlType = ODT_MENU;
    measuring.itemData = 5000;
    EXPECT_EQ(ask(), 0);
}

static std::vector<std::string> hookCalls;
static LRESULT recordPaint(MenuItemRecord*, WPARAM wParam, LPARAM lParam) {
    hookCalls.push_back("paint " + std::to_string(wParam) + " " +
                        std::to_string(reinterpret_cast<DRAWITEMSTRUCT*>(lParam)->itemData));
    return 0;
}

TEST_F(MenuTest, an_item_paints_itself_when_the_menu_asks) {
    jint item = newItem(OS::PushMenuItem_New, newMenu(OS::DropDownMenu_New, shell), 0);
    DRAWITEMSTRUCT drawing = {};
    drawing.CtlType = ODT_MENU;
    drawing.itemData = itemOf(item)->id;
    itemOf(item)->paint = recordPaint;
    hookCalls.clear();
    SendMessageW(windowOf(shell), WM_DRAWITEM, 7, reinterpret_cast<LPARAM>(&drawing));
    drawing.CtlType = ODT_BUTTON;
    SendMessageW(windowOf(shell), WM_DRAWITEM, 7, reinterpret_cast<LPARAM>(&drawing));
    EXPECT_EQ(hookCalls, Events{"paint 7 108"});
}

// A menu item's picture, painted on a bitmap that a test can look at.
class ItemImageTest : public MenuTest {
  protected:
    ItemImageTest() : screen(GetDC(nullptr)), dc(CreateCompatibleDC(screen)) {
        bitmap = CreateCompatibleBitmap(screen, 20, 20);
        previous = SelectObject(dc, bitmap);
        PatBlt(dc, 0, 0, 20, 20, WHITENESS);
        drawing.CtlType = ODT_MENU;
        drawing.hDC = dc;
        drawing.rcItem = {2, 3, 8, 9};
    }
    ~ItemImageTest() override {
        SelectObject(dc, previous);
        DeleteObject(bitmap);
        DeleteDC(dc);
        ReleaseDC(nullptr, screen);
    }
    void paint(jint item) {
        drawing.itemData = itemOf(item)->id;
        SendMessageW(windowOf(shell), WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&drawing));
    }
    HDC screen, dc;
    HBITMAP bitmap;
    HGDIOBJ previous;
    DRAWITEMSTRUCT drawing = {};
};

TEST_F(ItemImageTest, an_item_with_an_image_paints_it_inside_the_item_only) {
    jint item = newItem(OS::PushMenuItem_New, newMenu(OS::DropDownMenu_New, shell), 0);
    jint image = call(OS::Image_NewFromSize, display, 10, 10, 0xFF0000);
    itemOf(item)->image = reinterpret_cast<ImageRecord*>(image);
    paint(item);
    const COLORREF red = RGB(255, 0, 0), white = RGB(255, 255, 255);
    EXPECT_EQ(GetPixel(dc, 2, 3), red);
    EXPECT_EQ(GetPixel(dc, 7, 8), red);
    EXPECT_EQ(GetPixel(dc, 1, 3), white);
    EXPECT_EQ(GetPixel(dc, 8, 8), white);
    EXPECT_EQ(GetPixel(dc, 7, 9), white);
    itemOf(item)->image = nullptr;
    call(OS::Image_Dispose, image);
}

TEST_F(ItemImageTest, an_item_without_an_image_paints_nothing) {
    paint(newItem(OS::PushMenuItem_New, newMenu(OS::DropDownMenu_New, shell), 0));
    EXPECT_EQ(GetPixel(dc, 2, 3), RGB(255, 255, 255));
}

TEST_F(ItemImageTest, painting_an_item_puts_the_clip_region_back) {
    jint item = newItem(OS::PushMenuItem_New, newMenu(OS::DropDownMenu_New, shell), 0);
    jint image = call(OS::Image_NewFromSize, display, 1, 1, 0);
    itemOf(item)->image = reinterpret_cast<ImageRecord*>(image);
    HRGN region = CreateRectRgn(1, 1, 15, 15);
    HRGN hole = CreateRectRgn(4, 4, 6, 6);
    CombineRgn(region, region, hole, RGN_DIFF);
    SelectClipRgn(dc, region);
    paint(item);
    HRGN after = CreateRectRgn(0, 0, 0, 0);
    EXPECT_EQ(GetClipRgn(dc, after), 1);
    EXPECT_TRUE(EqualRgn(after, region));
    SelectClipRgn(dc, nullptr);
    paint(item);
    EXPECT_EQ(GetClipRgn(dc, after), 0);
    for (HRGN each : {region, hole, after}) DeleteObject(each);
    itemOf(item)->image = nullptr;
    call(OS::Image_Dispose, image);
}

class PopupTest : public MenuTest {
  protected:
    // How high each item of the menu is while it is shown.
    std::vector<LONG> heightsOf(jint menu) {
        looked = menuOf(menu)->menuHandle;
        heights.clear();
        SetTimer(windowOf(shell), 1, USER_TIMER_MINIMUM, look);
        show(menu, 10, 10);
        return heights;
    }
    static void CALLBACK look(HWND window, UINT, UINT_PTR timer, DWORD) {
        KillTimer(window, timer);
        for (int i = 0; i < GetMenuItemCount(looked); ++i) {
            RECT place = {};
            GetMenuItemRect(nullptr, looked, i, &place);
            heights.push_back(place.bottom - place.top);
        }
        typeKey(VK_ESCAPE);
    }
    static inline HMENU looked;
    static inline std::vector<LONG> heights;

    void show(jint menu, jint x, jint y) { call(OS::PopupMenu_Show, menu, x, y); }
    static void typeKey(BYTE key) {
        keybd_event(key, 0, 0, 0);
        keybd_event(key, 0, KEYEVENTF_KEYUP, 0);
    }
};

// Where the menu was shown.
static POINT shownAt;
static HWND shownFor;
static BOOL WINAPI recordTracking(HMENU, UINT flags, int x, int y, HWND window, LPTPMPARAMS extra) {
    EXPECT_EQ(flags, 0u);
    EXPECT_EQ(extra, nullptr);
    shownAt = {x, y};
    shownFor = window;
    return TRUE;
}

TEST_F(PopupTest, appears_in_the_owners_client_area) {
    jint button = newButton(shell);
    jint menu = newMenu(OS::PopupMenu_New, button);
    Faults faults;
    faults.replace("TrackPopupMenuEx", reinterpret_cast<void*>(recordTracking));
    show(menu, 5, 6);
    POINT expected = {5, 6};
    ClientToScreen(windowOf(button), &expected);
    EXPECT_EQ(shownAt.x, expected.x);
    EXPECT_EQ(shownAt.y, expected.y);
    EXPECT_EQ(shownFor, windowOf(button));
}

TEST_F(PopupTest, a_separator_takes_less_room_than_an_item) {
    jint menu = newMenu(OS::PopupMenu_New, shell);
    setText(newItem(OS::PushMenuItem_New, menu, 0), u"Open");
    newItem(OS::SeparatorItem_New, menu, 1);
    std::vector<LONG> heights = heightsOf(menu);
    ASSERT_EQ(heights.size(), 2u);
    EXPECT_GT(heights[1], 0);
    EXPECT_LT(heights[1], heights[0]);
}

TEST_F(PopupTest, the_item_that_is_chosen_by_keys_fires) {
    jint menu = newMenu(OS::PopupMenu_New, shell);
    jint first = newItem(OS::PushMenuItem_New, menu, 0);
    jint second = newItem(OS::PushMenuItem_New, menu, 1);
    setText(first, u"First");
    setText(second, u"Second");
    listen(first);
    listen(second);
    typeKey(VK_DOWN);
    typeKey(VK_DOWN);
    typeKey(VK_RETURN);
    show(menu, 10, 10);
    dispatchAll();
    Events events = vm.takeEvents();
    EXPECT_EQ(std::count(events.begin(), events.end(), fired::menu()), 1)
        << testing::PrintToString(events);
}

TEST_F(PopupTest, nothing_fires_when_the_menu_is_left) {
    jint menu = newMenu(OS::PopupMenu_New, shell);
    jint item = newItem(OS::PushMenuItem_New, menu, 0);
    listen(item);
    typeKey(VK_DOWN);
    typeKey(VK_ESCAPE);
    show(menu, 10, 10);
    dispatchAll();
    EXPECT_TRUE(vm.takeEvents().empty());
}

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

// Keys that choose items.
class AcceleratorTest : public MenuTest {
  protected:
    ShellAccelerators& accelerators() {
        return reinterpret_cast<ShellRecord*>(shell)->accelerators;
    }
    std::vector<jint> newItems(int count) {
        std::vector<jint> items;
        for (int i = 0; i < count; ++i) items.push_back(newItem(OS::PushMenuItem_New, menu, i));
        return items;
    }
    void press(BYTE key) { keybd_event(key, 0, 0, 0); }
    void release(BYTE key) { keybd_event(key, 0, KEYEVENTF_KEYUP, 0); }
    Events typed(std::vector<BYTE> keys) {
        vm.takeEvents();
        for (BYTE key : keys) press(key);
        for (auto key = keys.rbegin(); key != keys.rend(); ++key) release(*key);
        dispatchAll();
        return fired::only(vm.takeEvents(), {"menu"});
    }
    static constexpr jint alt = 1 << 16, shift = 2 << 16, control = 4 << 16;
    jint menu = newMenu(OS::PopupMenu_New, newButton(shell));
};

TEST_F(AcceleratorTest, belongs_to_the_shell_above_the_menus_owner) {
    jint item = newItem(OS::PushMenuItem_New, menu, 0);
    setAccelerator(item, alt | control | shift | 1023);
    ASSERT_EQ(accelerators().count, 1);
    EXPECT_EQ(accelerators().entries[0].fVirt, FVIRTKEY | FALT | FCONTROL | FSHIFT);
    EXPECT_EQ(accelerators().entries[0].key, VK_F1);
    EXPECT_EQ(accelerators().entries[0].cmd, itemOf(item)->id);
}

TEST_F(AcceleratorTest, set_twice_is_one) {
    jint item = newItem(OS::PushMenuItem_New, menu, 0);
    setAccelerator(item, control | 'a');
    setAccelerator(item, shift | 1012);
    ASSERT_EQ(accelerators().count, 1);
    EXPECT_EQ(accelerators().entries[0].fVirt, FVIRTKEY | FSHIFT);
    EXPECT_EQ(accelerators().entries[0].key, VK_DELETE);
}

TEST_F(AcceleratorTest, the_11th_and_the_16th_grow_the_table) {
    int count = 0;
    std::vector<jint> items = newItems(16);
    setAccelerator(items.front(), 'A');
    long blocks = countHeapBlocks();
    for (jint item : items) {
        setAccelerator(item, 'A' + count++);
        EXPECT_EQ(accelerators().count, count);
        EXPECT_EQ(accelerators().capacity, count <= 10 ? 10 : count <= 15 ? 15 : 20);
        EXPECT_EQ(countHeapBlocks(), blocks) << "the smaller table is gone";
    }
    for (int i = 0; i < 16; ++i) EXPECT_EQ(accelerators().entries[i].key, 'A' + i);
}

TEST_F(AcceleratorTest, removed_leaves_the_others_in_order) {
    std::vector<jint> items = newItems(3);
    for (int i = 0; i < 3; ++i) setAccelerator(items[i], 'A' + i);
    setAccelerator(items[0], 0);
    ASSERT_EQ(accelerators().count, 2);
    EXPECT_EQ(accelerators().entries[0].key, 'B');
    setAccelerator(items[0], 0);
    EXPECT_EQ(accelerators().count, 2) << "without one nothing changes";
    dispose(items[2]);
    made.pop_back();
    EXPECT_EQ(accelerators().count, 1) << "it goes with its item";
}

TEST_F(AcceleratorTest, no_memory_for_the_table_is_an_error_that_adds_nothing) {
    std::vector<jint> items = newItems(11);
    {
        Faults faults;
        faults.fail("LocalAlloc");
        setAccelerator(items[0], 'A');
        expectReport("LabeledMenuItem_SetAccelerator", -4,
                     u"Not enough space to create accelerator table");
        EXPECT_EQ(accelerators().count, 0);
    }
    for (int i = 0; i < 10; ++i) setAccelerator(items[i], 'A' + i);
    Faults faults;
    faults.fail("LocalAlloc");
    setAccelerator(items[10], 'Z');
    expectReport("LabeledMenuItem_SetAccelerator", -4,
                 u"Not enough space to grow accelerator table");
    EXPECT_EQ(accelerators().count, 10);
    EXPECT_EQ(accelerators().capacity, 10);
}

TEST_F(AcceleratorTest, the_table_is_built_when_a_key_arrives_and_anew_after_a_change) {
    std::vector<jint> items = newItems(2);
    setAccelerator(items[0], control | 'a');
    EXPECT_EQ(accelerators().table, nullptr);
    typed({'Q'});
    EXPECT_NE(accelerators().table, nullptr);
    setAccelerator(items[1], control | 'b');
    EXPECT_EQ(accelerators().table, nullptr);
    typed({'Q'});
    setAccelerator(items[1], 0);
    EXPECT_EQ(accelerators().table, nullptr) << "it would dangle";
}

TEST_F(AcceleratorTest, its_keys_choose_the_item) {
    std::vector<jint> items = newItems(3);
    for (jint item : items) listen(item);
    setAccelerator(items[0], control | 'a');
    setAccelerator(items[1], 1025);
    setAccelerator(items[2], control | shift | 'a');
    EXPECT_EQ(typed({VK_CONTROL, 'A'}), Events{fired::menu()});
    EXPECT_EQ(typed({VK_F3}), Events{fired::menu()});
    EXPECT_EQ(typed({VK_CONTROL, VK_SHIFT, 'A'}), Events{fired::menu()});
    EXPECT_TRUE(typed({'A'}).empty());
    EXPECT_TRUE(typed({VK_CONTROL, 'B'}).empty());
    EXPECT_TRUE(typed({VK_SHIFT, VK_F3}).empty());
}

TEST_F(AcceleratorTest, of_another_shell_is_not_taken) {
    jint item = newItem(OS::PushMenuItem_New, menu, 0);
    listen(item);
    setAccelerator(item, control | 'a');
    newShell();
    EXPECT_TRUE(typed({VK_CONTROL, 'A'}).empty());
}
