#include "control/scrollable.h"
#include "bridge/memory.h"
#include "control/adjustable.h"

extern "C" DWORD _Scrollable_Style(DWORD javaStyle) {
    DWORD style = _Control_Style();
    if (javaStyle & styleVerticalScroll) style |= WS_VSCROLL;
    if (javaStyle & styleHorizontalScroll) style |= WS_HSCROLL;
    if (javaStyle & styleBorder) style |= WS_BORDER;
    return style;
}

Insets Scrollable_MeasureInsets(HWND window) {
    RECT frame = {};
    DWORD style = GetWindowLongW(window, GWL_STYLE);
    AdjustWindowRectEx(&frame, style, FALSE, GetWindowLongW(window, GWL_EXSTYLE));
    Insets insets = {-frame.left, -frame.top, frame.right, frame.bottom};
    if (style & WS_VSCROLL) insets.right += GetSystemMetrics(SM_CXVSCROLL);
    if (style & WS_HSCROLL) insets.bottom += GetSystemMetrics(SM_CYHSCROLL);
    return insets;
}

Insets Scrollable_GetInsets(ControlRecord* scrollable, ErrorRecord*) {
    Insets insets = {};
    ask(scrollable->hwnd, controlGetInsets, &insets);
    return insets;
}

LRESULT Scrollable_HandleIn(HWND window, Message message) {
    if (message.id != controlGetInsets) return Control_HandleIn(window, message);
    message.answer<Insets>() = Scrollable_MeasureInsets(window);
    return 0;
}

extern "C" LRESULT CALLBACK _Scrollable_Proc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    return Scrollable_HandleIn(window, {id, wParam, lParam});
}

extern "C" int _Dispose_Scrollable(WidgetRecord* widget, ErrorRecord* error) {
    auto* scrollable = static_cast<ScrollableRecord*>(widget);
    Adjustable_Free(scrollable->horizontalBar);
    Adjustable_Free(scrollable->verticalBar);
    scrollable->horizontalBar = nullptr;
    scrollable->verticalBar = nullptr;
    return _Dispose_Control(widget, error);
}

// A listener that hears of the window's new size may ask for the bar as well, or dispose of it
// with its scrollable: null.
static AdjustableRecord* getBar(ScrollableRecord* scrollable,
                                AdjustableRecord* ScrollableRecord::*adjustable, int kind,
                                ErrorRecord* error) {
    if (scrollable->*adjustable || Widget_IsEnding(scrollable)) return scrollable->*adjustable;
    HWND window = scrollable->hwnd;
    scrollable->*adjustable = Adjustable_New(scrollable, kind, error);
    if (!(scrollable->*adjustable)) return nullptr;
    Adjustable_Nudge(window, kind);
    return controlOf(window) == scrollable ? scrollable->*adjustable : nullptr;
}

OwnBarRecord* Scrollable_GetHorizontalBar(ScrollableRecord* scrollable, ErrorRecord* error) {
    return static_cast<OwnBarRecord*>(
        getBar(scrollable, &ScrollableRecord::horizontalBar, SB_HORZ, error));
}

OwnBarRecord* Scrollable_GetVerticalBar(ScrollableRecord* scrollable, ErrorRecord* error) {
    return static_cast<OwnBarRecord*>(
        getBar(scrollable, &ScrollableRecord::verticalBar, SB_VERT, error));
}

Bounds Scrollable_GetAdjustableBounds(ScrollableRecord* scrollable, OwnBarRecord* bar,
                                      ErrorRecord*) {
    RECT client = {};
    GetClientRect(scrollable->hwnd, &client);
    if (bar == scrollable->horizontalBar)
        return {0, 0, client.right, GetSystemMetrics(SM_CYHSCROLL)};
    return {0, 0, GetSystemMetrics(SM_CXVSCROLL), client.bottom};
}

void Scrollable_SetAdjustableEnabled(ScrollableRecord*, OwnBarRecord* bar, bool enabled,
                                     ErrorRecord*) {
    Adjustable_SetEnabled(bar, enabled);
}

void Scrollable_SetAdjustableVisible(ScrollableRecord* scrollable, OwnBarRecord* bar, bool visible,
                                     ErrorRecord*) {
    HWND window = scrollable->hwnd;
    Adjustable_SetVisible(bar, visible);
    SetWindowPos(window, nullptr, 0, 0, 0, 0,
                 SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED |
                     SWP_NOOWNERZORDER);
}

jint Platform_GetCapability(jint id, ErrorRecord*) {
    switch (id) {
    case 2:
        return 1;
    case 4:
        return 4158;
    default:
        return 0;
    }
}
