#pragma once
// Two ways of doing the same, measured by turns in one process.

#include "ce.h"
#include <algorithm>
#include <jni.h>

static constexpr int rounds = 15;

inline double now() {
    LARGE_INTEGER ticks, frequency;
    QueryPerformanceCounter(&ticks);
    QueryPerformanceFrequency(&frequency);
    return 1e9 * static_cast<double>(ticks.QuadPart) / static_cast<double>(frequency.QuadPart);
}

template <class Operation>
double timeOf(int count, Operation operation) {
    double start = now();
    for (int i = 0; i < count; ++i) operation();
    return (now() - start) / count;
}

// In tenths of a nanosecond, so that they cross as ints.
inline jintArray inTenths(JNIEnv* env, double ours, double plain) {
    const jint tenths[] = {static_cast<jint>(ours * 10), static_cast<jint>(plain * 10)};
    jintArray array = env->NewIntArray(2);
    if (array) env->SetIntArrayRegion(array, 0, 2, tenths);
    return array;
}

// The best rounds of both, in tenths of a nanosecond.
template <class Ours, class Plain>
jintArray compare(JNIEnv* env, int count, Ours ours, Plain plain) {
    double best[2] = {1e12, 1e12};
    for (int round = 0; round < rounds; ++round) {
        best[0] = std::min(best[0], timeOf(count, ours));
        best[1] = std::min(best[1], timeOf(count, plain));
    }
    return inTenths(env, best[0], best[1]);
}

inline FARPROC exported(const char* name) {
    return GetProcAddress(GetModuleHandleW(L"zemvolt11.dll"), name);
}
