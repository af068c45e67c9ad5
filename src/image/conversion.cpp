#include "image/conversion.h"
#include "bridge/lanes.h"

static constexpr ULONG colorBits = 0x00FFFFFF;
static constexpr int alphaShift = 24;

// Aligned as the words of a row are.
static ULONG* wordsOf(BYTE* row) { return reinterpret_cast<ULONG*>(row); }
static const ULONG* wordsOf(const BYTE* row) { return reinterpret_cast<const ULONG*>(row); }
static ULONG word(jint pixel) { return static_cast<ULONG>(pixel); }

// The rules hold for single numbers and, where wide is, for vectors of them.

// The upper 16 of 32 bits.
static constexpr ULONG upperProduct(ULONG number, ULONG factor) { return number * factor >> 16; }
#ifdef __SSE2__
using lanes::upperProduct;
#endif

// Two 5-5-5 pixels of a word to 5-6-5. Green becomes green * 63 / 31, truncated: twice the value,
// and one more for the highest.
static ULONG widenGreen(ULONG pair) {
    ULONG one = ((pair & 0x03E003E0) + 0x00200020) >> 5 & 0x00200020;
    return (pair << 1 & 0xFFC0FFC0) | one | (pair & 0x001F001F);
}

// The six bits of green, as they lie in a 5-6-5 pixel, become green * 31 / 63, truncated, which is
// green * 63 >> 7 for each of the 64 values. They lie in a 5-5-5 pixel then.
template <class Number>
static constexpr Number narrowGreen(Number greenInPlace) {
    return upperProduct(greenInPlace, 63 << 9) & 0x03E0;
}

// Two 5-6-5 pixels of a word to 5-5-5, without multiplications.
static constexpr ULONG narrowPair(ULONG pair) {
    ULONG green = pair & 0x07E007E0;
    green = ((green << 1) - (green >> 5)) >> 2 & 0x03E003E0;
    return (pair >> 1 & 0x7C007C00) | green | (pair & 0x001F001F);
}

// The lower half of a 32-bit pixel whose green was narrowed; red comes into the upper one.
static ULONG narrowGreenAndBlue(ULONG pixel) {
    return narrowGreen(pixel & 0x07E0) << 3 | (pixel & 0x1F);
}

// Values of 5 and 6 bits to 8: value * 255 / 31 and value * 255 / 63, truncated, without a
// division. Red and green are taken as they lie in a 5-6-5 pixel.
static constexpr ULONG redTo8(ULONG redInPlace) { return upperProduct(redInPlace, 2106 << 3) >> 6; }
template <class Number>
static constexpr Number greenTo8(Number greenInPlace) {
    return upperProduct(greenInPlace, 8290);
}
template <class Number>
static constexpr Number blueTo8(Number blue) {
    return blue * 2106 >> 8;
}

static constexpr bool isExact() {
    for (ULONG value = 0; value < 32; ++value)
        if (redTo8(value << 11) != value * 255 / 31 || blueTo8(value) != value * 255 / 31)
            return false;
    for (ULONG value = 0; value < 64; ++value)
        if (greenTo8(value << 5) != value * 255 / 63 ||
            narrowGreen(value << 5) != value * 31 / 63 << 5 ||
            narrowPair(value << 5) != narrowGreen(value << 5))
            return false;
    return true;
}
static_assert(isExact());

static ULONG greenAndBlueTo8(ULONG pixel) {
    return greenTo8(pixel & 0x07E0) << 8 | blueTo8(pixel & 0x1F);
}

// Two bytes of four 2-bit indices, at bits 0 and 16, to a word of eight 4-bit indices.
template <class Word>
static Word spreadPairs(Word bytes) {
    Word nibbles = (bytes >> 4 & 0x000F000F) | (bytes & 0x000F000F) << 8;
    return (nibbles | nibbles << 2) & 0x33333333;
}

#ifdef __SSE2__
// Whole rows at once, but those that are shorter than a block: false for them.
namespace wide {

using namespace lanes;

static Halves lowerHalves(const jint* pixels) {
    return lanes::lowerHalves(load<Words>(pixels), load<Words>(pixels + 4));
}

// Blue and red, and green and alpha, are by turns a pixel's bytes.
static void storeMerged(BYTE* place, Halves blueAndRed, Halves greenAndAlpha) {
    auto first = reinterpret_cast<Bytes>(blueAndRed),
         second = reinterpret_cast<Bytes>(greenAndAlpha);
    store(place, mergeLower(first, second));
    store(place + sizeof(Bytes), mergeUpper(first, second));
}

static Halves redToUpper8(Halves pixel) { return (pixel >> 11) * 2106 & 0xFF00; }

static bool storeHighColor(BYTE* row, const jint* pixels, LONG count) {
    return cover<8>(count, [=](LONG i) {
        Halves pixel = lowerHalves(pixels + i);
        store(row + 2 * i, (pixel >> 1 & 0x7C00) | narrowGreen(pixel & 0x07E0) | (pixel & 0x1F));
    });
}

static constexpr ULONGLONG firstOfTwo = colorBits;

// Two pixels take 6 bytes of 8. What is beyond them is written over, at last by the last pixel.
static LONG storeTrueColor(BYTE* row, const jint* pixels, LONG count) {
    return cover<4>(count - 1, [=](LONG i) {
        auto words = load<Doubles>(pixels + i);
        Doubles packed = (words & firstOfTwo) | (words >> 8 & ~firstOfTwo);
        store<Double>(row + 3 * i, packed[0]);
        store<Double>(row + 3 * i + 6, packed[1]);
    });
}

// The bits of above are set. The last pixel is not read for itself.
static LONG loadTrueColor(jint* pixels, const BYTE* row, LONG count, ULONG above) {
    return cover<4>(count - 1, [=](LONG i) {
        Doubles packed = {load<Double>(row + 3 * i), load<Double>(row + 3 * i + 6)};
        Doubles words = (packed & firstOfTwo) | (packed << 8 & firstOfTwo << 32);
        store(pixels + i, reinterpret_cast<Words>(words) | above);
    });
}

static bool storeWidenedWithAlphas(BYTE* row, const jint* pixels, LONG count, const BYTE* alphas) {
    return cover<8>(count, [=](LONG i) {
        Halves pixel = lowerHalves(pixels + i);
        Doubles eightAlphas = {load<Double>(alphas + i)};
        auto alphaAbove =
            reinterpret_cast<Halves>(mergeLower(Bytes{}, reinterpret_cast<Bytes>(eightAlphas)));
        storeMerged(row + 4 * i, blueTo8(pixel & 0x1F) | redToUpper8(pixel),
                    greenTo8(pixel & 0x07E0) | alphaAbove);
    });
}

static bool storeNarrowedWithAlpha(BYTE* row, const jint* pixels, LONG count, BYTE alpha) {
    auto alphaAbove = static_cast<USHORT>(alpha << 8);
    return cover<8>(count, [=](LONG i) {
        Halves pixel = lowerHalves(pixels + i);
        Halves green = upperProduct(pixel & 0x07E0, 63 << 4);
        storeMerged(row + 4 * i, (pixel & 0x1F) | (pixel >> 3 & 0x1F00), green | alphaAbove);
    });
}

static bool storeIndexPairs(BYTE* row, const BYTE* data, LONG bytes) {
    return cover<16>(bytes, [=](LONG i) {
        auto sixteen = load<Bytes>(data + i);
        auto lower = reinterpret_cast<Words>(mergeLower(sixteen, Bytes{}));
        auto upper = reinterpret_cast<Words>(mergeUpper(sixteen, Bytes{}));
        store(row + 2 * i, spreadPairs(lower));
        store(row + 2 * i + sizeof(Words), spreadPairs(upper));
    });
}

} // namespace wide
#else
namespace wide {

static constexpr auto nothing = [](auto...) { return 0; };
static constexpr auto storeHighColor = nothing;
static constexpr auto storeTrueColor = nothing;
static constexpr auto loadTrueColor = nothing;
static constexpr auto storeWidenedWithAlphas = nothing;
static constexpr auto storeNarrowedWithAlpha = nothing;
static constexpr auto storeIndexPairs = nothing;

} // namespace wide
#endif

void storeHighColor(BYTE* row, const jint* pixels, LONG count) {
    if (wide::storeHighColor(row, pixels, count)) return;
    ULONG* words = wordsOf(row);
    LONG pairs = count >> 1;
    for (LONG i = 0; i < pairs; ++i)
        words[i] = narrowPair((word(pixels[2 * i]) & 0xFFFF) | word(pixels[2 * i + 1]) << 16);
    if (count & 1)
        *reinterpret_cast<WORD*>(words + pairs) =
            static_cast<WORD>(narrowPair(word(pixels[2 * pairs])));
}

static void storeTrueColorPixel(BYTE* pixel, ULONG color) {
    pixel[0] = static_cast<BYTE>(color);
    pixel[1] = static_cast<BYTE>(color >> 8);
    pixel[2] = static_cast<BYTE>(color >> 16);
}

// Four pixels fill three words.
void storeTrueColor(BYTE* row, const jint* pixels, LONG count) {
    LONG done = wide::storeTrueColor(row, pixels, count);
    row += 3 * done;
    pixels += done;
    count -= done;
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

void storeWidenedWithAlphas(BYTE* row, const jint* pixels, LONG count, const BYTE* alphas) {
    if (wide::storeWidenedWithAlphas(row, pixels, count, alphas)) return;
    ULONG* words = wordsOf(row);
    for (LONG i = 0; i < count; ++i) {
        ULONG pixel = word(pixels[i]) & 0xFFFF;
        words[i] = static_cast<ULONG>(alphas[i]) << alphaShift | redTo8(pixel & 0xF800) << 16 |
                   greenAndBlueTo8(pixel);
    }
}

void storeNarrowedWithAlpha(BYTE* row, const jint* pixels, LONG count, BYTE alpha) {
    if (wide::storeNarrowedWithAlpha(row, pixels, count, alpha)) return;
    ULONG* words = wordsOf(row);
    ULONG highest = static_cast<ULONG>(alpha) << alphaShift;
    for (LONG i = 0; i < count; ++i) {
        ULONG pixel = word(pixels[i]);
        words[i] = highest | (pixel << 5 & 0x1F0000) | narrowGreenAndBlue(pixel);
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

void storeIndexPairs(BYTE* row, const BYTE* data, LONG bytes) {
    if (wide::storeIndexPairs(row, data, bytes)) return;
    ULONG* words = wordsOf(row);
    LONG pairs = bytes >> 1;
    for (LONG i = 0; i < pairs; ++i)
        words[i] = spreadPairs(data[2 * i] | static_cast<ULONG>(data[2 * i + 1]) << 16);
    if (bytes & 1)
        *reinterpret_cast<WORD*>(words + pairs) =
            static_cast<WORD>(spreadPairs<ULONG>(data[2 * pairs]));
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
    LONG done = wide::loadTrueColor(pixels, pixel, count, word(finish(0)));
    pixels += done;
    pixel += 3 * done;
    first += done;
    count -= done;
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
