#include "sound/formats.h"
#include <mmreg.h>
#include <string.h>

static constexpr LONG idSize = 4;

static bool hasId(const BYTE* at, const char* id) { return memcmp(at, id, idSize) == 0; }

static WORD littleWord(const BYTE* at) { return static_cast<WORD>(at[0] | at[1] << 8); }

static LONG littleLong(const BYTE* at) {
    return static_cast<LONG>(littleWord(at) | static_cast<DWORD>(littleWord(at + 2)) << 16);
}

static LONG bigLong(const BYTE* at) {
    return static_cast<LONG>(static_cast<DWORD>(at[0]) << 24 | at[1] << 16 | at[2] << 8 | at[3]);
}

// RIFF WAVE: chunks of an id, the size of the body, and the body. All numbers are little-endian.

static constexpr LONG riffHeader = 8; // "RIFF" and the size of all that follows
static constexpr LONG firstChunk = riffHeader + idSize;
static constexpr LONG chunkHeader = 8;

static bool isWave(const BYTE* file, LONG length) {
    return length > firstChunk && hasId(file, "RIFF") && hasId(file + riffHeader, "WAVE") &&
           littleLong(file + idSize) == length - riffHeader;
}

// The body of the first chunk with the id, or null.
// Quirk: a file that pads odd chunks is out of step behind the first, as the padding is taken for
// the next chunk's first byte. Pinned by WaveTest.loses_step_behind_an_odd_chunk_that_is_padded.
static const BYTE* findChunk(const BYTE* file, LONG length, const char* id, LONG* size) {
    LONG body = firstChunk + chunkHeader;
    while (length >= body) {
        const BYTE* chunk = file + body - chunkHeader;
        *size = littleLong(chunk + idSize);
        if (*size < 0 || *size > length - body) return nullptr;
        if (hasId(chunk, id)) return file + body;
        if (*size > length - body - chunkHeader) return nullptr;
        body += *size + chunkHeader;
    }
    return nullptr;
}

static SoundStatus parseWave(const BYTE* file, LONG length, SoundSamples* samples) {
    constexpr LONG leastFormat = sizeof(PCMWAVEFORMAT);
    LONG formatSize;
    const BYTE* format = findChunk(file, length, "fmt ", &formatSize);
    // What is read has to be there, whatever the chunk says of its size.
    if (!format || file + length - format < leastFormat) return soundUnsupported;
    LONG dataSize;
    const BYTE* data = findChunk(file, length, "data", &dataSize);
    if (!data) return soundUnsupported;

    LONG encoding;
    switch (littleWord(format + offsetof(WAVEFORMAT, wFormatTag))) {
    case WAVE_FORMAT_PCM:
        encoding = encodingPcm;
        break;
    case WAVE_FORMAT_MULAW:
        encoding = encodingMuLaw;
        break;
    case WAVE_FORMAT_ALAW:
        encoding = encodingALaw;
        break;
    default:
        return soundUnsupported;
    }
    *samples = {encoding,
                littleWord(format + offsetof(WAVEFORMAT, nChannels)),
                littleLong(format + offsetof(WAVEFORMAT, nSamplesPerSec)),
                littleWord(format + offsetof(PCMWAVEFORMAT, wBitsPerSample)),
                dataSize,
                data};
    return soundDone;
}

// ".snd": a header of big-endian numbers, an annotation, and the samples.

static constexpr LONG sndOffsetAt = 4;
static constexpr LONG sndSizeAt = 8;
static constexpr LONG sndEncodingAt = 12;
static constexpr LONG sndRateAt = 16;
static constexpr LONG sndChannelsAt = 20;
static constexpr LONG sndHeader = 24;
static constexpr LONG sndLeastAnnotation = 4;

static bool isSnd(const BYTE* file, LONG length) {
    if (length <= sndHeader + sndLeastAnnotation || !hasId(file, ".snd")) return false;
    LONG offset = bigLong(file + sndOffsetAt);
    LONG size = bigLong(file + sndSizeAt);
    return offset >= 0 && size >= 0 && size == length - offset;
}

static SoundStatus parseSnd(const BYTE* file, SoundSamples* samples) {
    static constexpr struct {
        LONG encoding;
        LONG bits;
    } kinds[] = {{encodingMuLaw, 8},
                 {encodingPcm, 8},
                 {encodingPcm, 16},
                 {encodingPcm, 24},
                 {encodingPcm, 32}};
    constexpr DWORD kindCount = sizeof(kinds) / sizeof(kinds[0]);
    DWORD kind = bigLong(file + sndEncodingAt) - 1; // the first one is 1
    if (kind >= kindCount) return soundUnsupported;
    *samples = {kinds[kind].encoding,      bigLong(file + sndChannelsAt),
                bigLong(file + sndRateAt), kinds[kind].bits,
                bigLong(file + sndSizeAt), file + bigLong(file + sndOffsetAt)};
    return soundDone;
}

SoundStatus Sound_Parse(const BYTE* file, LONG length, SoundSamples* samples) {
    if (isWave(file, length)) return parseWave(file, length, samples);
    if (isSnd(file, length)) return parseSnd(file, samples);
    return soundUnsupported;
}
