#pragma once
// The time that sounds take: real time, faster, or only as much as a test lets pass. Any thread.

#include <windows.h>

// Since some time or other, microseconds. Never runs backwards.
LONGLONG soundTime();

// How many times faster than real time it runs; 0 when it stands still.
DWORD soundSpeed();

void setSoundSpeed(DWORD factor);
void passSoundTime(DWORD milliseconds);
