#pragma once
// Lists: items of text of which one, or in multiple mode several, can be selected. Any thread.

#include "bridge/handles.h"
#include "bridge/values.h"
#include "control/scrollable.h"

struct ListRecord : ScrollableRecord {
    // As the last switch of the mode left it; true until then, whatever the list was made as. The
    // style tells the mode.
    bool singleSelect;
    HWND* follower; // of a handler that waits for a listener; null: none waits
};
ASSERT_OFFSET(ListRecord, singleSelect, 64)

ListRecord* List_New(ControlRecord* parent, DWORD style, ErrorRecord* error);

// A null item is the empty text. At -1 it is appended.
void List_Add(ListRecord* list, const wchar_t* item, jint index, ErrorRecord* error);

// The item stays selected and the list where it is scrolled to.
void List_SetItem(ListRecord* list, jint index, const wchar_t* item, ErrorRecord* error);
void List_Remove(ListRecord* list, jint index, ErrorRecord* error);
void List_RemoveAll(ListRecord* list, ErrorRecord* error);

// Adds to the selection in multiple mode. An index without an item is ignored.
void List_Select(ListRecord* list, jint index, ErrorRecord* error);

// Nothing for several indices in single mode. The count is cut to what the array holds.
void List_SelectIndices(ListRecord* list, IntArguments indices, CountOfArray count,
                        ErrorRecord* error);
void List_Deselect(ListRecord* list, jint index, ErrorRecord* error);
bool List_IsSelected(ListRecord* list, jint index, ErrorRecord* error);
jint List_GetSelectionCount(ListRecord* list, ErrorRecord* error);

// -1 without a selection.
jint List_GetSelectionIndex(ListRecord* list, ErrorRecord* error);

// Ascending; the caller frees the values.
NativeIntArray List_GetSelectionIndices(ListRecord* list, ErrorRecord* error);

// Gives the list a new window. Of several selected items the first stays selected in single mode.
void List_SetMultipleMode(ListRecord* list, bool multiple, ErrorRecord* error);

// No error for an index without an item.
void List_SetTopItemIndex(ListRecord* list, jint index, ErrorRecord* error);

// In pixels, with that many rows in view.
PixelPair List_GetMinimumSize(ListRecord* list, jint rows, ErrorRecord* error);

// For the parts of the list's implementation.
LRESULT CALLBACK List_Proc(HWND window, UINT id, WPARAM wParam, LPARAM lParam);
inline bool List_IsMultiple(const ListRecord* list) { return list->style & styleMultiple; }

// False with the error set. Leaves the horizontal extent as it is.
bool List_Insert(HWND window, const wchar_t* item, jint index, ErrorRecord* error);
jint List_FirstSelected(HWND window);

// A copy that the caller frees; null for a missing item or without memory. Display thread, as what
// follows.
wchar_t* List_CopyItem(HWND window, jint index);

// How far the items reach, which is how far the list scrolls sideways.
void List_RecomputeExtent(HWND window);
void List_WidenExtent(HWND window, const wchar_t* item);

// On the display thread, by a message of the list's.
void List_SwitchMode(ListRecord* list, bool multiple, ErrorRecord* error);
