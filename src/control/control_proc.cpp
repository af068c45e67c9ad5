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

static constexpr LRESULT notHandled = 1; // by controlCommand

ControlRecord* controlOf(HWND window) {
    auto userData = static_cast<DWORD>(GetWindowLongW(window, GWL_USERDATA));
    // Records are heap blocks: anything else is not even looked at.
    constexpr DWORD firstAddress = 0x10000;
    if (userData < firstAddress || userData % sizeof(DWORD)) return nullptr;
    auto* control = reinterpret_cast<ControlRecord*>(userData);
    bool isItsOwn = control->hwnd == window || control->hwnd == GetParent(window);
    return isItsOwn ? control : nullptr;
}

LRESULT Control_CallClass(const ControlRecord* control, Message message) {
    return callProc(control->classProc, control->hwnd, message);
}

LRESULT Control_PassOn(HWND window, Message message) {
    return receive<const ControlRecord, Control_CallClass>(window, message);
}

LRESULT Control_PassOnToLoop(HWND window, Message message) {
    ControlRecord* control = controlOf(window);
    ModalLoop loop(control ? Control_GetDisplay(control) : nullptr);
    return Control_PassOn(window, message);
}

static void capture(HWND window) {
    if (controlOf(window) && GetCapture() != window) SetCapture(window);
}

static LRESULT focusChanged(const ControlRecord* control, FocusChange change, Message message) {
    HWND window = control->hwnd;
    fireFocus(control->callbackTarget, change);
    return Control_PassOn(window, message);
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

static LRESULT setCursor(const ControlRecord* control, Message message) {
    HCURSOR cursor = cursorOf(controlOf(message.window()));
    if (!cursor || message.hitTest() != HTCLIENT) return Control_CallClass(control, message);
    SetCursor(cursor);
    return 1;
}

static LRESULT drawItem(const ControlRecord* control, Message message) {
    auto* item = message.details<const DRAWITEMSTRUCT>();
    if (item->CtlType != ODT_MENU && controlOf(item->hwndItem))
        return send(item->hwndItem, message.as(controlDrawItem));
    return Control_CallClass(control, message);
}

static LRESULT menuCommand(ControlRecord* control, Message message) {
    HWND window = control->hwnd;
    MenuItemRecord* item = Display_FindCommandItem(Control_GetDisplay(control), message.command());
    if (item) MenuItem_Select(item, message);
    return Control_PassOn(window, message);
}

static LRESULT childCommand(const ControlRecord* control, Message message) {
    HWND window = control->hwnd;
    HWND child = message.sender();
    HWND receiver = controlOf(child) ? child : window;
    if (send(receiver, message.as(controlCommand)) == 0) return 0;
    return Control_PassOn(window, message);
}

static LRESULT key(const ControlRecord* control, jint (*process)(HWND, Message), Message message) {
    HWND window = control->hwnd;
    jint consumed = process(window, message);
    return consumed ? consumed : Control_PassOn(window, message);
}

static LRESULT leftButtonDown(HWND window, Message message) {
    Control_ProcessLeftButtonDown(window, message);
    LRESULT result = Control_PassOn(window, message);
    capture(window);
    return result;
}

static LRESULT otherButtonDown(HWND window, void (*process)(HWND, Message), Message message) {
    process(window, message);
    capture(window);
    return Control_PassOn(window, message);
}

static LRESULT mouseMove(HWND window, Message message) {
    Control_ProcessMouseMove(window, message);
    return Control_PassOn(window, message);
}

static LRESULT doubleClick(HWND window, PointerButton button, Message message) {
    Control_ProcessDoubleClick(window, button, message);
    return Control_PassOn(window, message);
}

static LRESULT wheel(HWND window, Message message) {
    Control_ProcessWheel(window, message);
    return Control_PassOn(window, message);
}

static LRESULT forceFocus(HWND window) { return SetFocus(window) != nullptr; }

static LRESULT setVisible(HWND window, bool visible) {
    ShowWindow(window, visible ? SW_SHOW : SW_HIDE);
    UpdateWindow(window);
    return 0;
}

static LRESULT setBounds(const ControlRecord* control, Message message) {
    const RECT& rect = message.bounds();
    if (!SetWindowPos(control->hwnd, nullptr, rect.left, rect.top, rect.right - rect.left,
                      rect.bottom - rect.top, SWP_NOZORDER | SWP_NOACTIVATE))
        Win32Error_SetLast(message.error(), L"Could not change the size of the control");
    return 0;
}

static LRESULT defaultBackground(const ControlRecord* control, HDC painted) {
    HBRUSH brush = Control_AskParentForBrush(control, painted);
    LOGBRUSH properties;
    if (brush && GetObjectW(brush, sizeof(properties), &properties)) return properties.lbColor;
    return systemColor(COLOR_BTNFACE);
}

static LRESULT trackMenu(const ControlRecord* control, Message message) {
    HWND window = control->hwnd;
    HMENU menu = Menu_GetHandle(message.record<const MenuRecord>());
    auto* point = message.details<const POINT>();
    {
        ModalLoop loop(control->display);
        TrackPopupMenuEx(menu, 0, point->x, point->y, window, nullptr);
    }
    return Control_PassOn(window, message);
}

static LRESULT getContext(const ControlRecord* control, ErrorRecord* error) {
    HDC context = GetDC(control->hwnd);
    if (!context) Win32Error_SetLast(error, L"Unable to create DC from control");
    return reinterpret_cast<LRESULT>(context);
}

// The library's own messages.
static LRESULT answer(ControlRecord* control, Message message) {
    switch (message.id) {
    case controlForceFocus:
        return forceFocus(message.window());
    case controlMoveAbove:
        Control_StackAbove(control, message.record<const ControlRecord>());
        return 0;
    case controlSetVisible:
        return setVisible(control->hwnd, message.flag());
    case controlCommand:
        return notHandled;
    case controlGetMinimumSize:
        message.answer<POINT>() = {0, 0};
        return 0;
    case controlSetBounds:
        return setBounds(control, message);
    case controlGetBackground:
        return defaultBackground(control, message.context());
    case controlSetEnabled:
        EnableWindow(control->hwnd, message.flag());
        return 0;
    case controlTrackMenu:
        return trackMenu(control, message);
    case controlGetContext:
        return getContext(control, Message::errorAt(message.wParam));
    case controlGetForeground:
        return systemColor(COLOR_WINDOWTEXT);
    case controlSetBackground:
        _Control_SetBackground(control, message.record<ColorRecord>(), message.error());
        return 0;
    case controlSetForeground:
        _Control_SetForeground(control, message.record<ColorRecord>(), message.error());
        return 0;
    case controlSetFont:
        _Control_SetFont(control, message.record<FontRecord>(), message.error());
        return 0;
    case requestDestroyItself:
        return DestroyWindow(control->hwnd);
    case controlRun:
        reinterpret_cast<ControlWork>(message.wParam)(control, message.details<void>());
        return 0;
    default:
        return Control_CallClass(control, message);
    }
}

// Null for a class that has no font.
static HFONT fontOf(const ControlRecord* control) {
    return reinterpret_cast<HFONT>(Control_CallClass(control, {WM_GETFONT, 0, 0}));
}

static LRESULT setFont(const ControlRecord* control, Message message) {
    HWND window = control->hwnd;
    HFONT previous = fontOf(control);
    LRESULT result = Control_PassOn(window, message);
    if (const ControlRecord* still = controlOf(window)) Font_Wear(previous, fontOf(still));
    return result;
}

[[gnu::noinline]] static LRESULT handle(ControlRecord* control, Message message) {
    HWND window = control->hwnd;
    switch (message.id) {
    case WM_DESTROY:
        // Every control does so, not only the last window; the event loop lives on.
        Quit_Post(Control_GetDisplay(control));
        Font_Wear(fontOf(control), nullptr);
        control = controlOf(window);
        return control ? Control_LoseWindow(control, message) : 0;
    case WM_SETFONT:
        return setFont(control, message);
    case WM_SETFOCUS:
        return focusChanged(control, FocusChange::gained, message);
    case WM_KILLFOCUS:
        return focusChanged(control, FocusChange::lost, message);
    case WM_PAINT:
        return Control_Paint(control, message);
    case WM_CLOSE:
        return close(control);
    case WM_ERASEBKGND:
        return Control_Erase(control, message);
    case WM_SETCURSOR:
        return setCursor(control, message);
    case WM_DRAWITEM:
        return drawItem(control, message);
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
        return key(control, Control_ProcessKeyDown, message);
    case WM_KEYUP:
    case WM_SYSKEYUP:
        return key(control, Control_ProcessKeyUp, message);
    case WM_CHAR:
        return key(control, Control_ProcessCharacter, message);
    case WM_COMMAND:
        return message.sender() ? childCommand(control, message) : menuCommand(control, message);
    case WM_MOUSEMOVE:
        return mouseMove(window, message);
    case WM_LBUTTONDOWN:
        return leftButtonDown(window, message);
    case WM_NCLBUTTONDOWN:
    case WM_NCLBUTTONDBLCLK:
    case WM_SYSCOMMAND:
        // The window's own bars and its caption are tracked until the button is released.
        return Control_PassOnToLoop(window, message);
    case WM_LBUTTONUP:
        return Control_ProcessButtonUp(window, buttonLeft, message);
    case WM_LBUTTONDBLCLK:
        return doubleClick(window, buttonLeft, message);
    case WM_RBUTTONDOWN:
        return otherButtonDown(window, Control_ProcessRightButtonDown, message);
    case WM_RBUTTONUP:
        return Control_ProcessButtonUp(window, buttonRight, message);
    case WM_RBUTTONDBLCLK:
        return doubleClick(window, buttonRight, message);
    case WM_MBUTTONDOWN:
        return otherButtonDown(window, Control_ProcessMiddleButtonDown, message);
    case WM_MBUTTONUP:
        return Control_ProcessButtonUp(window, buttonMiddle, message);
    case WM_MBUTTONDBLCLK:
        return doubleClick(window, buttonMiddle, message);
    case WM_MOUSEWHEEL:
        return wheel(window, message);
    default:
        return message.id < WM_APP ? Control_CallClass(control, message) : answer(control, message);
    }
}

LRESULT Control_Handle(ControlRecord* control, Message message) {
    // Between the system's messages and the library's lie those of the window classes.
    if (message.id > WM_MOUSEWHEEL && message.id < WM_APP)
        return Control_CallClass(control, message);
    return handle(control, message);
}

extern "C" LRESULT CALLBACK _Control_Proc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    return receive<ControlRecord, Control_Handle>(window, {id, wParam, lParam});
}

LRESULT Control_HandleIn(HWND window, Message message) {
    return _Control_Proc(window, message.id, message.wParam, message.lParam);
}
