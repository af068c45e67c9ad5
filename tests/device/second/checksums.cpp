#include "checksums.h"
#include "bridge/arithmetic.h"
#include "graphics/blending.h"
#include "image/conversion.h"
#include "sound/formats.h"

namespace {

constexpr LONG most = 256; // pixels of a row
constexpr int rounds = 16; // of each kind, each with a checksum of its own

// The same numbers each time.
uint32_t seed = 20261121;

uint32_t next() {
    seed = seed * 1664525U + 1013904223U;
    return seed ^ seed >> 15;
}

uint32_t sum;

void add(const void* place, uint32_t size) {
    const auto* bytes = static_cast<const BYTE*>(place);
    for (uint32_t i = 0; i < size; ++i) sum = (sum ^ bytes[i]) * 16777619U;
}

void addWord(uint32_t word) { add(&word, sizeof(word)); }

DWORD target[most];
DWORD source[most];
jint pixels[most];
uint32_t row[most];
BYTE alphas[most];

LONG fill() {
    for (LONG i = 0; i < most; ++i) {
        target[i] = next();
        source[i] = next();
        if (i % 5 == 0) source[i] |= 0xFF000000;
        if (i % 7 == 0) source[i] &= 0x00FFFFFF;
        pixels[i] = static_cast<jint>(next());
        row[i] = next();
        alphas[i] = static_cast<BYTE>(next());
    }
    return static_cast<LONG>(next() >> 16 & (most - 1));
}

void blend() {
    blendRow(target, source, fill());
    add(target, sizeof(target));
}

void addRow() { add(row, sizeof(row)); }

void storeRows() {
    LONG count = fill();
    auto* bytes = reinterpret_cast<BYTE*>(row);
    storeHighColor(bytes, pixels, count);
    addRow();
    storeTrueColor(bytes, pixels, count);
    addRow();
    storeWithAlpha(bytes, pixels, count, alphas[0]);
    addRow();
    storeWithAlphas(bytes, pixels, count, alphas);
    addRow();
    storeWidenedWithAlphas(bytes, pixels, count, alphas);
    addRow();
    storeNarrowedWithAlpha(bytes, pixels, count, alphas[1]);
    addRow();
    storeIndexPairs(bytes, alphas, count);
    addRow();
    fillTrueColor(bytes, count, pixels[0]);
    addRow();
}

void loadRows() {
    LONG count = fill();
    const auto* bytes = reinterpret_cast<const BYTE*>(row);
    loadHighColor(pixels, bytes, count);
    add(pixels, sizeof(pixels));
    loadTrueColor(pixels, bytes, count);
    add(pixels, sizeof(pixels));
    loadOpaqueColor(pixels, bytes, count & 7, count);
    add(pixels, sizeof(pixels));
}

union Bits {
    double number;
    uint32_t words[2];
};

// Of the size that sines and lengths have.
double number() {
    uint32_t exponent = 1020 + (next() >> 8 & 15);
    Bits bits;
    bits.words[0] = next();
    bits.words[1] = (next() & 0x800FFFFF) | exponent << 20;
    return bits.number;
}

void addNumber(double value) { add(&value, sizeof(value)); }

void calculate() {
    for (int i = 0; i < 256; ++i) {
        double a = number(), b = number();
        addNumber(a * b);
        addWord(static_cast<uint32_t>(static_cast<int32_t>(a * b)));
        addNumber(toDouble(static_cast<int32_t>(next())));
    }
}

void divide() {
    for (int i = 0; i < 512; ++i) {
        auto a = static_cast<int32_t>(next());
        int32_t b = static_cast<int32_t>(next()) >> (next() & 31) | 1;
        if (b == -1) b = 3;
        addWord(static_cast<uint32_t>(a / b));
        addWord(static_cast<uint32_t>(a % b));
    }
}

void put(BYTE* place, uint32_t value) {
    for (int i = 0; i < 4; ++i) place[i] = static_cast<BYTE>(value >> 8 * i);
}

// A file of 8-bit sound, of which a few bytes are spoilt.
LONG makeSound(BYTE* file) {
    constexpr LONG size = 64;
    static const char names[] = "RIFF....WAVEfmt ";
    static const BYTE format[] = {1, 0, 1, 0, 0x40, 0x1F, 0, 0, 0x40, 0x1F, 0, 0, 1, 0, 8, 0};
    for (LONG i = 0; i < size; ++i) file[i] = static_cast<BYTE>(next());
    for (int i = 0; i < 16; ++i) file[i] = static_cast<BYTE>(names[i]);
    put(file + 4, size - 8);
    put(file + 16, sizeof(format));
    for (uint32_t i = 0; i < sizeof(format); ++i) file[20 + i] = format[i];
    put(file + 36, 0x61746164); // "data"
    put(file + 40, size - 44);
    for (uint32_t spoilt = next() >> 20 & 3; spoilt; --spoilt)
        file[next() >> 8 & (size - 1)] = static_cast<BYTE>(next());
    return size;
}

void parse() {
    alignas(4) static BYTE file[64];
    for (int i = 0; i < 512; ++i) {
        SoundSamples samples = {};
        LONG size = makeSound(file);
        SoundStatus status = Sound_Parse(file, size, &samples);
        addWord(static_cast<uint32_t>(status));
        addWord(static_cast<uint32_t>(samples.encoding));
        addWord(static_cast<uint32_t>(samples.channels));
        addWord(static_cast<uint32_t>(samples.sampleRate));
        addWord(static_cast<uint32_t>(samples.bitsPerSample));
        addWord(static_cast<uint32_t>(samples.sampleDataSize));
        addWord(samples.sampleData ? static_cast<uint32_t>(samples.sampleData - file) : 0);
    }
}

} // namespace

void computeChecksums() {
    static const struct {
        const char* name;
        void (*compute)();
    } kinds[] = {{"blending", blend},    {"storing", storeRows}, {"loading", loadRows},
                 {"numbers", calculate}, {"division", divide},   {"sounds", parse}};
    for (const auto& kind : kinds)
        for (int i = 0; i < rounds; ++i) {
            sum = 2166136261U;
            kind.compute();
            writeChecksum(kind.name, sum);
        }
}
