#pragma once
// Menu bars, which aygshell makes; coredll hides them with their owners and keeps clear of them.

#include "emulator.h"

constexpr wchar_t menuBarClass[] = L"MenuBar";

// As large to the eye on every screen as so many pixels on the usual one.
inline int scaledToScreen(int pixels) {
    constexpr int usualDotsPerInch = 96;
    return MulDiv(pixels, Emulator_GetVariety()->dotsPerInch, usualDotsPerInch);
}

// What the bars at the screen's edges are written with; theirs for good.
inline HFONT newBarFont() {
    LOGFONTW font;
    GetObjectW(GetStockObject(DEFAULT_GUI_FONT), sizeof(font), &font);
    font.lfHeight = scaledToScreen(font.lfHeight);
    return CreateFontIndirectW(&font);
}

inline int menuBarHeight() { return scaledToScreen(26); } // pixels
