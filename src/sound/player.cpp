#include "sound/player.h"
#include "bridge/lock.h"
#include "bridge/memory.h"
#include "sound/sound.h"
#include <initializer_list>
#include <mmreg.h>

static constexpr SIZE_T stackSize = 0x10000;

static HANDLE newEvent() { return CreateEventW(nullptr, FALSE, TRUE, nullptr); }

static void closeEvents(const SoundPlayer* player) {
    for (HANDLE event : {player->doneEvent, player->startedEvent, player->stoppedEvent})
        if (event) CloseHandle(event);
}

SoundStatus Player_New(SoundPlayer** result) {
    Block<SoundPlayer> player(allocate<SoundPlayer>());
    if (!player) return soundNoMemory;
    player->doneEvent = newEvent();
    player->startedEvent = newEvent();
    player->stoppedEvent = newEvent();
    if (!player->doneEvent || !player->startedEvent || !player->stoppedEvent) {
        closeEvents(player);
        return soundSystemFailed;
    }
    InitializeCriticalSection(&player->lock);
    *result = player.release();
    return soundDone;
}

void Player_Dispose(SoundPlayer* player) {
    if (player->isKeptByOutput) return;
    DeleteCriticalSection(&player->lock);
    closeEvents(player);
    if (player->thread) CloseHandle(player->thread);
    freeBlock(player);
}

bool Player_IsIdle(const SoundPlayer* player) {
    if (player->isKeptByOutput) return false;
    return !player->thread || WaitForSingleObject(player->thread, 0) == WAIT_OBJECT_0;
}

static WORD tagOf(LONG encoding) {
    if (encoding == encodingMuLaw) return WAVE_FORMAT_MULAW;
    return encoding == encodingALaw ? WAVE_FORMAT_ALAW : WAVE_FORMAT_PCM;
}

static void fillFormat(WAVEFORMATEX* format, const SoundSamples& samples) {
    format->wFormatTag = tagOf(samples.encoding);
    format->nChannels = static_cast<WORD>(samples.channels);
    format->nSamplesPerSec = samples.sampleRate;
    DWORD frameBits = static_cast<DWORD>(samples.channels) * samples.bitsPerSample;
    format->nBlockAlign = static_cast<WORD>(static_cast<LONG>(frameBits) / 8);
    format->nAvgBytesPerSec = format->nBlockAlign * static_cast<DWORD>(samples.sampleRate);
    format->wBitsPerSample = static_cast<WORD>(samples.bitsPerSample);
}

static void fillHeader(WAVEHDR* header, const SoundSamples& samples, DWORD rounds) {
    *header = {};
    header->lpData = reinterpret_cast<LPSTR>(const_cast<BYTE*>(samples.sampleData));
    header->dwBufferLength = samples.sampleDataSize;
    header->dwFlags = WHDR_BEGINLOOP | WHDR_ENDLOOP;
    header->dwLoops = rounds;
}

static bool isPlayable(const WAVEFORMATEX* format) {
    return waveOutOpen(nullptr, WAVE_MAPPER, format, 0, 0, WAVE_FORMAT_QUERY | WAVE_ALLOWSYNC) ==
           MMSYSERR_NOERROR;
}

// Runs on a thread of the system's, which must not be kept waiting.
static void CALLBACK deviceChanged(HWAVEOUT device, UINT message, DWORD_PTR instance, DWORD_PTR,
                                   DWORD_PTR) {
    auto* player = reinterpret_cast<SoundPlayer*>(instance);
    switch (message) {
    case WOM_OPEN:
        player->device = device;
        break;
    case WOM_CLOSE:
        player->device = nullptr;
        break;
    case WOM_DONE:
        EventModify(player->doneEvent, EVENT_SET);
        break;
    default:
        break;
    }
}

// Also a device that was not closed is not to be stopped any more.
static void closeOutput(SoundPlayer* player) {
    player->isKeptByOutput = waveOutClose(player->device) != MMSYSERR_NOERROR;
    player->device = nullptr;
}

static SoundStatus openDevice(SoundPlayer* player) {
    if (waveOutOpen(&player->device, WAVE_MAPPER, &player->format,
                    reinterpret_cast<DWORD_PTR>(deviceChanged), reinterpret_cast<DWORD_PTR>(player),
                    CALLBACK_FUNCTION | WAVE_ALLOWSYNC) != MMSYSERR_NOERROR) {
        player->device = nullptr;
        return soundSystemFailed;
    }
    if (waveOutPrepareHeader(player->device, &player->header, sizeof(player->header)) ==
        MMSYSERR_NOERROR)
        return soundDone;
    closeOutput(player);
    return soundSystemFailed;
}

static void closeDevice(SoundPlayer* player) {
    waveOutUnprepareHeader(player->device, &player->header, sizeof(player->header));
    closeOutput(player);
}

// The samples are those of the last playback: an earlier one that ends leaves them alone.
static void tellEnd(SoundRecord* sound, const SoundPlayer* player) {
    sound->state = soundIdle;
    if (sound->player == player) sound->samples.sampleData = nullptr;
}

static void freeSamples(SoundPlayer* player) {
    freeBlock(player->header.lpData);
    player->header.lpData = nullptr;
}

static DWORD WINAPI play(LPVOID argument) {
    auto* sound = static_cast<SoundRecord*>(argument);
    SoundPlayer* player = sound->player;
    EventModify(player->doneEvent, EVENT_RESET);
    bool isQueued =
        waveOutWrite(player->device, &player->header, sizeof(player->header)) == MMSYSERR_NOERROR;
    EventModify(player->startedEvent, EVENT_SET);
    if (isQueued) WaitForSingleObject(player->doneEvent, INFINITE);

    {
        Lock lock(&player->lock);
        closeDevice(player);
        tellEnd(sound, player);
    }
    if (!(player->header.dwFlags & WHDR_INQUEUE)) freeSamples(player);
    EventModify(player->stoppedEvent, EVENT_SET);
    return isQueued ? soundDone : soundSystemFailed;
}

static SoundStatus startThread(SoundRecord* sound, SoundPlayer* player) {
    EventModify(player->startedEvent, EVENT_RESET);
    player->thread = CreateThread(nullptr, stackSize, play, sound, 0, nullptr);
    if (!player->thread) {
        closeDevice(player);
        return soundSystemFailed;
    }
    WaitForSingleObject(player->startedEvent, INFINITE);
    return soundDone;
}

SoundStatus Player_Start(SoundRecord* sound, DWORD rounds) {
    SoundPlayer* player = sound->player;
    if (player->thread) CloseHandle(player->thread);
    player->thread = nullptr;
    fillFormat(&player->format, sound->samples);
    if (!isPlayable(&player->format)) return soundUnsupported;
    // Quirk: a start that fails from here on leaves a sound that says it plays. Pinned by
    // FailingSoundTest.is_told_when_memory_output_or_thread_are_missing.
    sound->state = soundPlaying;
    fillHeader(&player->header, sound->samples, rounds);
    SoundStatus status = openDevice(player);
    return status == soundDone ? startThread(sound, player) : status;
}

// Whether there was one to end.
static bool endPlayback(SoundPlayer* player) {
    Lock lock(&player->lock);
    if (!player->device) return false;
    EventModify(player->stoppedEvent, EVENT_RESET);
    // A device that does not give the buffer back must not keep its caller waiting.
    if (waveOutReset(player->device) != MMSYSERR_NOERROR) EventModify(player->doneEvent, EVENT_SET);
    return true;
}

void Player_Stop(SoundPlayer* player) {
    if (endPlayback(player)) WaitForSingleObject(player->stoppedEvent, INFINITE);
    // The thread uses the player to the last: an event is set before the call that sets it returns.
    if (player->thread) WaitForSingleObject(player->thread, INFINITE);
}
