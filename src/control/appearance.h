#pragma once
// How a control looks and stacks.

#include "bridge/handles.h"
#include "control/control.h"
#include "graphics/font.h"
#include "image/image.h"

extern "C" {
// What the appearance messages do. Display thread.
void _Control_SetBackground(ControlRecord* control, ColorRecord* color, ErrorRecord* error);
void _Control_SetForeground(ControlRecord* control, ColorRecord* color, ErrorRecord* error);
// Null stands for the default font.
void _Control_SetFont(ControlRecord* control, FontRecord* font, ErrorRecord* error);
}

// Above the other control of the same parent, or to the top when it is null. Display thread.
void Control_StackAbove(ControlRecord* control, const ControlRecord* other);

// Null stands for the default, which the getters then tell; they answer 0xRRGGBB.
void Control_SetBackground(ControlRecord* control, OrNone<ColorRecord> color, ErrorRecord* error);
void Control_SetForeground(ControlRecord* control, OrNone<ColorRecord> color, ErrorRecord* error);
jint Control_GetBackgroundRGB(ControlRecord* control, ErrorRecord* error);
jint Control_GetForegroundRGB(ControlRecord* control, ErrorRecord* error);
bool Control_InheritsBackground(ControlRecord* control, ErrorRecord* error);

void Control_SetFont(ControlRecord* control, OrNone<FontRecord> font, ErrorRecord* error);

// The display's, which owns it.
Lent<FontRecord> Control_GetDefaultFont(ControlRecord* control, ErrorRecord* error);

// Null stands for the nearest ancestor's.
void Control_SetCursor(ControlRecord* control, HCURSOR cursor, ErrorRecord* error);

// Next to another control of the same parent; null stands for all of them.
void Control_MoveAbove(ControlRecord* control, OrNone<ControlRecord> other, ErrorRecord* error);
void Control_MoveBelow(ControlRecord* control, OrNone<ControlRecord> other, ErrorRecord* error);

PixelPair Control_GetMinimumSize(ControlRecord* control, ErrorRecord* error);
void Control_SetEnabled(ControlRecord* control, bool enabled, ErrorRecord* error);
void Control_SetRedraw(ControlRecord* control, bool redraw, ErrorRecord* error);

// False when the control or its parent window is hidden or disabled.
bool Control_ForceFocus(ControlRecord* control, ErrorRecord* error);

// For Java, which never learns of a context that was made with an error: there is none then.
GraphicsRecord* Control_NewGraphics(ControlRecord* control, ErrorRecord* error);

// Copies a rectangle of the control's client area to the image's corner.
void Control_CopyArea(ControlRecord* control, ImageRecord* image, jint x, jint y, jint width,
                      jint height, ErrorRecord* error);
