#pragma once
// Controls: every widget that has a window.
//
// A control's record lies behind its window's user data, so that every window procedure finds it.
// Windows are created, run and destroyed on the display's thread; the operations here may be
// called on any thread unless they say otherwise, and reach it through messages.
//
// Whatever lets a message be handled (sending one, moving, showing, enabling, focusing, destroying
// a window, firing a callback) can run a listener, or another thread's request, that disposes of
// any widget. A handler goes on after it only with a record that it has found again by its window.
//
// A control whose window goes, by its own disposal or with its parent's window, is out of all that
// refers to it from then on: it has no parent and no window, and no list and no pointer's state has
// it. Its record stays until Java disposes of it.

#include "bridge/error.h"
#include "bridge/layout.h"
#include "bridge/values.h"
#include "ce.h"
#include "display/callbacks.h"
#include "display/display.h"
#include "display/firing.h"
#include "display/message.h"
#include "display/requests.h"
#include "display/widget.h"
#include "graphics/color.h"

struct ControlRecord;

// Offers a key to the control's type; true when it was handled.
using KeyHandler = bool (*)(ControlRecord* control, KeyKind kind, wchar_t character, jint keyCode,
                            jint modifiers);

struct ControlRecord : WidgetRecord {
    HWND hwnd;
    WNDPROC classProc; // of the window class: all default processing goes to it
    ControlRecord* parent;
    BOOL redraw;             // drawing is enabled
    ColorRecord* background; // null: the default from the parent
    ColorRecord* foreground; // null: the system's window text colour
    BOOL inheritsBackground;
    HCURSOR cursor;       // null: the nearest ancestor's
    UINT ctlColorMessage; // asks the parent for the default background brush
    KeyHandler keyHandler;
};
ASSERT_OFFSET(ControlRecord, hwnd, 16)
ASSERT_OFFSET(ControlRecord, classProc, 20)
ASSERT_OFFSET(ControlRecord, parent, 24)
ASSERT_OFFSET(ControlRecord, redraw, 28)
ASSERT_OFFSET(ControlRecord, background, 32)
ASSERT_OFFSET(ControlRecord, foreground, 36)
ASSERT_OFFSET(ControlRecord, inheritsBackground, 40)
ASSERT_OFFSET(ControlRecord, cursor, 44)
ASSERT_OFFSET(ControlRecord, ctlColorMessage, 48)
ASSERT_OFFSET(ControlRecord, keyHandler, 52)

// The messages by which natives act on a control without knowing its type. "error" is the address
// of the caller's ErrorRecord* argument.
enum ControlMessage : UINT {
    controlForceFocus = WM_APP + 0x4,     // wParam window; whether another window had the focus
    controlMoveAbove = WM_APP + 0x5,      // wParam control or null, lParam error
    controlSetVisible = WM_APP + 0x6,     // wParam flag, lParam error
    controlCommand = WM_APP + 0x7,        // a child's WM_COMMAND as it came; 0: handled
    controlGetMinimumSize = WM_APP + 0x8, // wParam POINT*, lParam error
    controlSetBounds = WM_APP + 0x9,      // wParam RECT*, lParam error
    controlSetOrientation = WM_APP + 0xB, // wParam orientation
    controlGetInsets = WM_APP + 0xC,      // wParam Insets*
    controlChildMoves = WM_APP + 0xD,     // to the parent; wParam RECT*
    controlGetBackground = WM_APP + 0xF,  // the default background as COLORREF
    controlSetEnabled = WM_APP + 0x10,    // wParam flag, lParam error
    controlSetListMode = WM_APP + 0x11,   // wParam whether multiple, lParam error
    controlDrawItem = WM_APP + 0x12,      // a child's WM_DRAWITEM as it came
    controlTrackMenu = WM_APP + 0x14,     // wParam menu record, lParam POINT* on the screen
    controlGetContext = WM_APP + 0x16,    // wParam error; the device context
    controlNotify = WM_APP + 0x17,        // wParam NotifyAnswer*, lParam NMHDR*
    controlGetForeground = WM_APP + 0x18, // the default foreground as COLORREF
    controlSetBackground = WM_APP + 0x19, // wParam colour record or null, lParam error
    controlSetForeground = WM_APP + 0x1A,
    controlSetFont = WM_APP + 0x1B, // wParam font record or null, lParam error
    controlRun = WM_APP + 0x1D,     // wParam ControlWork, lParam its argument
};

// Instead of the handle of a window that is gone, which the system may give to another.
inline HWND goneWindow() { return reinterpret_cast<HWND>(1); }

// The record of the control whose window it is, or null: other windows may keep anything in their
// user data. The windows within a choice are the choice's. Display thread.
ControlRecord* controlOf(HWND window);

// Handles a message as all controls do: types pass to it what they do not consume.
LRESULT Control_Handle(ControlRecord* control, Message message);

// The same for a window whose control a listener may have disposed of meanwhile.
LRESULT Control_HandleIn(HWND window, Message message);

// Has the message of a window that has a record handled; all others are the system's to handle.
template <class Record, LRESULT (*handle)(Record*, Message)>
[[gnu::always_inline]] inline LRESULT receive(HWND window, Message message) {
    auto* control = static_cast<Record*>(controlOf(window));
    if (!control) return callSystem(window, message);
    return handle(control, message);
}

// The window procedure of a type of controls.
template <class Record, LRESULT (*handle)(Record*, Message)>
LRESULT CALLBACK controlProc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    return receive<Record, handle>(window, {id, wParam, lParam});
}

// Runs on the display's thread with the control's record.
using ControlWork = void (*)(ControlRecord* control, void* argument);
void Control_RunWork(ControlRecord* control, ControlWork work, void* argument);

// Does the work on the display's thread without a break, so that no other thread's comes between
// its steps. Any thread. When the control has no window any more, the system refuses what the work
// asks of it; from another thread than the display's nothing is done.
template <class Record, class Work>
void Control_Run(Record* control, Work work) {
    ControlWork call = [](ControlRecord* found, void* argument) {
        (*static_cast<Work*>(argument))(static_cast<Record*>(found));
    };
    Control_RunWork(control, call, &work);
}

extern "C" {

// Control_New for companion libraries.
ControlRecord* _Control_New(const wchar_t* className, UINT recordSize, WNDPROC windowProc,
                            ControlRecord* parent, DWORD javaStyle, DWORD windowStyle,
                            DWORD extendedStyle, ErrorRecord* error);

// The window style that all child controls share.
DWORD _Control_Style();

// Destroys the window with its children. The result of the request.
int _Dispose_Control(WidgetRecord* control, ErrorRecord* error);

// The control's display, taken from its ancestors when it is not known yet.
DisplayRecord* Control_GetDisplay(ControlRecord* control);

// The window procedure of all controls.
LRESULT CALLBACK _Control_Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// Invalidates the control and all within it. Display thread.
void Control_Redraw(ControlRecord* control, ErrorRecord* error);

// Width of the control's border in pixels.
int _Control_GetBorderWidth(HWND window);

// The system font. Not owned by the caller.
HFONT _Control_GetDefaultFont();
}

// Creates a window and its zero-filled record of the request's size, whose head it fills. Null with
// the error set on failure.
ControlRecord* Control_New(ControlRecord* parent, const ControlRequest& request);

template <class Record>
[[gnu::always_inline]] inline Record* Control_NewOf(ControlRecord* parent,
                                                    ControlRequest&& request) {
    request.recordSize = sizeof(Record);
    return static_cast<Record*>(Control_New(parent, request));
}

// The window procedure that the class itself has; null when the class cannot be described.
WNDPROC Control_FindClassProc(const DisplayRecord* display, const wchar_t* className);

// The window leads to the control from now on. The record is attached before the procedure is
// replaced, so that the new one always finds it. Display thread, as what follows.
void Control_Attach(ControlRecord* control, HWND window, WNDPROC proc);

// The window leads to no record any more, and is left to the procedure; null: the system's.
void Control_Detach(HWND window, WNDPROC proc);

// The display forgets the window, which goes: what the pointer does is not about it any more, and
// nothing is drawn on it. Display thread.
void Control_ForgetWindow(DisplayRecord* display, HWND window);

// Makes what the request asks for. Display thread.
ControlRecord* Control_Create(ControlRecord* parent, const ControlRequest& request);

// Installs what every new control record starts with.
void Control_FillHead(ControlRecord* control, DisplayRecord* display, ControlRecord* parent,
                      HWND window, DWORD javaStyle);

// Whether drawing is enabled for the control and all its ancestors.
bool Control_IsDrawingEnabled(const ControlRecord* control);

// WM_DESTROY of the control's window. Display thread.
LRESULT Control_LoseWindow(ControlRecord* control, Message message);

// Default processing of the control's window class. Display thread.
LRESULT Control_CallClass(const ControlRecord* control, Message message);

// The same for a window whose control a callback may have disposed of meanwhile.
LRESULT Control_PassOn(HWND window, Message message);

// The same for a message that the class may answer with a modal loop of the system's.
LRESULT Control_PassOnToLoop(HWND window, Message message);

// Relative to the parent for child windows, else to the screen.
Bounds Control_GetBounds(ControlRecord* control, ErrorRecord* error);
void Control_SetBounds(ControlRecord* control, jint x, jint y, jint width, jint height,
                       ErrorRecord* error);
void Control_SetVisible(ControlRecord* control, bool visible, ErrorRecord* error);
