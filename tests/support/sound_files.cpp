#include "sound_files.h"
#include <cstdio>
#include <gtest/gtest.h>

FileBytes operator+(FileBytes first, const FileBytes& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

FileBytes bytesOf(const std::string& text) { return {text.begin(), text.end()}; }

FileBytes littleWord(uint16_t value) {
    return {static_cast<uint8_t>(value), static_cast<uint8_t>(value >> 8)};
}

FileBytes littleLong(uint32_t value) {
    return littleWord(static_cast<uint16_t>(value)) +
           littleWord(static_cast<uint16_t>(value >> 16));
}

FileBytes bigLong(uint32_t value) {
    FileBytes bytes = littleLong(value);
    return {bytes.rbegin(), bytes.rend()};
}

FileBytes countingBytes(size_t count, uint8_t first) {
    constexpr size_t period = 251; // a prime: no loop or block falls into step with it
    FileBytes bytes(count);
    for (size_t i = 0; i < count; ++i) bytes[i] = static_cast<uint8_t>((first + i) % period);
    return bytes;
}

FileBytes waveChunk(const std::string& id, const FileBytes& body) {
    return bytesOf(id) + littleLong(body.size()) + body;
}

FileBytes waveFormat(uint16_t tag, uint16_t channels, uint32_t rate, uint16_t bits) {
    auto block = static_cast<uint16_t>(channels * bits / 8);
    return waveChunk("fmt ", littleWord(tag) + littleWord(channels) + littleLong(rate) +
                                 littleLong(rate * block) + littleWord(block) + littleWord(bits));
}

FileBytes waveFile(const FileBytes& chunks) {
    FileBytes body = bytesOf("WAVE") + chunks;
    return bytesOf("RIFF") + littleLong(body.size()) + body;
}

FileBytes waveFile(const FileBytes& format, const FileBytes& samples) {
    return waveFile(format + waveChunk("data", samples));
}

FileBytes sndFile(uint32_t encoding, uint32_t rate, uint32_t channels, const FileBytes& samples) {
    constexpr uint32_t offset = 28;
    return bytesOf(".snd") + bigLong(offset) + bigLong(samples.size()) + bigLong(encoding) +
           bigLong(rate) + bigLong(channels) + bytesOf("note") + samples;
}

FileBytes readFile(const std::string& path) {
    FileBytes bytes;
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (!file) return bytes;
    uint8_t buffer[4096];
    while (size_t count = std::fread(buffer, 1, sizeof(buffer), file))
        bytes.insert(bytes.end(), buffer, buffer + count);
    std::fclose(file);
    return bytes;
}

FileBytes collectedFile(const std::string& name) {
    FileBytes bytes = readFile("Z:" SOUND_COLLECTION "/" + name);
    if (bytes.empty())
        ADD_FAILURE() << SOUND_COLLECTION "/" << name << " is not there: ./zemvolt setup";
    return bytes;
}
