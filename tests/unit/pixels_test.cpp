// Rows of pixels from one format to another, of every value and length, between memory that nobody
// may touch: each pixel becomes what its definition in plain arithmetic says.

#include "graphics/blending.h"
#include "guarded_bytes.h"
#include "image/conversion.h"
#include <gtest/gtest.h>
#include <vector>

namespace {

constexpr LONG longest = 70;
constexpr BYTE oneAlpha = 0xA5;

struct Row {
    BYTE* target;
    const BYTE* source;
    const BYTE* alphas;
    LONG count;
};

struct Conversion {
    const char* name;
    LONG targetBits, sourceBits; // of a pixel, or of what counts as one
    void (*convert)(const Row&);
    void (*define)(const Row&, LONG index); // of one pixel
};

jint colorAt(const Row& row, LONG index) {
    return reinterpret_cast<const jint*>(row.source)[index];
}
WORD& halfAt(const Row& row, LONG index) { return reinterpret_cast<WORD*>(row.target)[index]; }
DWORD& wordAt(const Row& row, LONG index) { return reinterpret_cast<DWORD*>(row.target)[index]; }

int red(jint pixel) { return pixel >> 11 & 31; }
int green(jint pixel) { return pixel >> 5 & 63; }
int blue(jint pixel) { return pixel & 31; }

DWORD argb(int alpha, int red, int green, int blue) {
    return static_cast<DWORD>(alpha) << 24 | red << 16 | green << 8 | blue;
}

int blended(DWORD target, DWORD source, int shift) {
    int old = target >> shift & 0xFF, added = source >> shift & 0xFF;
    return old + static_cast<int>(source >> 24) * (added - old) / 255;
}

const jint* colorsOf(const Row& row) { return reinterpret_cast<const jint*>(row.source); }
jint* targetOf(const Row& row) { return reinterpret_cast<jint*>(row.target); }

DWORD trueColorAt(const Row& row, LONG index) {
    const BYTE* pixel = row.source + 3 * index;
    return argb(0, pixel[2], pixel[1], pixel[0]);
}

void defineIndexPairs(const Row& row, LONG index) {
    for (int pixel = 0; pixel < 4; ++pixel) {
        int color = row.source[index] >> (6 - 2 * pixel) & 3;
        BYTE& two = row.target[2 * index + pixel / 2];
        two = static_cast<BYTE>(pixel % 2 ? two | color : color << 4);
    }
}

const Conversion conversions[] = {
    {"high color", 16, 32,
     [](const Row& row) { storeHighColor(row.target, colorsOf(row), row.count); },
     [](const Row& row, LONG i) {
         jint pixel = colorAt(row, i);
         halfAt(row, i) =
             static_cast<WORD>(red(pixel) << 10 | green(pixel) * 31 / 63 << 5 | blue(pixel));
     }},
    {"true color", 24, 32,
     [](const Row& row) { storeTrueColor(row.target, colorsOf(row), row.count); },
     [](const Row& row, LONG i) { memcpy(row.target + 3 * i, row.source + 4 * i, 3); }},
    {"one alpha", 32, 32,
     [](const Row& row) { storeWithAlpha(row.target, colorsOf(row), row.count, oneAlpha); },
     [](const Row& row, LONG i) {
         wordAt(row, i) = (colorAt(row, i) & 0xFFFFFF) | DWORD(oneAlpha) << 24;
     }},
    {"alphas", 32, 32,
     [](const Row& row) { storeWithAlphas(row.target, colorsOf(row), row.count, row.alphas); },
     [](const Row& row, LONG i) {
         wordAt(row, i) = (colorAt(row, i) & 0xFFFFFF) | DWORD(row.alphas[i]) << 24;
     }},
    {"widened, alphas", 32, 32,
     [](const Row& row) {
         storeWidenedWithAlphas(row.target, colorsOf(row), row.count, row.alphas);
     },
     [](const Row& row, LONG i) {
         jint pixel = colorAt(row, i);
         wordAt(row, i) = argb(row.alphas[i], red(pixel) * 255 / 31, green(pixel) * 255 / 63,
                               blue(pixel) * 255 / 31);
     }},
    {"narrowed, one alpha", 32, 32,
     [](const Row& row) { storeNarrowedWithAlpha(row.target, colorsOf(row), row.count, oneAlpha); },
     [](const Row& row, LONG i) {
         jint pixel = colorAt(row, i);
         wordAt(row, i) = argb(oneAlpha, red(pixel), green(pixel) * 31 / 63, blue(pixel));
     }},
    {"pairs of indices", 16, 8,
     [](const Row& row) { storeIndexPairs(row.target, row.source, row.count); }, defineIndexPairs},
    {"from high color", 32, 16,
     [](const Row& row) { loadHighColor(targetOf(row), row.source, row.count); },
     [](const Row& row, LONG i) {
         int pixel = reinterpret_cast<const WORD*>(row.source)[i];
         wordAt(row, i) = (pixel & 0x7C00) << 1 | (pixel >> 5 & 31) * 63 / 31 << 5 | (pixel & 31);
     }},
    {"from true color", 32, 24,
     [](const Row& row) { loadTrueColor(targetOf(row), row.source, row.count); },
     [](const Row& row, LONG i) { wordAt(row, i) = trueColorAt(row, i); }},
    {"from true color, opaque", 32, 24,
     [](const Row& row) { loadOpaqueColor(targetOf(row), row.source, 0, row.count); },
     [](const Row& row, LONG i) { wordAt(row, i) = 0xFF000000 | trueColorAt(row, i); }},
    {"blended", 32, 32,
     [](const Row& row) {
         blendRow(reinterpret_cast<DWORD*>(row.target), reinterpret_cast<const DWORD*>(row.source),
                  row.count);
     },
     [](const Row& row, LONG i) {
         DWORD source = colorAt(row, i), target = wordAt(row, i);
         wordAt(row, i) = (target & 0xFF000000) | blended(target, source, 16) << 16 |
                          blended(target, source, 8) << 8 | blended(target, source, 0);
     }},
};

// Rows of memory are as long as what the pixels take.
constexpr LONG bytesOf(LONG bits, LONG count) { return (bits * count + 7) / 8; }
constexpr LONG wholeWords(LONG bytes) { return (bytes + 3) / 4 * 4; }

// Bytes without a pattern; the first 16 bits of each word take every value in turn.
std::vector<BYTE> anything(LONG bytes, DWORD random) {
    std::vector<BYTE> all(static_cast<size_t>(wholeWords(bytes)));
    auto* words = reinterpret_cast<DWORD*>(all.data());
    for (size_t i = 0; i < all.size() / 4; ++i) {
        random = random * 1664525 + 1013904223;
        words[i] = (random & 0xFFFF0000) | (i & 0xFFFF);
    }
    return all;
}

struct Memories {
    explicit Memories(LONG count)
        : target(wholeWords(4 * count)), source(wholeWords(4 * count)), alphas(wholeWords(count)) {}
    GuardedBytes target, source, alphas;
};

// Lies at the end of what may be touched, or at its start.
BYTE* place(GuardedBytes& memory, const std::vector<BYTE>& bytes, bool atEnd) {
    return atEnd ? memory.copyToEnd(bytes.data(), bytes.size())
                 : memory.copyToStart(bytes.data(), bytes.size());
}

void expectDefined(const Conversion& conversion, Memories& memories, LONG count, bool atEnd) {
    LONG targetBytes = bytesOf(conversion.targetBits, count);
    LONG sourceBytes = bytesOf(conversion.sourceBits, count);
    std::vector<BYTE> before = anything(targetBytes, 1), source = anything(sourceBytes, 2);
    std::vector<BYTE> alphas = anything(count, 3), expected = before;
    alphas.resize(static_cast<size_t>(count));
    Row row = {expected.data(), source.data(), alphas.data(), count};
    for (LONG i = 0; i < count; ++i) conversion.define(row, i);
    row = {place(memories.target, before, atEnd), place(memories.source, source, atEnd),
           place(memories.alphas, alphas, atEnd), count};
    conversion.convert(row);
    ASSERT_EQ(std::vector<BYTE>(row.target, row.target + expected.size()), expected)
        << conversion.name << ", " << count << " pixels";
}

} // namespace

TEST(Pixels, of_rows_of_every_length_become_what_is_defined) {
    Memories memories(longest);
    for (const Conversion& conversion : conversions)
        for (LONG count = 0; count <= longest; ++count)
            for (bool atEnd : {false, true}) expectDefined(conversion, memories, count, atEnd);
}

TEST(Pixels, of_every_value_become_what_is_defined) {
    constexpr LONG values = 0x10000;
    Memories memories(values);
    for (const Conversion& conversion : conversions)
        expectDefined(conversion, memories, values, true);
}

TEST(Pixels, are_read_from_any_place_of_a_row) {
    Memories memories(longest);
    std::vector<BYTE> bytes = anything(3 * longest, 4);
    const BYTE* source = place(memories.source, bytes, true);
    for (LONG first = 0; first < longest; ++first) {
        std::vector<jint> pixels(static_cast<size_t>(longest - first));
        loadOpaqueColor(pixels.data(), source, first, longest - first);
        for (LONG i = first; i < longest; ++i)
            ASSERT_EQ(static_cast<DWORD>(pixels[i - first]),
                      argb(0xFF, source[3 * i + 2], source[3 * i + 1], source[3 * i]))
                << "pixel " << i << " from " << first;
    }
}
