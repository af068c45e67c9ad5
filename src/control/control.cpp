#include "control/control.h"
#include "bridge/arithmetic.h"
#include "bridge/leaf_lock.h"
#include "bridge/memory.h"
#include "control/input.h"
#include "display/requests.h"
#include "graphics/graphics.h"
#include "menu/menu.h"
#include "menu/menu_item.h"

static constexpr wchar_t creationFailed[] = L"Unable to create handle for widget";

extern "C" DWORD _Control_Style() {
    return WS_CHILD | WS_CLIPSIBLINGS | WS_CLIPCHILDREN | WS_TABSTOP;
}

extern "C" DisplayRecord* Control_GetDisplay(ControlRecord* control) {
    if (!control->display && control->parent)
        Widget_SetDisplay(control, Control_GetDisplay(control->parent));
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
    Widget_SetDisplay(control, display);
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
        Win32Error_SetLast(request.error, creationFailed);
        return nullptr;
    }
    SetWindowPos(window, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOOWNERZORDER);
    return window;
}

WNDPROC Control_FindClassProc(const DisplayRecord* display, const wchar_t* className) {
    WNDCLASSW windowClass = {};
    GetClassInfoW(display->instance, className, &windowClass);
    return windowClass.lpfnWndProc;
}

void Control_Attach(ControlRecord* control, HWND window, WNDPROC proc) {
    SetWindowLongW(window, GWL_USERDATA, reinterpret_cast<LONG>(control));
    SetWindowLongW(window, GWL_WNDPROC, reinterpret_cast<LONG>(proc));
}

void Control_Detach(HWND window, WNDPROC proc) {
    SetWindowLongW(window, GWL_USERDATA, 0);
    SetWindowLongW(window, GWL_WNDPROC, reinterpret_cast<LONG>(proc ? proc : DefWindowProcW));
}

static void furnish(ControlRecord* control, const ControlRequest& request) {
    control->classProc = Control_FindClassProc(control->display, request.className);
    Control_Attach(control, control->hwnd, request.windowProc ? request.windowProc : _Control_Proc);
    ask(control->hwnd, WM_SETFONT, _Control_GetDefaultFont(), FALSE);
}

static ControlRecord* failWithoutParent(HWND window, ErrorRecord* error) {
    DestroyWindow(window);
    Win32Error_SetError(error, ERROR_INVALID_WINDOW_HANDLE, creationFailed);
    return nullptr;
}

ControlRecord* Control_Create(ControlRecord* parent, const ControlRequest& request) {
    DisplayRecord* display = Control_GetDisplay(parent);
    HWND parentWindow = parent->hwnd;
    HWND window = createWindow(parent, request);
    if (!window) return nullptr;
    if (controlOf(parentWindow) != parent) return failWithoutParent(window, request.error);
    auto* control = static_cast<ControlRecord*>(allocateBytes(request.recordSize));
    if (!control) {
        DestroyWindow(window);
        Win32Error_SetError(request.error, ERROR_NOT_ENOUGH_MEMORY, creationFailed);
        return nullptr;
    }
    Control_FillHead(control, display, parent, window, request.javaStyle);
    furnish(control, request);
    return control;
}

ControlRecord* Control_New(ControlRecord* parent, const ControlRequest& request) {
    DisplayRecord* display = Control_GetDisplay(parent);
    if (Display_IsCurrentThread(display)) return Control_Create(parent, request);
    return reinterpret_cast<ControlRecord*>(
        ask(display->messageWindow, requestCreateControl, parent, &request));
}

extern "C" ControlRecord* _Control_New(const wchar_t* className, UINT recordSize,
                                       WNDPROC windowProc, ControlRecord* parent, DWORD javaStyle,
                                       DWORD windowStyle, DWORD extendedStyle, ErrorRecord* error) {
    return Control_New(parent, {.className = className,
                                .recordSize = recordSize,
                                .windowProc = windowProc,
                                .javaStyle = javaStyle,
                                .windowStyle = windowStyle,
                                .extendedStyle = extendedStyle,
                                .error = error});
}

void Control_ForgetWindow(DisplayRecord* display, HWND window) {
    Graphics_LeaveWindow(window);
    PointerState& pointer = display->pointer;
    if (pointer.lastPress == window) pointer.lastPress = nullptr;
    if (pointer.under == window) pointer.under = nullptr;
}

static void forgetControl(DisplayRecord* display, const ControlRecord* control) {
    Control_ForgetWindow(display, control->hwnd);
    if (display->pointer.tap.control == control) display->pointer.tap = {};
    Menu_ForgetOwner(display, control);
}

static void leaveParent(ControlRecord* control) {
    LeafLock lock;
    control->parent = nullptr;
}

// The class is left alone with what remains of the window.
static void leaveWindow(ControlRecord* control) {
    HWND window = control->hwnd;
    control->hwnd = goneWindow();
    Control_Detach(window, control->classProc);
}

// A class that could not be described when the window was made sees it go all the same.
static void findClass(ControlRecord* control) {
    constexpr int longestName = 64;
    wchar_t name[longestName];
    if (!control->classProc && GetClassNameW(control->hwnd, name, longestName))
        control->classProc = Control_FindClassProc(control->display, name);
}

LRESULT Control_LoseWindow(ControlRecord* control, Message message) {
    HWND window = control->hwnd;
    findClass(control);
    LRESULT result = Control_CallClass(control, message);
    control = controlOf(window);
    if (!control) return result;
    forgetControl(control->display, control);
    leaveParent(control);
    leaveWindow(control);
    return result;
}

// A window that the system does not destroy must not lead to a record that goes, and neither must
// those within it.
static void abandonWindow(ControlRecord* control) {
    HWND window = control->hwnd;
    if (controlOf(window) != control) return;
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        ControlRecord* inner = controlOf(child);
        if (inner && inner->parent == control) leaveParent(inner);
    }
    forgetControl(control->display, control);
    leaveWindow(control);
}

extern "C" int _Dispose_Control(WidgetRecord* widget, ErrorRecord*) {
    auto* control = static_cast<ControlRecord*>(widget);
    BOOL destroyed = Display_DestroyWindow(Control_GetDisplay(control), control->hwnd);
    if (!destroyed) abandonWindow(control);
    Color_Wear(&control->background, nullptr);
    Color_Wear(&control->foreground, nullptr);
    return destroyed;
}

static HWND parentWindowOf(const ControlRecord* control) {
    LeafLock lock;
    return control->parent ? control->parent->hwnd : nullptr;
}

Bounds Control_GetBounds(ControlRecord* control, ErrorRecord*) {
    RECT rect = {};
    GetWindowRect(control->hwnd, &rect);
    if (GetWindowLongW(control->hwnd, GWL_STYLE) & WS_CHILD)
        MapWindowPoints(nullptr, parentWindowOf(control), reinterpret_cast<POINT*>(&rect), 2);
    return {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
}

void Control_SetBounds(ControlRecord* control, jint x, jint y, jint width, jint height,
                       ErrorRecord* error) {
    HWND window = control->hwnd;
    RECT rect = {x, y, saturatingAdd(x, width), saturatingAdd(y, height)};
    if (HWND parent = parentWindowOf(control)) ask(parent, controlChildMoves, &rect);
    ask(window, controlSetBounds, &rect, &error);
}

void Control_SetVisible(ControlRecord* control, bool visible, ErrorRecord* error) {
    ask(control->hwnd, controlSetVisible, visible, &error);
}

bool Control_IsDrawingEnabled(const ControlRecord* control) {
    LeafLock lock;
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
        ask(control->hwnd, controlRun, work, argument);
}
