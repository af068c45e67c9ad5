#pragma once
// A WAV file that grows. One thread at a time.

#include <string>
#include <vector>
#include <windows.h>

#include <mmsystem.h>

class WaveFile {
  public:
    // The file replaces one of that name. When it cannot be written nothing is.
    WaveFile(const std::wstring& path, const WAVEFORMATEX& format);
    ~WaveFile();
    WaveFile(const WaveFile&) = delete;
    WaveFile& operator=(const WaveFile&) = delete;

    void append(const void* samples, DWORD count);

    // Makes the file whole with all that was appended.
    void flush();

  private:
    void writeHeader();
    void write(const void* bytes, DWORD count);

    PCMWAVEFORMAT format;
    HANDLE file;
    DWORD written = 0; // bytes of samples
    std::vector<BYTE> unwritten;
};
