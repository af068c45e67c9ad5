#pragma once
// Sounds: each plays sound files in memory, as often as is asked for, while its caller goes on.
//
// Any thread. Operations on one sound wait for each other, so that a stop finds a playback either
// not begun or well under way; Sound_Dispose has to be the last of them.

#include "bridge/error.h"
#include "bridge/handles.h"
#include "bridge/values.h"
#include "sound/formats.h"
#include "sound/player.h"

enum SoundState : LONG {
    soundUnused = 0, // never played, or disposed of
    soundIdle = 1,   // a playback has ended, or could not begin; one below it may still sound
    soundPlaying = 2,
};

struct SoundRecord {
    LONG state;       // a SoundState
    LONG dataLength;  // of the file that was played last, bytes
    const BYTE* data; // that file, while Sound_Play runs
    LONG position;    // 0
    SoundSamples samples;
    SoundPlayer* player; // the last one; never null
    CRITICAL_SECTION operation;
};
ASSERT_OFFSET(SoundRecord, state, 0)
ASSERT_OFFSET(SoundRecord, dataLength, 4)
ASSERT_OFFSET(SoundRecord, data, 8)
ASSERT_OFFSET(SoundRecord, position, 12)
ASSERT_OFFSET(SoundRecord, samples, 16)
ASSERT_OFFSET(SoundRecord, player, 40)

// Null and errorOutOfMemory without memory for the record, errorFailed without a player.
SoundRecord* Sound_New(ErrorRecord* error);

// Plays a whole sound file of the given length: loops + 1 times, or for ever when loops is -1.
// Returns when playing has begun; the file is not needed any more then. A sound that plays already
// goes on, and the new one sounds on top of it. Errors: errorFailed for anything that cannot be
// played, and for a file that is longer than its bytes.
void Sound_Play(SoundRecord* sound, OfAnyLength<ByteArguments> file, LONG length, LONG loops,
                ErrorRecord* error);

// Ends all that plays and returns when it has ended. Null is allowed.
void Sound_Stop(OrNone<SoundRecord> sound, ErrorRecord* error);

// Stops, and frees the record. Null is allowed.
void Sound_Dispose(OrNone<SoundRecord> sound, ErrorRecord* error);

// -1: there is none, sounds are played whole.
LONG Sound_GetPreferredChunkSize(OrNone<SoundRecord> sound, ErrorRecord* error);
