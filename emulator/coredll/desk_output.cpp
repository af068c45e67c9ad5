#include "desk_output.h"
#include <algorithm>

DeskOutput* DeskOutput::open(const WAVEFORMATEX& format) {
    if (!waveOutGetNumDevs()) return nullptr;
    auto* opened = new DeskOutput;
    if (waveOutOpen(&opened->output, WAVE_MAPPER, &format,
                    reinterpret_cast<DWORD_PTR>(opened->changed), 0,
                    CALLBACK_EVENT) == MMSYSERR_NOERROR)
        return opened;
    delete opened;
    return nullptr;
}

DeskOutput::~DeskOutput() {
    for (Buffer& buffer : buffers)
        waveOutUnprepareHeader(output, &buffer.header, sizeof(buffer.header));
    if (output) waveOutClose(output);
    CloseHandle(changed);
}

void DeskOutput::play(const WAVEHDR& header) {
    Buffer& buffer = buffers.emplace_back();
    buffer.samples.assign(header.lpData, header.lpData + header.dwBufferLength);
    buffer.header = {};
    buffer.header.lpData = buffer.samples.data();
    buffer.header.dwBufferLength = header.dwBufferLength;
    waveOutPrepareHeader(output, &buffer.header, sizeof(buffer.header));
    buffer.header.dwFlags |= header.dwFlags & (WHDR_BEGINLOOP | WHDR_ENDLOOP);
    buffer.header.dwLoops = header.dwLoops;
    // A buffer that was refused counts as played.
    if (waveOutWrite(output, &buffer.header, sizeof(buffer.header)) != MMSYSERR_NOERROR)
        buffer.header.dwFlags |= WHDR_DONE;
}

void DeskOutput::stop() { waveOutReset(output); }

bool DeskOutput::isSilent() const {
    return std::all_of(buffers.begin(), buffers.end(), [](const Buffer& buffer) {
        return (static_cast<const volatile WAVEHDR&>(buffer.header).dwFlags & WHDR_DONE) != 0;
    });
}

DWORD WINAPI DeskOutput::end(LPVOID argument) {
    auto* ending = static_cast<DeskOutput*>(argument);
    while (!ending->isSilent()) WaitForSingleObject(ending->changed, INFINITE);
    delete ending;
    return 0;
}

// The desk plays on while the device is closed already: it must not lose its last samples.
void DeskOutput::finish() {
    HANDLE thread = CreateThread(nullptr, 0, end, this, 0, nullptr);
    if (thread) CloseHandle(thread);
}
