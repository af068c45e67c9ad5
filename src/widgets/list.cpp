#include "widgets/list.h"
#include "bridge/memory.h"
#include "control/appearance.h"

static jint countItems(HWND window) { return ask(window, LB_GETCOUNT); }

// The system's error must have been read before the list was asked for anything more.
static void failWithIndex(ErrorRecord* error, DWORD code, bool isOutOfRange,
                          const wchar_t* outOfRange, const wchar_t* otherwise) {
    Win32Error_SetError(error, static_cast<LONG>(code), isOutOfRange ? outOfRange : otherwise);
}

bool List_Insert(HWND window, const wchar_t* item, jint index, ErrorRecord* error) {
    LRESULT inserted = ask(window, LB_INSERTSTRING, index, item);
    if (inserted != LB_ERR && inserted != LB_ERRSPACE) return true;
    DWORD code = GetLastError();
    // Quirk: whatever fails at a positive index is reported as an index out of range. Pinned by
    // ListTest.an_item_that_cannot_be_added_is_an_error.
    failWithIndex(error, code, index > 0 || index >= countItems(window),
                  L"Index is out of valid range for list", L"Unable to add item to list");
    return false;
}

static bool remove(HWND window, jint index, ErrorRecord* error) {
    jint top = ask(window, LB_GETTOPINDEX);
    bool removed = ask(window, LB_DELETESTRING, index) != LB_ERR;
    if (!removed) {
        DWORD code = GetLastError();
        failWithIndex(error, code, index < 0 || index >= countItems(window),
                      L"Invalid index of item to remove from list",
                      L"Unable to remove item from list");
    }
    if (index < top) ask(window, LB_SETTOPINDEX, top - 1);
    List_RecomputeExtent(window);
    return removed;
}

static void widen(const ListRecord* list, const wchar_t* item) {
    if (list->style & styleHorizontalScroll) List_WidenExtent(list->hwnd, item);
}

static const wchar_t* textOf(const wchar_t* item) { return item ? item : L""; }

void List_Add(ListRecord* list, const wchar_t* item, jint index, ErrorRecord* error) {
    Control_Run(list, [=](const ListRecord* found) {
        if (List_Insert(found->hwnd, textOf(item), index, error)) widen(found, textOf(item));
    });
}

void List_Remove(ListRecord* list, jint index, ErrorRecord* error) {
    Control_Run(list, [=](const ListRecord* found) { remove(found->hwnd, index, error); });
}

void List_RemoveAll(ListRecord* list, ErrorRecord*) {
    ask(list->hwnd, LB_RESETCONTENT);
    if (GetWindowLongW(list->hwnd, GWL_STYLE) & WS_HSCROLL) ask(list->hwnd, LB_SETHORIZONTALEXTENT);
}

static bool isSelected(HWND window, jint index) {
    LRESULT selected = ask(window, LB_GETSEL, index);
    return selected != 0 && selected != LB_ERR;
}

bool List_IsSelected(ListRecord* list, jint index, ErrorRecord*) {
    return isSelected(list->hwnd, index);
}

static void select(const ListRecord* list, jint index) {
    if (List_IsMultiple(list))
        ask(list->hwnd, LB_SETSEL, TRUE, index);
    else
        ask(list->hwnd, LB_SETCURSEL, index);
}

// An item that cannot be taken out is not doubled either.
static void replaceItem(const ListRecord* list, jint index, const wchar_t* item,
                        ErrorRecord* error) {
    bool wasSelected = isSelected(list->hwnd, index);
    if (!remove(list->hwnd, index, error)) return;
    if (!List_Insert(list->hwnd, item, index, error)) return;
    if (wasSelected) select(list, index);
    List_WidenExtent(list->hwnd, item);
}

void List_SetItem(ListRecord* list, jint index, const wchar_t* item, ErrorRecord* error) {
    Control_Run(list, [=](const ListRecord* found) {
        LRESULT top = ask(found->hwnd, LB_GETTOPINDEX);
        replaceItem(found, index, textOf(item), error);
        ask(found->hwnd, LB_SETTOPINDEX, top);
    });
}

static void selectItem(ListRecord* list, jint index, ErrorRecord* error) {
    if (index < 0 || index >= countItems(list->hwnd)) return;
    Control_SetRedraw(list, false, error);
    // Quirk: the list's window is asked for what nobody uses. Pinned by
    // ListTest.an_item_is_selected_after_a_look_at_the_top_item.
    ask(list->hwnd, LB_GETTOPINDEX);
    select(list, index);
    Control_SetRedraw(list, true, error);
    Control_Redraw(list, error);
}

void List_Select(ListRecord* list, jint index, ErrorRecord* error) {
    Control_Run(list, [=](ListRecord* found) { selectItem(found, index, error); });
}

void List_SelectIndices(ListRecord* list, IntArguments indices, jint count, ErrorRecord* error) {
    if (count > 1 && !List_IsMultiple(list)) return;
    if (count > indices.count) count = indices.count;
    Control_Run(list, [=](ListRecord* found) {
        for (jint i = 0; i < count; ++i) selectItem(found, indices.values[i], error);
    });
}

void List_Deselect(ListRecord* list, jint index, ErrorRecord*) {
    if (index < 0) return;
    Control_Run(list, [=](const ListRecord* found) {
        if (List_IsMultiple(found))
            ask(found->hwnd, LB_SETSEL, FALSE, index);
        else if (ask(found->hwnd, LB_GETCURSEL) == index)
            ask(found->hwnd, LB_SETCURSEL, -1);
    });
}

static void fail(ErrorRecord* error, const wchar_t* message) { Win32Error_SetLast(error, message); }

static jint countSelected(const ListRecord* list, ErrorRecord* error) {
    if (!List_IsMultiple(list)) return ask(list->hwnd, LB_GETCURSEL) != -1;
    jint count = ask(list->hwnd, LB_GETSELCOUNT);
    if (count != LB_ERR) return count;
    fail(error, L"Unable to get selection count from multiple select listbox");
    return 0;
}

jint List_GetSelectionCount(ListRecord* list, ErrorRecord* error) {
    jint count = 0;
    Control_Run(list, [&](const ListRecord* found) { count = countSelected(found, error); });
    return count;
}

static jint getSelected(HWND window, jint count, jint* items) {
    return ask(window, LB_GETSELITEMS, count, items);
}

static jint firstOfSeveral(HWND window, ErrorRecord* error) {
    jint count = ask(window, LB_GETSELCOUNT);
    if (count == LB_ERR) {
        fail(error, L"Unable to get selection count from multiple-select list box");
        return -1;
    }
    if (count == 0) return -1;
    jint first = -1;
    if (getSelected(window, 1, &first) == 1) return first;
    fail(error, L"Unable to get selection from multiple select listbox");
    return -1;
}

jint List_GetSelectionIndex(ListRecord* list, ErrorRecord* error) {
    jint index = -1;
    Control_Run(list, [&](const ListRecord* found) {
        HWND window = found->hwnd;
        index = List_IsMultiple(found) ? firstOfSeveral(window, error) : ask(window, LB_GETCURSEL);
    });
    return index;
}

static constexpr wchar_t noSelection[] = L"Unable to get selection from list";

static NativeIntArray newIndices(jint count, ErrorRecord* error) {
    if (count == 0) return {};
    jint* values = allocateArray<jint>(count);
    if (!values) Win32Error_SetError(error, errorOutOfMemory, noSelection);
    return {values, values ? count : 0, true};
}

static NativeIntArray severalIndices(HWND window, ErrorRecord* error) {
    jint count = ask(window, LB_GETSELCOUNT);
    if (count == LB_ERR) {
        Win32Error_SetError(error, errorFailed, L"Unable to get selection count from list");
        return {};
    }
    NativeIntArray indices = newIndices(count, error);
    if (indices.count && getSelected(window, count, indices.values) != count)
        fail(error, noSelection);
    return indices;
}

static NativeIntArray selectionOf(const ListRecord* list, ErrorRecord* error) {
    if (List_IsMultiple(list)) return severalIndices(list->hwnd, error);
    jint selected = ask(list->hwnd, LB_GETCURSEL);
    NativeIntArray indices = newIndices(selected != -1, error);
    if (indices.count) *indices.values = selected;
    return indices;
}

NativeIntArray List_GetSelectionIndices(ListRecord* list, ErrorRecord* error) {
    NativeIntArray indices = {};
    Control_Run(list, [&](const ListRecord* found) { indices = selectionOf(found, error); });
    return indices;
}

void List_SetMultipleMode(ListRecord* list, bool multiple, ErrorRecord* error) {
    if (multiple == List_IsMultiple(list)) return;
    ask(list->hwnd, controlSetListMode, multiple, &error);
}

// Quirk: an index behind the end leaves the list where it is, and a negative one scrolls to the
// end. Pinned by ListTest.the_larger_of_a_missing_top_item_and_the_last_is_tried.
void List_SetTopItemIndex(ListRecord* list, jint index, ErrorRecord*) {
    Control_Run(list, [=](const ListRecord* found) {
        HWND window = found->hwnd;
        if (ask(window, LB_SETTOPINDEX, index) != LB_ERR) return;
        jint last = countItems(window) - 1;
        jint least = index < 0 ? 0 : index;
        ask(window, LB_SETTOPINDEX, least > last ? least : last);
    });
}

static LRESULT command(const ListRecord* list, Message message) {
    WORD code = message.notification();
    if (code != LBN_SELCHANGE && code != LBN_DBLCLK) return 0;
    HWND window = list->hwnd;
    jint index = ask(window, LB_GETCARETINDEX);
    if (index == 0 && countItems(window) == 0) index = -1;
    auto selection = code == LBN_SELCHANGE ? ListSelection::changed : ListSelection::doubleClicked;
    if (const ControlRecord* changed = controlOf(window))
        fireListSelection(changed->callbackTarget, index, selection);
    return 0;
}

static LRESULT handle(ListRecord* list, Message message) {
    switch (message.id) {
    case controlCommand:
        return command(list, message);
    case controlSetListMode:
        List_SwitchMode(list, message.flag(), message.error());
        return 0;
    default:
        return Scrollable_HandleIn(list->hwnd, message);
    }
}

LRESULT CALLBACK List_Proc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    return receive<ListRecord, handle>(window, {id, wParam, lParam});
}

ListRecord* List_New(ControlRecord* parent, DWORD style, ErrorRecord* error) {
    DWORD windowStyle = _Scrollable_Style(style) | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT;
    if (style & styleMultiple) windowStyle |= LBS_MULTIPLESEL;
    auto* list = Control_NewOf<ListRecord>(parent, {.className = L"LISTBOX",
                                                    .windowProc = List_Proc,
                                                    .javaStyle = style,
                                                    .windowStyle = windowStyle,
                                                    .error = error});
    if (!list) return nullptr;
    list->dispose = _Dispose_Scrollable;
    list->ctlColorMessage = WM_CTLCOLORLISTBOX;
    list->singleSelect = true;
    return list;
}
