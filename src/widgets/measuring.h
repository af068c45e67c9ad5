#pragma once
// A window's text and font, and how much room it takes. Display thread or the caller's.

#include "ce.h"

struct TextExtent {
    LONG width, height; // pixels; an empty text is one line high
    LONG lineHeight;    // of the font
    LONG averageWidth;  // of the font's characters
    bool isEmpty;
};

// Of no text, in the window's font.
TextExtent measureFont(HWND window);

// The flags are DrawTextW's; the area is what the text is laid out from.
TextExtent measureText(HWND window, UINT flags, RECT area);

// The window's text as a block that the caller frees; null when it is empty or there is no memory
// for it.
wchar_t* copyWindowText(HWND window);

// The font that the window was given last. Not owned by the caller.
HFONT windowFont(HWND window);
