#pragma once
// Two ways of doing the same, measured by turns in one process.

#include "ce.h"
#include <algorithm>
#include <jni.h>
#include <vector>

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

// Nanoseconds that one operation takes.
struct Round {
    double ours, plain;
};

// Times both ways by turns, and keeps the round in which the ratio of both is the median: what else
// runs on the machine disturbs rounds, but seldom most of them, and both ways alike. Java is given
// tenths of nanoseconds, ours first.
template <class TimeOfOurs, class TimeOfPlain>
jintArray medianOf(JNIEnv* env, int rounds, TimeOfOurs ours, TimeOfPlain plain) {
    std::vector<Round> all;
    for (int i = 0; i < rounds; ++i) {
        double first = ours();
        all.push_back({first, plain()});
    }
    auto median = all.begin() + rounds / 2;
    std::nth_element(all.begin(), median, all.end(), [](const Round& a, const Round& b) {
        return a.ours * b.plain < b.ours * a.plain;
    });
    const jint tenths[] = {static_cast<jint>(median->ours * 10),
                           static_cast<jint>(median->plain * 10)};
    jintArray array = env->NewIntArray(2);
    if (array) env->SetIntArrayRegion(array, 0, 2, tenths);
    return array;
}

constexpr int rounds = 101;

template <class Ours, class Plain>
jintArray compare(JNIEnv* env, int count, Ours ours, Plain plain) {
    return medianOf(
        env, rounds, [&] { return timeOf(count, ours); }, [&] { return timeOf(count, plain); });
}
