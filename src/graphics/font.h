#pragma once
// Font records: a font of the system with its metrics, measured once on the screen. Any thread.

#include "bridge/error.h"
#include "bridge/handles.h"
#include "bridge/layout.h"
#include "bridge/values.h"
#include "ce.h"

struct DeviceRecord;

// Owned by the Java font and by all that wear it, or by the display for its default font: the
// record and its font go with the last of them.
struct FontRecord {
    HFONT font; // owned
    TEXTMETRICW metrics;
    LONG owners;
    FontRecord* next; // of those that are made for Java
};
ASSERT_OFFSET(FontRecord, metrics, 4)

// Fills in what every font is made with; the rest of the zero-filled record stays the caller's.
extern "C" void _Font_FillInFont(LOGFONTW* font, jint points, jint style);

// A record that takes the font over, also when it cannot be allocated. Null with the error set.
FontRecord* Font_FromHandle(HFONT font, ErrorRecord* error);

// Every device has the same fonts. "fixed", in any case, asks for any fixed-pitch face.
FontRecord* Font_New(OrNone<DeviceRecord> device, const wchar_t* name, jint points, jint style,
                     ErrorRecord* error);

// Any family that is no FontFamily is whatever the system prefers.
FontRecord* Font_NewLogical(OrNone<DeviceRecord> device, jint family, jint points, jint style,
                            ErrorRecord* error);

// A window or a graphics context wears the next font (null: none) in the place of the previous one.
// Fonts that were not made for Java are not counted.
void Font_Wear(HFONT previous, HFONT next);

// Java has done with the font. Whoever wears it goes on wearing it. Null is allowed.
void Font_Dispose(OrNone<FontRecord> font, ErrorRecord* error);

// Pixels, without the internal leading.
jint Font_GetAscent(FontRecord* font, ErrorRecord* error);
jint Font_GetDescent(FontRecord* font, ErrorRecord* error);
jint Font_GetLeading(FontRecord* font, ErrorRecord* error);
jint Font_GetSizeInPoints(FontRecord* font, ErrorRecord* error);
jint Font_GetStyle(FontRecord* font, ErrorRecord* error);

// Widths in pixels. A null text is 0 wide.
jint Font_GetAdvanceWidth(FontRecord* font, jchar character, ErrorRecord* error);
jint Font_StringAdvance(FontRecord* font, const wchar_t* text, ErrorRecord* error);

// The name of the face that the system chose.
NativeString Font_GetName(FontRecord* font, ErrorRecord* error);
