#pragma once
// What the person who starts the device says of its sound, in environment variables.

#include <string>
#include <windows.h>

struct SoundOptions {
    DWORD speed = 1;     // ZEMVOLT_SOUND_SPEED: how many times faster than real time
    std::wstring file;   // ZEMVOLT_SOUND_FILE: where to write what is played; empty for nowhere
    bool onDesk = false; // ZEMVOLT_SOUND_OUTPUT=desk: it is heard, where the desk has an output
};

// Read once. Any thread.
const SoundOptions& soundOptions();
