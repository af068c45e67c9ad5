#include "menu/menu.h"
#include "bridge/leaf_lock.h"
#include "bridge/links.h"
#include "bridge/memory.h"
#include "control/control.h"
#include "control/shell.h"
#include "display/commands.h"
#include "display/requests.h"
#include "menu/item_info.h"
#include "menu/menu_item.h"

HMENU Menu_GetHandle(const MenuRecord* menu) { return menu->menuHandle; }

// No item is in the menu any more, or shows it. The items may be disposed of later.
static void leaveItems(const MenuRecord* menu) {
    LONG id = 0;
    for (; MenuItemRecord* item = Display_NextCommandItem(menu->display, &id); ++id) {
        if (item->subMenu == menu) CascadeMenuItem_Detach(item);
        if (item->menu == menu) item->menu = nullptr;
    }
}

// Sub-menus have records of their own, which end them.
static void releaseSubMenus(HMENU menu) {
    MENUITEMINFOW info = menuItemInfo(MIIM_SUBMENU);
    int position = 0;
    while (GetMenuItemInfoW(menu, position, TRUE, &info)) {
        if (info.hSubMenu)
            RemoveMenu(menu, position, MF_BYPOSITION);
        else
            ++position;
    }
}

static ShellRecord* findShowing(const MenuRecord* menuBar) {
    ShellRecord* shell = menuBar->display->shells;
    while (shell && shell->menuBar != menuBar) shell = shell->next;
    return shell;
}

static void leaveShells(const MenuRecord* menuBar) {
    while (ShellRecord* shell = findShowing(menuBar)) Shell_SetMenuBar(shell, nullptr, nullptr);
}

static void unlink(const MenuRecord* menu) {
    LeafLock lock;
    takeOut<&MenuRecord::next>(&menu->display->menus, menu);
}

static int disposeMenu(WidgetRecord* widget, ErrorRecord*) {
    auto* menu = static_cast<MenuRecord*>(widget);
    leaveItems(menu);
    leaveShells(menu);
    HWND barWindow = menu->menuBarWindow;
    unlink(menu);
    if (barWindow) Display_DestroyWindow(menu->display, barWindow);
    if (!menu->menuHandle) return 0;
    releaseSubMenus(menu->menuHandle);
    return DestroyMenu(menu->menuHandle);
}

void Menu_Free(MenuRecord* menu) {
    unlink(menu);
    Widget_Free(menu);
}

void Menu_ForgetOwner(DisplayRecord* display, const ControlRecord* owner) {
    LeafLock lock;
    for (MenuRecord* menu = display->menus; menu; menu = menu->next) {
        if (menu->owner != owner) continue;
        menu->owner = nullptr;
        menu->ownerWindow = nullptr;
        if (menu->menuBarWindow) menu->menuBarWindow = goneWindow();
    }
}

MenuRecord* Menu_Allocate(ControlRecord* owner) {
    auto* menu = allocate<MenuRecord>();
    if (!menu) return nullptr;
    DisplayRecord* display = Control_GetDisplay(owner);
    Widget_SetDisplay(menu, display);
    menu->dispose = disposeMenu;
    menu->owner = owner;
    menu->ownerWindow = owner->hwnd;
    LeafLock lock;
    menu->next = display->menus;
    display->menus = menu;
    return menu;
}

static MenuRecord* createMenu(ControlRecord* owner, const wchar_t* failure, ErrorRecord* error) {
    MenuRecord* menu = Menu_Allocate(owner);
    if (!menu) {
        Win32Error_SetError(error, errorOutOfMemory, failure);
        return nullptr;
    }
    menu->menuHandle = CreatePopupMenu();
    if (menu->menuHandle) return menu;
    Win32Error_SetLast(error, failure);
    Menu_Free(menu);
    return nullptr;
}

DropDownMenuRecord* DropDownMenu_New(ControlRecord* owner, ErrorRecord* error) {
    return static_cast<DropDownMenuRecord*>(
        createMenu(owner, L"Unable to create drop down menu handle!", error));
}

MenuRecord* PopupMenu_Create(ControlRecord* owner, ErrorRecord* error) {
    return createMenu(owner, L"Unable to create popup menu handle!", error);
}

template <class Record>
static Record* createOnDisplayThread(DisplayRequest request, ControlRecord* owner,
                                     ErrorRecord* error) {
    HWND messageWindow = Control_GetDisplay(owner)->messageWindow;
    return reinterpret_cast<Record*>(ask(messageWindow, request, owner, &error));
}

MenuBarRecord* MenuBar_New(ShellRecord* shell, ErrorRecord* error) {
    return createOnDisplayThread<MenuBarRecord>(requestCreateMenuBar, shell, error);
}

PopupMenuRecord* PopupMenu_New(ControlRecord* owner, ErrorRecord* error) {
    return createOnDisplayThread<PopupMenuRecord>(requestCreatePopupMenu, owner, error);
}

void PopupMenu_Show(PopupMenuRecord* menu, jint x, jint y, ErrorRecord*) {
    HWND owner = menu->ownerWindow;
    if (!owner) return;
    POINT point = {x, y};
    MapWindowPoints(owner, nullptr, &point, 1);
    ask(owner, controlTrackMenu, menu, &point);
}

void Menu_SetFont(MenuRecord*, FontRecord*, ErrorRecord*) {}

int Menu_FindPosition(const MenuRecord* menu, DWORD id) {
    MENUITEMINFOW info = menuItemInfo(MIIM_DATA);
    for (int position = 0; GetMenuItemInfoW(menu->menuHandle, position, TRUE, &info); ++position)
        if (info.dwItemData == id) return position;
    return -1;
}
