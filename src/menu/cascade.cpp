// Items that open a menu.

#include "aygshell.h"
#include "menu/item_info.h"
#include "menu/menu_item.h"

static constexpr UINT longestText = 128; // characters, the terminator included
static constexpr wchar_t insertionFailed[] = L"Unable to insert new cascade menu item";

static bool readText(HMENU menu, int position, wchar_t* text) {
    MENUITEMINFOW info = menuItemInfo(MIIM_TYPE);
    info.dwTypeData = text;
    info.cch = longestText;
    return GetMenuItemInfoW(menu, position, TRUE, &info);
}

static bool insert(HMENU menu, int position, DWORD id, HMENU subMenu, const wchar_t* text) {
    if (subMenu)
        return InsertMenuW(menu, position, MF_BYPOSITION | MF_POPUP,
                           reinterpret_cast<UINT_PTR>(subMenu), text);
    return InsertMenuW(menu, position, MF_BYPOSITION, id, text);
}

static bool setData(HMENU menu, int position, DWORD id) {
    MENUITEMINFOW info = menuItemInfo(MIIM_DATA);
    info.dwItemData = id;
    return SetMenuItemInfoW(menu, position, TRUE, &info);
}

// Takes the new item out again, which has no data or stands beside the old one.
static bool undo(HMENU menu, int position, const wchar_t* failure, ErrorRecord* error) {
    Win32Error_SetLast(error, failure);
    RemoveMenu(menu, position, MF_BYPOSITION);
    return false;
}

// The system cannot turn a plain item into one with a sub-menu: the item is replaced. The old one
// is taken out and not deleted, which would destroy the sub-menu that it shows.
static bool replace(const MenuItemRecord* item, HMENU subMenu, ErrorRecord* error) {
    int position = MenuItem_Locate(item, error);
    if (position < 0) return false;
    HMENU menu = item->menu->menuHandle;
    wchar_t text[longestText] = L"";
    if (!readText(menu, position, text)) {
        Win32Error_SetLast(error, L"Unable to get the menu item text");
        return false;
    }
    if (!insert(menu, position, item->id, subMenu, text)) {
        Win32Error_SetLast(error, insertionFailed);
        return false;
    }
    if (!setData(menu, position, item->id)) return undo(menu, position, insertionFailed, error);
    if (RemoveMenu(menu, position + 1, MF_BYPOSITION)) return true;
    return undo(menu, position, L"Unable to delete old menu item", error);
}

static bool show(const MenuItemRecord* item, HMENU subMenu, ErrorRecord* error) {
    HWND barWindow = MenuItem_GetBar(item);
    if (!barWindow) return replace(item, subMenu, error);
    ask(barWindow, SHCMBM_SETSUBMENU, item->id, subMenu);
    return true;
}

void CascadeMenuItem_SetMenu(CascadeMenuItemRecord* item, DropDownMenuRecord* menu,
                             ErrorRecord* error) {
    if (!show(item, menu ? menu->menuHandle : nullptr, error)) return;
    if (item->subMenu) item->subMenu->cascadeItem = nullptr;
    item->subMenu = menu;
    if (menu) menu->cascadeItem = item;
}

void CascadeMenuItem_Detach(MenuItemRecord* item) {
    if (item->menu) show(item, nullptr, nullptr);
    if (item->subMenu && item->subMenu->cascadeItem == item) item->subMenu->cascadeItem = nullptr;
    item->subMenu = nullptr;
}
