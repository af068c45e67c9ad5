// What menu items tell and are told. The device's description of an item ends before the bitmap,
// and has no part of its own for text, kind or bitmap.

#include "refusal.h"
#include <stddef.h>

static bool isOfDevice(const MENUITEMINFOW* info) {
    constexpr UINT size = offsetof(MENUITEMINFOW, cch) + sizeof(info->cch);
    constexpr UINT parts =
        MIIM_STATE | MIIM_ID | MIIM_SUBMENU | MIIM_CHECKMARKS | MIIM_TYPE | MIIM_DATA;
    return isAllowed(info && info->cbSize == size && !(info->fMask & ~parts));
}

extern "C" {

BOOL WINAPI Device_GetMenuItemInfoW(HMENU menu, UINT item, BOOL byPosition, MENUITEMINFOW* info) {
    return isOfDevice(info) && GetMenuItemInfoW(menu, item, byPosition, info);
}

BOOL WINAPI Device_SetMenuItemInfoW(HMENU menu, UINT item, BOOL byPosition,
                                    const MENUITEMINFOW* info) {
    return isOfDevice(info) && SetMenuItemInfoW(menu, item, byPosition, info);
}
}
