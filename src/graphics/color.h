#pragma once
// Colours of controls and drawing. Any thread.

#include "bridge/error.h"
#include "bridge/handles.h"
#include "bridge/layout.h"
#include "ce.h"

struct DeviceRecord;

// Owned by the Java colour and by all that wear it: the record goes with the last of them.
struct ColorRecord {
    COLORREF color; // 0x00BBGGRR
    HBRUSH brush;   // solid; null until first needed; owned
};
ASSERT_OFFSET(ColorRecord, brush, 4)

// Components of 0 to 255, or null with the error set. Every device has the same colours.
ColorRecord* Color_New(OrNone<DeviceRecord> device, jint red, jint green, jint blue,
                       ErrorRecord* error);

// Java has done with the colour. Whoever wears it goes on wearing it.
void Color_Dispose(ColorRecord* color, ErrorRecord* error);

// Puts the colour (null: none) into a field of somebody's who wears it, in the place of the one
// that is there. A record that is not the toolkit's own stays its owner's and must outlive its use.
void Color_Wear(ColorRecord** field, ColorRecord* color);
jint Color_GetRed(ColorRecord* color, ErrorRecord* error);
jint Color_GetGreen(ColorRecord* color, ErrorRecord* error);
jint Color_GetBlue(ColorRecord* color, ErrorRecord* error);

// Whether there is a colour in a field of somebody's who wears one, and which: 0x00BBGGRR.
bool Color_Read(ColorRecord* const* field, COLORREF* color);

// The colour's brush, made on first use and kept by the record.
HBRUSH Color_GetBrush(ColorRecord* color);

// A system colour. The device wants the index marked as one.
inline COLORREF systemColor(int index) { return GetSysColor(index | SYS_COLOR_INDEX_FLAG); }

// 0x00BBGGRR as Java has it, 0xRRGGBB, and back.
inline jint swapRedAndBlue(jint color) {
    return (color & 0x00FF00) | (color >> 16 & 0xFF) | (color & 0xFF) << 16;
}
