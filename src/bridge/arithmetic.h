#pragma once
// Arithmetic on positions and sizes, which Java may give as any numbers: a result that lies beyond
// the range becomes its end. Any thread.

#include "ce.h"
#include <jni.h>

constexpr jint greatestInt = 0x7FFFFFFF;
constexpr jint leastInt = -greatestInt - 1;

constexpr jint lesser(jint a, jint b) { return a < b ? a : b; }
constexpr jint greater(jint a, jint b) { return a > b ? a : b; }

constexpr jint saturatingAdd(jint a, jint b) {
    jint sum = 0;
    if (!__builtin_add_overflow(a, b, &sum)) return sum;
    return b < 0 ? leastInt : greatestInt;
}

constexpr jint saturatingSubtract(jint a, jint b) {
    jint difference = 0;
    if (!__builtin_sub_overflow(a, b, &difference)) return difference;
    return b < 0 ? greatestInt : leastInt;
}

constexpr jint saturatingNegate(jint a) { return saturatingSubtract(0, a); }

constexpr jint saturatingMultiply(jint a, jint b) {
    jint product = 0;
    if (!__builtin_mul_overflow(a, b, &product)) return product;
    return (a < 0) == (b < 0) ? greatestInt : leastInt;
}

// The number itself: every int has its double. The compiler's own way to it brings the addition of
// doubles along on the device, which nothing else needs.
inline double toDouble(jint number) {
    constexpr int mantissaBits = 52, exponentOf1 = 1023, highestBit = 31;
    if (number == 0) return 0;
    ULONGLONG sign = number < 0;
    auto size = static_cast<ULONG>(number < 0 ? 0u - number : number);
    int exponent = exponentOf1 + highestBit;
    for (; !(size >> highestBit); --exponent) size <<= 1;
    // The highest bit is not stored.
    ULONGLONG mantissa = static_cast<ULONGLONG>(size << 1) << (mantissaBits - 32);
    return __builtin_bit_cast(
        double, sign << 63 | static_cast<ULONGLONG>(exponent) << mantissaBits | mantissa);
}
