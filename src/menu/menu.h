#pragma once
// Menu bars, drop-down and pop-up menus. A menu bar is a command bar of the device's shell, the
// others are menus of the system. Display thread only, but for the natives.

#include "bridge/handles.h"
#include "bridge/layout.h"
#include "ce.h"
#include "display/widget.h"

struct ControlRecord;
struct DisplayRecord;
struct FontRecord;
struct MenuItemRecord;
struct ShellRecord;

struct MenuRecord : WidgetRecord {
    ControlRecord* owner;        // null when its window is gone
    HMENU menuHandle;            // owned; null for a menu bar
    HWND menuBarWindow;          // owned; null but for a menu bar
    MenuItemRecord* cascadeItem; // the item that currently shows this menu
    HWND ownerWindow;            // of a shell (menu bar) or control; null when it is gone
    MenuRecord* next;            // of the display's menus
};
ASSERT_OFFSET(MenuRecord, owner, 16)
ASSERT_OFFSET(MenuRecord, menuHandle, 20)
ASSERT_OFFSET(MenuRecord, menuBarWindow, 24)
ASSERT_OFFSET(MenuRecord, cascadeItem, 28)

struct MenuBarRecord : MenuRecord {};
struct DropDownMenuRecord : MenuRecord {};
struct PopupMenuRecord : MenuRecord {};

MenuBarRecord* MenuBar_New(ShellRecord* shell, ErrorRecord* error);
DropDownMenuRecord* DropDownMenu_New(ControlRecord* owner, ErrorRecord* error);
PopupMenuRecord* PopupMenu_New(ControlRecord* owner, ErrorRecord* error);

// Shows the menu at a point of the owner's client area until an item is chosen or none.
void PopupMenu_Show(PopupMenuRecord* menu, jint x, jint y, ErrorRecord* error);

// Does nothing: the system draws its menus in its own font.
void Menu_SetFont(MenuRecord* menu, OrNone<FontRecord> font, ErrorRecord* error);

// A menu's record with its head filled, among the display's menus; null when there is no memory for
// it. Any thread.
MenuRecord* Menu_Allocate(ControlRecord* owner);

// Takes the record out of the display's menus and frees it.
void Menu_Free(MenuRecord* menu);

// Where the item is in a drop-down or pop-up menu; -1 when it is not there.
int Menu_FindPosition(const MenuRecord* menu, DWORD id);

// Display thread. The record is returned even when the bar's window could not be made, which is
// reported.
MenuRecord* MenuBar_Create(ControlRecord* shell, ErrorRecord* error);
MenuRecord* PopupMenu_Create(ControlRecord* owner, ErrorRecord* error);

// The native menu of a drop-down or pop-up menu.
HMENU Menu_GetHandle(const MenuRecord* menu);

// The owner's window goes: no menu has it, or a bar that went with it, any more.
void Menu_ForgetOwner(DisplayRecord* display, const ControlRecord* owner);

// Ends a menu bar that Java does not know. Null is allowed.
void MenuBar_Destroy(MenuRecord* menuBar, ErrorRecord* error);

// The command bar's window; null without one.
HWND MenuBar_GetWindow(const MenuRecord* menuBar);
