#pragma once
// Images written for tests, byte by byte.

#include <cstdint>
#include <vector>

struct Png {
    uint32_t width, height;
    uint8_t bits;                      // of a component or an index
    uint8_t colorType;                 // 0 grey, 2 red-green-blue, 3 indexed, 4 and 6 with alpha
    std::vector<uint8_t> rows;         // as the format has them, without filter bytes
    std::vector<uint8_t> palette;      // red, green, blue for each entry
    std::vector<uint8_t> transparency; // of the palette's entries, or the transparent colour
};

// The file's contents; nothing is compressed.
std::vector<uint8_t> encode(const Png& png);
