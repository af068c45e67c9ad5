#include "widgets/measuring.h"
#include "bridge/memory.h"
#include "graphics/gdi_guards.h"

wchar_t* copyWindowText(HWND window) {
    int length = GetWindowTextLengthW(window);
    if (length <= 0) return nullptr;
    wchar_t* text = allocateArray<wchar_t>(length + 1);
    if (text) GetWindowTextW(window, text, length + 1);
    return text;
}

HFONT windowFont(HWND window) {
    return reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0));
}

TextExtent measureText(HWND window, UINT flags, RECT area) {
    WindowContext context(window);
    SelectedObject selected(context, windowFont(window));
    TEXTMETRICW metrics = {};
    GetTextMetricsW(context, &metrics);

    wchar_t* text = copyWindowText(window);
    if (!text) return {0, metrics.tmHeight, metrics.tmAveCharWidth, true};
    DrawTextW(context, text, -1, &area, flags);
    freeBlock(text);
    return {area.right - area.left, area.bottom - area.top, metrics.tmAveCharWidth, false};
}
