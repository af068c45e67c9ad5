#pragma once
// What controls and shells need of menus; the menu module defines it. Display thread only.

#include "bridge/error.h"
#include "ce.h"

struct ControlRecord;
struct MenuItemRecord;
struct MenuRecord;
struct ShellRecord;

// The native menu of a drop-down or pop-up menu.
HMENU Menu_GetHandle(const MenuRecord* menu);

// Runs the item's selection.
void MenuItem_Select(MenuItemRecord* item, WPARAM wParam);

// An empty menu bar for the shell. The record is returned even when its window could not be made,
// which is reported.
MenuRecord* MenuBar_Create(ShellRecord* shell, ErrorRecord* error);

// Ends a menu bar that Java does not know. Null is allowed.
void MenuBar_Destroy(MenuRecord* bar, ErrorRecord* error);

// The command bar's window; null without one.
HWND MenuBar_GetWindow(const MenuRecord* bar);
