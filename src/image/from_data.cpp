// Images made of Java's pixels.

#include "bridge/arithmetic.h"
#include "bridge/memory.h"
#include "image/conversion.h"
#include "image/image.h"

static constexpr WORD highColor = 16, trueColor = 24, trueColorWithAlpha = 32; // bits per pixel
static constexpr jint noAlpha = -1;

ImageRecord* Image_NewFromSize(DeviceRecord*, jint width, jint height, jint color,
                               ErrorRecord* error) {
    constexpr DWORD noIndex = 255;
    Section section = {};
    HBITMAP bitmap = createSection(width, height, trueColor, &section.bits);
    if (!bitmap) {
        Win32Error_SetLast(error, L"Unable to create device-independent image handle");
        return nullptr;
    }
    section.stride = strideOf(width, trueColor);
    if (height > 0) fillTrueColor(section.bits, width, color);
    for (jint row = 1; row < height; ++row)
        memcpy(rowOf(section, row), section.bits, section.stride);
    return Image_FromBitmap(bitmap, true, noIndex, noTransparentColor, error);
}

namespace {

// Java's pixels and how they are stored.
struct DirectPixels {
    const jint* pixels;
    const BYTE* alphas; // one for each pixel, or null
    jint depth;
    jint alpha; // of every pixel, or noAlpha
};

} // namespace

static void storeRow(const DirectPixels& source, BYTE* row, WORD bitCount, LONG first, LONG count) {
    const jint* pixels = source.pixels + first;
    const BYTE* alphas = source.alphas ? source.alphas + first : nullptr;
    auto alpha = static_cast<BYTE>(source.alpha);
    bool isHighColor = source.depth == highColor;
    if (bitCount == highColor) return storeHighColor(row, pixels, count);
    if (bitCount == trueColor) return storeTrueColor(row, pixels, count);
    if (bitCount != trueColorWithAlpha) return; // another depth has no pixels of colours
    if (alphas && isHighColor) return storeWidenedWithAlphas(row, pixels, count, alphas);
    if (alphas) return storeWithAlphas(row, pixels, count, alphas);
    // Quirk: with one alpha for all, pixels of 16 bits keep components of 5 bits, and white is a
    // dark grey. Pinned by ImageTest.of_colors_stores_every_depth_and_width_and_alpha.
    if (isHighColor) return storeNarrowedWithAlpha(row, pixels, count, alpha);
    if (source.alpha != noAlpha) return storeWithAlpha(row, pixels, count, alpha);
    memcpy(row, pixels, count * sizeof(jint));
}

ImageRecord* Image_NewFromIntData(DeviceRecord*, jint width, jint height, IntArguments pixels,
                                  jint depth, jint transparentColor, jint alpha,
                                  ByteArguments alphaData, ErrorRecord* error) {
    bool hasAlpha = alphaData.values || alpha != noAlpha;
    WORD bitCount = hasAlpha ? trueColorWithAlpha : static_cast<WORD>(depth);
    Section section = {};
    HBITMAP bitmap = createSection(width, height, bitCount, &section.bits);
    if (!bitmap) {
        Win32Error_SetLast(error, L"Unable to create device-independent image handle");
        return nullptr;
    }
    section.stride = strideOf(width, bitCount);
    const DirectPixels source = {pixels.values, reinterpret_cast<const BYTE*>(alphaData.values),
                                 depth, alpha};
    LONG available = source.alphas ? lesser(pixels.count, alphaData.count) : pixels.count;
    for (LONG row = 0, first = 0; row < height && first < available; ++row, first += width)
        storeRow(source, rowOf(section, row), bitCount, first, lesser(width, available - first));
    return Image_FromBitmap(bitmap, true, 0, transparentColor, error);
}

namespace {

struct PaletteArguments {
    ByteArguments reds, greens, blues;
};

} // namespace

static BYTE byteAt(ByteArguments bytes, jint index) {
    return index >= 0 && index < bytes.count ? static_cast<BYTE>(bytes.values[index]) : 0;
}

static RGBQUAD entryAt(const PaletteArguments& palette, jint index) {
    return {byteAt(palette.blues, index), byteAt(palette.greens, index),
            byteAt(palette.reds, index), 0};
}

static COLORREF colorAt(const PaletteArguments& palette, jint index) {
    RGBQUAD entry = entryAt(palette, index);
    return RGB(entry.rgbRed, entry.rgbGreen, entry.rgbBlue);
}

// A header with the palette; freed by the caller. Null when there is no memory.
static BITMAPINFOHEADER* newHeader(const SectionInfo& described, const PaletteArguments& palette,
                                   jint length) {
    constexpr jint limit = 0x1000000; // no pixel counts further, and no size overflows
    if (length > limit) return nullptr;
    if (length < 0) length = 0;
    // Without a length the system reads as much as the pixels can count.
    UINT room = length > static_cast<jint>(longestPalette) ? length : longestPalette;
    auto* info =
        static_cast<SectionInfo*>(allocateBytes(sizeof(BITMAPINFOHEADER) + room * sizeof(RGBQUAD)));
    if (!info) return nullptr;
    *info = described;
    info->header.biClrUsed = length;
    RGBQUAD* entries = info->palette;
    for (jint i = 0; i < length; ++i) entries[i] = entryAt(palette, i);
    return &info->header;
}

namespace {

struct IndexedRows {
    const BYTE* data;
    LONG available; // bytes
    LONG length;    // bytes of a row
    bool pairs;     // indices of 2 bits, which sections do not have: stored with 4
};

} // namespace

static void storeRows(const IndexedRows& source, const Section& section, LONG height) {
    LONG most = source.pairs ? section.stride / 2 : section.stride;
    LONG count = lesser(source.length, most);
    if (count <= 0) return;
    const BYTE* data = source.data;
    LONG left = source.available;
    for (LONG row = 0; row < height && left > 0; ++row) {
        LONG bytes = lesser(count, left);
        if (source.pairs)
            storeIndexPairs(rowOf(section, row), data, bytes);
        else
            memcpy(rowOf(section, row), data, bytes);
        data += source.length;
        left -= source.length;
    }
}

ImageRecord* Image_NewFromByteData(DeviceRecord*, jint width, jint height, ByteArguments data,
                                   jint bytesPerLine, jint depth, ByteArguments reds,
                                   ByteArguments greens, ByteArguments blues, jint paletteSize,
                                   jint transparentIndex, ErrorRecord* error) {
    constexpr jint noIndex = -1;
    const PaletteArguments palette = {reds, greens, blues};
    bool pairs = depth == 2;
    auto bitCount = static_cast<WORD>(pairs ? 4 : depth);
    Block<BITMAPINFOHEADER> header(
        newHeader(sectionInfo(width, height, bitCount), palette, paletteSize));
    if (!header) {
        Win32Error_SetError(error, errorOutOfMemory, L"Not enough memory to create image");
        return nullptr;
    }
    Section section = {};
    HBITMAP bitmap = createSection(*header, &section.bits);
    if (!bitmap) {
        Win32Error_SetError(error, errorFailed,
                            L"Unable to create device-independent image handle");
        return nullptr;
    }
    section.stride = strideOf(width, bitCount);
    storeRows({reinterpret_cast<const BYTE*>(data.values), data.count, bytesPerLine, pairs},
              section, height);
    COLORREF transparentColor =
        transparentIndex == noIndex ? noTransparentColor : colorAt(palette, transparentIndex);
    return Image_FromBitmap(bitmap, false, static_cast<BYTE>(transparentIndex), transparentColor,
                            error);
}
