#pragma once
// Sounds through the natives, on an output whose time the tests let pass.

#include "device.h"
#include "emulator.h"
#include "sound/sound.h"
#include "sound_files.h"

inline constexpr wchar_t recording[] = L"C:\\sound.wav";
inline constexpr WORD pcm = WAVE_FORMAT_PCM;

inline FileBytes operator*(const FileBytes& bytes, int times) {
    FileBytes repeated;
    for (int i = 0; i < times; ++i) repeated.insert(repeated.end(), bytes.begin(), bytes.end());
    return repeated;
}

// 8 bytes a millisecond.
inline FileBytes monoFile(const FileBytes& samples) {
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
