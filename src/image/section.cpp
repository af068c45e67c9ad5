#include "image/section.h"
#include "bridge/arithmetic.h"

// The system looks for them behind the header, although it says that the pixels are plain RGB.
static void addMasks(RGBQUAD* masks, WORD bitCount) {
    if (bitCount == 16) {
        masks[0] = {0x00, 0x7C, 0x00, 0};
        masks[1] = {0xE0, 0x03, 0x00, 0};
        masks[2] = {0x1F, 0x00, 0x00, 0};
    } else if (bitCount == 32) {
        masks[0] = {0x00, 0x00, 0xFF, 0};
        masks[1] = {0x00, 0xFF, 0x00, 0};
        masks[2] = {0xFF, 0x00, 0x00, 0};
    }
}

SectionInfo sectionInfo(LONG width, LONG height, WORD bitCount) {
    SectionInfo info = {};
    BITMAPINFOHEADER& header = info.header;
    header.biSize = sizeof(header);
    header.biWidth = width;
    header.biHeight = saturatingNegate(height); // rows from the top
    header.biPlanes = 1;
    header.biBitCount = bitCount;
    header.biCompression = BI_RGB;
    addMasks(info.palette, bitCount);
    return info;
}

// Whether no size of the pixels in bytes runs over.
static bool isCountable(const BITMAPINFOHEADER& header) {
    auto bits = static_cast<ULONGLONG>(header.biWidth) * header.biBitCount;
    if (header.biWidth > 0 && bits > greatestInt) return false;
    LONG rows = header.biHeight < 0 ? saturatingNegate(header.biHeight) : header.biHeight;
    return saturatingMultiply(strideOf(header.biWidth, header.biBitCount), rows) < greatestInt;
}

HBITMAP createSection(const BITMAPINFOHEADER& header, BYTE** bits) {
    *bits = nullptr;
    if (!isCountable(header)) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    void* memory = nullptr;
    HBITMAP bitmap = CreateDIBSection(nullptr, reinterpret_cast<const BITMAPINFO*>(&header),
                                      DIB_RGB_COLORS, &memory, nullptr, 0);
    *bits = static_cast<BYTE*>(memory);
    return bitmap;
}

HBITMAP createSection(LONG width, LONG height, WORD bitCount, BYTE** bits) {
    return createSection(sectionInfo(width, height, bitCount).header, bits);
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
