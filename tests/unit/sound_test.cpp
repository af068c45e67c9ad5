// Sounds through the natives, on an output whose time the tests let pass.

#include "device.h"
#include "emulator.h"
#include "faults.h"
#include "process_leaks.h"
#include "sound/sound.h"
#include "sound_files.h"
#include <algorithm>
#include <mmreg.h>

static const wchar_t recording[] = L"C:\\sound.wav";
static const WORD pcm = WAVE_FORMAT_PCM;

static FileBytes operator*(const FileBytes& bytes, int times) {
    FileBytes repeated;
    for (int i = 0; i < times; ++i) repeated.insert(repeated.end(), bytes.begin(), bytes.end());
    return repeated;
}

// 8 bytes a millisecond.
static FileBytes monoFile(const FileBytes& samples) {
    return waveFile(waveFormat(pcm, 1, 8000, 8), samples);
}

class SoundTest : public DeviceTest {
  protected:
    SoundTest() {
        Emulator_SetSoundSpeed(0);
        Emulator_RecordSounds(recording);
        sound = call(OS::Sound_New);
    }
    ~SoundTest() override {
        dispose();
        EXPECT_EQ(Emulator_CountWaveOutputs(), 0);
        Emulator_RecordSounds(nullptr);
        Emulator_SetSoundSpeed(1);
        EXPECT_TRUE(vm.reports.empty());
    }

    SoundRecord* record() const { return reinterpret_cast<SoundRecord*>(sound); }
    void playBytes(jbyteArray bytes, jint length, jint loops = 0) {
        call(OS::Sound_Play, sound, bytes, length, loops);
    }
    jbyteArray javaBytes(const FileBytes& file) { return vm.newBytes({file.begin(), file.end()}); }
    void play(const FileBytes& file, jint loops = 0) {
        playBytes(javaBytes(file), file.size(), loops);
    }
    void stop() { call(OS::Sound_Stop, sound); }
    void dispose() {
        call(OS::Sound_Dispose, sound);
        sound = 0;
    }
    static void pass(DWORD milliseconds) { Emulator_PassSoundTime(milliseconds); }

    // The end of the last playback, to the last thing that its thread does.
    DWORD waitForEnd() const {
        DWORD code = STILL_ACTIVE;
        EXPECT_EQ(WaitForSingleObject(record()->player->thread, INFINITE), WAIT_OBJECT_0);
        EXPECT_TRUE(GetExitCodeThread(record()->player->thread, &code));
        return code;
    }
    static FileBytes played() { return readFile("C:\\sound.wav"); }

    void expectFailure(const std::string& native, jint code) {
        TestVm::Report report = onlyReport();
        EXPECT_EQ(report.function, native);
        EXPECT_EQ(report.code, code);
        EXPECT_FALSE(report.hasMessage);
    }
    // It failed and left nothing that plays.
    void expectNothingPlays() {
        expectFailure("Sound_Play", -3);
        EXPECT_EQ(Emulator_CountWaveOutputs(), 0);
        EXPECT_EQ(record()->player->thread, nullptr);
        EXPECT_EQ(record()->samples.sampleData, nullptr);
        EXPECT_EQ(record()->data, nullptr);
    }

    jint sound;
};

TEST_F(SoundTest, has_never_played_when_it_is_new) {
    EXPECT_EQ(record()->state, 0);
    EXPECT_EQ(record()->samples.sampleData, nullptr);
    SoundPlayer* player = record()->player;
    EXPECT_EQ(player->thread, nullptr);
    EXPECT_EQ(player->device, nullptr);
    for (HANDLE event : {player->doneEvent, player->startedEvent, player->stoppedEvent}) {
        EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_OBJECT_0) << "signalled";
        EXPECT_EQ(WaitForSingleObject(event, 0), DWORD(WAIT_TIMEOUT)) << "resets itself";
    }
}

TEST_F(SoundTest, has_no_preferred_chunk_size) {
    for (jint handle : std::vector<jint>{sound, 0, 1, -1})
        EXPECT_EQ(call(OS::Sound_GetPreferredChunkSize, handle), -1);
}

TEST_F(SoundTest, without_memory_is_an_error) {
    NothingLeft nothingLeft;
    Faults faults;
    faults.fail("LocalAlloc");
    EXPECT_EQ(call(OS::Sound_New), 0);
    expectFailure("Sound_New", -4);
}

TEST_F(SoundTest, without_a_player_is_an_error) {
    NothingLeft nothingLeft;
    {
        Faults faults;
        faults.fail("LocalAlloc", 2);
        EXPECT_EQ(call(OS::Sound_New), 0);
        expectFailure("Sound_New", -3);
    }
    for (int nth : {1, 2, 3}) {
        Faults faults;
        faults.fail("CreateEventW", nth);
        EXPECT_EQ(call(OS::Sound_New), 0);
        expectFailure("Sound_New", -3);
    }
}

TEST_F(SoundTest, plays_a_file_once) {
    FileBytes samples = countingBytes(80);
    play(monoFile(samples));
    EXPECT_EQ(record()->state, 2);
    EXPECT_EQ(record()->dataLength, 44 + 80);
    EXPECT_EQ(record()->data, nullptr);
    pass(9);
    EXPECT_EQ(record()->state, 2);
    pass(1);
    EXPECT_EQ(waitForEnd(), 0u);
    EXPECT_EQ(record()->state, 1);
    EXPECT_EQ(record()->samples.sampleData, nullptr);
    EXPECT_EQ(record()->player->device, nullptr);
    EXPECT_EQ(played(), monoFile(samples));
}

TEST_F(SoundTest, plays_a_file_once_more_than_it_is_looped) {
    FileBytes samples = countingBytes(40);
    for (jint loops : {1, 2, 6}) {
        Emulator_RecordSounds(recording);
        play(monoFile(samples), loops);
        pass(5 * (loops + 1) - 1);
        EXPECT_EQ(record()->state, 2);
        pass(1);
        EXPECT_EQ(waitForEnd(), 0u);
        EXPECT_EQ(played(), monoFile(samples * (loops + 1))) << loops;
    }
}

TEST_F(SoundTest, plays_for_ever_until_it_is_stopped) {
    FileBytes samples = countingBytes(40);
    play(monoFile(samples), -1);
    EXPECT_EQ(record()->player->header.dwLoops, 0x7FFFFFFFu);
    pass(60000);
    EXPECT_EQ(record()->state, 2);
    pass(3);
    stop();
    FileBytes expected = samples * 12000;
    expected.insert(expected.end(), samples.begin(), samples.begin() + 24);
    EXPECT_EQ(played(), monoFile(expected));
}

TEST_F(SoundTest, takes_other_numbers_of_loops_as_they_come) {
    const struct {
        jint loops;
        DWORD rounds;
    } rows[] = {{0, 1}, {1, 2}, {0x7FFFFFFE, 0x7FFFFFFF}, {0x7FFFFFFF, 0x80000000}, {-2, ~0u}};
    for (const auto& row : rows) {
        play(monoFile(countingBytes(40)), row.loops);
        EXPECT_EQ(record()->player->header.dwLoops, row.rounds) << row.loops;
        EXPECT_EQ(record()->player->header.dwFlags & (WHDR_BEGINLOOP | WHDR_ENDLOOP), 12u);
        stop();
    }
}

TEST_F(SoundTest, without_samples_is_over_at_once) {
    play(monoFile({}), -1);
    EXPECT_EQ(waitForEnd(), 0u);
    EXPECT_EQ(played(), monoFile({}));
}

TEST_F(SoundTest, needs_its_file_only_until_it_plays) {
    FileBytes samples = countingBytes(80);
    FileBytes file = monoFile(samples);
    jbyteArray bytes = javaBytes(file);
    playBytes(bytes, file.size());
    EXPECT_EQ(vm.unreleased, 0);
    jbyte* elements = vm.env()->GetByteArrayElements(bytes, nullptr);
    std::fill_n(elements, file.size(), 0);
    vm.env()->ReleaseByteArrayElements(bytes, elements, 0);
    pass(10);
    waitForEnd();
    EXPECT_EQ(played(), monoFile(samples));
}

TEST_F(SoundTest, releases_its_file_for_changes_to_be_kept) {
    Faults faults;
    vm.calls.clear();
    play(monoFile(countingBytes(8)));
    EXPECT_EQ(vm.countCalls("GetByteArrayElements"), 1);
    EXPECT_EQ(vm.countCalls("ReleaseByteArrayElements"), 1);
    stop();
}

TEST_F(SoundTest, does_not_begin_with_a_file_that_the_vm_cannot_give) {
    jbyteArray bytes = javaBytes(monoFile(countingBytes(8)));
    Faults faults;
    vm.failCall("GetByteArrayElements");
    playBytes(bytes, 52);
    EXPECT_FALSE(vm.pendingException.empty());
    vm.clearException();
    EXPECT_TRUE(faults.calls().empty());
}

TEST_F(SoundTest, of_unsupported_bytes_is_an_error_and_starts_nothing) {
    NothingLeft nothingLeft;
    Faults faults;
    for (const FileBytes& file :
         {FileBytes{}, FileBytes(64), monoFile(countingBytes(8)) + FileBytes{0},
          waveFile(waveFormat(3, 1, 8000, 32), countingBytes(8)),
          sndFile(6, 8000, 1, countingBytes(8))}) {
        play(file);
        expectNothingPlays();
        EXPECT_EQ(record()->state, 1);
    }
    EXPECT_EQ(faults.countCalls("waveOutOpen"), 0);
    EXPECT_EQ(faults.countCalls("CreateThread"), 0);
}

TEST_F(SoundTest, of_no_bytes_is_an_error) {
    for (jint length : std::vector<jint>{0, 44, -1, LONG_MIN, LONG_MAX}) {
        playBytes(nullptr, length);
        expectNothingPlays();
    }
}

TEST_F(SoundTest, is_no_longer_than_its_bytes) {
    FileBytes file = monoFile(countingBytes(8));
    jbyteArray bytes = javaBytes(file);
    for (jint length : std::vector<jint>{53, 51, 0, -1, -52, LONG_MIN, LONG_MAX}) {
        playBytes(bytes, length);
        expectNothingPlays();
    }
    FileBytes longer = monoFile(countingBytes(4096));
    playBytes(javaBytes(FileBytes(longer.begin(), longer.end() - 1)), longer.size());
    expectNothingPlays();
    playBytes(javaBytes(file + FileBytes(100)), file.size());
    pass(1);
    EXPECT_EQ(waitForEnd(), 0u) << "bytes behind the file";
}

TEST_F(SoundTest, that_the_device_does_not_play_is_an_error) {
    NothingLeft nothingLeft;
    for (const FileBytes& file :
         {collectedFile("audiodata/pluck-pcm24.wav"), collectedFile("audiodata/pluck-pcm32.au"),
          waveFile(waveFormat(pcm, 6, 8000, 8), countingBytes(60)),
          waveFile(waveFormat(pcm, 1, 0, 8), countingBytes(60)),
          waveFile(waveFormat(pcm, 0xFFFF, 0xFFFFFFFF, 0xFFFF), countingBytes(60)),
          sndFile(3, 0x80000000, 0x80000001, countingBytes(60))}) {
        play(file, -1);
        expectNothingPlays();
    }
}

// Other people's files, and how the device has to be told of them.
static const struct {
    const char* name;
    WORD tag, channels;
    DWORD rate;
    WORD bits;
    size_t place;
} collection[] = {
    {"audiodata/pluck-pcm8.wav", 1, 2, 11025, 8, 142},
    {"audiodata/pluck-pcm16.wav", 1, 2, 11025, 16, 142},
    {"audiodata/pluck-pcm8.au", 1, 2, 11025, 8, 24},
    {"audiodata/pluck-pcm16.au", 1, 2, 11025, 16, 24},
    {"audiodata/pluck-ulaw.au", 7, 2, 11025, 8, 24},
    {"audiotest.au", 7, 1, 8012, 8, 34},
    {"sndhdrdata/sndhdr.wav", 1, 2, 44100, 16, 44},
    {"sndhdrdata/sndhdr.au", 1, 2, 44100, 16, 44},
};

TEST_F(SoundTest, of_other_peoples_files_is_played_sample_by_sample) {
    for (const auto& row : collection) {
        FileBytes file = collectedFile(row.name);
        FileBytes samples(file.begin() + row.place, file.end());
        for (jint loops : {0, 3}) {
            Emulator_RecordSounds(recording);
            play(file, loops);
            pass(60000);
            EXPECT_EQ(waitForEnd(), 0u);
            EXPECT_EQ(played(), waveFile(waveFormat(row.tag, row.channels, row.rate, row.bits),
                                         samples * (loops + 1)))
                << row.name << " " << loops;
        }
    }
}

TEST_F(SoundTest, of_a_law_is_played) {
    FileBytes file = waveFile(waveFormat(WAVE_FORMAT_ALAW, 2, 8000, 8), countingBytes(32));
    play(file);
    pass(2);
    EXPECT_EQ(waitForEnd(), 0u);
    EXPECT_EQ(played(), file);
}

TEST_F(SoundTest, plays_in_real_time_to_its_end) {
    Emulator_SetSoundSpeed(1);
    FileBytes samples = countingBytes(400);
    play(monoFile(samples), 1);
    EXPECT_EQ(waitForEnd(), 0u);
    EXPECT_EQ(played(), monoFile(samples * 2));
}

static std::vector<std::string> waveCalls(const Faults& faults) {
    std::vector<std::string> calls = faults.calls();
    calls.erase(std::remove_if(calls.begin(), calls.end(),
                               [](const std::string& name) { return name.find("waveOut") != 0; }),
                calls.end());
    return calls;
}

TEST_F(SoundTest, asks_opens_prepares_writes_and_takes_all_back) {
    Faults faults;
    play(monoFile(countingBytes(8)));
    pass(1);
    waitForEnd();
    EXPECT_EQ(waveCalls(faults),
              (std::vector<std::string>{"waveOutOpen", "waveOutOpen", "waveOutPrepareHeader",
                                        "waveOutWrite", "waveOutUnprepareHeader", "waveOutClose"}));
}

TEST_F(SoundTest, is_stopped_by_a_reset) {
    Faults faults;
    play(monoFile(countingBytes(8)), -1);
    stop();
    EXPECT_EQ(waveCalls(faults),
              (std::vector<std::string>{"waveOutOpen", "waveOutOpen", "waveOutPrepareHeader",
                                        "waveOutWrite", "waveOutReset", "waveOutUnprepareHeader",
                                        "waveOutClose"}));
}

namespace {

struct Opening {
    HWAVEOUT* result;
    UINT id;
    WAVEFORMATEX format;
    DWORD_PTR callback, instance;
    DWORD flags;
};
std::vector<Opening> openings;

} // namespace

static MMRESULT WINAPI recordOpening(HWAVEOUT* result, UINT id, const WAVEFORMATEX* format,
                                     DWORD_PTR callback, DWORD_PTR instance, DWORD flags) {
    openings.push_back({result, id, *format, callback, instance, flags});
    using Open = decltype(&recordOpening);
    auto open = reinterpret_cast<Open>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"coredll.dll"), "waveOutOpen")));
    return open(result, id, format, callback, instance, flags);
}

TEST_F(SoundTest, tells_the_output_what_it_needs) {
    openings.clear();
    Faults faults;
    faults.replace("waveOutOpen", reinterpret_cast<void*>(recordOpening));
    play(waveFile(waveFormat(pcm, 2, 22050, 16), countingBytes(8)));
    stop();
    ASSERT_EQ(openings.size(), 2u);
    SoundPlayer* player = record()->player;
    EXPECT_EQ(openings[0].result, nullptr);
    EXPECT_EQ(openings[0].callback, 0u);
    EXPECT_EQ(openings[0].instance, 0u);
    EXPECT_EQ(openings[0].flags, 3u);
    EXPECT_EQ(openings[1].result, &player->device);
    EXPECT_NE(openings[1].callback, 0u);
    EXPECT_EQ(openings[1].instance, reinterpret_cast<DWORD_PTR>(player));
    EXPECT_EQ(openings[1].flags, 0x30002u);
    for (const Opening& opening : openings) {
        EXPECT_EQ(opening.id, WAVE_MAPPER);
        EXPECT_EQ(opening.format.wFormatTag, 1);
        EXPECT_EQ(opening.format.nChannels, 2);
        EXPECT_EQ(opening.format.nSamplesPerSec, 22050u);
        EXPECT_EQ(opening.format.nAvgBytesPerSec, 88200u);
        EXPECT_EQ(opening.format.nBlockAlign, 4);
        EXPECT_EQ(opening.format.wBitsPerSample, 16);
        EXPECT_EQ(opening.format.cbSize, 0);
    }
}

static SIZE_T threadStack;
static void* threadArgument;

static HANDLE WINAPI recordThread(SECURITY_ATTRIBUTES* attributes, SIZE_T stack,
                                  LPTHREAD_START_ROUTINE start, void* argument, DWORD flags,
                                  DWORD* id) {
    threadStack = stack;
    threadArgument = argument;
    return CreateThread(attributes, stack, start, argument, flags, id);
}

TEST_F(SoundTest, plays_on_a_thread_with_a_small_stack) {
    Faults faults;
    faults.replace("CreateThread", reinterpret_cast<void*>(recordThread));
    play(monoFile(countingBytes(8)));
    EXPECT_EQ(threadStack, 0x10000u);
    EXPECT_EQ(threadArgument, record());
    stop();
}

TEST_F(SoundTest, that_is_stopped_has_freed_its_samples_and_ended_its_thread) {
    long blocks = countHeapBlocks();
    for (jint loops : {0, 5, -1}) {
        play(monoFile(countingBytes(800)), loops);
        EXPECT_EQ(countHeapBlocks(), blocks + 1);
        pass(3);
        stop();
        EXPECT_EQ(countHeapBlocks(), blocks);
        EXPECT_EQ(record()->state, 1);
        EXPECT_EQ(record()->samples.sampleData, nullptr);
        EXPECT_EQ(Emulator_CountWaveOutputs(), 0);
        EXPECT_EQ(WaitForSingleObject(record()->player->thread, 0), WAIT_OBJECT_0);
    }
}

TEST_F(SoundTest, that_does_not_play_is_stopped_at_once) {
    Faults faults;
    stop();
    stop();
    play(monoFile(countingBytes(8)));
    pass(1);
    waitForEnd();
    stop();
    stop();
    EXPECT_EQ(faults.countCalls("waveOutReset"), 0);
    EXPECT_EQ(record()->state, 1);
}

TEST_F(SoundTest, that_is_none_is_stopped_and_disposed_of) {
    Faults faults;
    call(OS::Sound_Stop, 0);
    call(OS::Sound_Dispose, 0);
    EXPECT_TRUE(faults.calls().empty());
}

TEST_F(SoundTest, stops_when_it_is_disposed_of) {
    NothingLeft nothingLeft;
    for (int i = 0; i < 10; ++i) {
        jint old = sound;
        sound = call(OS::Sound_New);
        play(monoFile(countingBytes(80)), -1);
        pass(i);
        dispose();
        sound = old;
        EXPECT_EQ(Emulator_CountWaveOutputs(), 0);
    }
}

TEST_F(SoundTest, plays_again_with_the_same_player) {
    play(monoFile(countingBytes(8)));
    pass(1);
    waitForEnd();
    SoundPlayer* player = record()->player;
    NothingLeft nothingLeft;
    Faults faults;
    for (uint8_t i = 0; i < 100; ++i) {
        Emulator_RecordSounds(recording);
        FileBytes file = monoFile(countingBytes(16, i));
        play(file);
        pass(2);
        waitForEnd();
        EXPECT_EQ(played(), file);
    }
    EXPECT_EQ(record()->player, player);
    EXPECT_EQ(faults.countCalls("CreateEventW"), 0);
}

TEST_F(SoundTest, is_played_on_top_of_itself_and_stopped_as_a_whole) {
    NothingLeft nothingLeft;
    FileBytes first = countingBytes(40), second = countingBytes(24, 100);
    jint old = sound;
    sound = call(OS::Sound_New);
    play(monoFile(first), -1);
    pass(5);
    play(monoFile(second), -1);
    EXPECT_EQ(Emulator_CountWaveOutputs(), 2);
    EXPECT_EQ(record()->state, 2);
    pass(15);
    stop();
    EXPECT_EQ(Emulator_CountWaveOutputs(), 0);
    EXPECT_EQ(record()->state, 1);
    EXPECT_EQ(record()->player->earlier, nullptr);
    EXPECT_EQ(played(), monoFile(first * 4));
    EXPECT_EQ(readFile("C:\\sound-2.wav"), monoFile(second * 5));
    dispose();
    sound = old;
}

TEST_F(SoundTest, tells_the_end_of_each_playback) {
    play(monoFile(countingBytes(8)));
    HANDLE first = record()->player->thread;
    play(monoFile(countingBytes(80)));
    pass(1);
    EXPECT_EQ(WaitForSingleObject(first, INFINITE), WAIT_OBJECT_0);
    EXPECT_EQ(record()->state, 1);
    EXPECT_NE(record()->samples.sampleData, nullptr);
    pass(9);
    waitForEnd();
    EXPECT_EQ(record()->state, 1);
    EXPECT_EQ(record()->samples.sampleData, nullptr);
}

TEST_F(SoundTest, drops_players_that_have_ended) {
    for (int i = 0; i < 10; ++i) {
        play(monoFile(countingBytes(8)));
        play(monoFile(countingBytes(8)));
        HANDLE earlier = record()->player->earlier->thread;
        EXPECT_EQ(record()->player->earlier->earlier, nullptr) << i;
        pass(1);
        EXPECT_EQ(WaitForSingleObject(earlier, INFINITE), WAIT_OBJECT_0);
        waitForEnd();
    }
}

TEST_F(SoundTest, that_plays_goes_on_when_another_file_cannot_be_played) {
    FileBytes samples = countingBytes(80);
    play(monoFile(samples));
    play(FileBytes(64));
    expectFailure("Sound_Play", -3);
    {
        Faults faults;
        faults.fail("CreateEventW", 2);
        play(monoFile(samples));
        // The player that the refused file got is still there.
        EXPECT_TRUE(vm.reports.empty());
    }
    HANDLE second = record()->player->thread;
    {
        Faults faults;
        faults.fail("CreateEventW", 2);
        play(monoFile(samples));
        expectFailure("Sound_Play", -3);
    }
    EXPECT_EQ(record()->player->thread, second);
    pass(10);
    waitForEnd();
    EXPECT_EQ(played(), monoFile(samples));
    EXPECT_EQ(readFile("C:\\sound-2.wav"), monoFile(samples));
}

class FailingSoundTest : public SoundTest {
  protected:
    // One call fails while a sound is started; nothing is left, and the next start succeeds.
    void expectRefusal(const char* function, int nth, DWORD value, LONG state) {
        SCOPED_TRACE(function);
        NothingLeft nothingLeft;
        {
            Faults faults;
            faults.fail(function, nth, ERROR_GEN_FAILURE, value);
            play(monoFile(countingBytes(8)), -1);
            EXPECT_TRUE(faults.hasFailed());
        }
        expectNothingPlays();
        EXPECT_EQ(record()->player->device, nullptr);
        EXPECT_EQ(record()->state, state);
    }
};

TEST_F(FailingSoundTest, is_told_when_memory_output_or_thread_are_missing) {
    expectRefusal("LocalAlloc", 1, 0, 1);
    expectRefusal("waveOutOpen", 1, WAVERR_BADFORMAT, 1);
    expectRefusal("waveOutOpen", 2, MMSYSERR_ALLOCATED, 2);
    expectRefusal("waveOutPrepareHeader", 1, MMSYSERR_NOMEM, 2);
    expectRefusal("CreateThread", 1, 0, 2);
    play(monoFile(countingBytes(8)));
    pass(1);
    EXPECT_EQ(waitForEnd(), 0u);
}

TEST_F(FailingSoundTest, is_not_told_when_the_output_refuses_the_buffer) {
    long blocks = countHeapBlocks();
    Faults faults;
    faults.fail("waveOutWrite", 1, 0, MMSYSERR_NOMEM);
    play(monoFile(countingBytes(8)), -1);
    EXPECT_TRUE(vm.reports.empty());
    EXPECT_EQ(waitForEnd(), 7u);
    EXPECT_EQ(record()->state, 1);
    EXPECT_EQ(record()->samples.sampleData, nullptr);
    EXPECT_EQ(countHeapBlocks(), blocks);
    EXPECT_EQ(Emulator_CountWaveOutputs(), 0);
}

TEST_F(FailingSoundTest, on_top_of_another_does_not_hide_its_end) {
    play(monoFile(countingBytes(8)));
    HANDLE first = record()->player->thread;
    {
        Faults faults;
        faults.fail("waveOutOpen", 2, 0, MMSYSERR_ALLOCATED);
        play(monoFile(countingBytes(8)));
        expectFailure("Sound_Play", -3);
    }
    EXPECT_EQ(record()->state, 2);
    pass(1);
    EXPECT_EQ(WaitForSingleObject(first, INFINITE), WAIT_OBJECT_0);
    EXPECT_EQ(record()->state, 1);
}

static HWAVEOUT unclosed;

static MMRESULT WINAPI refuseToClose(HWAVEOUT device) {
    unclosed = device;
    return WAVERR_STILLPLAYING;
}

TEST_F(FailingSoundTest, does_not_touch_an_output_again_that_does_not_close) {
    {
        Faults faults;
        faults.replace("waveOutClose", reinterpret_cast<void*>(refuseToClose));
        play(monoFile(countingBytes(8)));
        pass(1);
        waitForEnd();
        EXPECT_EQ(record()->player->device, nullptr);
        stop();
        EXPECT_EQ(faults.countCalls("waveOutReset"), 0);
        EXPECT_EQ(Emulator_CountWaveOutputs(), 1);
    }
    using Close = decltype(&refuseToClose);
    auto close = reinterpret_cast<Close>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"coredll.dll"), "waveOutClose")));
    EXPECT_EQ(close(unclosed), MMSYSERR_NOERROR);
}

// The functions of the output itself, past what a test lets fail.
template <class Function>
static Function output(const char* name) {
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"coredll.dll"), name)));
}

TEST_F(FailingSoundTest, is_stopped_although_the_output_refuses_to_be_reset) {
    play(monoFile(countingBytes(8)), -1);
    HWAVEOUT refusing = record()->player->device;
    {
        Faults faults;
        faults.fail("waveOutReset", 1, 0, MMSYSERR_NODRIVER);
        stop();
        EXPECT_TRUE(faults.hasFailed());
    }
    EXPECT_EQ(record()->state, 1);
    EXPECT_EQ(WaitForSingleObject(record()->player->thread, 0), WAIT_OBJECT_0);
    output<decltype(&waveOutReset)>("waveOutReset")(refusing);
    EXPECT_EQ(output<decltype(&waveOutClose)>("waveOutClose")(refusing), MMSYSERR_NOERROR);
}

TEST_F(FailingSoundTest, ends_whichever_call_of_the_output_fails) {
    for (const char* function : {"waveOutOpen", "waveOutPrepareHeader", "waveOutWrite",
                                 "waveOutReset", "waveOutUnprepareHeader", "waveOutClose"}) {
        NothingLeft nothingLeft;
        jint old = sound;
        Faults faults;
        faults.fail(function, 0);
        sound = call(OS::Sound_New);
        play(monoFile(countingBytes(8)), -1);
        HWAVEOUT opened = record()->player->device;
        dispose();
        EXPECT_TRUE(faults.hasFailed()) << function;
        sound = old;
        // What refused to stop or to close is left, and is the test's.
        if (!Emulator_CountWaveOutputs()) continue;
        output<decltype(&waveOutReset)>("waveOutReset")(opened);
        output<decltype(&waveOutClose)>("waveOutClose")(opened);
    }
    vm.reports.clear();
}

class SoundLeakTest : public SoundTest {};

TEST_F(SoundLeakTest, sounds_leave_nothing_behind) {
    Emulator_RecordSounds(nullptr);
    FileBytes file = monoFile(countingBytes(8));
    jbyteArray bytes = javaBytes(file);
    jint old = sound;
    NothingLeft nothingLeft;
    for (int i = 0; i < leakRounds(); ++i) {
        sound = call(OS::Sound_New);
        playBytes(bytes, file.size(), i % 3 - 1);
        if (i % 5 == 0) playBytes(bytes, file.size());
        if (i % 7 == 0) pass(1);
        if (i % 2) stop();
        dispose();
        vm.calls.clear();
    }
    sound = old;
}
