#include "png.h"
#include <algorithm>

using Contents = std::vector<uint8_t>;

static void put(Contents* out, uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8)
        out->push_back(static_cast<uint8_t>(value >> shift));
}

static uint32_t checksum(const uint8_t* bytes, size_t count) {
    uint32_t sum = 0xFFFFFFFF;
    for (size_t i = 0; i < count; ++i) {
        sum ^= bytes[i];
        for (int bit = 0; bit < 8; ++bit) sum = sum >> 1 ^ (sum & 1 ? 0xEDB88320 : 0);
    }
    return ~sum;
}

static void putChunk(Contents* out, const char* type, const Contents& data) {
    put(out, static_cast<uint32_t>(data.size()));
    size_t start = out->size();
    out->insert(out->end(), type, type + 4);
    out->insert(out->end(), data.begin(), data.end());
    put(out, checksum(&(*out)[start], out->size() - start));
}

// A stream of blocks that are stored as they are.
static Contents stored(const Contents& data) {
    constexpr size_t longest = 0xFFFF;
    Contents out = {0x78, 0x01};
    for (size_t start = 0; start < data.size(); start += longest) {
        size_t count = std::min(longest, data.size() - start);
        out.push_back(start + count == data.size());
        for (size_t word : {count, ~count}) {
            out.push_back(static_cast<uint8_t>(word));
            out.push_back(static_cast<uint8_t>(word >> 8));
        }
        out.insert(out.end(), data.begin() + start, data.begin() + start + count);
    }
    uint32_t low = 1, high = 0;
    for (uint8_t byte : data) {
        low = (low + byte) % 65521;
        high = (high + low) % 65521;
    }
    put(&out, high << 16 | low);
    return out;
}

Contents encode(const Png& png) {
    Contents header;
    put(&header, png.width);
    put(&header, png.height);
    for (uint8_t byte : {png.bits, png.colorType, uint8_t(0), uint8_t(0), uint8_t(0)})
        header.push_back(byte);
    Contents filtered;
    size_t length = png.rows.size() / png.height;
    for (uint32_t row = 0; row < png.height; ++row) {
        filtered.push_back(0);
        filtered.insert(filtered.end(), png.rows.begin() + row * length,
                        png.rows.begin() + (row + 1) * length);
    }
    Contents out = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    putChunk(&out, "IHDR", header);
    if (!png.palette.empty()) putChunk(&out, "PLTE", png.palette);
    if (!png.transparency.empty()) putChunk(&out, "tRNS", png.transparency);
    putChunk(&out, "IDAT", stored(filtered));
    putChunk(&out, "IEND", {});
    return out;
}
