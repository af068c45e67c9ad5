// What a sound asks the output, and what becomes of it when that fails.

#include "faults.h"
#include "process_leaks.h"
#include "sound_fixture.h"
#include <algorithm>

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

TEST_F(SoundTest, hears_of_an_output_only_that_it_opens_closes_and_has_played) {
    using Changed = void CALLBACK(HWAVEOUT, UINT, DWORD_PTR, DWORD_PTR, DWORD_PTR);
    openings.clear();
    {
        Faults faults;
        faults.replace("waveOutOpen", reinterpret_cast<void*>(recordOpening));
        play(monoFile(countingBytes(8)), -1);
    }
    ASSERT_EQ(openings.size(), 2u);
    const SoundPlayer* player = record()->player;
    HWAVEOUT device = player->device;
    auto* changed = reinterpret_cast<Changed*>(openings[1].callback);
    for (UINT other : {0u, WOM_OPEN - 1u, WOM_DONE + 1u})
        changed(nullptr, other, openings[1].instance, 0, 0);
    EXPECT_EQ(player->device, device);
    changed(device, WOM_CLOSE, openings[1].instance, 0, 0);
    EXPECT_EQ(player->device, nullptr);
    changed(device, WOM_OPEN, openings[1].instance, 0, 0);
    EXPECT_EQ(player->device, device);
    record()->player->device = device; // by which it ends
    EXPECT_EQ(WaitForSingleObject(player->doneEvent, 0), DWORD(WAIT_TIMEOUT));
    EXPECT_EQ(record()->state, 2);
    stop();
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

TEST_F(FailingSoundTest, leaves_an_output_what_it_goes_on_with) {
    for (const char* refused : {"waveOutReset", "waveOutClose"}) {
        jint old = sound;
        sound = call(OS::Sound_New);
        play(monoFile(countingBytes(8)), -1);
        HWAVEOUT refusing = record()->player->device;
        {
            Faults faults;
            faults.fail(refused, 1, 0, MMSYSERR_NODRIVER);
            stop();
        }
        play(monoFile(countingBytes(8)));
        pass(1);
        EXPECT_EQ(waitForEnd(), 0u) << "another player plays after " << refused;
        dispose();
        sound = old;
        pass(3);
        output<decltype(&waveOutReset)>("waveOutReset")(refusing);
        EXPECT_EQ(output<decltype(&waveOutClose)>("waveOutClose")(refusing), MMSYSERR_NOERROR);
    }
}

TEST_F(FailingSoundTest, ends_whichever_call_of_the_output_fails) {
    for (const char* function :
         {"waveOutOpen", "waveOutPrepareHeader", "waveOutWrite", "waveOutUnprepareHeader"}) {
        NothingLeft nothingLeft;
        jint old = sound;
        Faults faults;
        faults.fail(function, 0);
        sound = call(OS::Sound_New);
        play(monoFile(countingBytes(8)), -1);
        dispose();
        EXPECT_TRUE(faults.hasFailed()) << function;
        sound = old;
    }
    vm.reports.clear();
}
