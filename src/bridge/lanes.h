#pragma once
// Vectors of numbers, for processors that take several at a time; lanes is only there for those.
// Any thread.

#ifdef __SSE2__

#include "ce.h"

namespace lanes {

using Bytes = BYTE __attribute__((vector_size(16)));
using Halves = USHORT __attribute__((vector_size(16)));
using Words = ULONG __attribute__((vector_size(16)));
using Doubles = ULONGLONG __attribute__((vector_size(16)));
using Double = ULONGLONG; // half a vector

// At any address, whatever is declared to lie there.
template <class Vector>
Vector load(const void* place) {
    using AtAnyPlace [[gnu::aligned(1), gnu::may_alias]] = Vector;
    return *static_cast<const AtAnyPlace*>(place);
}

template <class Vector>
void store(void* place, Vector vector) {
    using AtAnyPlace [[gnu::aligned(1), gnu::may_alias]] = Vector;
    *static_cast<AtAnyPlace*>(place) = vector;
}

// By turns one of both vectors' lower lanes, and of their upper ones.
inline Bytes mergeLower(Bytes a, Bytes b) {
    return __builtin_shufflevector(a, b, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23);
}
inline Bytes mergeUpper(Bytes a, Bytes b) {
    return __builtin_shufflevector(a, b, 8, 24, 9, 25, 10, 26, 11, 27, 12, 28, 13, 29, 14, 30, 15,
                                   31);
}

// The lower halves of both vectors' words. The processor joins signed words within a half's range,
// and sums up products of signed halves.
inline Halves lowerHalves(Words a, Words b) {
    using Signed = short __attribute__((vector_size(16)));
    constexpr Signed lowerOnly = {1, 0, 1, 0, 1, 0, 1, 0};
    return reinterpret_cast<Halves>(__builtin_ia32_packssdw128(
        __builtin_ia32_pmaddwd128(reinterpret_cast<Signed>(a), lowerOnly),
        __builtin_ia32_pmaddwd128(reinterpret_cast<Signed>(b), lowerOnly)));
}

// By how much the bytes of a are more than those of b, or 0.
inline Bytes excess(Bytes a, Bytes b) {
    using Signed = char __attribute__((vector_size(16)));
    return reinterpret_cast<Bytes>(
        __builtin_ia32_psubusb128(reinterpret_cast<Signed>(a), reinterpret_cast<Signed>(b)));
}

// The upper halves of the products.
inline Halves upperProduct(Halves numbers, USHORT factor) {
    using Signed = short __attribute__((vector_size(16)));
    Halves factors = Halves{} + factor;
    return reinterpret_cast<Halves>(__builtin_ia32_pmulhuw128(reinterpret_cast<Signed>(numbers),
                                                              reinterpret_cast<Signed>(factors)));
}

// Converts whole blocks of a row from its start on. The last one ends where the row ends, and does
// what it has in common with the one before once more. A row shorter than a block is left alone.
// How many were converted.
template <LONG block, class Convert>
LONG cover(LONG count, Convert convert) {
    if (count < block) return 0;
    for (LONG i = 0; i < count - block; i += block) convert(i);
    convert(count - block);
    return count;
}

} // namespace lanes

#endif
