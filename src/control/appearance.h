#pragma once
// How a control looks and stacks.

#include "control/control.h"
#include "graphics/font.h"

extern "C" {
// What the appearance messages do. Display thread.
void _Control_SetBackground(ControlRecord* control, ColorRecord* color, ErrorRecord* error);
void _Control_SetForeground(ControlRecord* control, ColorRecord* color, ErrorRecord* error);
// Null stands for the default font.
void _Control_SetFont(ControlRecord* control, FontRecord* font, ErrorRecord* error);
}

// Above the other control of the same parent, or to the top when it is null. Display thread.
void Control_StackAbove(ControlRecord* control, const ControlRecord* other);

PixelPair Control_GetMinimumSize(ControlRecord* control, ErrorRecord* error);
void Control_SetEnabled(ControlRecord* control, bool enabled, ErrorRecord* error);
void Control_SetRedraw(ControlRecord* control, bool redraw, ErrorRecord* error);

// False when the control or its parent window is hidden or disabled.
bool Control_ForceFocus(ControlRecord* control, ErrorRecord* error);
