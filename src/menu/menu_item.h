#pragma once
// The items of menus. In a menu bar an item is a button of the command bar; in the other menus its
// application data is its command id, by which it is found. Any thread.

#include "bridge/layout.h"
#include "ce.h"
#include "display/message.h"
#include "display/widget.h"
#include "menu/menu.h"

struct ImageRecord;

using MenuItemHook = LRESULT (*)(MenuItemRecord* item, WPARAM wParam, LPARAM lParam);
using MenuItemSelection = void (*)(MenuItemRecord* item, WPARAM wParam, void* unused);

struct MenuItemRecord : WidgetRecord {
    MenuRecord* menu;         // null when the menu is disposed of already
    DWORD id;                 // the command id that the display gave it
    ImageRecord* image;       // not owned; null: the system draws the item
    MenuRecord* subMenu;      // of a cascade item; not owned
    MenuItemHook paint;       // takes the words of WM_DRAWITEM
    MenuItemHook measure;     // takes the words of WM_MEASUREITEM
    MenuItemSelection select; // null: choosing the item does nothing
};
ASSERT_OFFSET(MenuItemRecord, menu, 16)
ASSERT_OFFSET(MenuItemRecord, id, 20)
ASSERT_OFFSET(MenuItemRecord, image, 24)
ASSERT_OFFSET(MenuItemRecord, subMenu, 28)

struct SeparatorItemRecord : MenuItemRecord {};
struct LabeledMenuItemRecord : MenuItemRecord {};
struct PushMenuItemRecord : LabeledMenuItemRecord {};
struct CascadeMenuItemRecord : LabeledMenuItemRecord {};
struct StateMenuItemRecord : LabeledMenuItemRecord {};

// The item is inserted before the one that has the index now.
PushMenuItemRecord* PushMenuItem_New(MenuRecord* menu, jint index, ErrorRecord* error);
SeparatorItemRecord* SeparatorItem_New(MenuRecord* menu, jint index, ErrorRecord* error);
CascadeMenuItemRecord* CascadeMenuItem_New(MenuRecord* menu, jint index, ErrorRecord* error);
StateMenuItemRecord* StateMenuItem_New(MenuRecord* menu, jint index, DWORD style,
                                       ErrorRecord* error);

void AbstractMenuItem_SetEnabled(MenuItemRecord* item, bool enabled, ErrorRecord* error);
void StateMenuItem_SetSelection(StateMenuItemRecord* item, bool checked, ErrorRecord* error);

// Makes a cascade item open the menu; null makes it a plain item again. No menu is destroyed.
void CascadeMenuItem_SetMenu(CascadeMenuItemRecord* item, OrNone<DropDownMenuRecord> menu,
                             ErrorRecord* error);

// The item shows no menu any more, whatever becomes of it in its own menu. Display thread.
void CascadeMenuItem_Detach(MenuItemRecord* item);

// Mnemonic marks are dropped from the text. The accelerator text is shown but in menu bars.
void LabeledMenuItem_SetText(LabeledMenuItemRecord* item, const wchar_t* text,
                             const wchar_t* acceleratorText, ErrorRecord* error);

// The Java key code in the low word and the modifiers in the high one; 0 for none.
void LabeledMenuItem_SetAccelerator(LabeledMenuItemRecord* item, jint accelerator,
                                    ErrorRecord* error);

// Does nothing: the system draws its menus in its own font.
void LabeledMenuItem_SetFont(LabeledMenuItemRecord* item, OrNone<FontRecord> font,
                             ErrorRecord* error);

// The position in the item's drop-down or pop-up menu; -1, with the error set, when it is not
// there.
int MenuItem_Locate(const MenuItemRecord* item, ErrorRecord* error);

// Null for an item of a drop-down or pop-up menu.
inline HWND MenuItem_GetBar(const MenuItemRecord* item) {
    return item->menu ? item->menu->menuBarWindow : nullptr;
}

// WM_COMMAND of an item: runs its selection.
void MenuItem_Select(MenuItemRecord* item, Message message);

// WM_DRAWITEM of an item.
void MenuItem_Draw(MenuItemRecord* item, Message message);

// WM_MEASUREITEM of an item; false when the item leaves that to the system.
bool MenuItem_Measure(MenuItemRecord* item, Message message);
