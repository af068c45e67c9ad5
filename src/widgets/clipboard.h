#pragma once
// Text exchange with the other programs. Any thread.

#include "bridge/error.h"
#include "bridge/values.h"

// Null without an error when the clipboard holds no text. The caller frees it.
NativeString Clipboard_GetText(ErrorRecord* error);

// Takes the place of all that the clipboard holds. A null text is the empty one.
void Clipboard_SetText(const wchar_t* text, ErrorRecord* error);
