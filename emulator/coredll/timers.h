#pragma once
// The device's timers, which follow its clock. While it runs they are the desk's; while it stands,
// the desk is asked for one message of each that is due, so that it comes when the thread has
// nothing else, in whatever loop. A timer without a window is the desk's always. Any thread.

#include <windows.h>

// The clock stands from now on, or runs again.
void holdTimers();
void resumeTimers();

// Of a clock that stands: lets the threads have the messages of what is due by now.
void deliverDueTimers();

// The earliest time at which one is due; MAXLONGLONG: there is none.
LONGLONG nextDueTimer();
