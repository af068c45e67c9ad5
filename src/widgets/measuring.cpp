#include "widgets/measuring.h"
#include "bridge/memory.h"
#include "graphics/gdi_guards.h"

// The window's text as a heap block; null when it is empty or there is no memory for it.
static wchar_t* textOf(HWND window) {
    int length = GetWindowTextLengthW(window);
    if (length <= 0) return nullptr;
    wchar_t* text = allocateArray<wchar_t>(length + 1);
    if (text) GetWindowTextW(window, text, length + 1);
    return text;
}

TextExtent measureText(HWND window, UINT flags, RECT area) {
    WindowContext context(window);
    auto font = reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0));
    SelectedObject selected(context, font);
    TEXTMETRICW metrics = {};
    GetTextMetricsW(context, &metrics);

    wchar_t* text = textOf(window);
    if (!text) return {0, metrics.tmHeight, metrics.tmAveCharWidth, true};
    DrawTextW(context, text, -1, &area, flags);
    freeBlock(text);
    return {area.right - area.left, area.bottom - area.top, metrics.tmAveCharWidth, false};
}
