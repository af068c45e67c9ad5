#pragma once
// A new window for a control whose kind of window is fixed when it is made. The record, the place
// and the place in the z-order stay. Display thread only.

#include "control/control.h"

// At the place of the control's window and right behind it; null when it cannot be made, or the
// control is gone by then.
HWND Renewal_Create(const ControlRecord* control, const wchar_t* className, DWORD style);

// The new window is the record's from now on, and the old one leads to no record any more. A
// handler that waits for a listener to return, if there is one, follows.
void Renewal_MoveTo(ControlRecord* control, HWND window, WNDPROC proc, HWND* follower);

// Through the display's message window, as long as there is one.
void Renewal_DestroyOld(HWND messageWindow, HWND old);
