#include "widgets/scrollbar.h"
#include "bridge/narrow.h"
#include "control/adjustable.h"
#include "control/input.h"
#include "widgets/renewal.h"

static constexpr wchar_t scrollBarClass[] = L"SCROLLBAR";
static constexpr UINT_PTR pointerTimer = 1000;
static constexpr UINT pointerPeriod = 10; // milliseconds
static constexpr UINT ownValues = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_TRACKPOS;

static AdjustableRecord* barOf(HWND window) {
    return static_cast<AdjustableRecord*>(controlOf(window));
}

static POINT cursorIn(HWND window) {
    POINT point = {};
    GetCursorPos(&point);
    ScreenToClient(window, &point);
    return point;
}

static Message pointerMessage(UINT id, WPARAM buttons, POINT point) {
    return {id, buttons, MAKELPARAM(point.x, point.y)};
}

// Asked of the hardware: the device's key states of the queue know no pointer.
static WPARAM ifHeld(int virtualKey, WPARAM button) {
    return narrow(GetAsyncKeyState(virtualKey)) < 0 ? button : 0;
}

static WPARAM heldButtons() {
    return ifHeld(VK_LBUTTON, MK_LBUTTON) | ifHeld(VK_RBUTTON, MK_RBUTTON) |
           ifHeld(VK_MBUTTON, MK_MBUTTON);
}

static void fireRelease(HWND window) {
    const ControlRecord* adjustable = controlOf(window);
    Message release = pointerMessage(WM_LBUTTONUP, 0, cursorIn(window));
    Control_FirePointer(adjustable, Control_BuildPointerEvent(pointerRelease, buttonLeft, release));
}

// A bar that was turned meanwhile has another window, which waits for the real release as long as
// the button is held.
static void endTracking(HWND pressed, HWND window) {
    bool isHeld = heldButtons() & MK_LBUTTON;
    if (window != pressed && isHeld)
        SetCapture(window);
    else
        fireRelease(window);
}

// The system tracks the thumb in a loop of its own until the button is released, and keeps the
// pointer's messages to itself: a timer reports the moves, and the end of the loop the release. The
// release comes by itself when a listener runs another loop, a dialog's for instance.
static LRESULT track(HWND pressed, Message message) {
    Control_ProcessLeftButtonDown(pressed, message);
    AdjustableRecord* adjustable = barOf(pressed);
    if (!adjustable) return 0;
    HWND window = pressed;
    HWND* outer = adjustable->follower;
    BOOL outerReleased = adjustable->released;
    adjustable->follower = &window;
    adjustable->released = FALSE;
    SetTimer(pressed, pointerTimer, pointerPeriod, nullptr);
    Control_PassOnToLoop(pressed, message);
    KillTimer(pressed, pointerTimer);
    adjustable = barOf(window);
    if (!adjustable || adjustable->follower != &window) return 0;
    adjustable->follower = outer;
    if (outer) *outer = window;
    bool released = adjustable->released;
    adjustable->released = outerReleased;
    if (!released) endTracking(pressed, window);
    return 0;
}

// The second of two taps is tracked as well.
static LRESULT trackAgain(HWND window, Message message) {
    Control_ProcessDoubleClick(window, buttonLeft, message);
    return Control_PassOnToLoop(window, message);
}

static LRESULT reportMove(AdjustableRecord* adjustable) {
    POINT point = cursorIn(adjustable->hwnd);
    if (point.x == adjustable->lastPointerX && point.y == adjustable->lastPointerY) return 0;
    adjustable->lastPointerX = point.x;
    adjustable->lastPointerY = point.y;
    Control_ProcessMouseMove(adjustable->hwnd, pointerMessage(WM_MOUSEMOVE, heldButtons(), point));
    return 0;
}

static POINT minimumSize(HWND window) {
    constexpr int arrows = 10;
    if (GetWindowLongW(window, GWL_STYLE) & SBS_VERT)
        return {GetSystemMetrics(SM_CXVSCROLL), arrows * GetSystemMetrics(SM_CYVSCROLL)};
    return {arrows * GetSystemMetrics(SM_CXHSCROLL), GetSystemMetrics(SM_CYHSCROLL)};
}

static LRESULT handle(AdjustableRecord* adjustable, Message message);

static DWORD orientedStyle(DWORD style, jint orientation) {
    if (orientation == orientationVertical) return style | SBS_VERT;
    if (orientation == orientationHorizontal) return style & ~SBS_VERT;
    return style;
}

// A window's direction is fixed at its creation, so that the bar needs a new one.
// Quirk: a bar that cannot be turned stays as it is, and nothing is reported. Pinned by
// ScrollbarTest.a_bar_that_cannot_be_turned_stays_and_tells_nobody.
static void setOrientation(AdjustableRecord* adjustable, jint orientation) {
    if (Widget_IsEnding(adjustable)) return;
    HWND old = adjustable->hwnd;
    HWND messageWindow = adjustable->display->messageWindow;
    DWORD style = orientedStyle(GetWindowLongW(old, GWL_STYLE), orientation);
    HWND window = Renewal_Create(adjustable, scrollBarClass, style);
    if (!window) return;
    bool hadFocus = GetFocus() == old;
    adjustable->orientation = orientation;
    Renewal_MoveTo(adjustable, window, controlProc<AdjustableRecord, handle>, adjustable->follower);
    Adjustable_Push(adjustable, ownValues, true);
    adjustable = barOf(window);
    if (adjustable && hadFocus) fireFocus(adjustable->callbackTarget, FocusChange::lost);
    Renewal_DestroyOld(messageWindow, old);
}

static LRESULT handle(AdjustableRecord* adjustable, Message message) {
    HWND window = adjustable->hwnd;
    switch (message.id) {
    case WM_LBUTTONDOWN:
        return track(window, message);
    case WM_LBUTTONDBLCLK:
        return trackAgain(window, message);
    case WM_LBUTTONUP:
        adjustable->released = TRUE;
        break;
    case WM_TIMER:
        if (message.wParam == pointerTimer) return reportMove(adjustable);
        break;
    case controlGetMinimumSize:
        message.answer<POINT>() = minimumSize(window);
        return 0;
    case controlGetBackground:
        return systemColor(COLOR_SCROLLBAR);
    case controlSetOrientation:
        setOrientation(adjustable, message.wParam);
        return 0;
    case controlSetEnabled:
        Adjustable_SetEnabled(adjustable, message.flag());
        break;
    case controlSetVisible:
        Adjustable_SetVisible(adjustable, message.flag());
        break;
    default:
        return Control_Handle(adjustable, message);
    }
    return Control_HandleIn(window, message);
}

ScrollbarRecord* Scrollbar_New(ControlRecord* parent, ErrorRecord* error) {
    constexpr LONG firstMaximum = 100;
    constexpr UINT firstPage = 11; // a visible amount of 10
    auto* adjustable =
        Control_NewOf<ScrollbarRecord>(parent, {.className = scrollBarClass,
                                                .windowProc = controlProc<AdjustableRecord, handle>,
                                                .windowStyle = _Control_Style() | SBS_VERT,
                                                .error = error});
    if (!adjustable) return nullptr;
    Adjustable_SetFirstValues(adjustable, SB_CTL, orientationVertical);
    adjustable->info.nMax = firstMaximum;
    adjustable->info.nPage = firstPage;
    Adjustable_Push(adjustable, ownValues, true);
    return adjustable;
}

void Scrollbar_SetOrientation(ScrollbarRecord* bar, jint orientation, ErrorRecord* error) {
    ask(bar->hwnd, controlSetOrientation, orientation, &error);
}
