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

constexpr UINT longestPalette = 256;

// What a section is made with. The system reads as much of the palette as the header says.
struct SectionInfo {
    BITMAPINFOHEADER header;
    RGBQUAD palette[longestPalette]; // with 16 and 32 bits: three masks
};

// A section whose palette, if it has one, is black and as long as the pixels can count.
SectionInfo sectionInfo(LONG width, LONG height, WORD bitCount);

// A section of this header and the palette or masks behind it; every pixel is 0. Null with the last
// error set.
HBITMAP createSection(const BITMAPINFOHEADER& header, BYTE** bits);
HBITMAP createSection(LONG width, LONG height, WORD bitCount, BYTE** bits);

// The entries of the palette that the section was made with; 0 without a palette.
UINT paletteLength(HBITMAP bitmap);

// All 0 for a bitmap that the system does not know.
Section sectionOf(HBITMAP bitmap);

// Where a row of the section begins.
inline BYTE* rowOf(const Section& section, LONG row) { return section.bits + row * section.stride; }

// Bytes of a row of so many pixels.
inline LONG strideOf(LONG width, WORD bitCount) {
    return static_cast<LONG>(((static_cast<ULONG>(width) * bitCount + 31) & ~31UL) / 8);
}
