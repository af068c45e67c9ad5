// The device's waveform output. It mixes as many sounds as are opened.

#include "emulator.h"
#include "exclusive_lock.h"
#include "failures.h"
#include "sound_clock.h"
#include "sound_options.h"
#include "wave_device.h"
#include <map>
#include <mmreg.h>

namespace {

class Outputs {
  public:
    HWAVEOUT newHandle() {
        return reinterpret_cast<HWAVEOUT>(InterlockedExchangeAdd(&nextHandle, 4));
    }
    void add(HWAVEOUT handle, std::shared_ptr<WaveDevice> device) {
        ExclusiveLock held(&lock);
        open[handle] = std::move(device);
    }
    void remove(HWAVEOUT handle) {
        ExclusiveLock held(&lock);
        open.erase(handle);
    }
    // Null for a handle of none.
    std::shared_ptr<WaveDevice> find(HWAVEOUT handle) {
        ExclusiveLock held(&lock);
        auto found = open.find(handle);
        return found == open.end() ? nullptr : found->second;
    }
    std::vector<std::shared_ptr<WaveDevice>> all() {
        ExclusiveLock held(&lock);
        std::vector<std::shared_ptr<WaveDevice>> devices;
        for (const auto& entry : open) devices.push_back(entry.second);
        return devices;
    }
    void recordTo(const std::wstring& path) {
        ExclusiveLock held(&lock);
        recording = path;
        recorded = 0;
    }
    // Where the next output writes what it plays: as told, then with -2, -3 ... before the
    // extension. Empty for nowhere.
    std::wstring nextRecording() {
        ExclusiveLock held(&lock);
        if (recording.empty() || !recorded++) return recording;
        size_t dot = recording.rfind(L'.');
        if (dot == std::wstring::npos || recording.find_first_of(L"/\\", dot) != std::wstring::npos)
            dot = recording.size();
        return recording.substr(0, dot) + L"-" + std::to_wstring(recorded) + recording.substr(dot);
    }

  private:
    SRWLOCK lock = SRWLOCK_INIT;
    std::map<HWAVEOUT, std::shared_ptr<WaveDevice>> open;
    LONG nextHandle = 0x57410000; // no handle of the desk's
    std::wstring recording = soundOptions().file;
    int recorded = 0;
};

} // namespace

// Lives as long as the process: threads of outputs may run to its very end.
static Outputs& outputs() {
    static Outputs* const all = new Outputs;
    return *all;
}

static bool isWidthOf(WORD tag, WORD bits) {
    switch (tag) {
    case WAVE_FORMAT_PCM:
        return bits == 8 || bits == 16;
    case WAVE_FORMAT_ALAW:
    case WAVE_FORMAT_MULAW:
        return bits == 8;
    default:
        return false;
    }
}

static bool isPlayable(const WAVEFORMATEX& format) {
    constexpr DWORD slowest = 4000, fastest = 48000;
    return isWidthOf(format.wFormatTag, format.wBitsPerSample) &&
           (format.nChannels == 1 || format.nChannels == 2) && format.nSamplesPerSec >= slowest &&
           format.nSamplesPerSec <= fastest &&
           format.nBlockAlign == format.nChannels * format.wBitsPerSample / 8 &&
           format.nAvgBytesPerSec == format.nBlockAlign * format.nSamplesPerSec;
}

static MMRESULT checkOpening(UINT id, const WAVEFORMATEX* format, DWORD flags) {
    if (id != WAVE_MAPPER && id != 0) return MMSYSERR_BADDEVICEID;
    if (!format) return MMSYSERR_INVALPARAM;
    DWORD kind = flags & CALLBACK_TYPEMASK;
    if (kind != CALLBACK_NULL && kind != CALLBACK_FUNCTION) return MMSYSERR_INVALFLAG;
    return isPlayable(*format) ? MMSYSERR_NOERROR : WAVERR_BADFORMAT;
}

static std::unique_ptr<WaveFile> newRecording(const WAVEFORMATEX& format) {
    std::wstring path = outputs().nextRecording();
    return path.empty() ? nullptr : std::make_unique<WaveFile>(path, format);
}

// Sounds at another speed than theirs are not for ears.
static DeskOutput* openDesk(const WAVEFORMATEX& format) {
    return soundOptions().onDesk && soundSpeed() == 1 ? DeskOutput::open(format) : nullptr;
}

static bool isHeader(const WAVEHDR* header, UINT size) {
    return header && size == sizeof(*header) && header->lpData;
}

// A loop of more than one buffer is more than this device can do.
static bool isLoopWhole(const WAVEHDR* header) {
    DWORD ends = header->dwFlags & (WHDR_BEGINLOOP | WHDR_ENDLOOP);
    return ends == 0 || ends == (WHDR_BEGINLOOP | WHDR_ENDLOOP);
}

static void timeHasPassed() {
    for (const auto& device : outputs().all()) device->timePassed();
}

extern "C" {

MMRESULT WINAPI Device_waveOutOpen(HWAVEOUT* result, UINT id, const WAVEFORMATEX* format,
                                   DWORD_PTR callback, DWORD_PTR instance, DWORD flags) {
    MMRESULT check = checkOpening(id, format, flags);
    if (check != MMSYSERR_NOERROR || (flags & WAVE_FORMAT_QUERY)) return check;
    if (!result) return MMSYSERR_INVALPARAM;
    if (failsNow(failSound)) return MMSYSERR_ALLOCATED;
    if ((flags & CALLBACK_TYPEMASK) == CALLBACK_NULL) callback = 0;

    HWAVEOUT handle = outputs().newHandle();
    auto device = std::make_shared<WaveDevice>(handle, *format, WaveListener{callback, instance});
    *result = handle;
    outputs().add(handle, device);
    // Unique pointers lose nothing. NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks)
    if (device->start(newRecording(*format), openDesk(*format))) return MMSYSERR_NOERROR;
    outputs().remove(handle);
    return MMSYSERR_NOMEM;
}

MMRESULT WINAPI Device_waveOutClose(HWAVEOUT handle) {
    auto device = outputs().find(handle);
    if (!device) return MMSYSERR_INVALHANDLE;
    if (!device->close()) return WAVERR_STILLPLAYING;
    outputs().remove(handle);
    return MMSYSERR_NOERROR;
}

MMRESULT WINAPI Device_waveOutPrepareHeader(HWAVEOUT handle, WAVEHDR* header, UINT size) {
    if (!outputs().find(handle)) return MMSYSERR_INVALHANDLE;
    if (!isHeader(header, size)) return MMSYSERR_INVALPARAM;
    header->dwFlags |= WHDR_PREPARED;
    return MMSYSERR_NOERROR;
}

MMRESULT WINAPI Device_waveOutUnprepareHeader(HWAVEOUT handle, WAVEHDR* header, UINT size) {
    if (!outputs().find(handle)) return MMSYSERR_INVALHANDLE;
    if (!isHeader(header, size)) return MMSYSERR_INVALPARAM;
    if (header->dwFlags & WHDR_INQUEUE) return WAVERR_STILLPLAYING;
    header->dwFlags &= ~WHDR_PREPARED;
    return MMSYSERR_NOERROR;
}

MMRESULT WINAPI Device_waveOutWrite(HWAVEOUT handle, WAVEHDR* header, UINT size) {
    auto device = outputs().find(handle);
    if (!device) return MMSYSERR_INVALHANDLE;
    if (!isHeader(header, size)) return MMSYSERR_INVALPARAM;
    if (!(header->dwFlags & WHDR_PREPARED)) return WAVERR_UNPREPARED;
    if (header->dwFlags & WHDR_INQUEUE) return WAVERR_STILLPLAYING;
    if (!isLoopWhole(header)) return MMSYSERR_NOTSUPPORTED;
    device->play(header);
    return MMSYSERR_NOERROR;
}

MMRESULT WINAPI Device_waveOutReset(HWAVEOUT handle) {
    auto device = outputs().find(handle);
    if (!device) return MMSYSERR_INVALHANDLE;
    device->reset();
    return MMSYSERR_NOERROR;
}

void WINAPI Emulator_SetSoundSpeed(DWORD factor) {
    setSoundSpeed(factor);
    timeHasPassed();
}

void WINAPI Emulator_PassSoundTime(DWORD milliseconds) {
    passSoundTime(milliseconds);
    timeHasPassed();
}

void WINAPI Emulator_RecordSounds(LPCWSTR path) { outputs().recordTo(path ? path : L""); }

LONG WINAPI Emulator_CountWaveOutputs() { return static_cast<LONG>(outputs().all().size()); }
}
