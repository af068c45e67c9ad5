#pragma once
// The thread of the application's display, seen from another one. The system sends a timer's
// message only when a thread has nothing else to do, whatever loop it is in: the application's, a
// menu's or a dialog's.

#include <functional>
#include <windows.h>

// The display's hidden window; null while the application has none.
HWND displayWindow();

// Waits until the display's thread has nothing to do: no message, nothing to paint, and nothing
// that made the application's loop go on, or only a clock that stands. False when that does not
// come within the time, in milliseconds, or there is no display.
bool awaitIdle(DWORD milliseconds);

// Does the work on the display's thread when it has no message. False as above: the work may be
// done later then, or never, and must own what it uses.
bool doWhenIdle(const std::function<void()>& work, DWORD milliseconds);
