// Text on graphics contexts.

#include "bridge/arithmetic.h"
#include "graphics/drawing.h"
#include "graphics/gdi_guards.h"
#include "image/bitmap_guards.h"

static constexpr LONG farEdge = 0x6FFFFFF; // of the layout: nothing is cut off

static UINT formatOf(jint flags) {
    UINT format = flags & textBreakLines ? DT_WORDBREAK : DT_SINGLELINE;
    if (flags & textExpandTabs) format |= DT_EXPANDTABS;
    if (!(flags & textMnemonics)) format |= DT_NOPREFIX;
    return format;
}

// Quirk: of a text with a background only the first character is drawn in XOR mode. Pinned by
// TextTest.inverting_with_a_background_draws_the_first_character_alone.
static void invertWithBackground(HDC dc, const wchar_t* text, RECT layout, UINT format) {
    if (!*text) return;
    COLORREF color = GetTextColor(dc);
    SetTextColor(dc, GetBkColor(dc) ^ color);
    DrawTextW(dc, text, 1, &layout, format);
    SetTextColor(dc, color);
}

// The system's text cannot invert: the letters are drawn on black, which inverts nothing.
static void invertLetters(HDC dc, const wchar_t* text, RECT layout, UINT format) {
    RECT place = layout;
    DrawTextW(dc, text, -1, &place, format | DT_CALCRECT);
    LONG width = saturatingSubtract(place.right, place.left);
    LONG height = saturatingSubtract(place.bottom, place.top);
    HBITMAP bitmap = CreateCompatibleBitmap(dc, width, height);
    if (BitmapContext letters(dc, bitmap); letters) {
        PatBlt(letters, 0, 0, width, height, BLACKNESS);
        SetBkMode(letters, TRANSPARENT);
        SetTextColor(letters, GetTextColor(dc));
        SelectedObject font(letters, GetCurrentObject(dc, OBJ_FONT));
        RECT whole = {0, 0, 32767, 32767};
        DrawTextW(letters, text, -1, &whole, format);
        BitBlt(dc, layout.left, layout.top, width, height, letters, 0, 0, SRCINVERT);
    }
    if (bitmap) DeleteObject(bitmap);
}

void Graphics_DrawString(GraphicsRecord* graphics, const wchar_t* text, jint x, jint y, jint flags,
                         ErrorRecord*) {
    if (!text) text = L"";
    Drawing drawing(graphics);
    RECT layout = {x, y, farEdge, farEdge};
    UINT format = formatOf(flags);
    bool lettersOnly = flags & textLeaveBackground;
    int mode = SetBkMode(drawing, lettersOnly ? TRANSPARENT : OPAQUE);
    if (!isXORMode(drawing))
        DrawTextW(drawing, text, -1, &layout, format);
    else if (lettersOnly)
        invertLetters(drawing, text, layout, format);
    else
        invertWithBackground(drawing, text, layout, format);
    SetBkMode(drawing, mode);
}
