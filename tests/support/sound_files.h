#pragma once
// Sound files, made up and of other people's.

#include <cstdint>
#include <string>
#include <vector>

using FileBytes = std::vector<uint8_t>;

FileBytes operator+(FileBytes first, const FileBytes& second);

FileBytes bytesOf(const std::string& text);
FileBytes littleWord(uint16_t value);
FileBytes littleLong(uint32_t value);
FileBytes bigLong(uint32_t value);

// Counts up from the first value, so that every byte of up to 251 tells its place.
FileBytes countingBytes(size_t count, uint8_t first = 1);

FileBytes waveChunk(const std::string& id, const FileBytes& body);
FileBytes waveFormat(uint16_t tag, uint16_t channels, uint32_t rate, uint16_t bits);

// A whole RIFF WAVE file of these chunks.
FileBytes waveFile(const FileBytes& chunks);
FileBytes waveFile(const FileBytes& format, const FileBytes& samples);

// A whole ".snd" file with an annotation of 4 bytes.
FileBytes sndFile(uint32_t encoding, uint32_t rate, uint32_t channels, const FileBytes& samples);

// A file of the collection that setting up unpacks; fails the test when it is not there.
FileBytes collectedFile(const std::string& name);

// Any file, by its path as the device sees it; empty when it cannot be read.
FileBytes readFile(const std::string& path);
