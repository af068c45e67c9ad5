#pragma once
// The device's clock: tick count, timers, times of input and waits with a limit follow it. It runs
// as the desk's does, or stands still but for what a test lets pass. Any thread.

#include <windows.h>

// Since some time or other, milliseconds. Never runs backwards.
LONGLONG deviceTime();

bool standsClock();

// Waits as MsgWaitForMultipleObjectsEx does, with a limit in milliseconds of the device's clock.
DWORD waitOnClock(DWORD count, const HANDLE* objects, DWORD milliseconds, DWORD input, DWORD flags);

// The earliest time at which a wait ends by itself; MAXLONGLONG: none does.
LONGLONG nextEndOfWait();

// Lets those who wait look again, as there is input or the clock was changed.
void stirWaits();
