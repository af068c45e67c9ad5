// Menus and tables of accelerators take the system's memory until a program ends them: tests count
// them.

#include "emulator.h"
#include "exclusive_lock.h"
#include <algorithm>
#include <vector>

static SRWLOCK lock = SRWLOCK_INIT;
static std::vector<HMENU> menus;
static LONG tables;

// A menu ends with the one that it hangs in, too.
static void forgetEndedMenus() {
    std::erase_if(menus, [](HMENU menu) { return !IsMenu(menu); });
}

extern "C" {

HMENU WINAPI Device_CreatePopupMenu() {
    HMENU menu = CreatePopupMenu();
    ExclusiveLock held(&lock);
    forgetEndedMenus();
    if (menu) menus.push_back(menu);
    return menu;
}

HACCEL WINAPI Device_CreateAcceleratorTableW(ACCEL* entries, int count) {
    HACCEL table = CreateAcceleratorTableW(entries, count);
    if (table) InterlockedIncrement(&tables);
    return table;
}

BOOL WINAPI Device_DestroyAcceleratorTable(HACCEL table) {
    BOOL isDestroyed = DestroyAcceleratorTable(table);
    if (isDestroyed) InterlockedDecrement(&tables);
    return isDestroyed;
}

LONG WINAPI Emulator_CountMenusAndTables() {
    ExclusiveLock held(&lock);
    forgetEndedMenus();
    return LONG(menus.size()) + tables;
}
}
