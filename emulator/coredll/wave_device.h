#pragma once
// One open waveform output of the device: a queue of buffers, which a thread of its own plays and
// tells of. Any thread.

#include "desk_output.h"
#include "wave_file.h"
#include <deque>
#include <memory>
#include <vector>

struct WaveListener {
    DWORD_PTR callback; // a function, or 0
    DWORD_PTR instance;
};

class WaveDevice {
  public:
    WaveDevice(HWAVEOUT handle, const WAVEFORMATEX& format, const WaveListener& listener);
    ~WaveDevice();
    WaveDevice(const WaveDevice&) = delete;
    WaveDevice& operator=(const WaveDevice&) = delete;

    // Returns when its opening has been told; false without a thread.
    bool start(std::unique_ptr<WaveFile> file, DeskOutput* desk);

    void play(WAVEHDR* header);

    // Returns when every buffer has been told of.
    void reset();

    // False while buffers are queued; else returns when its closing has been told.
    bool close();

    // The clock has moved: returns when all that is due has been played and told.
    void timePassed();

  private:
    struct Queued {
        WAVEHDR* header;
        DWORD rounds;   // left, with this one
        DWORD position; // in this one, bytes
    };
    static DWORD WINAPI run(LPVOID device);
    void run();
    void tell(UINT message, WAVEHDR* header) const;
    void tellDone();
    LONGLONG bytesDue(LONGLONG now) const;
    DWORD playPiece(LONGLONG due);
    void playUntil(LONGLONG now);
    void finishFirst();
    DWORD millisecondsToEnd() const;
    void waitForChange(DWORD milliseconds);

    const HWAVEOUT handle;
    const WAVEFORMATEX format;
    const WaveListener listener;
    HANDLE thread = nullptr;
    std::unique_ptr<WaveFile> file;
    DeskOutput* desk = nullptr;

    // Of what follows.
    SRWLOCK lock = SRWLOCK_INIT;
    CONDITION_VARIABLE changed = CONDITION_VARIABLE_INIT;
    std::deque<Queued> queue;
    std::vector<WAVEHDR*> finished; // played, but not told yet
    LONGLONG began = 0;             // when the first of the queue's buffers came
    LONGLONG played = 0;            // bytes since then
    LONGLONG settled = -1;          // all that is due until then has been told
    bool isOpen = false;
    bool isResetting = false;
    bool isClosing = false;
    bool hasEnded = false;
};
