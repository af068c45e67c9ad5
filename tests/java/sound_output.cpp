// The emulated device's waveform output, for Java tests: com.nuvik.tests.SoundOutput.

#include "emulator.h"
#include <jni.h>
#include <vector>

static const wchar_t recording[] = L"C:\\java-sound.wav";

static std::vector<jbyte> readRecording() {
    HANDLE file = CreateFileW(recording, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                              OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return {};
    std::vector<jbyte> bytes(GetFileSize(file, nullptr));
    DWORD count = 0;
    ReadFile(file, bytes.data(), bytes.size(), &count, nullptr);
    CloseHandle(file);
    bytes.resize(count);
    return bytes;
}

extern "C" {

__declspec(dllexport) void JNICALL
    Java_com_nuvik_tests_SoundOutput_setSpeed(JNIEnv*, jclass, jint factor) {
    Emulator_SetSoundSpeed(factor);
}

__declspec(dllexport) void JNICALL
    Java_com_nuvik_tests_SoundOutput_pass(JNIEnv*, jclass, jint milliseconds) {
    Emulator_PassSoundTime(milliseconds);
}

__declspec(dllexport) jint JNICALL Java_com_nuvik_tests_SoundOutput_count(JNIEnv*, jclass) {
    return Emulator_CountWaveOutputs();
}

__declspec(dllexport) void JNICALL
    Java_com_nuvik_tests_SoundOutput_record(JNIEnv*, jclass, jboolean wanted) {
    Emulator_RecordSounds(wanted ? recording : nullptr);
}

__declspec(dllexport) jbyteArray JNICALL
    Java_com_nuvik_tests_SoundOutput_recorded(JNIEnv* env, jclass) {
    std::vector<jbyte> bytes = readRecording();
    jbyteArray array = env->NewByteArray(bytes.size());
    if (array) env->SetByteArrayRegion(array, 0, bytes.size(), bytes.data());
    return array;
}
}
