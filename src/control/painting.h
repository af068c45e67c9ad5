#pragma once
// Painting and erasing of controls. Display thread only.

#include "control/control.h"

// Answers WM_PAINT. While drawing is disabled the paint is swallowed and made up for afterwards.
LRESULT Control_Paint(ControlRecord* control, Message message);

// Answers WM_ERASEBKGND.
LRESULT Control_Erase(ControlRecord* control, Message message);

// Fills the clip box with the brush; inverts it while the context draws in XOR mode.
void Control_FillClip(HDC context, HBRUSH brush);

// The brush that the parent gives for the control's background in a context; null when there is
// none.
HBRUSH Control_AskParentForBrush(const ControlRecord* control, HDC context);
