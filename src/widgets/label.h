#pragma once
// Labels: one or more lines of text, or an image. Any thread.

#include "control/control.h"

struct ImageRecord;

struct LabelRecord : ControlRecord {
    DWORD alignment;    // as Java set it last
    ImageRecord* image; // not owned; null: none
    HFONT font;         // the last one that the window was given; not owned
    WNDPROC staticProc; // of the window class; the label's own painting stands before it
};
ASSERT_OFFSET(LabelRecord, alignment, 56)
ASSERT_OFFSET(LabelRecord, image, 60)
ASSERT_OFFSET(LabelRecord, font, 64)
ASSERT_OFFSET(LabelRecord, staticProc, 68)

LabelRecord* Label_New(ControlRecord* parent, DWORD style, ErrorRecord* error);

// 1 left, 4 right, 2 centred, looked for in this order; none of them counts as left. An image
// keeps its place.
void Label_SetAlignment(LabelRecord* label, DWORD alignment, ErrorRecord* error);

// A null text is the empty one. A label that shows an image keeps showing it.
void Label_SetText(LabelRecord* label, const wchar_t* text, ErrorRecord* error);
