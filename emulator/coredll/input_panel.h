#pragma once
// The input panel, beside what emulator.h offers of it. Any thread.

#include <windows.h>

// Puts it where it belongs on a screen that was turned, when it shows; the work area that is left.
RECT placeInputPanel();
