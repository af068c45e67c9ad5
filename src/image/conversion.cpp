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

// Two values of 5 or 6 bits in a word's halves to 8 bits: value * 255 / 31 and value * 255 / 63,
// truncated, without a division.
static constexpr ULONG widenFives(ULONG pair) {
    return (pair << 3) + (pair * 29 >> 7 & 0x00070007);
}
static constexpr ULONG widenSixes(ULONG pair) {
    return (pair << 2) + (pair * 49 >> 10 & 0x00030003);
}

static constexpr bool widensExactly() {
    for (ULONG value = 0; value < 32; ++value)
        if (widenFives(value | 31 << 16) != (value * 255 / 31 | 255 << 16)) return false;
    for (ULONG value = 0; value < 64; ++value)
        if (widenSixes(value | 63 << 16) != (value * 255 / 63 | 255 << 16)) return false;
    return true;
}
static_assert(widensExactly());

static constexpr ULONG fives = 0x001F001F, sixes = 0x003F003F;
static ULONG pairOf(ULONG first, ULONG second) { return (first & 0xFFFF) | second << 16; }

// Two pixels of 32 bits: alphas and reds in the halves of one word, greens and blues of the other.
static void storePair(ULONG* words, ULONG high, ULONG low) {
    words[0] = (low & 0xFFFF) | high << 16;
    words[1] = low >> 16 | (high & 0xFFFF0000);
}

static void storeWidened(ULONG* words, ULONG pair, ULONG alphas) {
    storePair(words, alphas << 8 | widenFives(pair >> 11 & fives),
              widenSixes(pair >> 5 & sixes) << 8 | widenFives(pair & fives));
}

void storeWidenedWithAlphas(BYTE* row, const jint* pixels, LONG count, const BYTE* alphas) {
    ULONG* words = wordsOf(row);
    LONG even = count & ~1;
    for (LONG i = 0; i < even; i += 2)
        storeWidened(words + i, pairOf(word(pixels[i]), word(pixels[i + 1])),
                     pairOf(alphas[i], alphas[i + 1]));
    if (even == count) return;
    ULONG last[2];
    storeWidened(last, word(pixels[even]) & 0xFFFF, alphas[even]);
    words[even] = last[0];
}

// As narrowGreen does, with the components in bytes of their own.
static void storeNarrowed(ULONG* words, ULONG pair, ULONG alphas) {
    ULONG green = pair & 0x07E007E0;
    green = ((green << 1) - (green >> 5)) << 1 & 0x1F001F00;
    storePair(words, alphas << 8 | (pair >> 11 & fives), green | (pair & fives));
}

void storeNarrowedWithAlpha(BYTE* row, const jint* pixels, LONG count, BYTE alpha) {
    ULONG* words = wordsOf(row);
    ULONG alphas = pairOf(alpha, alpha);
    LONG even = count & ~1;
    for (LONG i = 0; i < even; i += 2)
        storeNarrowed(words + i, pairOf(word(pixels[i]), word(pixels[i + 1])), alphas);
    if (even == count) return;
    ULONG last[2];
    storeNarrowed(last, word(pixels[even]) & 0xFFFF, alphas);
    words[even] = last[0];
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
