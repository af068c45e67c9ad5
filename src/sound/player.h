#pragma once
// Plays the samples of one sound through the waveform output. Each playback has a thread of its
// own, which owns the samples and frees them in the end, but for those that an output that refuses
// to stop goes on reading.

#include "sound/formats.h"
#include <mmsystem.h>

struct SoundRecord;

// One playback at a time; a sound that is played on top of itself has more than one player.
struct SoundPlayer {
    HANDLE thread; // of the last playback, or null
    HANDLE doneEvent;
    HANDLE startedEvent;
    HANDLE stoppedEvent;
    CRITICAL_SECTION lock; // of the device, and of what the sound tells of its last playback
    WAVEFORMATEX format;
    HWAVEOUT device; // open, or null
    WAVEHDR header;
    BOOL isKeptByOutput;  // which was not closed and may tell it of its end, so that it never ends
    SoundPlayer* earlier; // one that played already when this one was made, or null
};

// A player that plays nothing yet. soundNoMemory or soundSystemFailed leave nothing behind.
SoundStatus Player_New(SoundPlayer** player);

// No playback may be running. A player that an output keeps is left to it.
void Player_Dispose(SoundPlayer* player);

// Whether it may play: its last playback has ended, to the last thing that its thread does, and
// no output keeps it.
bool Player_IsIdle(const SoundPlayer* player);

// Starts to play the sound's samples with its current player, which has to be idle; returns when
// they are queued. With success the samples, a block of their own, belong to the playback; a queue
// that refuses them then is told by the thread's exit code alone. rounds: how often, from 1.
SoundStatus Player_Start(SoundRecord* sound, DWORD rounds);

// Returns when the playback, if any, has closed the device, freed its samples and ended its thread;
// also when the device refuses to stop or to close.
void Player_Stop(SoundPlayer* player);
