// Faults for Java tests: com.nuvik.tests.Faults.

#include <jni.h>
#include <windows.h>

static volatile int none = 0;

extern "C" __declspec(dllexport) void JNICALL
    Java_com_nuvik_tests_Faults_raise(JNIEnv*, jclass, jint kindOrCode) {
    switch (kindOrCode) {
    case 0:
        none = 7 / none;
        break;
    case 1:
        __builtin_trap();
    default:
        RaiseException(kindOrCode, 0, 0, nullptr);
    }
}
