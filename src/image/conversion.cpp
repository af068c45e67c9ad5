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
    for (; count >= 2; count -= 2, pixels += 2)
        *words++ = narrowGreen((word(pixels[0]) & 0xFFFF) | word(pixels[1]) << 16);
    if (count) *reinterpret_cast<WORD*>(words) = static_cast<WORD>(narrowGreen(word(*pixels)));
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

// value * 255 / 31 and value * 255 / 63, truncated, without a division.
static constexpr ULONG widenFive(ULONG value) { return value * 1053 >> 7; }
static constexpr ULONG widenSix(ULONG value) { return value * 4145 >> 10; }

static constexpr bool widensExactly() {
    for (ULONG value = 0; value < 32; ++value)
        if (widenFive(value) != value * 255 / 31) return false;
    for (ULONG value = 0; value < 64; ++value)
        if (widenSix(value) != value * 255 / 63) return false;
    return true;
}
static_assert(widensExactly());

void storeWidenedWithAlphas(BYTE* row, const jint* pixels, LONG count, const BYTE* alphas) {
    ULONG* words = wordsOf(row);
    for (LONG i = 0; i < count; ++i) {
        ULONG pixel = word(pixels[i]);
        words[i] = static_cast<ULONG>(alphas[i]) << alphaShift |
                   widenFive(pixel >> 11 & 0x1F) << 16 | widenSix(pixel >> 5 & 0x3F) << 8 |
                   widenFive(pixel & 0x1F);
    }
}

void storeNarrowedWithAlpha(BYTE* row, const jint* pixels, LONG count, BYTE alpha) {
    ULONG* words = wordsOf(row);
    ULONG highest = static_cast<ULONG>(alpha) << alphaShift;
    for (LONG i = 0; i < count; ++i) {
        ULONG pixel = narrowGreen(word(pixels[i]) & 0xFFFF);
        words[i] = highest | (pixel >> 10) << 16 | (pixel >> 5 & 0x1F) << 8 | (pixel & 0x1F);
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
    for (; bytes >= 2; bytes -= 2, data += 2)
        *words++ = spreadPairs(data[0] | static_cast<ULONG>(data[1]) << 16);
    if (bytes) *reinterpret_cast<WORD*>(words) = static_cast<WORD>(spreadPairs(*data));
}

void loadHighColor(jint* pixels, const BYTE* row, LONG count) {
    const ULONG* words = wordsOf(row);
    for (; count >= 2; count -= 2, pixels += 2) {
        ULONG pair = widenGreen(*words++);
        pixels[0] = static_cast<jint>(pair & 0xFFFF);
        pixels[1] = static_cast<jint>(pair >> 16);
    }
    if (count) *pixels = static_cast<jint>(widenGreen(*words) & 0xFFFF);
}

static jint loadTrueColorPixel(const BYTE* pixel, ULONG highest) {
    return static_cast<jint>(highest | static_cast<ULONG>(pixel[2]) << 16 |
                             static_cast<ULONG>(pixel[1]) << 8 | pixel[0]);
}

// Three words hold four pixels, from each fourth pixel of the row on.
void loadTrueColor(jint* pixels, const BYTE* row, LONG first, LONG count, ULONG highest) {
    const BYTE* pixel = row + first * 3;
    for (; count > 0 && first & 3; --count, ++first, pixel += 3)
        *pixels++ = loadTrueColorPixel(pixel, highest);
    for (; count >= 4; count -= 4, pixels += 4, pixel += 12) {
        const ULONG* words = wordsOf(pixel);
        pixels[0] = static_cast<jint>((words[0] & colorBits) | highest);
        pixels[1] = static_cast<jint>(words[0] >> 24 | (words[1] & 0xFFFF) << 8 | highest);
        pixels[2] = static_cast<jint>(words[1] >> 16 | (words[2] & 0xFF) << 16 | highest);
        pixels[3] = static_cast<jint>(words[2] >> 8 | highest);
    }
    for (; count > 0; --count, pixel += 3) *pixels++ = loadTrueColorPixel(pixel, highest);
}
