#include "wave_device.h"
#include "exclusive_lock.h"
#include "sound_clock.h"
#include <algorithm>
#include <utility>

static constexpr LONGLONG microseconds = 1000000;
// What is played is written to files at least that often.
static constexpr DWORD longestPiece = 100; // ms

WaveDevice::WaveDevice(HWAVEOUT itsHandle, const WAVEFORMATEX& itsFormat,
                       const WaveListener& itsListener)
    : handle(itsHandle), format(itsFormat), listener(itsListener) {}

WaveDevice::~WaveDevice() {
    if (thread) CloseHandle(thread);
    if (desk) desk->finish();
}

bool WaveDevice::start(std::unique_ptr<WaveFile> itsFile, DeskOutput* itsDesk) {
    file = std::move(itsFile);
    desk = itsDesk;
    ExclusiveLock held(&lock);
    thread = CreateThread(nullptr, 0, run, this, 0, nullptr);
    while (thread && !isOpen) waitForChange(INFINITE);
    return thread != nullptr;
}

static DWORD roundsOf(const WAVEHDR& header) {
    return header.dwFlags & WHDR_BEGINLOOP ? std::max<DWORD>(header.dwLoops, 1) : 1;
}

void WaveDevice::play(WAVEHDR* header) {
    ExclusiveLock held(&lock);
    if (queue.empty()) {
        began = soundTime();
        played = 0;
    }
    header->dwFlags = (header->dwFlags & ~WHDR_DONE) | WHDR_INQUEUE;
    queue.push_back({header, roundsOf(*header), 0});
    if (desk) desk->play(*header);
    WakeAllConditionVariable(&changed);
}

void WaveDevice::reset() {
    ExclusiveLock held(&lock);
    if (desk) desk->stop();
    isResetting = true;
    WakeAllConditionVariable(&changed);
    while (isResetting && !hasEnded) waitForChange(INFINITE);
}

bool WaveDevice::close() {
    {
        ExclusiveLock held(&lock);
        if (!queue.empty()) return false;
        isClosing = true;
        WakeAllConditionVariable(&changed);
    }
    WaitForSingleObject(thread, INFINITE);
    return true;
}

void WaveDevice::timePassed() {
    LONGLONG now = soundTime();
    ExclusiveLock held(&lock);
    WakeAllConditionVariable(&changed);
    while (settled < now && !hasEnded) waitForChange(INFINITE);
}

DWORD WINAPI WaveDevice::run(LPVOID device) {
    static_cast<WaveDevice*>(device)->run();
    return 0;
}

void WaveDevice::run() {
    tell(WOM_OPEN, nullptr);
    AcquireSRWLockExclusive(&lock);
    isOpen = true;
    while (!isClosing) {
        LONGLONG now = soundTime();
        playUntil(now);
        while (isResetting && !queue.empty()) finishFirst();
        if (!finished.empty()) {
            tellDone();
            continue;
        }
        isResetting = false;
        settled = now;
        if (file) file->flush();
        WakeAllConditionVariable(&changed);
        waitForChange(millisecondsToEnd());
    }
    file.reset();
    ReleaseSRWLockExclusive(&lock);
    tell(WOM_CLOSE, nullptr);
    ExclusiveLock held(&lock);
    hasEnded = true;
    WakeAllConditionVariable(&changed);
}

void WaveDevice::waitForChange(DWORD milliseconds) {
    SleepConditionVariableSRW(&changed, &lock, milliseconds, 0);
}

void WaveDevice::tell(UINT message, WAVEHDR* header) const {
    using Callback = void(CALLBACK*)(HWAVEOUT, UINT, DWORD_PTR, DWORD_PTR, DWORD_PTR);
    if (auto callback = reinterpret_cast<Callback>(listener.callback))
        callback(handle, message, listener.instance, reinterpret_cast<DWORD_PTR>(header), 0);
}

// Not under the lock: whoever hears of it may use the device.
void WaveDevice::tellDone() {
    const std::vector<WAVEHDR*> headers = std::exchange(finished, {});
    ReleaseSRWLockExclusive(&lock);
    for (WAVEHDR* header : headers) {
        header->dwFlags = (header->dwFlags & ~WHDR_INQUEUE) | WHDR_DONE;
        tell(WOM_DONE, header);
    }
    AcquireSRWLockExclusive(&lock);
}

LONGLONG WaveDevice::bytesDue(LONGLONG now) const {
    LONGLONG frames = (now - began) * format.nSamplesPerSec / microseconds;
    return frames * format.nBlockAlign - played;
}

// Plays of the first buffer what is due, up to the end of its round.
DWORD WaveDevice::playPiece(LONGLONG due) {
    Queued& first = queue.front();
    DWORD left = first.header->dwBufferLength - first.position;
    auto count = static_cast<DWORD>(std::min<LONGLONG>(std::max<LONGLONG>(due, 0), left));
    if (file) file->append(first.header->lpData + first.position, count);
    first.position += count;
    played += count;
    return count;
}

void WaveDevice::playUntil(LONGLONG now) {
    while (!queue.empty()) {
        Queued& first = queue.front();
        DWORD length = first.header->dwBufferLength;
        DWORD count = playPiece(bytesDue(now));
        if (first.position < length) {
            if (!count) return;
        } else if (!length || !--first.rounds) {
            finishFirst();
        } else {
            first.position = 0;
        }
    }
}

void WaveDevice::finishFirst() {
    finished.push_back(queue.front().header);
    queue.pop_front();
}

DWORD WaveDevice::millisecondsToEnd() const {
    DWORD speed = soundSpeed();
    if (queue.empty() || !speed) return INFINITE;
    const Queued& first = queue.front();
    LONGLONG left =
        static_cast<LONGLONG>(first.rounds) * first.header->dwBufferLength - first.position;
    LONGLONG milliseconds = left * 1000 / format.nAvgBytesPerSec / speed + 1;
    return static_cast<DWORD>(std::min<LONGLONG>(milliseconds, longestPiece));
}
