// Sounds that several threads use at a time.

#include "emulator.h"
#include "leaks.h"
#include "process_leaks.h"
#include "sound/sound.h"
#include "sound_files.h"
#include <functional>
#include <gtest/gtest.h>

static const int rounds = leakRounds() / 5;

namespace {

// Threads that start their work at the same moment.
class Crew {
  public:
    explicit Crew(std::vector<std::function<void()>> work) : jobs(std::move(work)) {
        HANDLE threads[MAXIMUM_WAIT_OBJECTS];
        for (size_t i = 0; i < jobs.size(); ++i)
            threads[i] = CreateThread(nullptr, 0, run, new Job{this, i}, 0, nullptr);
        SetEvent(go);
        for (size_t i = 0; i < jobs.size(); ++i) { // the device waits for one at a time
            WaitForSingleObject(threads[i], INFINITE);
            CloseHandle(threads[i]);
        }
        CloseHandle(go);
    }
    Crew(const Crew&) = delete;
    Crew& operator=(const Crew&) = delete;

  private:
    struct Job {
        Crew* crew;
        size_t number;
    };
    static DWORD WINAPI run(void* argument) {
        auto* job = static_cast<Job*>(argument);
        WaitForSingleObject(job->crew->go, INFINITE);
        job->crew->jobs[job->number]();
        delete job;
        return 0;
    }

    std::vector<std::function<void()>> jobs;
    HANDLE go = CreateEventW(nullptr, TRUE, FALSE, nullptr);
};

} // namespace

class SoundThreadsTest : public testing::Test {
  protected:
    SoundThreadsTest() { Emulator_SetSoundSpeed(0); }
    ~SoundThreadsTest() override { Emulator_SetSoundSpeed(1); }

    static SoundRecord* make() {
        ErrorRecord error = {};
        SoundRecord* sound = Sound_New(&error);
        EXPECT_EQ(error.code, errorNone);
        return sound;
    }
    void play(SoundRecord* sound, LONG loops) {
        FileBytes copy = file;
        ErrorRecord error = {};
        Sound_Play(sound, {reinterpret_cast<jbyte*>(copy.data()), static_cast<jint>(copy.size())},
                   copy.size(), loops, &error);
        EXPECT_EQ(error.code, errorNone);
    }
    static void stop(SoundRecord* sound) {
        ErrorRecord error = {};
        Sound_Stop(sound, &error);
        EXPECT_EQ(error.code, errorNone);
    }
    static void dispose(SoundRecord* sound) {
        ErrorRecord error = {};
        Sound_Dispose(sound, &error);
        EXPECT_EQ(error.code, errorNone);
    }
    static void expectSilence() { EXPECT_EQ(Emulator_CountWaveOutputs(), 0); }

    const FileBytes file = waveFile(waveFormat(1, 1, 8000, 8), countingBytes(8));
};

TEST_F(SoundThreadsTest, a_sound_is_stopped_while_it_starts) {
    NothingLeft nothingLeft;
    SoundRecord* sound = make();
    for (int i = 0; i < rounds; ++i) {
        Crew crew({[&] { play(sound, -1); }, [&] { stop(sound); }});
        stop(sound);
        expectSilence();
    }
    dispose(sound);
}

TEST_F(SoundThreadsTest, a_sound_is_stopped_by_several_at_once) {
    NothingLeft nothingLeft;
    SoundRecord* sound = make();
    for (int i = 0; i < rounds; ++i) {
        play(sound, -1);
        auto stopIt = [&] {
            stop(sound);
            expectSilence();
        };
        Crew crew({stopIt, stopIt, stopIt});
    }
    dispose(sound);
}

TEST_F(SoundThreadsTest, a_sound_is_stopped_twice_by_one) {
    NothingLeft nothingLeft;
    SoundRecord* sound = make();
    for (int i = 0; i < rounds; ++i) {
        play(sound, -1);
        stop(sound);
        stop(sound);
        expectSilence();
    }
    dispose(sound);
}

TEST_F(SoundThreadsTest, a_sound_is_played_by_several_at_once) {
    NothingLeft nothingLeft;
    SoundRecord* sound = make();
    for (int i = 0; i < rounds; ++i) {
        auto playIt = [&] { play(sound, -1); };
        Crew crew({playIt, playIt, playIt});
        EXPECT_EQ(Emulator_CountWaveOutputs(), 3);
        stop(sound);
        expectSilence();
    }
    dispose(sound);
}

TEST_F(SoundThreadsTest, a_sound_is_stopped_while_it_ends) {
    NothingLeft nothingLeft;
    SoundRecord* sound = make();
    for (int i = 0; i < rounds; ++i) {
        play(sound, 0);
        Crew crew({[&] { stop(sound); }, [] { Emulator_PassSoundTime(1); }});
        expectSilence();
    }
    dispose(sound);
}

TEST_F(SoundThreadsTest, a_sound_is_played_while_it_ends) {
    NothingLeft nothingLeft;
    SoundRecord* sound = make();
    for (int i = 0; i < rounds; ++i) {
        play(sound, 0);
        Crew crew({[&] { play(sound, 0); }, [] { Emulator_PassSoundTime(1); }});
        stop(sound);
        expectSilence();
    }
    dispose(sound);
}

TEST_F(SoundThreadsTest, a_sound_is_disposed_of_by_another_while_it_plays) {
    NothingLeft nothingLeft;
    for (int i = 0; i < rounds; ++i) {
        SoundRecord* sound = make();
        play(sound, -1);
        if (i & 1) play(sound, 0);
        Crew crew({[&] { dispose(sound); }, [] { Emulator_PassSoundTime(1); }});
        expectSilence();
    }
}

TEST_F(SoundThreadsTest, sounds_of_several_live_side_by_side) {
    NothingLeft nothingLeft;
    auto live = [&] {
        for (int i = 0; i < rounds; ++i) {
            SoundRecord* sound = make();
            play(sound, i % 4 - 1);
            if (i & 1) stop(sound);
            dispose(sound);
        }
    };
    Crew crew({live, live, live, [] {
                   for (int i = 0; i < rounds; ++i) Emulator_PassSoundTime(1);
               }});
    expectSilence();
}

TEST_F(SoundThreadsTest, everybody_does_everything_with_one_sound) {
    NothingLeft nothingLeft;
    SoundRecord* sound = make();
    auto playAndStop = [&](int seed) {
        return [&, seed] {
            for (int i = seed; i < seed + rounds; ++i) {
                if (i * 7 % 3)
                    play(sound, i % 3 - 1);
                else
                    stop(sound);
            }
        };
    };
    Crew crew({playAndStop(0), playAndStop(1), playAndStop(5), [] {
                   for (int i = 0; i < rounds; ++i) Emulator_PassSoundTime(1);
               }});
    stop(sound);
    expectSilence();
    EXPECT_EQ(sound->player->earlier, nullptr);
    EXPECT_EQ(sound->state, soundIdle);
    dispose(sound);
}
