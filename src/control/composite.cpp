#include "control/adjustable.h"
#include "control/scrollable.h"

static LRESULT CALLBACK compositeProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    return Composite_HandleIn(window, {id, wParam, lParam});
}

CompositeRecord* Composite_New(ControlRecord* parent, DWORD style, ErrorRecord* error) {
    if (!parent) {
        Win32Error_SetError(error, errorFailed, L"Argument invalid, need parent");
        return nullptr;
    }
    auto* composite =
        Control_NewOf<CompositeRecord>(parent, {.className = displayWindowClass,
                                                .windowProc = compositeProc,
                                                .javaStyle = style,
                                                .windowStyle = _Scrollable_Style(style),
                                                .error = error});
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

static LRESULT notify(HWND window, Message message) {
    HWND child = childHolding(window, message.details<const NMHDR>()->hwndFrom);
    if (child) {
        NotifyAnswer answer = {};
        LRESULT result = ask(child, controlNotify, &answer, message.lParam);
        if (answer.handled) return result;
    }
    return Scrollable_HandleIn(window, message);
}

// The bar that a scroll message is about; null when it is not a bar of Java's.
static AdjustableRecord* barOf(HWND window, Message message) {
    HWND sender = message.sender();
    if (sender && sender != window) return Adjustable_Of(controlOf(sender));
    auto* composite = static_cast<const ScrollableRecord*>(controlOf(window));
    if (!composite) return nullptr;
    return message.id == WM_HSCROLL ? composite->horizontalBar : composite->verticalBar;
}

static LRESULT scroll(HWND window, Message message) {
    AdjustableRecord* adjustable = barOf(window, message);
    if (adjustable) Adjustable_Scroll(adjustable, message);
    return Scrollable_HandleIn(window, message);
}

static LRESULT colorChild(HWND window, Message message) {
    LRESULT result = Scrollable_HandleIn(window, message);
    const ControlRecord* child = controlOf(message.sender());
    if (!child) return result;
    HDC context = message.context();
    if (child->foreground) SetTextColor(context, child->foreground->color);
    if (!child->background) return result;
    SetBkColor(context, child->background->color);
    return reinterpret_cast<LRESULT>(Color_GetBrush(child->background));
}

LRESULT Composite_HandleIn(HWND window, Message message) {
    switch (message.id) {
    case WM_SETFOCUS:
        return focusGained(window);
    case WM_NOTIFY:
        return notify(window, message);
    case WM_HSCROLL:
    case WM_VSCROLL:
        return scroll(window, message);
    case WM_CTLCOLORMSGBOX:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSCROLLBAR:
    case WM_CTLCOLORSTATIC:
        return colorChild(window, message);
    case controlChildMoves:
        return 0;
    default:
        return Scrollable_HandleIn(window, message);
    }
}
