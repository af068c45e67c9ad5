#include "aygshell.h"
#include "control/input.h"
#include "control/shell.h"
#include "display/keys.h"
#include "display/quit.h"
#include "display/shells.h"

static constexpr DWORD tapAndHoldTime = 400; // milliseconds
static constexpr WPARAM anyButton = MK_LBUTTON | MK_RBUTTON | MK_MBUTTON;

static PointerState& pointerOf(ControlRecord* control) {
    return Control_GetDisplay(control)->pointer;
}

// The area that a double click or a tap must stay within.
static RECT tapArea(POINT center) {
    int width = GetSystemMetrics(SM_CXDOUBLECLK);
    int height = GetSystemMetrics(SM_CYDOUBLECLK);
    LONG left = center.x - width / 2;
    LONG top = center.y - height / 2;
    return {left, top, left + width, top + height};
}

static jint modifiersOfPointer(jint button, Message message) {
    jint modifiers = 0;
    if (Key_IsDown(VK_MENU)) modifiers |= modifierAlt;
    if (Key_IsDown(VK_SHIFT)) modifiers |= modifierShift;
    if (Key_IsDown(VK_CONTROL)) modifiers |= modifierControl;
    if (message.holds(MK_LBUTTON) && button != buttonLeft) modifiers |= modifierLeftButton;
    if (message.holds(MK_MBUTTON) && button != buttonMiddle) modifiers |= modifierMiddleButton;
    if (message.holds(MK_RBUTTON) && button != buttonRight) modifiers |= modifierRightButton;
    return modifiers;
}

PointerEvent Control_BuildPointerEvent(jint type, PointerButton button, Message message) {
    POINT point = message.point();
    PointerEvent event = {type, point.x, point.y, button, modifiersOfPointer(button, message)};
    if (type == pointerRelease && button == buttonRight) event.modifiers |= modifierContextGesture;
    return event;
}

void Control_FirePointer(const ControlRecord* control, const PointerEvent& event) {
    firePointer(control->callbackTarget, event.type, event.x, event.y, event.button,
                event.modifiers);
}

static void press(ControlRecord* control, const PointerEvent& event) {
    PointerState& pointer = pointerOf(control);
    if (pointer.lastPress != control->hwnd) {
        pointer.lastPress = control->hwnd;
        pointer.dragStarted = false;
        pointer.doubleClickDeadline = GetTickCount() + GetDoubleClickTime();
        pointer.doubleClickArea = tapArea({event.x, event.y});
    }
    Control_FirePointer(control, event);
}

static bool isTapAndHold(DisplayRecord* display, HWND window, POINT point) {
    ModalLoop loop(display);
    SHRGINFO request = {};
    request.cbSize = sizeof(request);
    request.hwndClient = window;
    request.ptDown = point;
    request.dwFlags = SHRG_RETURNCMD;
    return SHRecognizeGesture(&request) == GN_CONTEXTMENU;
}

void Control_ProcessLeftButtonDown(HWND window, Message message) {
    Message move = message;
    move.wParam &= ~static_cast<WPARAM>(MK_LBUTTON);
    Control_ProcessMouseMove(window, move);
    ControlRecord* control = controlOf(window);
    if (!control) return;
    PointerEvent event = Control_BuildPointerEvent(pointerPress, buttonLeft, message);
    POINT point = {event.x, event.y};

    jint answer = firePointerDownQuery(control->callbackTarget, event.x, event.y);
    control = controlOf(window);
    if (!control) return;
    if (answer == recognizeByShell && isTapAndHold(control->display, window, point))
        event.modifiers |= modifierContextGesture;
    control = controlOf(window);
    if (!control) return;
    PendingTap& tap = pointerOf(control).tap;
    if (answer == recognizeByTime)
        tap = {control, GetTickCount(), point};
    else if (answer != recognizeByShell)
        tap = {};
    press(control, event);
}

static void pressOther(HWND window, PointerButton button, Message message) {
    ControlRecord* control = controlOf(window);
    if (control) press(control, Control_BuildPointerEvent(pointerPress, button, message));
}

void Control_ProcessRightButtonDown(HWND window, Message message) {
    pressOther(window, buttonRight, message);
}

void Control_ProcessMiddleButtonDown(HWND window, Message message) {
    pressOther(window, buttonMiddle, message);
}

static jint moveTypeOf(ControlRecord* control, POINT point) {
    PointerState& pointer = pointerOf(control);
    if (GetCapture() != control->hwnd || pointer.lastPress != control->hwnd) return pointerMove;
    if (!pointer.dragStarted) {
        bool timeIsUp = static_cast<LONG>(GetTickCount() - pointer.doubleClickDeadline) > 0;
        pointer.dragStarted = timeIsUp || !PtInRect(&pointer.doubleClickArea, point);
    }
    return pointer.dragStarted ? pointerDrag : pointerMove;
}

// Windows of other threads may keep anything in their user data.
static ControlRecord* controlAt(const DisplayRecord* display, POINT screenPoint) {
    for (HWND window = WindowFromPoint(screenPoint); window; window = GetParent(window)) {
        if (GetWindowThreadProcessId(window, nullptr) != display->threadId) return nullptr;
        if (ControlRecord* control = controlOf(window)) return control;
    }
    return nullptr;
}

static bool takesEnter(const DisplayRecord* display, const ControlRecord* control) {
    HWND top = topLevelWindow(control->hwnd);
    if (SHFindMenuBar(top) == control->hwnd) return false;
    const ShellRecord* shell = Shell_Find(top);
    return shell && Display_IsListed(display, shell);
}

static void fireAt(HWND window, PointerEvent event, jint type, POINT screenPoint) {
    ControlRecord* control = controlOf(window);
    if (!control) return;
    ScreenToClient(window, &screenPoint);
    event.type = type;
    event.x = screenPoint.x;
    event.y = screenPoint.y;
    Control_FirePointer(control, event);
}

static void fireExitAndEnter(ControlRecord* control, const PointerEvent& move) {
    DisplayRecord* display = Control_GetDisplay(control);
    POINT screenPoint = {move.x, move.y};
    ClientToScreen(control->hwnd, &screenPoint);
    ControlRecord* under = controlAt(display, screenPoint);
    HWND previous = display->pointer.under;
    if ((under ? under->hwnd : nullptr) == previous) return;

    HWND entered = under && takesEnter(display, under) ? under->hwnd : nullptr;
    display->pointer.under = entered;
    fireAt(previous, move, pointerExit, screenPoint);
    if (entered) fireAt(entered, move, pointerEnter, screenPoint);
}

static bool isWithinTap(const ControlRecord* control, const PendingTap& tap, POINT point) {
    if (tap.control != control) return false;
    RECT area = tapArea(tap.press);
    return PtInRect(&area, point);
}

void Control_ProcessMouseMove(HWND window, Message message) {
    ControlRecord* control = controlOf(window);
    if (!control) return;
    PointerEvent event = Control_BuildPointerEvent(pointerMove, buttonNone, message);
    POINT point = {event.x, event.y};
    event.type = moveTypeOf(control, point);
    fireExitAndEnter(control, event);

    control = controlOf(window);
    if (!control) return;
    PendingTap& tap = pointerOf(control).tap;
    if (!isWithinTap(control, tap, point)) tap = {};
    Control_FirePointer(control, event);
}

static bool endTap(ControlRecord* control, PointerButton button, POINT point) {
    PendingTap& tap = pointerOf(control).tap;
    bool held = button == buttonLeft && isWithinTap(control, tap, point) &&
                GetTickCount() - tap.pressTick > tapAndHoldTime;
    if (!held) tap = {};
    return held;
}

LRESULT Control_ProcessButtonUp(HWND window, PointerButton button, Message message) {
    ControlRecord* control = controlOf(window);
    if (!control) return callSystem(window, message);
    PointerEvent event = Control_BuildPointerEvent(pointerRelease, button, message);
    if (endTap(control, button, {event.x, event.y})) event.modifiers |= modifierContextGesture;
    Control_FirePointer(control, event);
    LRESULT result = Control_PassOn(window, message);

    control = controlOf(window);
    if (!control || message.holds(anyButton)) return result;
    PointerState& pointer = pointerOf(control);
    if (pointer.lastPress == window) pointer.lastPress = nullptr;
    if (GetCapture() == window) ReleaseCapture();
    return result;
}

void Control_ProcessDoubleClick(HWND window, PointerButton button, Message message) {
    Control_FirePointer(controlOf(window),
                        Control_BuildPointerEvent(pointerDoubleClick, button, message));
}

void Control_ProcessWheel(HWND window, Message message) {
    constexpr UINT defaultLines = 3;
    constexpr int notch = -WHEEL_DELTA; // one notch forward counts -1
    UINT lines = 0;
    if (!SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0)) lines = defaultLines;
    bool byPage = lines == WHEEL_PAGESCROLL;
    jint amount = byPage ? 1 : static_cast<jint>(lines);
    jint notches = message.wheelTurn() / notch;
    // Quirk: the wheel's position is the screen's, where every other event of the pointer has the
    // control's. Pinned by WheelTest.a_notch_forward_is_minus_one_by_lines_at_the_screen_position.
    PointerEvent event =
        Control_BuildPointerEvent(byPage ? wheelByPage : wheelByLines, buttonLeft, message);
    const ControlRecord* control = controlOf(window);
    if (!control) return;
    fireWheel(control->callbackTarget, event.type, event.x, event.y, event.modifiers, amount,
              notches);
}

extern "C" void _Control_ProcessWmLButtonDown(HWND window, WPARAM wParam, LPARAM lParam) {
    Control_ProcessLeftButtonDown(window, {WM_LBUTTONDOWN, wParam, lParam});
}

extern "C" void _Control_ProcessWmRButtonDown(HWND window, WPARAM wParam, LPARAM lParam) {
    Control_ProcessRightButtonDown(window, {WM_RBUTTONDOWN, wParam, lParam});
}
