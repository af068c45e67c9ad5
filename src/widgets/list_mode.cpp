// A list's selection mode is fixed when its window is made: to switch it, the list gets a new
// window, which takes over all that the old one had.

#include "bridge/memory.h"
#include "bridge/string_list.h"
#include "control/appearance.h"
#include "display/display.h"
#include "widgets/adjustable.h"
#include "widgets/list.h"
#include "widgets/measuring.h"

static constexpr LONG noItem = -1;

namespace {

// What the new window takes over.
struct Contents {
    wchar_t** items; // ended by null
    jint top;
    LONG selected; // or noItem
    HFONT font;
    bool hasFocus;
};

} // namespace

jint List_FirstSelected(HWND window) {
    jint count = SendMessageW(window, LB_GETCOUNT, 0, 0);
    for (jint i = 0; i < count; ++i)
        if (SendMessageW(window, LB_GETSEL, i, 0) > 0) return i;
    return noItem;
}

// Null when there is no memory for all of them.
static wchar_t** copyItems(HWND window) {
    jint count = SendMessageW(window, LB_GETCOUNT, 0, 0);
    wchar_t** items = allocateArray<wchar_t*>(count + 1);
    if (!items) return nullptr;
    for (jint i = 0; i < count; ++i) {
        items[i] = List_CopyItem(window, i);
        if (items[i]) continue;
        stringListFree(items);
        return nullptr;
    }
    return items;
}

static Contents contentsOf(HWND window, bool toMultiple) {
    Contents contents;
    contents.items = copyItems(window);
    contents.top = SendMessageW(window, LB_GETTOPINDEX, 0, 0);
    contents.selected =
        toMultiple ? SendMessageW(window, LB_GETCURSEL, 0, 0) : List_FirstSelected(window);
    contents.font = windowFont(window);
    contents.hasFocus = GetFocus() == window;
    return contents;
}

static DWORD styleFor(HWND window, DWORD javaStyle, bool multiple) {
    DWORD style = GetWindowLongW(window, GWL_STYLE) & ~LBS_MULTIPLESEL;
    if (multiple) style |= LBS_MULTIPLESEL;
    // A bar that is not needed at the moment is missing from the window's own style.
    if (javaStyle & styleVerticalScroll) style |= WS_VSCROLL;
    if (javaStyle & styleHorizontalScroll) style |= WS_HSCROLL;
    return style;
}

static HWND createLike(const ListRecord* list, bool multiple) {
    HWND old = list->hwnd;
    HWND parent = GetParent(old);
    RECT place = {};
    GetWindowRect(old, &place);
    MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&place), 2);
    return CreateWindowExW(GetWindowLongW(old, GWL_EXSTYLE), L"LISTBOX", nullptr,
                           styleFor(old, list->style, multiple), place.left, place.top,
                           place.right - place.left, place.bottom - place.top, parent, nullptr,
                           list->display->instance, nullptr);
}

static void moveBar(AdjustableRecord* bar, HWND window) {
    if (bar) bar->hwnd = window;
}

static void attach(ListRecord* list, HWND window, bool multiple) {
    list->hwnd = window;
    list->style = multiple ? list->style | styleMultiple : list->style & ~styleMultiple;
    list->singleSelect = !multiple;
    moveBar(list->horizontalBar, window);
    moveBar(list->verticalBar, window);
    SetWindowLongW(window, GWL_USERDATA, reinterpret_cast<LONG>(list));
    SetWindowLongW(window, GWL_WNDPROC, reinterpret_cast<LONG>(List_Proc));
}

static void select(const ListRecord* list, LONG item) {
    if (item == noItem) return;
    if (List_IsMultiple(list))
        SendMessageW(list->hwnd, LB_SETSEL, TRUE, item);
    else
        SendMessageW(list->hwnd, LB_SETCURSEL, item, 0);
}

static void fill(const ListRecord* list, const Contents& contents, ErrorRecord* error) {
    HWND window = list->hwnd;
    jint index = 0;
    while (contents.items[index] && List_Insert(window, contents.items[index], index, error))
        ++index;
    SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(contents.font), TRUE);
    if (list->style & styleHorizontalScroll) List_RecomputeExtent(window);
    // Selecting scrolls to the item, so that the view is restored last.
    select(list, contents.selected);
    SendMessageW(window, LB_SETTOPINDEX, contents.top, 0);
}

// The old window must not reach the record any more, which has a new one.
static void detach(HWND window, WNDPROC classProc) {
    SetWindowLongW(window, GWL_WNDPROC, reinterpret_cast<LONG>(classProc));
    SetWindowLongW(window, GWL_USERDATA, 0);
}

// Java hears of both changes, as if one window had kept the record, and may dispose of the list at
// each of them.
static void moveFocus(ListRecord* list) {
    HWND window = list->hwnd;
    fireFocus(list->callbackTarget, FocusChange::lost);
    if (controlOf(window) == list) Control_ForceFocus(list, nullptr);
}

static void takeOver(ListRecord* list, const Contents& contents, HWND old) {
    HWND window = list->hwnd;
    DisplayRecord* display = list->display;
    detach(old, list->classProc);
    if (contents.hasFocus) moveFocus(list);
    Display_DestroyWindow(display, old);
    UpdateWindow(window);
}

void List_SwitchMode(ListRecord* list, bool multiple, ErrorRecord* error) {
    HWND old = list->hwnd;
    Contents contents = contentsOf(old, multiple);
    if (!contents.items) {
        Win32Error_SetError(error, errorOutOfMemory, L"Unable to add item to list");
        return;
    }
    HWND window = createLike(list, multiple);
    if (window) {
        attach(list, window, multiple);
        fill(list, contents, error);
        takeOver(list, contents, old);
    } else {
        Win32Error_SetError(error, GetLastError(), L"Unable to create handle for widget");
    }
    stringListFree(contents.items);
}
