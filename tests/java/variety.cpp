// Which of the devices Java tests run on: com.nuvik.tests.Variety.

#include "emulator.h"
#include <jni.h>

extern "C" {

__declspec(dllexport) jintArray JNICALL Java_com_nuvik_tests_Variety_screen(JNIEnv* env, jclass) {
    SIZE screen = Emulator_GetVariety()->screen;
    const jint size[] = {screen.cx, screen.cy};
    jintArray array = env->NewIntArray(2);
    if (array) env->SetIntArrayRegion(array, 0, 2, size);
    return array;
}

__declspec(dllexport) jint JNICALL Java_com_nuvik_tests_Variety_dotsPerInch(JNIEnv*, jclass) {
    return Emulator_GetVariety()->dotsPerInch;
}

__declspec(dllexport) jint JNICALL Java_com_nuvik_tests_Variety_taskBarHeight(JNIEnv*, jclass) {
    return Emulator_GetVariety()->taskBarHeight;
}
}
