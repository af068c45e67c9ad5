#pragma once
// Where the public header has what the library and companion libraries share: the two headers
// define the same names and cannot be read together.

#include <stddef.h>

struct PublicLayout {
    size_t errorCode, errorMessage, errorOwnsMessage;
    size_t display, callbackTarget, style, dispose, window, classProc, parent, redraw, background,
        foreground;
    size_t controlRecordSize, color;
    unsigned getMinimumSize, getForeground, getBackground;
    long notSupported, failed, outOfMemory;
    unsigned selection, windowEvent, scroll, paint;
};

extern const PublicLayout publicLayout;
