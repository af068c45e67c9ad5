#pragma once
// A small library for the device that shows whether code for it arrives whole: its arithmetic, its
// calling convention, the layout of its structures, its relocated addresses. Compiled for the
// device as the library is; the tests call it on the emulated processor.

#include <stdint.h>

// Double operands and results are given by their bits.
enum class Operation : int32_t {
    add,
    subtract,
    multiply,
    divide,
    isLess,
    isEqual,
    fromInt,      // of the low word
    fromUnsigned, // of the low word
    toInt,
    toUnsigned,
    toFloat,   // the bits of a float
    fromFloat, // of the bits of a float
    divideInts,
    remainderOfInts,
    divideUnsigned,
    remainderOfUnsigned,
    add64,
    subtract64,
};
constexpr int operationCount = 18;

struct Operands {
    uint64_t a, b;
};

struct ProbeRecord {
    char first;
    double number;
    short second;
    long long wide;
    char third;
    unsigned bitsA : 3;
    unsigned bitsB : 5;
    unsigned short bitsC : 4;
    wchar_t character;
};

// What a caller has in the registers that a called function need not keep.
struct ScratchRegisters {
    uint32_t r1, r2, r3, ip, flags; // the flags in the highest four bits
};

using Receiver = uint64_t (*)(int32_t a, int64_t b, int32_t c, int64_t d);
using Observer = void (*)(const volatile int32_t* locals, int32_t count, void* context);
