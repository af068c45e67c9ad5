// Pixels and palettes of images, read and written.

#include "bridge/memory.h"
#include "image/bitmap_guards.h"
#include "image/conversion.h"
#include "image/image.h"

static constexpr WORD highColor = 16, trueColor = 24, trueColorWithAlpha = 32; // bits per pixel
static constexpr jint bytesOfTrueColor = 3;
static constexpr ULONG opaque = 0xFF000000;

static jint lesser(jint a, jint b) { return a < b ? a : b; }

ColorMasks Image_GetDirectPaletteMasks(ImageRecord* image, ErrorRecord*) {
    switch (sectionOf(image).bitCount) {
    case highColor:
        return {0x7C00, 0x3E0, 0x1F, 0};
    case trueColor:
        return {0xFF0000, 0xFF00, 0xFF, 0};
    case trueColorWithAlpha:
        return {0xFF0000, 0xFF00, 0xFF, static_cast<jint>(opaque)};
    default:
        return {};
    }
}

// How many entries were read. The bitmap's drawing context is used when it is in one.
static UINT readPalette(ImageRecord* image, RGBQUAD* entries) {
    ImageLock locked(image);
    UINT length = paletteLength(image->bitmap);
    if (image->selectedDC) return GetDIBColorTable(image->selectedDC, 0, length, entries);
    BitmapContext context(nullptr, image->bitmap);
    return GetDIBColorTable(context, 0, length, entries);
}

void Image_GetIndexedPalette(ImageRecord* image, ByteArguments reds, ByteArguments greens,
                             ByteArguments blues, ErrorRecord* error) {
    if (image->isDirect) {
        Win32Error_SetError(error, errorFailed,
                            L"Indexed palette not available for direct color image");
        return;
    }
    RGBQUAD entries[longestPalette];
    auto length = static_cast<jint>(readPalette(image, entries));
    if (length == 0) {
        Win32Error_SetError(error, errorFailed, L"Unable to get DIB color table");
        return;
    }
    jint room = lesser(lesser(reds.count, greens.count), lesser(blues.count, length));
    for (jint i = 0; i < room; ++i) {
        reds.values[i] = static_cast<jbyte>(entries[i].rgbRed);
        greens.values[i] = static_cast<jbyte>(entries[i].rgbGreen);
        blues.values[i] = static_cast<jbyte>(entries[i].rgbBlue);
    }
}

static void loadRow(jint* pixels, const Section& section, LONG row) {
    if (section.bitCount == highColor)
        loadHighColor(pixels, rowOf(section, row), section.width);
    else if (section.bitCount == trueColor)
        loadTrueColor(pixels, rowOf(section, row), 0, section.width, 0);
}

NativeIntArray Image_GetPixelsHighColor(ImageRecord* image, ErrorRecord* error) {
    if (!image->isDirect) {
        Win32Error_SetError(error, errorFailed,
                            L"Pixels High color invalid on indexed color image");
        return {};
    }
    Section section = sectionOf(image);
    jint count = section.width * section.height;
    if (section.bitCount == trueColorWithAlpha) // stored as Java wants them, row to row
        return {reinterpret_cast<jint*>(section.bits), count, false};
    auto* pixels = allocateArray<jint>(count);
    if (!pixels) {
        Error_SetCode(error, errorOutOfMemory);
        return {};
    }
    for (LONG row = 0; row < section.height; ++row)
        loadRow(pixels + row * section.width, section, row);
    return {pixels, count, true};
}

NativeByteArray Image_GetPixelsLowColor(ImageRecord* image, ErrorRecord* error) {
    if (image->isDirect) {
        Win32Error_SetError(error, errorFailed, L"Pixels Low color invalid on direct color image");
        return {};
    }
    Section section = sectionOf(image);
    return {reinterpret_cast<jbyte*>(section.bits), section.stride * section.height, false};
}

// Cuts start and length of a stretch down to what lies within 0 to end. What is left may be empty.
static void cut(jint* start, jint* length, jint* skipped, jint end) {
    *skipped = *start < 0 ? -*start : 0;
    *start = *start < 0 ? 0 : *start;
    *length = lesser(*length - *skipped, end - *start);
}

// Pixels of a row in the section's memory, three bytes each.
static jint pixelsOfRow(const Section& section) { return section.stride / bytesOfTrueColor; }

void Image_GetRGB(ImageRecord* image, jint x, jint y, jint width, jint height, jint offset,
                  jint scanSize, IntArguments out, ErrorRecord*) {
    if (width <= 0 || height <= 0) return;
    Section section = sectionOf(image);
    jint skippedRows, skippedColumns;
    cut(&y, &height, &skippedRows, section.height);
    cut(&x, &width, &skippedColumns, pixelsOfRow(section));
    jint first = offset + skippedRows * scanSize + skippedColumns;
    for (jint row = 0; row < height; ++row, first += scanSize) {
        jint start = first, count = width, skipped;
        cut(&start, &count, &skipped, out.count);
        if (count <= 0) continue;
        loadTrueColor(out.values + start, rowOf(section, y + row), x + skipped, count, opaque);
    }
}

void Image_SetRGB(ImageRecord* image, jint x, jint y, jint rgb, ErrorRecord*) {
    Section section = sectionOf(image);
    if (x < 0 || x >= pixelsOfRow(section) || y < 0 || y >= section.height) return;
    BYTE* pixel = rowOf(section, y) + x * bytesOfTrueColor;
    pixel[0] = static_cast<BYTE>(rgb);
    pixel[1] = static_cast<BYTE>(rgb >> 8);
    pixel[2] = static_cast<BYTE>(rgb >> 16);
}
