#pragma once
// Device-independent sections: bitmaps whose pixels the library reads and writes itself. Rows run
// from the top and are padded to multiples of 4 bytes; the bytes of a pixel are blue, green, red
// and, with 32 bits, alpha. Any thread.

#include "ce.h"

struct Section {
    BYTE* bits;
    LONG width, height; // pixels
    LONG stride;        // bytes from one row to the next
    WORD bitCount;      // of a pixel
};

// The header of a section without a palette; a palette's length goes into biClrUsed.
BITMAPINFOHEADER sectionHeader(LONG width, LONG height, WORD bitCount);

// A section with this header and the palette behind it, if it has one; every pixel is 0. Null with
// the last error set.
HBITMAP createSection(const BITMAPINFOHEADER& header, BYTE** bits);

// All 0 for a bitmap that the system does not know.
Section sectionOf(HBITMAP bitmap);

// Bytes of a row of so many pixels.
inline LONG strideOf(LONG width, WORD bitCount) {
    return static_cast<LONG>(((static_cast<ULONG>(width) * bitCount + 31) & ~31UL) / 8);
}
