#include "image/section.h"

BITMAPINFOHEADER sectionHeader(LONG width, LONG height, WORD bitCount) {
    BITMAPINFOHEADER header = {};
    header.biSize = sizeof(header);
    header.biWidth = width;
    header.biHeight = -height; // rows from the top
    header.biPlanes = 1;
    header.biBitCount = bitCount;
    header.biCompression = BI_RGB;
    return header;
}

HBITMAP createSection(const BITMAPINFOHEADER& header, BYTE** bits) {
    void* memory = nullptr;
    HBITMAP bitmap = CreateDIBSection(nullptr, reinterpret_cast<const BITMAPINFO*>(&header),
                                      DIB_RGB_COLORS, &memory, nullptr, 0);
    *bits = static_cast<BYTE*>(memory);
    return bitmap;
}

HBITMAP createSection(LONG width, LONG height, WORD bitCount, BYTE** bits) {
    SectionInfo info = {sectionHeader(width, height, bitCount), {}};
    return createSection(info.header, bits);
}

UINT paletteLength(HBITMAP bitmap) {
    constexpr WORD deepestPalette = 8;
    DIBSECTION section = {};
    GetObjectW(bitmap, sizeof(section), &section);
    const BITMAPINFOHEADER& header = section.dsBmih;
    if (header.biBitCount > deepestPalette || header.biBitCount == 0) return 0;
    UINT most = 1u << header.biBitCount;
    return header.biClrUsed && header.biClrUsed < most ? header.biClrUsed : most;
}

Section sectionOf(HBITMAP bitmap) {
    BITMAP description = {};
    GetObjectW(bitmap, sizeof(description), &description);
    return {static_cast<BYTE*>(description.bmBits), description.bmWidth, description.bmHeight,
            description.bmWidthBytes, description.bmBitsPixel};
}
