#pragma once
// Display-wide services: injected input, the beep, the insets of the work area, the focus.
// Any thread.

#include "bridge/values.h"
#include "display/display.h"

struct ColorRecord;

void Display_Beep(DisplayRecord* display, ErrorRecord* error);

// A colour of the system's, 0 to 25, as a record of the caller's own.
ColorRecord* Display_GetSystemColor(DeviceRecord* device, jint id, ErrorRecord* error);

// What the system's bars leave free at each edge of the screen, in pixels.
Insets Display_GetInsets(DisplayRecord* display, ErrorRecord* error);

// type 1 presses, any other releases. Always true.
bool Display_PostKeyEvent(DisplayRecord* display, jint type, jint key, jchar character,
                          ErrorRecord* error);

// Presses (type 1) or releases button 8, 16 or 32 where the pointer is. False for other buttons.
bool Display_PostPointerEvent(DisplayRecord* display, jint type, jint button, ErrorRecord* error);

// Moves the pointer to a pixel of the screen.
bool Display_PostPointerMoveEvent(DisplayRecord* display, jint x, jint y, ErrorRecord* error);

// Leaves no window with the focus.
void Display_ClearFocus(DisplayRecord* display, ErrorRecord* error);

// Quirk: nothing is done, and no error tells that this platform has no full screen. Pinned by
// ServicesTest.a_full_screen_shell_is_not_offered_and_no_error.
void Display_SetFullScreenShell(DisplayRecord* display, OrNone<ShellRecord> shell,
                                ErrorRecord* error);
