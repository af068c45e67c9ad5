#pragma once
// Graphics contexts: what Java draws with, on a control's client area or on an image. Coordinates
// are pixels of the control or image. Any thread; an image's lock serialises drawing on it.

#include "bridge/error.h"
#include "bridge/handles.h"
#include "bridge/layout.h"
#include "ce.h"
#include "graphics/color.h"
#include "graphics/font.h"
#include "image/image.h"

struct GraphicsRecord;

using DrawHook = GraphicsRecord* (*)(GraphicsRecord* graphics);

// Owned by the Java graphics.
struct GraphicsRecord {
    HDC dc;             // owned; null when the control's window has gone
    HPEN savedPen;      // the context's first pen; null while it is still selected
    HBRUSH savedBrush;  // likewise
    ImageRecord* image; // drawn into, and owned with others; null: a control is
    RECT bounds;        // the first clip, and the limit of every later one
    LOGPEN pen;         // the pen that is selected
    DrawHook beginDraw; // around every operation: gets hold of the image's bitmap
    DrawHook endDraw;
    HFONT font;           // of Java's, worn; null: the system's
    HWND window;          // of the control; null: none
    GraphicsRecord* next; // of those that are on windows
};
ASSERT_OFFSET(GraphicsRecord, image, 12)
ASSERT_OFFSET(GraphicsRecord, bounds, 16)
ASSERT_OFFSET(GraphicsRecord, pen, 32)
ASSERT_OFFSET(GraphicsRecord, beginDraw, 48)
ASSERT_OFFSET(GraphicsRecord, endDraw, 52)

// A context of the caller's, clipped to the bounds, for as long as the device context is at hand.
// The device context stays its owner's, who puts its clip back.
GraphicsRecord Graphics_On(HDC dc, const RECT& bounds);

// A context that owns the device context from here on, unless there is no memory for it, which is
// reported. The image is null for a control's.
GraphicsRecord* Graphics_New(HDC dc, ImageRecord* image, const RECT& bounds, ErrorRecord* error);

// The context is on the control's window from here on, for as long as that is there.
void Graphics_EnterWindow(GraphicsRecord* graphics, HWND window);

// Before the window goes: its contexts give back what they have selected, and draw on nothing from
// now on. The system lends what they drew with to the next one who asks.
void Graphics_LeaveWindow(HWND window);

GraphicsRecord* Image_NewGraphics(ImageRecord* image, ErrorRecord* error);
void Graphics_Dispose(GraphicsRecord* graphics, ErrorRecord* error);

// Colours and fonts stay their owner's and are not needed after the call.
void Graphics_SetForeground(GraphicsRecord* graphics, ColorRecord* color, ErrorRecord* error);
void Graphics_SetBackground(GraphicsRecord* graphics, ColorRecord* color, ErrorRecord* error);
void Graphics_SetLineWidth(GraphicsRecord* graphics, jint width, ErrorRecord* error);

// Null stands for the system's font.
void Graphics_SetFont(GraphicsRecord* graphics, OrNone<FontRecord> font, ErrorRecord* error);

// The part of the bounds that drawing is limited to; each replaces the one before.
void Graphics_SetClipping(GraphicsRecord* graphics, jint x, jint y, jint width, jint height,
                          ErrorRecord* error);
void Graphics_ClearClipping(GraphicsRecord* graphics, ErrorRecord* error);

void Graphics_SetXORMode(GraphicsRecord* graphics, bool on, ErrorRecord* error);

// Does nothing: lines have one style on this platform.
void Graphics_SetLineNodeStyle(GraphicsRecord* graphics, jint first, jint second, jint third,
                               ErrorRecord* error);

// The context's device context while an operation draws with it.
class Drawing {
  public:
    explicit Drawing(GraphicsRecord* graphics) : graphics(graphics) {
        graphics->beginDraw(graphics);
    }
    ~Drawing() { graphics->endDraw(graphics); }
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;
    operator HDC() const { return graphics->dc; }

  private:
    GraphicsRecord* graphics;
};

// Whether drawing inverts. The device cannot be asked; it tells what a change displaces.
inline bool isXORMode(HDC dc) {
    int mode = SetROP2(dc, R2_COPYPEN);
    SetROP2(dc, mode);
    return mode == R2_XORPEN;
}
