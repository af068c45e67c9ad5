#pragma once
// How much room a window's text takes in its font. Display thread or the caller's.

#include "ce.h"

struct TextExtent {
    LONG width, height; // pixels; an empty text is one line high
    LONG averageWidth;  // of the font's characters
    bool isEmpty;
};

// The flags are DrawTextW's; the area is what the text is laid out from.
TextExtent measureText(HWND window, UINT flags, RECT area);
