#pragma once
// The device's screen. The desk's own may be larger: the device's is then its top left corner. Any
// thread.

#include <windows.h>

// Pixels.
SIZE screenSize();

// What was its width is its height. Nobody is told.
void swapScreenSides();

// The part of the screen that top-level windows may fill.
RECT workArea();

// Without the input panel.
RECT wholeWorkArea();

// Sets it and tells every window of the process.
void changeWorkArea(const RECT& area);
