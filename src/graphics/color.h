#pragma once
// Colours of controls and drawing. Any thread.

#include "bridge/layout.h"
#include "ce.h"

// Owned by the Java colour.
struct ColorRecord {
    COLORREF color; // 0x00BBGGRR
    HBRUSH brush;   // solid; null until first needed; owned
};
ASSERT_OFFSET(ColorRecord, brush, 4)

// The colour's brush, made on first use and kept by the record.
HBRUSH Color_GetBrush(ColorRecord* color);

// A system colour. The device wants the index marked as one.
inline COLORREF systemColor(int index) { return GetSysColor(index | SYS_COLOR_INDEX_FLAG); }
