#pragma once
// One waveform output of the desk's, which sounds what the device plays. One thread at a time.

#include <list>
#include <vector>
#include <windows.h>

#include <mmsystem.h>

class DeskOutput {
  public:
    // Null when the desk has no output, or none for the format.
    static DeskOutput* open(const WAVEFORMATEX& format);

    // Plays a copy of the buffer, loops and all, behind those before it.
    void play(const WAVEHDR& header);

    // Silences it at once.
    void stop();

    // Plays what is left, then goes by itself: the caller has no further use of it.
    void finish();

  private:
    struct Buffer {
        std::vector<char> samples;
        WAVEHDR header;
    };
    DeskOutput() = default;
    ~DeskOutput();
    DeskOutput(const DeskOutput&) = delete;
    DeskOutput& operator=(const DeskOutput&) = delete;
    static DWORD WINAPI end(LPVOID output);
    bool isSilent() const;

    HANDLE changed = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    HWAVEOUT output = nullptr;
    std::list<Buffer> buffers;
};
