#pragma once
// Sound files in memory: RIFF WAVE and ".snd". Samples are neither decoded nor converted: they are
// found, and it is told how a device has to take them. Any thread.

#include "bridge/layout.h"
#include "ce.h"

// How operations on sounds end; a player thread ends with it as its exit code.
enum SoundStatus : LONG {
    soundDone = 0,
    soundUnsupported = 2, // no sound file, or one that cannot be played
    soundNoMemory = 3,
    soundSystemFailed = 7,
};

enum SoundEncoding : LONG { encodingPcm = 1, encodingMuLaw = 2, encodingALaw = 3 };

struct SoundSamples {
    LONG encoding; // a SoundEncoding
    LONG channels;
    LONG sampleRate; // frames per second
    LONG bitsPerSample;
    LONG sampleDataSize; // bytes
    const BYTE* sampleData;
};
ASSERT_OFFSET(SoundSamples, sampleDataSize, 16)
ASSERT_OFFSET(SoundSamples, sampleData, 20)

// Finds the samples in a file of length bytes, of which they stay a part. A file must be exactly as
// long as its header says, and no size in it may be negative or reach past its end: else
// soundUnsupported, and the samples are left as they were.
SoundStatus Sound_Parse(const BYTE* file, LONG length, SoundSamples* samples);
