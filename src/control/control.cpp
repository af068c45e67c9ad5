#include "control/control.h"
#include "bridge/memory.h"
#include "control/input.h"
#include "display/requests.h"

static constexpr wchar_t creationFailed[] = L"Unable to create handle for widget";

extern "C" DWORD _Control_Style() {
    return WS_CHILD | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | WS_TABSTOP;
}

extern "C" DisplayRecord* Control_GetDisplay(ControlRecord* control) {
    if (!control->display && control->parent)
        control->display = Control_GetDisplay(control->parent);
    return control->display;
}

extern "C" HFONT _Control_GetDefaultFont() {
    return static_cast<HFONT>(GetStockObject(SYSTEM_FONT));
}

extern "C" int _Control_GetBorderWidth(HWND window) {
    DWORD extendedStyle = GetWindowLongW(window, GWL_EXSTYLE);
    if (extendedStyle & WS_EX_CLIENTEDGE) return GetSystemMetrics(SM_CXEDGE);
    if (extendedStyle & WS_EX_STATICEDGE) return GetSystemMetrics(SM_CXBORDER);
    if (GetWindowLongW(window, GWL_STYLE) & WS_BORDER) return GetSystemMetrics(SM_CXBORDER);
    return 0;
}

void Control_FillHead(ControlRecord* control, DisplayRecord* display, ControlRecord* parent,
                      HWND window, DWORD javaStyle) {
    control->display = display;
    control->style = javaStyle;
    control->dispose = _Dispose_Control;
    control->hwnd = window;
    control->parent = parent;
    control->redraw = TRUE;
    control->ctlColorMessage = WM_CTLCOLORSTATIC;
    control->keyHandler = Control_HandleKey;
}

static HWND createWindow(ControlRecord* parent, const ControlRequest& request) {
    HWND window =
        CreateWindowExW(request.extendedStyle, request.className, nullptr, request.windowStyle,
                        CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, parent->hwnd,
                        nullptr, parent->display->instance, nullptr);
    if (!window) {
        Win32Error_SetError(request.error, GetLastError(), creationFailed);
        return nullptr;
    }
    SetWindowPos(window, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOOWNERZORDER);
    return window;
}

// The record is attached before the procedure is replaced, so that the new one always finds it.
static void attach(ControlRecord* control, const ControlRequest& request) {
    SetWindowLongW(control->hwnd, GWL_USERDATA, reinterpret_cast<LONG>(control));
    WNDCLASSW windowClass = {};
    GetClassInfoW(control->display->instance, request.className, &windowClass);
    control->classProc = windowClass.lpfnWndProc;
    WNDPROC proc = request.windowProc ? request.windowProc : _Control_Proc;
    LONG previous = SetWindowLongW(control->hwnd, GWL_WNDPROC, reinterpret_cast<LONG>(proc));
    // A class that cannot be described must still see its windows go.
    if (!control->classProc) control->classProc = reinterpret_cast<WNDPROC>(previous);
    SendMessageW(control->hwnd, WM_SETFONT, reinterpret_cast<WPARAM>(_Control_GetDefaultFont()),
                 FALSE);
}

ControlRecord* Control_Create(ControlRecord* parent, const ControlRequest& request) {
    DisplayRecord* display = Control_GetDisplay(parent);
    HWND window = createWindow(parent, request);
    if (!window) return nullptr;
    auto* control = static_cast<ControlRecord*>(allocateBytes(request.recordSize));
    if (!control) {
        DestroyWindow(window);
        Win32Error_SetError(request.error, ERROR_NOT_ENOUGH_MEMORY, creationFailed);
        return nullptr;
    }
    Control_FillHead(control, display, parent, window, request.javaStyle);
    attach(control, request);
    return control;
}

extern "C" ControlRecord* _Control_New(const wchar_t* className, UINT recordSize,
                                       WNDPROC windowProc, ControlRecord* parent, DWORD javaStyle,
                                       DWORD windowStyle, DWORD extendedStyle, ErrorRecord* error) {
    const ControlRequest request = {className,   recordSize,    windowProc, javaStyle,
                                    windowStyle, extendedStyle, error};
    DisplayRecord* display = Control_GetDisplay(parent);
    if (Display_IsCurrentThread(display)) return Control_Create(parent, request);
    return reinterpret_cast<ControlRecord*>(
        SendMessageW(display->messageWindow, requestCreateControl, reinterpret_cast<WPARAM>(parent),
                     reinterpret_cast<LPARAM>(&request)));
}

extern "C" int _Dispose_Control(WidgetRecord* widget, ErrorRecord*) {
    auto* control = static_cast<ControlRecord*>(widget);
    DisplayRecord* display = Control_GetDisplay(control);
    if (display->pointer.tap.control == control) display->pointer.tap = {};
    BOOL destroyed = Display_DestroyWindow(display, control->hwnd);
    // A window that stays must not lead to a record that goes.
    if (!destroyed && controlOf(control->hwnd) == control)
        SetWindowLongW(control->hwnd, GWL_USERDATA, 0);
    Color_Wear(&control->background, nullptr);
    Color_Wear(&control->foreground, nullptr);
    return destroyed;
}

Bounds Control_GetBounds(ControlRecord* control, ErrorRecord*) {
    RECT rect = {};
    GetWindowRect(control->hwnd, &rect);
    if (GetWindowLongW(control->hwnd, GWL_STYLE) & WS_CHILD) {
        HWND parent = control->parent ? control->parent->hwnd : nullptr;
        MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&rect), 2);
    }
    return {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
}

void Control_SetBounds(ControlRecord* control, jint x, jint y, jint width, jint height,
                       ErrorRecord* error) {
    RECT rect = {x, y, x + width, y + height};
    if (control->parent)
        SendMessageW(control->parent->hwnd, controlChildMoves, reinterpret_cast<WPARAM>(&rect), 0);
    SendMessageW(control->hwnd, controlSetBounds, reinterpret_cast<WPARAM>(&rect),
                 reinterpret_cast<LPARAM>(&error));
}

void Control_SetVisible(ControlRecord* control, bool visible, ErrorRecord* error) {
    SendMessageW(control->hwnd, controlSetVisible, visible, reinterpret_cast<LPARAM>(&error));
}

bool Control_IsDrawingEnabled(const ControlRecord* control) {
    for (; control; control = control->parent)
        if (!control->redraw) return false;
    return true;
}

extern "C" void Control_Redraw(ControlRecord* control, ErrorRecord*) {
    RedrawWindow(control->hwnd, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_INTERNALPAINT | RDW_ERASE | RDW_ALLCHILDREN);
}

void Control_RunWork(ControlRecord* control, ControlWork work, void* argument) {
    if (Display_IsCurrentThread(Control_GetDisplay(control)))
        work(control, argument);
    else
        SendMessageW(control->hwnd, controlRun, reinterpret_cast<WPARAM>(work),
                     reinterpret_cast<LPARAM>(argument));
}
