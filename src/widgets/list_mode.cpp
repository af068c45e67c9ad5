// A list's selection mode is fixed when its window is made: to switch it, the list gets a new
// window, which takes over all that the old one had.

#include "bridge/memory.h"
#include "bridge/string_list.h"
#include "control/adjustable.h"
#include "control/appearance.h"
#include "display/display.h"
#include "widgets/list.h"
#include "widgets/measuring.h"
#include "widgets/renewal.h"

static constexpr LONG noItem = -1;

static ListRecord* listOf(HWND window) { return static_cast<ListRecord*>(controlOf(window)); }

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
    jint count = ask(window, LB_GETCOUNT);
    for (jint i = 0; i < count; ++i)
        if (ask(window, LB_GETSEL, i) > 0) return i;
    return noItem;
}

// Null when there is no memory for all of them.
static wchar_t** copyItems(HWND window) {
    jint count = ask(window, LB_GETCOUNT);
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
    contents.top = ask(window, LB_GETTOPINDEX);
    contents.selected = toMultiple ? ask(window, LB_GETCURSEL) : List_FirstSelected(window);
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

static void moveBar(AdjustableRecord* adjustable, HWND window) {
    if (adjustable) adjustable->hwnd = window;
}

static void moveTo(ListRecord* list, HWND window, bool multiple) {
    list->style = multiple ? list->style | styleMultiple : list->style & ~styleMultiple;
    list->singleSelect = !multiple;
    moveBar(list->horizontalBar, window);
    moveBar(list->verticalBar, window);
    Renewal_MoveTo(list, window, List_Proc, list->follower);
}

static void select(HWND window, bool multiple, LONG item) {
    if (item == noItem) return;
    if (multiple)
        ask(window, LB_SETSEL, TRUE, item);
    else
        ask(window, LB_SETCURSEL, item);
}

// An item before the given one was left out.
static jint oneUp(jint item, jint leftOut) { return item > leftOut ? item - 1 : item; }

// A refused item is left out, and the others keep their order.
static void insertAll(HWND window, Contents* contents, ErrorRecord* error) {
    jint index = 0;
    for (wchar_t** item = contents->items; *item; ++item) {
        if (List_Insert(window, *item, index, error)) {
            ++index;
            continue;
        }
        contents->selected =
            contents->selected == index ? noItem : oneUp(contents->selected, index);
        contents->top = oneUp(contents->top, index);
    }
}

static void fill(HWND window, DWORD style, Contents* contents, ErrorRecord* error) {
    insertAll(window, contents, error);
    ask(window, WM_SETFONT, contents->font, TRUE);
    if (style & styleHorizontalScroll) List_RecomputeExtent(window);
    if (contents->top) ask(window, LB_SETTOPINDEX, contents->top);
    select(window, (style & styleMultiple) != 0, contents->selected);
}

// Java hears of both changes, as if one window had kept the record. At the first the list may be
// disposed of, or switched once more: its last window takes the focus. That window.
static HWND moveFocus(HWND window) {
    ListRecord* list = listOf(window);
    if (!list) return nullptr;
    list->follower = &window;
    fireFocus(list->callbackTarget, FocusChange::lost);
    list = listOf(window);
    if (!list || list->follower != &window) return nullptr;
    list->follower = nullptr;
    Control_ForceFocus(list, nullptr);
    return window;
}

static void replaceWindow(ListRecord* list, HWND window, bool multiple, Contents* contents,
                          ErrorRecord* error) {
    HWND old = list->hwnd;
    HWND messageWindow = list->display->messageWindow;
    moveTo(list, window, multiple);
    fill(window, list->style, contents, error);
    if (contents->hasFocus) window = moveFocus(window);
    Renewal_DestroyOld(messageWindow, old);
    if (window) UpdateWindow(window);
}

// A list that another thread disposes of meanwhile needs no new window.
static void switchMode(HWND old, bool multiple, Contents* contents, ErrorRecord* error) {
    ListRecord* list = listOf(old);
    if (!list) return;
    HWND window = Renewal_Create(list, L"LISTBOX", styleFor(old, list->style, multiple));
    DWORD code = GetLastError();
    list = listOf(old);
    if (!list) return;
    if (window)
        replaceWindow(list, window, multiple, contents, error);
    else
        Win32Error_SetError(error, code, L"Unable to create handle for widget");
}

// Nor does one whose listener asks for it while it is being disposed of.
void List_SwitchMode(ListRecord* list, bool multiple, ErrorRecord* error) {
    if (Widget_IsEnding(list)) return;
    HWND old = list->hwnd;
    Contents contents = contentsOf(old, multiple);
    if (!contents.items) {
        Win32Error_SetError(error, errorOutOfMemory, L"Unable to add item to list");
        return;
    }
    switchMode(old, multiple, &contents, error);
    stringListFree(contents.items);
}
