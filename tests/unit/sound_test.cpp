#include "faults.h"
#include "process_leaks.h"
#include "sound_fixture.h"
#include <mmreg.h>

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
