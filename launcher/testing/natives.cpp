// The natives of com.nuvik.testing.Emulated: what a test asks and tells the emulated device.

#include "display_thread.h"
#include "emulator.h"
#include "input.h"
#include "snapshot.h"
#include <jni.h>
#include <memory>
#include <vector>

static jstring toJava(JNIEnv* env, const std::wstring& text) {
    return env->NewString(reinterpret_cast<const jchar*>(text.data()),
                          static_cast<jsize>(text.size()));
}

#define NATIVE(type, name, ...)                                                                    \
    extern "C" __declspec(dllexport) type JNICALL Java_com_nuvik_testing_Emulated_##name(          \
        JNIEnv* env [[maybe_unused]], jclass __VA_OPT__(, ) __VA_ARGS__)

NATIVE(jboolean, hasDisplay) { return displayWindow() != nullptr; }

NATIVE(jboolean, awaitIdle, jint milliseconds) { return awaitIdle(milliseconds); }

NATIVE(jstring, tree, jint milliseconds) {
    auto tree = std::make_shared<std::wstring>();
    bool isTaken = doWhenIdle([tree] { *tree = takeSnapshot(); }, milliseconds);
    return isTaken ? toJava(env, *tree) : nullptr;
}

NATIVE(void, movePointer, jint x, jint y) { movePointer(x, y); }

NATIVE(void, pressPointer, jint x, jint y, jboolean down) { pressPointer(x, y, down); }

NATIVE(void, pressKey, jint key, jboolean down) { pressKey(key, down); }

NATIVE(void, typeCharacter, jchar character) { typeCharacter(character); }

NATIVE(jintArray, screenSize) {
    SIZE screen;
    Emulator_GetScreen(&screen);
    const jint size[] = {screen.cx, screen.cy, Emulator_GetVariety()->dotsPerInch};
    jintArray array = env->NewIntArray(3);
    if (array) env->SetIntArrayRegion(array, 0, 3, size);
    return array;
}

NATIVE(jboolean, copyScreen, jintArray pixels) {
    std::vector<DWORD> copy(env->GetArrayLength(pixels));
    if (!Emulator_CopyScreen(copy.data(), copy.size())) return false;
    env->SetIntArrayRegion(pixels, 0, static_cast<jsize>(copy.size()),
                           reinterpret_cast<const jint*>(copy.data()));
    return true;
}

// Ends whatever loop the display's thread is in.
NATIVE(void, quit) {
    HWND display = displayWindow();
    if (!display) return;
    DWORD thread = GetWindowThreadProcessId(display, nullptr);
    GUITHREADINFO info = {};
    info.cbSize = sizeof(info);
    bool isInMenu = GetGUIThreadInfo(thread, &info) && info.hwndMenuOwner;
    if (isInMenu) PostMessageW(info.hwndMenuOwner, WM_CANCELMODE, 0, 0);
    PostThreadMessageW(thread, WM_QUIT, 0, 0);
    PostMessageW(display, WM_NULL, 0, 0);
}

NATIVE(void, failCall, jint kind, jint number) {
    Emulator_FailCall(static_cast<EmulatorFailure>(kind), number);
}

// The file as the device's program sees it; null: no file.
NATIVE(void, recordSounds, jstring file) {
    if (!file) {
        Emulator_RecordSounds(nullptr);
        return;
    }
    const jchar* characters = env->GetStringChars(file, nullptr);
    if (!characters) return;
    std::wstring path(reinterpret_cast<const wchar_t*>(characters), env->GetStringLength(file));
    env->ReleaseStringChars(file, characters);
    Emulator_RecordSounds(path.c_str());
}

NATIVE(void, setSoundSpeed, jint factor) { Emulator_SetSoundSpeed(factor); }

NATIVE(void, passSoundTime, jint milliseconds) { Emulator_PassSoundTime(milliseconds); }

NATIVE(jint, countSounds) { return Emulator_CountWaveOutputs(); }

NATIVE(void, stopClock) { Emulator_StopClock(); }

NATIVE(void, runClock) { Emulator_RunClock(); }

NATIVE(void, passTime, jint milliseconds) { Emulator_PassTime(milliseconds); }

NATIVE(jlong, time) { return Emulator_GetTime(); }

NATIVE(jlong, nextDue) { return Emulator_GetNextDue(); }

NATIVE(void, setSecurityManager, jobject manager) {
    jclass system = env->FindClass("java/lang/System");
    jfieldID field = env->GetStaticFieldID(system, "security", "Ljava/lang/SecurityManager;");
    if (field) env->SetStaticObjectField(system, field, manager);
}
