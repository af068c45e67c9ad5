#include "widgets/measuring.h"
#include "bridge/memory.h"
#include "display/message.h"
#include "graphics/gdi_guards.h"

wchar_t* copyWindowText(HWND window) {
    int length = GetWindowTextLengthW(window);
    if (length <= 0) return nullptr;
    wchar_t* text = allocateArray<wchar_t>(length + 1);
    if (text) GetWindowTextW(window, text, length + 1);
    return text;
}

HFONT windowFont(HWND window) { return reinterpret_cast<HFONT>(ask(window, WM_GETFONT)); }

static TextExtent extentOfNothing(HDC context) {
    TEXTMETRICW metrics = {};
    GetTextMetricsW(context, &metrics);
    return {0, metrics.tmHeight, metrics.tmHeight, metrics.tmAveCharWidth, true};
}

TextExtent measureFont(HWND window) {
    WindowContext context(window);
    SelectedObject selected(context, windowFont(window));
    return extentOfNothing(context);
}

TextExtent measureText(HWND window, UINT flags, RECT area) {
    WindowContext context(window);
    SelectedObject selected(context, windowFont(window));
    TextExtent extent = extentOfNothing(context);

    Block<wchar_t> text(copyWindowText(window));
    if (!text) return extent;
    DrawTextW(context, text, -1, &area, flags);
    extent.width = area.right - area.left;
    extent.height = area.bottom - area.top;
    extent.isEmpty = false;
    return extent;
}
