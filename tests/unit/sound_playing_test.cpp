// Sounds that are stopped, disposed of and played again.

#include "faults.h"
#include "process_leaks.h"
#include "sound_fixture.h"

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
