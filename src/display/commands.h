#pragma once
// The display's table of menu items by command id. Any thread; an item that is found may be used on
// the display's thread, where items are disposed of.

#include "ce.h"

struct DisplayRecord;
struct MenuItemRecord;

// Gives the item the lowest free command id; 0 when there is no memory for it, and when the display
// has ended, which would keep its table for good.
LONG Display_AssignCommandId(DisplayRecord* display, MenuItemRecord* item);

// The item with this command id, or null.
MenuItemRecord* Display_FindCommandItem(const DisplayRecord* display, LONG id);

// The item with the least command id that is not below the given one, which becomes the item's;
// null behind the last.
MenuItemRecord* Display_NextCommandItem(const DisplayRecord* display, LONG* id);

// Frees the id for another item. An id that is not in the table is ignored.
void Display_ReleaseCommandId(DisplayRecord* display, LONG id);
