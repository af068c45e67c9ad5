#pragma once
// Adjustables: a range with a value, shown by a scroll bar that is either a control of its own or
// one of a scrollable's own bars. The values live in the record; the window has them only while
// the bar is both visible and enabled.

#include "control/control.h"

struct ScrollableRecord;

struct AdjustableRecord : ControlRecord {
    LONG unitIncrement;
    LONG blockIncrement;
    LONG orientation; // as Java set it last
    LONG barKind;     // SB_CTL, SB_HORZ or SB_VERT
    BOOL visible;
    BOOL enabled;
    LONG lastPointerX, lastPointerY; // while the system tracks the thumb
    SCROLLINFO info;                 // a visible amount v is kept as page v + 1, but 0 as 0
    HWND* follower;                  // of a handler that waits for a listener; null: none waits
    BOOL released;                   // the release has come while the system tracks the thumb
};
ASSERT_OFFSET(AdjustableRecord, unitIncrement, 56)
ASSERT_OFFSET(AdjustableRecord, barKind, 68)
ASSERT_OFFSET(AdjustableRecord, enabled, 76)
ASSERT_OFFSET(AdjustableRecord, info, 88)

// One of a scrollable's own.
struct OwnBarRecord : AdjustableRecord {};

jint Adjustable_GetMinimum(AdjustableRecord* adjustable, ErrorRecord* error);
jint Adjustable_GetMaximum(AdjustableRecord* adjustable, ErrorRecord* error);
jint Adjustable_GetValue(AdjustableRecord* adjustable, ErrorRecord* error);
jint Adjustable_GetVisibleAmount(AdjustableRecord* adjustable, ErrorRecord* error);
void Adjustable_SetMinimum(AdjustableRecord* adjustable, jint value, ErrorRecord* error);
void Adjustable_SetMaximum(AdjustableRecord* adjustable, jint value, ErrorRecord* error);
void Adjustable_SetValue(AdjustableRecord* adjustable, jint value, ErrorRecord* error);
void Adjustable_SetVisibleAmount(AdjustableRecord* adjustable, jint amount, ErrorRecord* error);

// The step of an arrow; any number.
void Adjustable_SetUnitIncrement(AdjustableRecord* adjustable, jint value, ErrorRecord* error);

// The step of a page; below 1 it is ignored.
void Adjustable_SetBlockIncrement(AdjustableRecord* adjustable, jint value, ErrorRecord* error);

// Sends the window the record's values of the given SIF_ mask, whatever its state. Listeners may
// run meanwhile and dispose of the bar.
void Adjustable_Push(AdjustableRecord* adjustable, UINT mask, bool redraw);

// Ends a scroll bar that is a control; refuses for a scrollable's own bars.
int Adjustable_Dispose(WidgetRecord* widget, ErrorRecord* error);

// What every new bar has: SB_HORZ, SB_VERT or SB_CTL, and how it lies. Its range is the window's.
void Adjustable_SetFirstValues(AdjustableRecord* adjustable, int kind, jint orientation);

// The record of a window's own bar, SB_HORZ or SB_VERT, with the window's values. Null with the
// error set.
AdjustableRecord* Adjustable_New(ScrollableRecord* owner, int kind, ErrorRecord* error);

// Has a window's own bar drawn in its proper state where the page fills the range. That may change
// the window's size, and a listener may dispose of it.
void Adjustable_Nudge(HWND window, int kind);

// Null is allowed.
void Adjustable_Free(AdjustableRecord* adjustable);

void Adjustable_SetEnabled(AdjustableRecord* adjustable, bool enabled);
// Listeners may run meanwhile and dispose of the bar.
void Adjustable_SetVisible(AdjustableRecord* adjustable, bool visible);

// A WM_HSCROLL or WM_VSCROLL of the bar: moves it and fires the scroll callback. Whether the value
// changed.
bool Adjustable_Scroll(AdjustableRecord* adjustable, Message message);

// The control as the scroll bar that it is; null when it is something else.
AdjustableRecord* Adjustable_Of(ControlRecord* control);
