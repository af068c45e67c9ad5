#include "sound/sound.h"
#include "bridge/lock.h"
#include "bridge/memory.h"
#include <string.h>

static constexpr LONG endless = -1;
static constexpr DWORD endlessRounds = 0x7FFFFFFF;
static constexpr LONG noPreferredSize = -1;

SoundRecord* Sound_New(ErrorRecord* error) {
    Block<SoundRecord> sound(allocate<SoundRecord>());
    if (!sound) {
        Error_SetCode(error, errorOutOfMemory);
        return nullptr;
    }
    if (Player_New(&sound->player) != soundDone) {
        Error_SetCode(error, errorFailed);
        return nullptr;
    }
    InitializeCriticalSection(&sound->operation);
    return sound.release();
}

// Players that were made for a sound on top of another one go when they have ended.
static void dropEndedPlayers(SoundPlayer* last) {
    SoundPlayer** link = &last->earlier;
    while (SoundPlayer* player = *link) {
        if (!Player_IsIdle(player)) {
            link = &player->earlier;
            continue;
        }
        *link = player->earlier;
        Player_Dispose(player);
    }
}

// Leaves the sound with a last player that is idle. A playback that runs keeps its own.
static SoundStatus chooseIdlePlayer(SoundRecord* sound) {
    dropEndedPlayers(sound->player);
    if (Player_IsIdle(sound->player)) return soundDone;
    SoundPlayer* player;
    SoundStatus status = Player_New(&player);
    if (status != soundDone) return status;
    player->earlier = sound->player;
    // Not while the other one tells its end.
    Lock lock(&player->earlier->lock);
    sound->player = player;
    return soundDone;
}

static SoundStatus parseFile(SoundRecord* sound, LONG length, LONG available) {
    if (length > available) return soundUnsupported;
    return Sound_Parse(sound->data, length, &sound->samples);
}

// The playback needs the samples longer than the file is there.
static SoundStatus copySamples(SoundSamples* samples) {
    auto* copy = static_cast<BYTE*>(allocateBytes(samples->sampleDataSize));
    if (copy) memcpy(copy, samples->sampleData, samples->sampleDataSize);
    samples->sampleData = copy;
    return copy ? soundDone : soundNoMemory;
}

static SoundStatus start(SoundRecord* sound, LONG loops) {
    SoundStatus status = copySamples(&sound->samples);
    if (status != soundDone) return status;
    // Any other number is taken as it comes, also one below nothing.
    status = Player_Start(sound, loops == endless ? endlessRounds : static_cast<DWORD>(loops) + 1);
    if (status == soundDone) return status;
    freeBlock(const_cast<BYTE*>(sound->samples.sampleData));
    sound->samples.sampleData = nullptr;
    return status;
}

static SoundStatus takeFile(SoundRecord* sound, ByteArguments file, LONG length) {
    SoundStatus status = chooseIdlePlayer(sound);
    if (status != soundDone) return status;
    sound->samples = {};
    sound->dataLength = length;
    sound->data = reinterpret_cast<const BYTE*>(file.values);
    sound->state = soundIdle;
    sound->position = 0;
    status = parseFile(sound, length, file.count);
    sound->data = nullptr;
    return status;
}

void Sound_Play(SoundRecord* sound, ByteArguments file, LONG length, LONG loops,
                ErrorRecord* error) {
    Lock operation(&sound->operation);
    SoundStatus status = takeFile(sound, file, length);
    if (status == soundDone) status = start(sound, loops);
    if (status != soundDone) Error_SetCode(error, errorFailed);
}

static void stopAll(SoundRecord* sound) {
    for (SoundPlayer* player = sound->player; player; player = player->earlier) Player_Stop(player);
}

void Sound_Stop(SoundRecord* sound, ErrorRecord*) {
    if (!sound) return;
    Lock operation(&sound->operation);
    stopAll(sound);
    dropEndedPlayers(sound->player);
}

void Sound_Dispose(SoundRecord* sound, ErrorRecord*) {
    if (!sound) return;
    {
        Lock operation(&sound->operation);
        stopAll(sound);
    }
    DeleteCriticalSection(&sound->operation);
    while (SoundPlayer* player = sound->player) {
        sound->player = player->earlier;
        Player_Dispose(player);
    }
    sound->state = soundUnused;
    freeBlock(sound);
}

LONG Sound_GetPreferredChunkSize(SoundRecord*, ErrorRecord*) { return noPreferredSize; }
