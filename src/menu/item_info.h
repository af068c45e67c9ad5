#pragma once
// What the system tells of a menu item, and is told.

#include "ce.h"

// A description of the named parts (MIIM_...), the others blank, of the size that the device asks
// for.
inline MENUITEMINFOW menuItemInfo(UINT mask) {
    MENUITEMINFOW info = {};
    info.cbSize = MENU_ITEM_INFO_SIZE;
    info.fMask = mask;
    return info;
}
