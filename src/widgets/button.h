#pragma once
// Push buttons, check boxes and radio buttons. Any thread.

#include "control/control.h"

struct ImageRecord;

struct ButtonRecord : ControlRecord {
    BOOL focusing;      // a radio button is being given the focus: its click does not count
    ImageRecord* image; // not owned; null: the button shows its text
};
ASSERT_OFFSET(ButtonRecord, focusing, 56)
ASSERT_OFFSET(ButtonRecord, image, 60)

ButtonRecord* PushButton_New(ControlRecord* parent, DWORD style, ErrorRecord* error);
ButtonRecord* Checkbox_New(ControlRecord* parent, DWORD style, ErrorRecord* error);
ButtonRecord* RadioButton_New(ControlRecord* parent, DWORD style, ErrorRecord* error);

// A null label is the empty one.
void Button_SetLabel(ButtonRecord* button, const wchar_t* label, ErrorRecord* error);

// The check state; push buttons have none and ignore it.
void Button_SetSelection(ButtonRecord* button, bool selected, ErrorRecord* error);
