#include "control/adjustable.h"
#include "control/scrollable.h"

ControlRecord* Composite_New(ControlRecord* parent, DWORD style, ErrorRecord* error) {
    if (!parent) {
        Win32Error_SetError(error, errorFailed, L"Argument invalid, need parent");
        return nullptr;
    }
    ControlRecord* composite =
        _Control_New(displayWindowClass, sizeof(ScrollableRecord), Composite_Proc, parent, style,
                     _Scrollable_Style(style), 0, error);
    if (!composite) return nullptr;
    composite->inheritsBackground = TRUE;
    composite->dispose = _Dispose_Scrollable;
    return composite;
}

static LRESULT focusGained(HWND window) {
    if (GetFocus() != window) return 1;
    const ControlRecord* composite = controlOf(window);
    if (composite) fireFocus(composite->callbackTarget, FocusChange::gained);
    return 0;
}

// The child of the composite that is, or holds, the window; null when there is none.
static HWND childHolding(HWND composite, HWND window) {
    while (window) {
        HWND parent = GetParent(window);
        if (parent == composite) return window;
        window = parent;
    }
    return nullptr;
}

static LRESULT notify(HWND window, WPARAM wParam, LPARAM lParam) {
    HWND child = childHolding(window, reinterpret_cast<const NMHDR*>(lParam)->hwndFrom);
    if (child) {
        NotifyAnswer answer = {};
        LRESULT result =
            SendMessageW(child, controlNotify, reinterpret_cast<WPARAM>(&answer), lParam);
        if (answer.handled) return result;
    }
    return _Scrollable_Proc(window, WM_NOTIFY, wParam, lParam);
}

// The bar that a scroll message is about; null when it is not a bar of Java's.
static AdjustableRecord* barOf(HWND window, UINT message, HWND sender) {
    if (sender && sender != window) return Adjustable_Of(controlOf(sender));
    auto* composite = static_cast<const ScrollableRecord*>(controlOf(window));
    if (!composite) return nullptr;
    return message == WM_HSCROLL ? composite->horizontalBar : composite->verticalBar;
}

static LRESULT scroll(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    AdjustableRecord* adjustable = barOf(window, message, reinterpret_cast<HWND>(lParam));
    if (adjustable) Adjustable_Scroll(adjustable, wParam);
    return _Scrollable_Proc(window, message, wParam, lParam);
}

static LRESULT colorChild(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = _Scrollable_Proc(window, message, wParam, lParam);
    const ControlRecord* child = controlOf(reinterpret_cast<HWND>(lParam));
    if (!child) return result;
    HDC context = reinterpret_cast<HDC>(wParam);
    if (child->foreground) SetTextColor(context, child->foreground->color);
    if (!child->background) return result;
    SetBkColor(context, child->background->color);
    return reinterpret_cast<LRESULT>(Color_GetBrush(child->background));
}

LRESULT CALLBACK Composite_Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SETFOCUS:
        return focusGained(window);
    case WM_NOTIFY:
        return notify(window, wParam, lParam);
    case WM_HSCROLL:
    case WM_VSCROLL:
        return scroll(window, message, wParam, lParam);
    case WM_CTLCOLORMSGBOX:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSCROLLBAR:
    case WM_CTLCOLORSTATIC:
        return colorChild(window, message, wParam, lParam);
    case controlChildMoves:
        return 0;
    default:
        return _Scrollable_Proc(window, message, wParam, lParam);
    }
}
