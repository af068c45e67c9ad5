#pragma once
// The display's table of menu items by command id. Display thread only.

#include "ce.h"

struct DisplayRecord;
struct MenuItemRecord;

// The item with this command id, or null.
MenuItemRecord* Display_FindCommandItem(const DisplayRecord* display, LONG id);
