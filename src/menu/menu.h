#pragma once
// Menus and their items. Display thread only, but for the natives.

#include "bridge/layout.h"
#include "bridge/widget.h"
#include "ce.h"

struct ControlRecord;
struct MenuItemRecord;

struct MenuRecord : WidgetRecord {
    ControlRecord* owner;        // the shell of a menu bar, the control of a pop-up
    HMENU menuHandle;            // owned; null for a menu bar
    HWND menuBarWindow;          // goes with the shell's window; null but for a menu bar
    MenuItemRecord* cascadeItem; // the item that currently shows this menu
};
ASSERT_OFFSET(MenuRecord, owner, 16)
ASSERT_OFFSET(MenuRecord, menuBarWindow, 24)

using MenuItemSelection = void (*)(MenuItemRecord* item, WPARAM wParam, void* unused);

struct MenuItemRecord : WidgetRecord {
    MenuRecord* menu;
    DWORD id;                 // the command id that the display gave it
    MenuItemSelection select; // null: choosing the item does nothing
};
