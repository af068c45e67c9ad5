#pragma once
// Font records. Any thread.

#include "bridge/layout.h"
#include "ce.h"

// Owned by the Java font, or by the display for its default font.
struct FontRecord {
    HFONT font; // owned
    TEXTMETRICW metrics;
};
ASSERT_OFFSET(FontRecord, metrics, 4)

// Deletes the font and frees its record. Null is allowed.
void Font_Release(FontRecord* font);
