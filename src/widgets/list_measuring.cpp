// How wide a list's items are, and how much room a list wants.

#include "bridge/memory.h"
#include "graphics/gdi_guards.h"
#include "widgets/list.h"
#include "widgets/measuring.h"

static constexpr LONG extentMargin = 3; // pixels beside the widest item

static jint countItems(HWND window) { return ask(window, LB_GETCOUNT); }

wchar_t* List_CopyItem(HWND window, jint index) {
    LRESULT length = ask(window, LB_GETTEXTLEN, index);
    if (length == LB_ERR) return nullptr;
    wchar_t* text = allocateArray<wchar_t>(length + 1);
    if (text) ask(window, LB_GETTEXT, index, text);
    return text;
}

static LONG widthOf(HDC context, const wchar_t* text, UINT flags) {
    RECT area = {};
    DrawTextW(context, text, -1, &area, flags);
    return area.right - area.left;
}

static LONG widthOnLine(HDC context, const wchar_t* text) {
    return widthOf(context, text, DT_CALCRECT | DT_NOPREFIX | DT_SINGLELINE);
}

static void setExtent(HWND window, LONG width) {
    ask(window, LB_SETHORIZONTALEXTENT, width + extentMargin);
}

void List_RecomputeExtent(HWND window) {
    WindowContext context(window);
    SelectedObject font(context, windowFont(window));
    LONG widest = 0;
    jint count = countItems(window);
    for (jint i = 0; i < count; ++i) {
        Block<wchar_t> text(List_CopyItem(window, i));
        LONG width = text ? widthOnLine(context, text) : 0;
        if (width > widest) widest = width;
    }
    setExtent(window, widest);
}

void List_WidenExtent(HWND window, const wchar_t* item) {
    WindowContext context(window);
    SelectedObject font(context, windowFont(window));
    LONG width = widthOnLine(context, item);
    if (width > ask(window, LB_GETHORIZONTALEXTENT)) setExtent(window, width);
}

// The one with the most characters stands for the widest. -1 for an empty list.
static jint longestItem(HWND window) {
    jint longest = -1;
    LRESULT mostCharacters = LB_ERR;
    jint count = countItems(window);
    for (jint i = 0; i < count; ++i) {
        LRESULT characters = ask(window, LB_GETTEXTLEN, i);
        if (characters <= mostCharacters) continue;
        longest = i;
        mostCharacters = characters;
    }
    return longest;
}

static LONG itemWidth(HWND window, HDC context, const TEXTMETRICW& metrics) {
    constexpr LONG defaultCharacters = 6;
    jint longest = longestItem(window);
    Block<wchar_t> text(longest < 0 ? nullptr : List_CopyItem(window, longest));
    if (!text) return defaultCharacters * metrics.tmAveCharWidth;
    return widthOf(context, text, DT_CALCRECT | DT_NOPREFIX);
}

static PixelPair minimumSize(const ListRecord* list, jint rows) {
    constexpr LONG extraCharacters = 3;
    HWND window = list->hwnd;
    WindowContext context(window);
    SelectedObject font(context, windowFont(window));
    TEXTMETRICW metrics = {};
    GetTextMetricsW(context, &metrics);
    // The message is an edit control's, which a list may answer as well.
    LRESULT margins = ask(window, EM_GETMARGINS);
    LONG width = itemWidth(window, context, metrics) + LOWORD(margins) + HIWORD(margins) +
                 extraCharacters * metrics.tmAveCharWidth;
    LONG height = ask(window, LB_GETITEMHEIGHT) * rows;
    if (list->style & styleVerticalScroll) width += GetSystemMetrics(SM_CXVSCROLL);
    if (list->style & styleHorizontalScroll) height += GetSystemMetrics(SM_CYHSCROLL);
    LONG borders = 2 * _Control_GetBorderWidth(window);
    return {width + borders, height + borders};
}

PixelPair List_GetMinimumSize(ListRecord* list, jint rows, ErrorRecord*) {
    PixelPair size = {};
    Control_Run(list, [&](const ListRecord* found) { size = minimumSize(found, rows); });
    return size;
}
