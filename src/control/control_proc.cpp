#include "control/appearance.h"
#include "control/control.h"
#include "control/input.h"
#include "control/painting.h"
#include "display/commands.h"
#include "display/quit.h"
#include "display/requests.h"
#include "graphics/font.h"
#include "menu/menu.h"
#include "menu/menu_item.h"

ControlRecord* controlOf(HWND window) {
    auto userData = static_cast<DWORD>(GetWindowLongW(window, GWL_USERDATA));
    // Records are heap blocks: anything else is not even looked at.
    constexpr DWORD firstAddress = 0x10000;
    if (userData < firstAddress || userData % sizeof(DWORD)) return nullptr;
    auto* control = reinterpret_cast<ControlRecord*>(userData);
    bool isItsOwn = control->hwnd == window || control->hwnd == GetParent(window);
    return isItsOwn ? control : nullptr;
}

LRESULT Control_CallClass(const ControlRecord* control, UINT message, WPARAM wParam,
                          LPARAM lParam) {
    if (!control->classProc) return DefWindowProcW(control->hwnd, message, wParam, lParam);
    return CallWindowProcW(control->classProc, control->hwnd, message, wParam, lParam);
}

LRESULT Control_PassOn(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const ControlRecord* control = controlOf(window);
    if (!control) return DefWindowProcW(window, message, wParam, lParam);
    return Control_CallClass(control, message, wParam, lParam);
}

LRESULT Control_PassOnToLoop(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    ControlRecord* control = controlOf(window);
    ModalLoop loop(control ? Control_GetDisplay(control) : nullptr);
    return Control_PassOn(window, message, wParam, lParam);
}

static void capture(HWND window) {
    if (controlOf(window) && GetCapture() != window) SetCapture(window);
}

static LRESULT focusChanged(const ControlRecord* control, FocusChange change, UINT message,
                            WPARAM wParam, LPARAM lParam) {
    HWND window = control->hwnd;
    fireFocus(control->callbackTarget, change);
    return Control_PassOn(window, message, wParam, lParam);
}

static LRESULT close(const ControlRecord* control) {
    fireWindowEvent(control->callbackTarget, WindowEvent::closeRequested);
    return 0;
}

static HCURSOR cursorOf(const ControlRecord* control) {
    for (; control; control = control->parent)
        if (control->cursor) return control->cursor;
    return nullptr;
}

static LRESULT setCursor(const ControlRecord* control, WPARAM wParam, LPARAM lParam) {
    HCURSOR cursor = cursorOf(controlOf(reinterpret_cast<HWND>(wParam)));
    if (!cursor || LOWORD(lParam) != HTCLIENT)
        return Control_CallClass(control, WM_SETCURSOR, wParam, lParam);
    SetCursor(cursor);
    return 1;
}

static LRESULT drawItem(const ControlRecord* control, WPARAM wParam, LPARAM lParam) {
    auto* item = reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
    if (item->CtlType != ODT_MENU && controlOf(item->hwndItem))
        return SendMessageW(item->hwndItem, controlDrawItem, wParam, lParam);
    return Control_CallClass(control, WM_DRAWITEM, wParam, lParam);
}

static LRESULT menuCommand(ControlRecord* control, WPARAM wParam, LPARAM lParam) {
    HWND window = control->hwnd;
    MenuItemRecord* item = Display_FindCommandItem(Control_GetDisplay(control), LOWORD(wParam));
    if (item) MenuItem_Select(item, wParam);
    return Control_PassOn(window, WM_COMMAND, wParam, lParam);
}

static LRESULT childCommand(const ControlRecord* control, WPARAM wParam, LPARAM lParam) {
    HWND window = control->hwnd;
    HWND child = reinterpret_cast<HWND>(lParam);
    HWND receiver = controlOf(child) ? child : window;
    if (SendMessageW(receiver, controlCommand, wParam, lParam) == 0) return 0;
    return Control_PassOn(window, WM_COMMAND, wParam, lParam);
}

static LRESULT key(const ControlRecord* control, jint (*process)(HWND, WPARAM, LPARAM),
                   UINT message, WPARAM wParam, LPARAM lParam) {
    HWND window = control->hwnd;
    jint consumed = process(window, wParam, lParam);
    return consumed ? consumed : Control_PassOn(window, message, wParam, lParam);
}

static LRESULT leftButtonDown(HWND window, WPARAM wParam, LPARAM lParam) {
    _Control_ProcessWmLButtonDown(window, wParam, lParam);
    LRESULT result = Control_PassOn(window, WM_LBUTTONDOWN, wParam, lParam);
    capture(window);
    return result;
}

static LRESULT otherButtonDown(HWND window, void (*process)(HWND, WPARAM, LPARAM), UINT message,
                               WPARAM wParam, LPARAM lParam) {
    process(window, wParam, lParam);
    capture(window);
    return Control_PassOn(window, message, wParam, lParam);
}

static LRESULT mouseMove(HWND window, WPARAM wParam, LPARAM lParam) {
    Control_ProcessMouseMove(window, wParam, lParam);
    return Control_PassOn(window, WM_MOUSEMOVE, wParam, lParam);
}

static LRESULT doubleClick(HWND window, PointerButton button, UINT message, WPARAM wParam,
                           LPARAM lParam) {
    Control_ProcessDoubleClick(window, button, wParam, lParam);
    return Control_PassOn(window, message, wParam, lParam);
}

static LRESULT wheel(HWND window, WPARAM wParam, LPARAM lParam) {
    Control_ProcessWheel(window, wParam, lParam);
    return Control_PassOn(window, WM_MOUSEWHEEL, wParam, lParam);
}

static LRESULT forceFocus(WPARAM wParam) {
    return SetFocus(reinterpret_cast<HWND>(wParam)) != nullptr;
}

static LRESULT setVisible(HWND window, WPARAM wParam) {
    ShowWindow(window, wParam ? SW_SHOW : SW_HIDE);
    UpdateWindow(window);
    return 0;
}

static LRESULT minimumSize(WPARAM wParam) {
    *reinterpret_cast<POINT*>(wParam) = {0, 0};
    return 0;
}

static LRESULT setBounds(const ControlRecord* control, WPARAM wParam, LPARAM lParam) {
    auto* rect = reinterpret_cast<const RECT*>(wParam);
    if (!SetWindowPos(control->hwnd, nullptr, rect->left, rect->top, rect->right - rect->left,
                      rect->bottom - rect->top, SWP_NOZORDER | SWP_NOACTIVATE))
        Win32Error_SetLast(errorOf(lParam), L"Could not change the size of the control");
    return 0;
}

static LRESULT defaultBackground(const ControlRecord* control, WPARAM wParam) {
    HBRUSH brush = Control_AskParentForBrush(control, wParam);
    LOGBRUSH properties;
    if (brush && GetObjectW(brush, sizeof(properties), &properties)) return properties.lbColor;
    return systemColor(COLOR_BTNFACE);
}

static LRESULT trackMenu(const ControlRecord* control, WPARAM wParam, LPARAM lParam) {
    HWND window = control->hwnd;
    HMENU menu = Menu_GetHandle(reinterpret_cast<const MenuRecord*>(wParam));
    auto* point = reinterpret_cast<const POINT*>(lParam);
    {
        ModalLoop loop(control->display);
        TrackPopupMenuEx(menu, 0, point->x, point->y, window, nullptr);
    }
    return Control_PassOn(window, controlTrackMenu, wParam, lParam);
}

static LRESULT getContext(const ControlRecord* control, WPARAM wParam) {
    HDC context = GetDC(control->hwnd);
    if (!context) Win32Error_SetLast(errorOf(wParam), L"Unable to create DC from control");
    return reinterpret_cast<LRESULT>(context);
}

// The toolkit's own messages. False when this one is not the control's to answer.
static bool answer(ControlRecord* control, UINT message, WPARAM wParam, LPARAM lParam,
                   LRESULT* result) {
    *result = 0;
    switch (message) {
    case controlForceFocus:
        *result = forceFocus(wParam);
        return true;
    case controlMoveAbove:
        Control_StackAbove(control, reinterpret_cast<const ControlRecord*>(wParam));
        return true;
    case controlSetVisible:
        *result = setVisible(control->hwnd, wParam);
        return true;
    case controlCommand:
        *result = 1; // not handled
        return true;
    case controlGetMinimumSize:
        *result = minimumSize(wParam);
        return true;
    case controlSetBounds:
        *result = setBounds(control, wParam, lParam);
        return true;
    case controlGetBackground:
        *result = defaultBackground(control, wParam);
        return true;
    case controlSetEnabled:
        EnableWindow(control->hwnd, wParam != 0);
        return true;
    case controlTrackMenu:
        *result = trackMenu(control, wParam, lParam);
        return true;
    case controlGetContext:
        *result = getContext(control, wParam);
        return true;
    case controlGetForeground:
        *result = systemColor(COLOR_WINDOWTEXT);
        return true;
    case controlSetBackground:
        _Control_SetBackground(control, reinterpret_cast<ColorRecord*>(wParam), errorOf(lParam));
        return true;
    case controlSetForeground:
        _Control_SetForeground(control, reinterpret_cast<ColorRecord*>(wParam), errorOf(lParam));
        return true;
    case controlSetFont:
        _Control_SetFont(control, reinterpret_cast<FontRecord*>(wParam), errorOf(lParam));
        return true;
    case requestDestroyItself:
        *result = DestroyWindow(control->hwnd);
        return true;
    case controlRun:
        reinterpret_cast<ControlWork>(wParam)(control, reinterpret_cast<void*>(lParam));
        return true;
    default:
        return false;
    }
}

// Null for a class that has no font.
static HFONT fontOf(const ControlRecord* control) {
    return reinterpret_cast<HFONT>(Control_CallClass(control, WM_GETFONT, 0, 0));
}

static LRESULT setFont(const ControlRecord* control, WPARAM wParam, LPARAM lParam) {
    HWND window = control->hwnd;
    HFONT previous = fontOf(control);
    LRESULT result = Control_PassOn(window, WM_SETFONT, wParam, lParam);
    if (const ControlRecord* still = controlOf(window)) Font_Wear(previous, fontOf(still));
    return result;
}

[[gnu::noinline]] static LRESULT handle(ControlRecord* control, UINT message, WPARAM wParam,
                                        LPARAM lParam) {
    HWND window = control->hwnd;
    switch (message) {
    case WM_DESTROY:
        // Every control does so, not only the last window; the event loop lives on.
        Quit_Post(Control_GetDisplay(control));
        Font_Wear(fontOf(control), nullptr);
        control = controlOf(window);
        return control ? Control_LoseWindow(control, wParam, lParam) : 0;
    case WM_SETFONT:
        return setFont(control, wParam, lParam);
    case WM_SETFOCUS:
        return focusChanged(control, FocusChange::gained, message, wParam, lParam);
    case WM_KILLFOCUS:
        return focusChanged(control, FocusChange::lost, message, wParam, lParam);
    case WM_PAINT:
        return Control_Paint(control, wParam, lParam);
    case WM_CLOSE:
        return close(control);
    case WM_ERASEBKGND:
        return Control_Erase(control, wParam, lParam);
    case WM_SETCURSOR:
        return setCursor(control, wParam, lParam);
    case WM_DRAWITEM:
        return drawItem(control, wParam, lParam);
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
        return key(control, _Control_ProcessWmKeyDown, message, wParam, lParam);
    case WM_KEYUP:
    case WM_SYSKEYUP:
        return key(control, Control_ProcessKeyUp, message, wParam, lParam);
    case WM_CHAR:
        return key(control, _Control_ProcessWmChar, message, wParam, lParam);
    case WM_COMMAND:
        return lParam ? childCommand(control, wParam, lParam)
                      : menuCommand(control, wParam, lParam);
    case WM_MOUSEMOVE:
        return mouseMove(window, wParam, lParam);
    case WM_LBUTTONDOWN:
        return leftButtonDown(window, wParam, lParam);
    case WM_NCLBUTTONDOWN:
    case WM_NCLBUTTONDBLCLK:
    case WM_SYSCOMMAND:
        // The window's own bars and its caption are tracked until the button is released.
        return Control_PassOnToLoop(window, message, wParam, lParam);
    case WM_LBUTTONUP:
        return Control_ProcessButtonUp(window, buttonLeft, message, wParam, lParam);
    case WM_LBUTTONDBLCLK:
        return doubleClick(window, buttonLeft, message, wParam, lParam);
    case WM_RBUTTONDOWN:
        return otherButtonDown(window, _Control_ProcessWmRButtonDown, message, wParam, lParam);
    case WM_RBUTTONUP:
        return Control_ProcessButtonUp(window, buttonRight, message, wParam, lParam);
    case WM_RBUTTONDBLCLK:
        return doubleClick(window, buttonRight, message, wParam, lParam);
    case WM_MBUTTONDOWN:
        return otherButtonDown(window, Control_ProcessMiddleButtonDown, message, wParam, lParam);
    case WM_MBUTTONUP:
        return Control_ProcessButtonUp(window, buttonMiddle, message, wParam, lParam);
    case WM_MBUTTONDBLCLK:
        return doubleClick(window, buttonMiddle, message, wParam, lParam);
    case WM_MOUSEWHEEL:
        return wheel(window, wParam, lParam);
    default:
        break;
    }
    LRESULT result;
    if (message >= WM_APP && answer(control, message, wParam, lParam, &result)) return result;
    return Control_CallClass(control, message, wParam, lParam);
}

LRESULT Control_Handle(ControlRecord* control, UINT message, WPARAM wParam, LPARAM lParam) {
    // Between the system's messages and the library's lie those of the window classes.
    if (message > WM_MOUSEWHEEL && message < WM_APP)
        return Control_CallClass(control, message, wParam, lParam);
    return handle(control, message, wParam, lParam);
}

extern "C" LRESULT CALLBACK _Control_Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    ControlRecord* control = controlOf(window);
    if (!control) return DefWindowProcW(window, message, wParam, lParam);
    return Control_Handle(control, message, wParam, lParam);
}
