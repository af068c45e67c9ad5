#include "widgets/scrollbar.h"
#include "bridge/narrow.h"
#include "control/bar_hooks.h"
#include "control/input.h"

static constexpr wchar_t scrollBarClass[] = L"SCROLLBAR";
static constexpr UINT_PTR pointerTimer = 1000;
static constexpr UINT pointerPeriod = 10; // milliseconds
static constexpr UINT ownValues = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_TRACKPOS;

enum JavaOrientation : jint { orientationVertical = 8, orientationHorizontal = 16 };

static AdjustableRecord* barOf(HWND window) {
    return static_cast<AdjustableRecord*>(controlOf(window));
}

static POINT cursorIn(HWND window) {
    POINT point = {};
    GetCursorPos(&point);
    ScreenToClient(window, &point);
    return point;
}

static LPARAM pack(POINT point) { return MAKELPARAM(point.x, point.y); }

static bool isDown(int virtualKey) { return narrow(GetKeyState(virtualKey)) < 0; }

static WPARAM pressedButton() {
    if (isDown(VK_LBUTTON)) return MK_LBUTTON;
    if (isDown(VK_RBUTTON)) return MK_RBUTTON;
    return isDown(VK_MBUTTON) ? MK_MBUTTON : 0;
}

static void fireRelease(HWND window) {
    const ControlRecord* bar = controlOf(window);
    if (!bar) return;
    LPARAM point = pack(cursorIn(window));
    Control_FirePointer(bar, Control_BuildPointerEvent(pointerRelease, buttonLeft, 0, point));
}

// The system tracks the thumb in a loop of its own until the button is released, and keeps the
// pointer's messages to itself: a timer reports the moves, and the end of the loop the release.
static LRESULT track(HWND window, WPARAM wParam, LPARAM lParam) {
    _Control_ProcessWmLButtonDown(window, wParam, lParam);
    SetTimer(window, pointerTimer, pointerPeriod, nullptr);
    Control_PassOnToLoop(window, WM_LBUTTONDOWN, wParam, lParam);
    KillTimer(window, pointerTimer);
    fireRelease(window);
    return 0;
}

// The second of two taps is tracked as well.
static LRESULT trackAgain(HWND window, WPARAM wParam, LPARAM lParam) {
    Control_ProcessDoubleClick(window, buttonLeft, wParam, lParam);
    return Control_PassOnToLoop(window, WM_LBUTTONDBLCLK, wParam, lParam);
}

static LRESULT reportMove(AdjustableRecord* bar) {
    POINT point = cursorIn(bar->hwnd);
    if (point.x == bar->lastPointerX && point.y == bar->lastPointerY) return 0;
    bar->lastPointerX = point.x;
    bar->lastPointerY = point.y;
    Control_ProcessMouseMove(bar->hwnd, pressedButton(), pack(point));
    return 0;
}

static POINT minimumSize(HWND window) {
    constexpr int arrows = 10;
    if (GetWindowLongW(window, GWL_STYLE) & SBS_VERT)
        return {GetSystemMetrics(SM_CXVSCROLL), arrows * GetSystemMetrics(SM_CYVSCROLL)};
    return {arrows * GetSystemMetrics(SM_CXHSCROLL), GetSystemMetrics(SM_CYHSCROLL)};
}

static LRESULT CALLBACK scrollBarProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

static DWORD orientedStyle(DWORD style, jint orientation) {
    if (orientation == orientationVertical) return style | SBS_VERT;
    if (orientation == orientationHorizontal) return style & ~SBS_VERT;
    return style;
}

static HWND createLike(HWND window, HWND parent, DWORD style, HINSTANCE instance) {
    RECT place;
    GetWindowRect(window, &place);
    MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&place), 2);
    return CreateWindowExW(GetWindowLongW(window, GWL_EXSTYLE), scrollBarClass, nullptr, style,
                           place.left, place.top, place.right - place.left,
                           place.bottom - place.top, parent, nullptr, instance, nullptr);
}

// The old window must not reach the record any more, which has a new one.
static void destroyOld(const AdjustableRecord* bar, HWND window) {
    SetWindowLongW(window, GWL_WNDPROC, reinterpret_cast<LONG>(bar->classProc));
    SetWindowLongW(window, GWL_USERDATA, 0);
    Display_DestroyWindow(bar->display, window);
}

// A window's direction is fixed at its creation, so that the bar needs a new one.
static LRESULT setOrientation(AdjustableRecord* bar, jint orientation, ErrorRecord* error) {
    HWND old = bar->hwnd;
    DWORD style = orientedStyle(GetWindowLongW(old, GWL_STYLE), orientation);
    HWND window = createLike(old, bar->parent->hwnd, style, bar->display->instance);
    if (!window) {
        Win32Error_SetError(error, GetLastError(), L"Unable to create handle for widget");
        return 0;
    }
    bar->hwnd = window;
    bar->orientation = orientation;
    destroyOld(bar, old);
    SetWindowLongW(window, GWL_USERDATA, reinterpret_cast<LONG>(bar));
    SetWindowLongW(window, GWL_WNDPROC, reinterpret_cast<LONG>(scrollBarProc));
    Adjustable_Push(bar, ownValues, true);
    return 0;
}

static LRESULT CALLBACK scrollBarProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    AdjustableRecord* bar = barOf(window);
    if (!bar) return DefWindowProcW(window, message, wParam, lParam);
    switch (message) {
    case WM_LBUTTONDOWN:
        return track(window, wParam, lParam);
    case WM_LBUTTONDBLCLK:
        return trackAgain(window, wParam, lParam);
    case WM_TIMER:
        if (wParam == pointerTimer) return reportMove(bar);
        break;
    case controlGetMinimumSize:
        *reinterpret_cast<POINT*>(wParam) = minimumSize(window);
        return 0;
    case controlGetBackground:
        return systemColor(COLOR_SCROLLBAR);
    case controlSetOrientation:
        return setOrientation(bar, wParam, errorOf(lParam));
    case controlSetEnabled:
        Bar_SetEnabled(bar, wParam != 0);
        break;
    case controlSetVisible:
        Bar_SetVisible(bar, wParam != 0);
        break;
    default:
        break;
    }
    return _Control_Proc(window, message, wParam, lParam);
}

AdjustableRecord* Scrollbar_New(ControlRecord* parent, ErrorRecord* error) {
    constexpr LONG firstMaximum = 100;
    constexpr UINT firstPage = 11; // a visible amount of 10
    auto* bar = static_cast<AdjustableRecord*>(
        _Control_New(scrollBarClass, sizeof(AdjustableRecord), scrollBarProc, parent, 0,
                     _Control_Style() | SBS_VERT, 0, error));
    if (!bar) return nullptr;
    bar->dispose = Adjustable_Dispose;
    bar->unitIncrement = 1;
    bar->blockIncrement = 10;
    bar->orientation = orientationVertical;
    bar->barKind = SB_CTL;
    bar->enabled = TRUE;
    bar->info.cbSize = sizeof(bar->info);
    bar->info.nMax = firstMaximum;
    bar->info.nPage = firstPage;
    Adjustable_Push(bar, ownValues, true);
    return bar;
}

void Scrollbar_SetOrientation(AdjustableRecord* bar, jint orientation, ErrorRecord* error) {
    SendMessageW(bar->hwnd, controlSetOrientation, orientation, reinterpret_cast<LPARAM>(&error));
}
