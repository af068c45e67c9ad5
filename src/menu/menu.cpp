#include "menu/menu.h"
#include "bridge/memory.h"
#include "control/control.h"
#include "control/menu_hooks.h"
#include "control/shell.h"
#include "display/requests.h"
#include "menu/item_info.h"
#include "menu/menu_item.h"

HMENU Menu_GetHandle(const MenuRecord* menu) { return menu->menuHandle; }

// Its items may be disposed of later, and find no menu any more.
static void forget(const MenuRecord* menu) {
    const DisplayRecord* display = menu->display;
    for (LONG i = 0; i < display->commandItemCapacity; ++i) {
        MenuItemRecord* item = display->commandItems[i];
        if (item && item->menu == menu) item->menu = nullptr;
        if (item && item->subMenu == menu) item->subMenu = nullptr;
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

static void leaveShell(const MenuRecord* bar) {
    auto* shell = static_cast<ShellRecord*>(controlOf(bar->ownerWindow));
    if (shell && shell->menuBar == bar) Shell_SetMenuBar(shell, nullptr, nullptr);
}

static int disposeMenu(WidgetRecord* widget, ErrorRecord*) {
    auto* menu = static_cast<MenuRecord*>(widget);
    if (menu->cascadeItem) CascadeMenuItem_SetMenu(menu->cascadeItem, nullptr, nullptr);
    forget(menu);
    if (menu->menuBarWindow) {
        leaveShell(menu);
        Display_DestroyWindow(menu->display, menu->menuBarWindow);
    }
    if (!menu->menuHandle) return 0;
    releaseSubMenus(menu->menuHandle);
    return DestroyMenu(menu->menuHandle);
}

MenuRecord* Menu_Allocate(ControlRecord* owner) {
    auto* menu = allocate<MenuRecord>();
    if (!menu) return nullptr;
    menu->display = Control_GetDisplay(owner);
    menu->dispose = disposeMenu;
    menu->owner = owner;
    menu->ownerWindow = owner->hwnd;
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
    Win32Error_SetError(error, GetLastError(), failure);
    freeBlock(menu);
    return nullptr;
}

MenuRecord* DropDownMenu_New(ControlRecord* owner, ErrorRecord* error) {
    return createMenu(owner, L"Unable to create drop down menu handle!", error);
}

MenuRecord* PopupMenu_Create(ControlRecord* owner, ErrorRecord* error) {
    return createMenu(owner, L"Unable to create popup menu handle!", error);
}

static MenuRecord* createOnDisplayThread(DisplayRequest request, ControlRecord* owner,
                                         ErrorRecord* error) {
    HWND messageWindow = Control_GetDisplay(owner)->messageWindow;
    return reinterpret_cast<MenuRecord*>(SendMessageW(
        messageWindow, request, reinterpret_cast<WPARAM>(owner), reinterpret_cast<LPARAM>(&error)));
}

MenuRecord* MenuBar_New(ShellRecord* shell, ErrorRecord* error) {
    return createOnDisplayThread(requestCreateMenuBar, shell, error);
}

MenuRecord* PopupMenu_New(ControlRecord* owner, ErrorRecord* error) {
    return createOnDisplayThread(requestCreatePopupMenu, owner, error);
}

void PopupMenu_Show(MenuRecord* menu, jint x, jint y, ErrorRecord*) {
    POINT point = {x, y};
    MapWindowPoints(menu->ownerWindow, nullptr, &point, 1);
    SendMessageW(menu->ownerWindow, controlTrackMenu, reinterpret_cast<WPARAM>(menu),
                 reinterpret_cast<LPARAM>(&point));
}

void Menu_SetFont(MenuRecord*, FontRecord*, ErrorRecord*) {}

int Menu_FindPosition(const MenuRecord* menu, DWORD id) {
    MENUITEMINFOW info = menuItemInfo(MIIM_DATA);
    for (int position = 0; GetMenuItemInfoW(menu->menuHandle, position, TRUE, &info); ++position)
        if (info.dwItemData == id) return position;
    return -1;
}
