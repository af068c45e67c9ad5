#include "menu/menu.h"
#include "control/menu_hooks.h"

HMENU Menu_GetHandle(const MenuRecord* menu) { return menu->menuHandle; }

void MenuItem_Select(MenuItemRecord* item, WPARAM wParam) {
    if (item->select) item->select(item, wParam, nullptr);
}
