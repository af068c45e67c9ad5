#include "wave_file.h"

namespace {

struct Header {
    char riff[4] = {'R', 'I', 'F', 'F'};
    DWORD riffSize;
    char wave[4] = {'W', 'A', 'V', 'E'};
    char fmt[4] = {'f', 'm', 't', ' '};
    DWORD formatSize = sizeof(PCMWAVEFORMAT);
    PCMWAVEFORMAT format;
    char data[4] = {'d', 'a', 't', 'a'};
    DWORD dataSize;
};
static_assert(sizeof(Header) == 44);

constexpr DWORD sizesBefore = 8; // "RIFF" and the size of what follows
constexpr size_t flushAt = 1 << 16;

} // namespace

WaveFile::WaveFile(const std::wstring& path, const WAVEFORMATEX& formatOfSamples)
    : format{{formatOfSamples.wFormatTag, formatOfSamples.nChannels, formatOfSamples.nSamplesPerSec,
              formatOfSamples.nAvgBytesPerSec, formatOfSamples.nBlockAlign},
             formatOfSamples.wBitsPerSample},
      file(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS, 0,
                       nullptr)) {
    writeHeader();
}

WaveFile::~WaveFile() {
    flush();
    if (file != INVALID_HANDLE_VALUE) CloseHandle(file);
}

void WaveFile::append(const void* samples, DWORD count) {
    auto* bytes = static_cast<const BYTE*>(samples);
    unwritten.insert(unwritten.end(), bytes, bytes + count);
    if (unwritten.size() >= flushAt) flush();
}

void WaveFile::flush() {
    if (unwritten.empty()) return;
    write(unwritten.data(), unwritten.size());
    written += unwritten.size();
    unwritten.clear();
    writeHeader();
}

void WaveFile::writeHeader() {
    Header header;
    header.riffSize = sizeof(header) - sizesBefore + written;
    header.format = format;
    header.dataSize = written;
    if (file != INVALID_HANDLE_VALUE) SetFilePointer(file, 0, nullptr, FILE_BEGIN);
    write(&header, sizeof(header));
    if (file != INVALID_HANDLE_VALUE) SetFilePointer(file, 0, nullptr, FILE_END);
}

void WaveFile::write(const void* bytes, DWORD count) {
    DWORD done;
    if (file != INVALID_HANDLE_VALUE) WriteFile(file, bytes, count, &done, nullptr);
}
