#include "image/conversion.h"

static constexpr ULONG colorBits = 0x00FFFFFF;
static constexpr int alphaShift = 24;

// Aligned as the words of a row are.
static ULONG* wordsOf(BYTE* row) { return reinterpret_cast<ULONG*>(row); }
static const ULONG* wordsOf(const BYTE* row) { return reinterpret_cast<const ULONG*>(row); }
static ULONG word(jint pixel) { return static_cast<ULONG>(pixel); }

// Two 5-6-5 pixels of a word to 5-5-5. The six bits of green become green * 31 / 63, truncated,
// which is green * 63 >> 7 for each of the 64 values.
static ULONG narrowGreen(ULONG pair) {
    ULONG green = pair & 0x07E007E0;
    green = ((green << 1) - (green >> 5)) >> 2 & 0x03E003E0;
    return (pair >> 1 & 0x7C007C00) | green | (pair & 0x001F001F);
}

// Two 5-5-5 pixels of a word to 5-6-5. Green becomes green * 63 / 31, truncated: twice the value,
// and one more for the highest.
static ULONG widenGreen(ULONG pair) {
    ULONG one = ((pair & 0x03E003E0) + 0x00200020) >> 5 & 0x00200020;
    return (pair << 1 & 0xFFC0FFC0) | one | (pair & 0x001F001F);
}

void storeHighColor(BYTE* row, const jint* pixels, LONG count) {
    ULONG* words = wordsOf(row);
    LONG pairs = count >> 1;
    for (LONG i = 0; i < pairs; ++i)
        words[i] = narrowGreen((word(pixels[2 * i]) & 0xFFFF) | word(pixels[2 * i + 1]) << 16);
    if (count & 1)
        *reinterpret_cast<WORD*>(words + pairs) =
            static_cast<WORD>(narrowGreen(word(pixels[2 * pairs])));
}

static void storeTrueColorPixel(BYTE* pixel, ULONG color) {
    pixel[0] = static_cast<BYTE>(color);
    pixel[1] = static_cast<BYTE>(color >> 8);
    pixel[2] = static_cast<BYTE>(color >> 16);
}

// Four pixels fill three words.
void storeTrueColor(BYTE* row, const jint* pixels, LONG count) {
    ULONG* words = wordsOf(row);
    for (; count >= 4; count -= 4, pixels += 4, words += 3) {
        ULONG second = word(pixels[1]), third = word(pixels[2]);
        words[0] = (word(pixels[0]) & colorBits) | second << 24;
        words[1] = (second >> 8 & 0xFFFF) | third << 16;
        words[2] = (third >> 16 & 0xFF) | word(pixels[3]) << 8;
    }
    BYTE* rest = reinterpret_cast<BYTE*>(words);
    for (; count > 0; --count, rest += 3) storeTrueColorPixel(rest, word(*pixels++));
}

void storeWithAlpha(BYTE* row, const jint* pixels, LONG count, BYTE alpha) {
    ULONG* words = wordsOf(row);
    ULONG highest = static_cast<ULONG>(alpha) << alphaShift;
    for (LONG i = 0; i < count; ++i) words[i] = (word(pixels[i]) & colorBits) | highest;
}

void storeWithAlphas(BYTE* row, const jint* pixels, LONG count, const BYTE* alphas) {
    ULONG* words = wordsOf(row);
    for (LONG i = 0; i < count; ++i)
        words[i] = (word(pixels[i]) & colorBits) | static_cast<ULONG>(alphas[i]) << alphaShift;
}

// Values of 5 and 6 bits to 8: value * 255 / 31 and value * 255 / 63, truncated, without a
// division. The six bits are taken as they lie in a 5-6-5 pixel.
static constexpr USHORT widenFive(int five) { return static_cast<USHORT>(five * 2106) >> 8; }
static constexpr USHORT widenSix(ULONG sixInPlace) {
    return static_cast<USHORT>(sixInPlace * 8290 >> 16);
}

static constexpr bool widensExactly() {
    for (int value = 0; value < 32; ++value)
        if (widenFive(value) != value * 255 / 31) return false;
    for (ULONG value = 0; value < 64; ++value)
        if (widenSix(value << 5) != value * 255 / 63) return false;
    return true;
}
static_assert(widensExactly());

// The desk's processor takes several 16-bit values at a time, if they lie side by side and their
// number is known when this is compiled.
static constexpr LONG blockSize = 48;

static void storeWidened(USHORT* halves, const jint* pixels, LONG count, const BYTE* alphas) {
    alignas(16) USHORT block[blockSize];
    for (LONG i = 0; i < count; ++i) block[i] = static_cast<USHORT>(pixels[i]);
    for (LONG i = 0; i < count; ++i) {
        USHORT pixel = block[i];
        halves[2 * i] =
            static_cast<USHORT>(widenSix(pixel & 0x07E0) << 8 | widenFive(pixel & 0x1F));
        halves[2 * i + 1] = static_cast<USHORT>(alphas[i] << 8 | widenFive(pixel >> 11));
    }
}

void storeWidenedWithAlphas(BYTE* row, const jint* pixels, LONG count, const BYTE* alphas) {
    auto* halves = reinterpret_cast<USHORT*>(row);
    for (; count >= blockSize; count -= blockSize, pixels += blockSize, alphas += blockSize) {
        storeWidened(halves, pixels, blockSize, alphas);
        halves += 2 * blockSize;
    }
    storeWidened(halves, pixels, count, alphas);
}

// Green is narrowed as narrowGreen does it; the components get a byte each.
void storeNarrowedWithAlpha(BYTE* row, const jint* pixels, LONG count, BYTE alpha) {
    ULONG* words = wordsOf(row);
    ULONG highest = static_cast<ULONG>(alpha) << alphaShift;
    for (LONG i = 0; i < count; ++i) {
        ULONG pixel = word(pixels[i]);
        ULONG green = pixel & 0x07E0;
        green = ((green << 1) - (green >> 5)) << 1 & 0x1F00;
        words[i] = highest | (pixel << 5 & 0x1F0000) | green | (pixel & 0x1F);
    }
}

void fillTrueColor(BYTE* row, LONG count, jint color) {
    ULONG* words = wordsOf(row);
    ULONG bits = word(color) & colorBits;
    const ULONG pattern[] = {bits | bits << 24, bits >> 8 | bits << 16, bits >> 16 | bits << 8};
    for (; count >= 4; count -= 4, words += 3) {
        words[0] = pattern[0];
        words[1] = pattern[1];
        words[2] = pattern[2];
    }
    BYTE* rest = reinterpret_cast<BYTE*>(words);
    for (; count > 0; --count, rest += 3) storeTrueColorPixel(rest, bits);
}

// Two bytes of four 2-bit indices, at bits 0 and 16, to a word of eight 4-bit indices.
static ULONG spreadPairs(ULONG bytes) {
    ULONG nibbles = (bytes >> 4 & 0x000F000F) | (bytes & 0x000F000F) << 8;
    return (nibbles | nibbles << 2) & 0x33333333;
}

void storeIndexPairs(BYTE* row, const BYTE* data, LONG bytes) {
    ULONG* words = wordsOf(row);
    LONG pairs = bytes >> 1;
    for (LONG i = 0; i < pairs; ++i)
        words[i] = spreadPairs(data[2 * i] | static_cast<ULONG>(data[2 * i + 1]) << 16);
    if (bytes & 1)
        *reinterpret_cast<WORD*>(words + pairs) = static_cast<WORD>(spreadPairs(data[2 * pairs]));
}

void loadHighColor(jint* pixels, const BYTE* row, LONG count) {
    const ULONG* words = wordsOf(row);
    LONG pairs = count >> 1;
    for (LONG i = 0; i < pairs; ++i) {
        ULONG pair = widenGreen(words[i]);
        pixels[2 * i] = static_cast<jint>(pair & 0xFFFF);
        pixels[2 * i + 1] = static_cast<jint>(pair >> 16);
    }
    if (count & 1) pixels[2 * pairs] = static_cast<jint>(widenGreen(words[pairs]) & 0xFFFF);
}

// What lies above a colour is cleared, or set.
static jint plain(ULONG color) { return static_cast<jint>(color & colorBits); }
static jint opaque(ULONG color) { return static_cast<jint>(color | ~colorBits); }

static ULONG loadTrueColorPixel(const BYTE* pixel) {
    return static_cast<ULONG>(pixel[2]) << 16 | static_cast<ULONG>(pixel[1]) << 8 | pixel[0];
}

// Three words hold four pixels, from each fourth pixel of the row on.
template <jint (*finish)(ULONG color)>
static void load(jint* pixels, const BYTE* row, LONG first, LONG count) {
    const BYTE* pixel = row + first * 3;
    for (; count > 0 && first & 3; --count, ++first, pixel += 3)
        *pixels++ = finish(loadTrueColorPixel(pixel));
    for (; count >= 4; count -= 4, pixels += 4, pixel += 12) {
        const ULONG* words = wordsOf(pixel);
        ULONG second = words[1], third = words[2];
        pixels[0] = finish(words[0]);
        pixels[1] = finish(words[0] >> 24 | second << 8);
        pixels[2] = finish(second >> 16 | third << 16);
        pixels[3] = finish(third >> 8);
    }
    for (; count > 0; --count, pixel += 3) *pixels++ = finish(loadTrueColorPixel(pixel));
}

void loadTrueColor(jint* pixels, const BYTE* row, LONG count) {
    load<plain>(pixels, row, 0, count);
}

void loadOpaqueColor(jint* pixels, const BYTE* row, LONG first, LONG count) {
    load<opaque>(pixels, row, first, count);
}
