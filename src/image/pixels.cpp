// Pixels and palettes of images, read and written.

#include "bridge/arithmetic.h"
#include "bridge/memory.h"
#include "image/bitmap_guards.h"
#include "image/conversion.h"
#include "image/image.h"

static constexpr WORD highColor = 16, trueColor = 24, trueColorWithAlpha = 32; // bits per pixel
static constexpr jint bytesOfTrueColor = 3;
static constexpr ULONG opaque = 0xFF000000;

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
        loadTrueColor(pixels, rowOf(section, row), section.width);
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

namespace {

// What of a stretch lies within 0 to end.
struct Stretch {
    jint skipped; // before the first that lies within
    jint start, count;
};

} // namespace

// In 64 bits: no start and length that Java gives runs over.
static Stretch within(long long start, jint length, jint end) {
    long long first = start < 0 ? 0 : start;
    long long last = start + length < end ? start + length : end;
    if (last <= first) return {};
    return {static_cast<jint>(first - start), static_cast<jint>(first),
            static_cast<jint>(last - first)};
}

// Pixels of a row in the section's memory, three bytes each.
static jint pixelsOfRow(const Section& section) { return section.stride / bytesOfTrueColor; }

void Image_GetRGB(ImageRecord* image, jint x, jint y, jint width, jint height, jint offset,
                  jint scanSize, IntArguments out, ErrorRecord*) {
    Section section = sectionOf(image);
    Stretch rows = within(y, height, section.height);
    Stretch columns = within(x, width, pixelsOfRow(section));
    // One instruction multiplies 32 bits by 32 to 64.
    long long first = static_cast<long long>(rows.skipped) * scanSize + offset + columns.skipped;
    for (jint row = 0; row < rows.count; ++row, first += scanSize) {
        Stretch part = within(first, columns.count, out.count);
        loadOpaqueColor(out.values + part.start, rowOf(section, rows.start + row),
                        columns.start + part.skipped, part.count);
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
