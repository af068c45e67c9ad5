#pragma once
// Choices: a field that shows one of several items, and a list of them that drops from it. Items
// are counted from 0. Any thread.

#include "control/scrollable.h"

// Java style bits of choices.

struct ChoiceRecord : ScrollableRecord {
    WNDPROC listProc;  // of the list within the window; null where the list is a window of its own
    WNDPROC editProc;  // of the edit field within the window, behind the choice's own; or null
    BOOL dropDownList; // the field shows items only and cannot be typed into
    LONG visibleItems; // how many the dropped list shows
};
ASSERT_OFFSET(ChoiceRecord, listProc, 64)
ASSERT_OFFSET(ChoiceRecord, editProc, 68)
ASSERT_OFFSET(ChoiceRecord, dropDownList, 72)
ASSERT_OFFSET(ChoiceRecord, visibleItems, 76)

// A drop-down list.
ChoiceRecord* Choice_New(ControlRecord* parent, ErrorRecord* error);

// The same, or without ownStyleDropDownList a choice with an edit field.
ChoiceRecord* Choice_Create(ControlRecord* parent, DWORD style, ErrorRecord* error);

// Before the item at the index; -1 appends. A null item is the empty text.
void Choice_AddItem(ChoiceRecord* choice, const wchar_t* item, jint index, ErrorRecord* error);
void Choice_RemoveItem(ChoiceRecord* choice, jint index, ErrorRecord* error);
void Choice_RemoveAllItems(ChoiceRecord* choice, ErrorRecord* error);

// Fires no callback. -1 selects none, and reports an error as every item does that is missing.
void Choice_SelectItem(ChoiceRecord* choice, jint index, ErrorRecord* error);

// -1 when none is selected.
jint Choice_GetSelectedItemIndex(ChoiceRecord* choice, ErrorRecord* error);
