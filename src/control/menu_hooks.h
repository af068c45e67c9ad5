#pragma once
// What controls and shells need of menus; the menu module defines it. Display thread only.

#include "bridge/error.h"
#include "ce.h"

struct ControlRecord;
struct DisplayRecord;
struct MenuItemRecord;
struct MenuRecord;
struct ShellRecord;

// The native menu of a drop-down or pop-up menu.
HMENU Menu_GetHandle(const MenuRecord* menu);

// Runs the item's selection.
void MenuItem_Select(MenuItemRecord* item, WPARAM wParam);

// WM_DRAWITEM of an item.
void MenuItem_Draw(MenuItemRecord* item, WPARAM wParam, LPARAM lParam);

// WM_MEASUREITEM of an item; false when the item leaves that to the system.
bool MenuItem_Measure(MenuItemRecord* item, WPARAM wParam, LPARAM lParam);

// The owner's window goes: no menu has it, or a bar that went with it, any more.
void Menu_ForgetOwner(DisplayRecord* display, const ControlRecord* owner);

// Ends a menu bar that Java does not know. Null is allowed.
void MenuBar_Destroy(MenuRecord* bar, ErrorRecord* error);

// The command bar's window; null without one.
HWND MenuBar_GetWindow(const MenuRecord* bar);
