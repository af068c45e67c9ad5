#pragma once
// What scrollables need of scroll bars; the adjustable module defines it. Display thread only, but
// for Bar_New.

#include "bridge/error.h"
#include "ce.h"

struct AdjustableRecord;
struct ControlRecord;
struct ScrollableRecord;

// The record of a window's own bar, SB_HORZ or SB_VERT, with the window's values. Null with the
// error set.
AdjustableRecord* Bar_New(ScrollableRecord* owner, int kind, ErrorRecord* error);

// Has a window's own bar drawn in its proper state where the page fills the range. That may change
// the window's size, and a listener may dispose of it.
void Bar_Nudge(HWND window, int kind);

// Null is allowed.
void Bar_Free(AdjustableRecord* bar);

void Bar_SetEnabled(AdjustableRecord* bar, bool enabled);
// Listeners may run meanwhile and dispose of the bar.
void Bar_SetVisible(AdjustableRecord* bar, bool visible);

// A WM_HSCROLL or WM_VSCROLL of the bar: moves it and fires the scroll callback. Whether the value
// changed.
bool Bar_Scroll(AdjustableRecord* bar, WPARAM wParam);

// The control as the scroll bar that it is; null when it is something else.
AdjustableRecord* Bar_Of(ControlRecord* control);
