#include "ce.h"
#include "emulator.h"
#include "sound_files.h"
#include <gtest/gtest.h>
#include <mmreg.h>

static const wchar_t recording[] = L"C:\\played.wav";
static const wchar_t secondRecording[] = L"C:\\played-2.wav";

static WAVEFORMATEX formatOf(WORD tag, WORD channels, DWORD rate, WORD bits) {
    auto block = static_cast<WORD>(channels * bits / 8);
    return {tag, channels, rate, rate * block, block, bits, 0};
}
static const WAVEFORMATEX stereo = formatOf(WAVE_FORMAT_PCM, 2, 8000, 16); // 32 bytes a millisecond

static FileBytes stereoFile(const FileBytes& samples) {
    return waveFile(waveFormat(WAVE_FORMAT_PCM, 2, 8000, 16), samples);
}

namespace {

struct Told {
    UINT message;
    WAVEHDR* header;
    DWORD thread;
};

// A buffer of the program's own.
struct Buffer {
    FileBytes bytes;
    WAVEHDR header = {};
    explicit Buffer(FileBytes samples, DWORD loops = 0) : bytes(std::move(samples)) {
        static char nothing;
        header.lpData = bytes.empty() ? &nothing : reinterpret_cast<char*>(bytes.data());
        header.dwBufferLength = bytes.size();
        if (!loops) return;
        header.dwFlags = WHDR_BEGINLOOP | WHDR_ENDLOOP;
        header.dwLoops = loops;
    }
    Buffer(const Buffer&) = delete;
    bool isDone() const { return header.dwFlags & WHDR_DONE; }
};

} // namespace

class WaveOutTest : public testing::Test {
  protected:
    WaveOutTest() {
        DeleteFileW(secondRecording);
        Emulator_SetSoundSpeed(0);
        Emulator_RecordSounds(recording);
    }
    ~WaveOutTest() override {
        Emulator_RecordSounds(nullptr);
        Emulator_SetSoundSpeed(1);
        CloseHandle(done);
        EXPECT_EQ(Emulator_CountWaveOutputs(), 0);
    }

    static void CALLBACK record(HWAVEOUT, UINT message, DWORD_PTR instance, DWORD_PTR header,
                                DWORD_PTR) {
        auto* test = reinterpret_cast<WaveOutTest*>(instance);
        test->told.push_back({message, reinterpret_cast<WAVEHDR*>(header), GetCurrentThreadId()});
        if (message == WOM_DONE) SetEvent(test->done);
    }
    HWAVEOUT open(const WAVEFORMATEX& format = stereo) {
        HWAVEOUT output = nullptr;
        EXPECT_EQ(waveOutOpen(&output, WAVE_MAPPER, &format, reinterpret_cast<DWORD_PTR>(record),
                              reinterpret_cast<DWORD_PTR>(this), CALLBACK_FUNCTION),
                  MMSYSERR_NOERROR);
        return output;
    }
    static void play(HWAVEOUT output, Buffer* buffer) {
        EXPECT_EQ(waveOutPrepareHeader(output, &buffer->header, sizeof(WAVEHDR)), MMSYSERR_NOERROR);
        EXPECT_EQ(waveOutWrite(output, &buffer->header, sizeof(WAVEHDR)), MMSYSERR_NOERROR);
    }
    static void close(HWAVEOUT output) { EXPECT_EQ(waveOutClose(output), MMSYSERR_NOERROR); }
    static FileBytes recorded() { return readFile("C:\\played.wav"); }

    std::vector<Told> told;
    HANDLE done = CreateEventW(nullptr, FALSE, FALSE, nullptr);
};

static MMRESULT query(const WAVEFORMATEX& format) {
    return waveOutOpen(nullptr, WAVE_MAPPER, &format, 0, 0, WAVE_FORMAT_QUERY | WAVE_ALLOWSYNC);
}

TEST_F(WaveOutTest, tells_which_formats_it_plays_without_opening) {
    for (DWORD rate : {4000, 8012, 11025, 44100, 48000})
        for (WORD channels : {1, 2}) {
            EXPECT_EQ(query(formatOf(WAVE_FORMAT_PCM, channels, rate, 8)), MMSYSERR_NOERROR);
            EXPECT_EQ(query(formatOf(WAVE_FORMAT_PCM, channels, rate, 16)), MMSYSERR_NOERROR);
            EXPECT_EQ(query(formatOf(WAVE_FORMAT_MULAW, channels, rate, 8)), MMSYSERR_NOERROR);
            EXPECT_EQ(query(formatOf(WAVE_FORMAT_ALAW, channels, rate, 8)), MMSYSERR_NOERROR);
        }
    EXPECT_EQ(Emulator_CountWaveOutputs(), 0);
    EXPECT_TRUE(told.empty());
}

TEST_F(WaveOutTest, refuses_formats_that_it_cannot_play) {
    std::vector<WAVEFORMATEX> refused = {
        formatOf(WAVE_FORMAT_PCM, 0, 8000, 8),    formatOf(WAVE_FORMAT_PCM, 3, 8000, 8),
        formatOf(WAVE_FORMAT_PCM, 1, 8000, 0),    formatOf(WAVE_FORMAT_PCM, 1, 8000, 12),
        formatOf(WAVE_FORMAT_PCM, 1, 8000, 24),   formatOf(WAVE_FORMAT_PCM, 1, 8000, 32),
        formatOf(WAVE_FORMAT_PCM, 1, 3999, 8),    formatOf(WAVE_FORMAT_PCM, 1, 48001, 8),
        formatOf(WAVE_FORMAT_MULAW, 1, 8000, 16), formatOf(WAVE_FORMAT_ALAW, 1, 8000, 16),
        formatOf(WAVE_FORMAT_ADPCM, 1, 8000, 8),  formatOf(0, 1, 8000, 8)};
    refused.push_back(stereo);
    refused.back().nBlockAlign = 2;
    refused.push_back(stereo);
    refused.back().nAvgBytesPerSec = 8000;
    HWAVEOUT output;
    for (const WAVEFORMATEX& format : refused) {
        EXPECT_EQ(query(format), MMRESULT(WAVERR_BADFORMAT)) << &format - refused.data();
        EXPECT_EQ(waveOutOpen(&output, WAVE_MAPPER, &format, 0, 0, CALLBACK_NULL),
                  MMRESULT(WAVERR_BADFORMAT));
    }
}

TEST_F(WaveOutTest, refuses_wrong_arguments) {
    HWAVEOUT output;
    EXPECT_EQ(waveOutOpen(&output, 1, &stereo, 0, 0, 0), MMRESULT(MMSYSERR_BADDEVICEID));
    EXPECT_EQ(waveOutOpen(&output, WAVE_MAPPER, nullptr, 0, 0, 0), MMRESULT(MMSYSERR_INVALPARAM));
    EXPECT_EQ(waveOutOpen(nullptr, WAVE_MAPPER, &stereo, 0, 0, 0), MMRESULT(MMSYSERR_INVALPARAM));
    for (DWORD kind : {CALLBACK_WINDOW, CALLBACK_THREAD, CALLBACK_EVENT})
        EXPECT_EQ(waveOutOpen(&output, WAVE_MAPPER, &stereo, 0, 0, kind),
                  MMRESULT(MMSYSERR_INVALFLAG));
}

TEST_F(WaveOutTest, tells_opening_playing_and_closing_on_a_thread_of_its_own) {
    HWAVEOUT output = open();
    ASSERT_EQ(told.size(), 1u);
    EXPECT_EQ(told[0].message, UINT(WOM_OPEN));
    Buffer buffer(countingBytes(32));
    play(output, &buffer);
    Emulator_PassSoundTime(1);
    ASSERT_EQ(told.size(), 2u);
    EXPECT_EQ(told[1].message, UINT(WOM_DONE));
    EXPECT_EQ(told[1].header, &buffer.header);
    close(output);
    ASSERT_EQ(told.size(), 3u);
    EXPECT_EQ(told[2].message, UINT(WOM_CLOSE));
    for (const Told& call : told) {
        EXPECT_NE(call.thread, GetCurrentThreadId());
        EXPECT_EQ(call.thread, told[0].thread);
    }
}

TEST_F(WaveOutTest, tells_nothing_without_a_callback) {
    HWAVEOUT output = nullptr;
    EXPECT_EQ(waveOutOpen(&output, 0, &stereo, 1, 0, CALLBACK_NULL), MMSYSERR_NOERROR);
    Buffer buffer(countingBytes(32));
    play(output, &buffer);
    Emulator_PassSoundTime(1);
    EXPECT_TRUE(buffer.isDone());
    close(output);
}

TEST_F(WaveOutTest, wants_buffers_prepared_and_lets_go_of_them_when_they_are_played) {
    HWAVEOUT output = open();
    Buffer buffer(countingBytes(32));
    WAVEHDR* header = &buffer.header;
    EXPECT_EQ(waveOutWrite(output, header, sizeof(WAVEHDR)), MMRESULT(WAVERR_UNPREPARED));
    play(output, &buffer);
    EXPECT_EQ(waveOutWrite(output, header, sizeof(WAVEHDR)), MMRESULT(WAVERR_STILLPLAYING));
    EXPECT_EQ(waveOutUnprepareHeader(output, header, sizeof(WAVEHDR)),
              MMRESULT(WAVERR_STILLPLAYING));
    EXPECT_EQ(waveOutClose(output), MMRESULT(WAVERR_STILLPLAYING));
    Emulator_PassSoundTime(1);
    EXPECT_EQ(waveOutUnprepareHeader(output, header, sizeof(WAVEHDR)), MMSYSERR_NOERROR);
    EXPECT_EQ(waveOutWrite(output, header, sizeof(WAVEHDR)), MMRESULT(WAVERR_UNPREPARED));
    close(output);
}

TEST_F(WaveOutTest, refuses_what_is_no_buffer) {
    HWAVEOUT output = open();
    WAVEHDR nothing = {};
    for (auto call : {waveOutPrepareHeader, waveOutUnprepareHeader, waveOutWrite}) {
        EXPECT_EQ(call(output, nullptr, sizeof(WAVEHDR)), MMRESULT(MMSYSERR_INVALPARAM));
        EXPECT_EQ(call(output, &nothing, sizeof(WAVEHDR)), MMRESULT(MMSYSERR_INVALPARAM));
        Buffer buffer(countingBytes(4));
        EXPECT_EQ(call(output, &buffer.header, sizeof(WAVEHDR) - 1), MMRESULT(MMSYSERR_INVALPARAM));
    }
    close(output);
}

TEST_F(WaveOutTest, knows_no_handle_that_is_closed) {
    HWAVEOUT output = open();
    close(output);
    Buffer buffer(countingBytes(4));
    for (auto call : {waveOutPrepareHeader, waveOutUnprepareHeader, waveOutWrite})
        EXPECT_EQ(call(output, &buffer.header, sizeof(WAVEHDR)), MMRESULT(MMSYSERR_INVALHANDLE));
    EXPECT_EQ(waveOutReset(output), MMRESULT(MMSYSERR_INVALHANDLE));
    EXPECT_EQ(waveOutClose(output), MMRESULT(MMSYSERR_INVALHANDLE));
    EXPECT_EQ(waveOutClose(nullptr), MMRESULT(MMSYSERR_INVALHANDLE));
}

TEST_F(WaveOutTest, plays_buffers_one_behind_the_other_each_in_its_time) {
    HWAVEOUT output = open();
    Buffer first(countingBytes(320)), second(countingBytes(64, 100));
    play(output, &first);
    play(output, &second);
    Emulator_PassSoundTime(9);
    EXPECT_FALSE(first.isDone());
    Emulator_PassSoundTime(1);
    EXPECT_TRUE(first.isDone());
    EXPECT_FALSE(second.isDone());
    Emulator_PassSoundTime(2);
    EXPECT_TRUE(second.isDone());
    close(output);
    EXPECT_EQ(recorded(), stereoFile(first.bytes + second.bytes));
}

TEST_F(WaveOutTest, begins_when_a_buffer_comes) {
    HWAVEOUT output = open();
    Emulator_PassSoundTime(1000);
    Buffer buffer(countingBytes(320));
    play(output, &buffer);
    Emulator_PassSoundTime(3);
    EXPECT_FALSE(buffer.isDone());
    waveOutReset(output);
    close(output);
    EXPECT_EQ(recorded(), stereoFile(countingBytes(96)));
}

TEST_F(WaveOutTest, plays_a_loop_as_often_as_it_says) {
    for (DWORD loops : {1, 2, 7}) {
        Emulator_RecordSounds(recording);
        HWAVEOUT output = open();
        Buffer buffer(countingBytes(64), loops);
        play(output, &buffer);
        Emulator_PassSoundTime(2 * loops - 1);
        EXPECT_FALSE(buffer.isDone()) << loops;
        Emulator_PassSoundTime(1);
        EXPECT_TRUE(buffer.isDone()) << loops;
        close(output);
        FileBytes expected;
        for (DWORD i = 0; i < loops; ++i) expected = expected + buffer.bytes;
        EXPECT_EQ(recorded(), stereoFile(expected)) << loops;
    }
}

TEST_F(WaveOutTest, plays_a_buffer_once_that_says_nothing_or_no_loops) {
    HWAVEOUT output = open();
    Buffer plain(countingBytes(32)), none(countingBytes(32, 50), 1);
    plain.header.dwLoops = 5;
    none.header.dwLoops = 0;
    play(output, &plain);
    play(output, &none);
    Emulator_PassSoundTime(100);
    EXPECT_TRUE(none.isDone());
    close(output);
    EXPECT_EQ(recorded(), stereoFile(plain.bytes + none.bytes));
}

TEST_F(WaveOutTest, refuses_a_loop_of_several_buffers) {
    HWAVEOUT output = open();
    for (DWORD half : {WHDR_BEGINLOOP, WHDR_ENDLOOP}) {
        Buffer buffer(countingBytes(32), 2);
        waveOutPrepareHeader(output, &buffer.header, sizeof(WAVEHDR));
        buffer.header.dwFlags = WHDR_PREPARED | half;
        EXPECT_EQ(waveOutWrite(output, &buffer.header, sizeof(WAVEHDR)),
                  MMRESULT(MMSYSERR_NOTSUPPORTED));
    }
    close(output);
}

TEST_F(WaveOutTest, is_done_with_an_empty_buffer_at_once_however_often_it_loops) {
    HWAVEOUT output = open();
    Buffer buffer({}, 0x7FFFFFFF);
    play(output, &buffer);
    WaitForSingleObject(done, INFINITE);
    EXPECT_TRUE(buffer.isDone());
    close(output);
    EXPECT_EQ(recorded(), stereoFile({}));
}

TEST_F(WaveOutTest, gives_all_buffers_back_on_a_reset) {
    HWAVEOUT output = open();
    Buffer endless(countingBytes(96), 0x7FFFFFFF), never(countingBytes(32));
    play(output, &endless);
    play(output, &never);
    Emulator_PassSoundTime(7);
    EXPECT_FALSE(endless.isDone());
    EXPECT_EQ(waveOutReset(output), MMSYSERR_NOERROR);
    ASSERT_EQ(told.size(), 3u);
    EXPECT_EQ(told[1].header, &endless.header);
    EXPECT_EQ(told[2].header, &never.header);
    EXPECT_TRUE(endless.isDone() && never.isDone());
    EXPECT_EQ(waveOutReset(output), MMSYSERR_NOERROR) << "with nothing to give back";
    close(output);
    FileBytes expected = endless.bytes + endless.bytes + countingBytes(32);
    EXPECT_EQ(recorded(), stereoFile(expected));
}

TEST_F(WaveOutTest, plays_again_after_a_reset) {
    HWAVEOUT output = open();
    Buffer first(countingBytes(320)), second(countingBytes(32, 70));
    play(output, &first);
    waveOutReset(output);
    play(output, &second);
    Emulator_PassSoundTime(1);
    EXPECT_TRUE(second.isDone());
    close(output);
    EXPECT_EQ(recorded(), stereoFile(second.bytes));
}

TEST_F(WaveOutTest, plays_several_outputs_at_a_time_each_into_its_file) {
    HWAVEOUT output = open();
    HWAVEOUT other = open(formatOf(WAVE_FORMAT_MULAW, 1, 8000, 8));
    EXPECT_EQ(Emulator_CountWaveOutputs(), 2);
    Buffer first(countingBytes(64)), second(countingBytes(16, 90));
    play(output, &first);
    play(other, &second);
    Emulator_PassSoundTime(2);
    EXPECT_TRUE(first.isDone() && second.isDone());
    close(other);
    close(output);
    EXPECT_EQ(recorded(), stereoFile(first.bytes));
    EXPECT_EQ(readFile("C:\\played-2.wav"),
              waveFile(waveFormat(WAVE_FORMAT_MULAW, 1, 8000, 8), second.bytes));
}

TEST_F(WaveOutTest, writes_no_file_when_it_was_not_told_to) {
    Emulator_RecordSounds(nullptr);
    DeleteFileW(recording);
    close(open());
    EXPECT_EQ(GetFileAttributesW(recording), INVALID_FILE_ATTRIBUTES);
}

TEST_F(WaveOutTest, has_a_file_that_is_whole_while_it_plays) {
    HWAVEOUT output = open();
    Buffer buffer(countingBytes(64), 100);
    play(output, &buffer);
    Emulator_PassSoundTime(2);
    EXPECT_EQ(recorded(), stereoFile(buffer.bytes));
    waveOutReset(output);
    close(output);
}

static LONGLONG microsecondsNow() {
    LARGE_INTEGER frequency, ticks;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&ticks);
    return ticks.QuadPart * 1000000 / frequency.QuadPart;
}

TEST_F(WaveOutTest, takes_the_time_that_a_sound_takes) {
    Emulator_SetSoundSpeed(1);
    HWAVEOUT output = open();
    Buffer buffer(countingBytes(640), 5); // 100 ms
    LONGLONG before = microsecondsNow();
    play(output, &buffer);
    WaitForSingleObject(done, INFINITE);
    EXPECT_GE(microsecondsNow() - before, 100000);
    close(output);
    FileBytes samples = recorded();
    EXPECT_EQ(samples.size(), 44u + 5 * 640);
}

TEST_F(WaveOutTest, plays_faster_when_told) {
    Emulator_RecordSounds(nullptr);
    HWAVEOUT output = open();
    Buffer buffer(countingBytes(32000), 3600); // an hour
    play(output, &buffer);
    Emulator_SetSoundSpeed(1000000);
    WaitForSingleObject(done, INFINITE);
    EXPECT_TRUE(buffer.isDone());
    close(output);
}

TEST_F(WaveOutTest, stands_still_when_told) {
    Emulator_SetSoundSpeed(1000000);
    Emulator_SetSoundSpeed(0);
    HWAVEOUT output = open();
    Buffer buffer(countingBytes(4));
    play(output, &buffer);
    Emulator_PassSoundTime(0);
    EXPECT_FALSE(buffer.isDone());
    Emulator_PassSoundTime(1);
    EXPECT_TRUE(buffer.isDone());
    close(output);
}
