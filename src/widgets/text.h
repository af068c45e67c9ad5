#pragma once
// Text fields (one line) and text areas (many). Texts come with any line breaks and are kept with
// CR LF; positions count UTF-16 units of what is kept. Any thread.

#include "control/scrollable.h"

struct TextRecord : ScrollableRecord {
    BYTE passDoubleClicks; // to the window class, which selects a word
    BYTE replacing;        // a part of the text is being replaced: no change to tell of
};
ASSERT_OFFSET(TextRecord, passDoubleClicks, 64)
ASSERT_OFFSET(TextRecord, replacing, 65)

struct TextFieldRecord : TextRecord {};
struct TextAreaRecord : TextRecord {};

TextFieldRecord* TextField_New(ControlRecord* parent, DWORD style, ErrorRecord* error);
TextAreaRecord* TextArea_New(ControlRecord* parent, DWORD style, ErrorRecord* error);

// For that many columns (and rows) of an average character, in pixels.
PixelPair TextField_GetMinimumSize(TextFieldRecord* text, jint columns, ErrorRecord* error);
PixelPair TextArea_GetMinimumSize(TextAreaRecord* text, jint rows, jint columns,
                                  ErrorRecord* error);

jint AbstractTextComponent_GetCharCount(TextRecord* text, ErrorRecord* error);
NativeString AbstractTextComponent_GetText(TextRecord* text, ErrorRecord* error);

// Null is the empty text. Fires the text-modified callback.
void AbstractTextComponent_SetText(TextRecord* text, const wchar_t* characters, ErrorRecord* error);

// Puts the characters (null: none) in the place of start to end without the text-modified callback.
void AbstractTextComponent_Replace(TextRecord* text, const wchar_t* characters, jint start,
                                   jint end, ErrorRecord* error);

// Start and end.
PixelPair AbstractTextComponent_GetSelection(TextRecord* text, ErrorRecord* error);
NativeString AbstractTextComponent_GetSelectionText(TextRecord* text, ErrorRecord* error);

// Scrolls the caret into view.
void AbstractTextComponent_SetSelection(TextRecord* text, jint start, jint end, ErrorRecord* error);
void AbstractTextComponent_SetCaretPosition(TextRecord* text, jint position, ErrorRecord* error);

// Leaves the view where it is.
void AbstractTextComponent_SelectAll(TextRecord* text, ErrorRecord* error);

// The character that is shown for every other; 0 shows the text.
void AbstractTextComponent_SetEchoChar(TextRecord* text, jchar echo, ErrorRecord* error);
void AbstractTextComponent_SetEditable(TextRecord* text, bool editable, ErrorRecord* error);
