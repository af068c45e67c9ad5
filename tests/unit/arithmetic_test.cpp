#include "bridge/arithmetic.h"
#include <algorithm>
#include <gtest/gtest.h>

constexpr jint interesting[] = {leastInt,   leastInt + 1, -0x40000000,     -1,         0, 1,
                                0x3FFFFFFF, 0x40000000,   greatestInt - 1, greatestInt};

static jint limited(long long exact) {
    return static_cast<jint>(std::clamp<long long>(exact, leastInt, greatestInt));
}

TEST(Arithmetic, ends_where_the_range_does) {
    for (jint a : interesting) {
        EXPECT_EQ(saturatingNegate(a), limited(0LL - a)) << a;
        for (jint b : interesting) {
            EXPECT_EQ(saturatingAdd(a, b), limited(0LL + a + b)) << a << " + " << b;
            EXPECT_EQ(saturatingSubtract(a, b), limited(0LL + a - b)) << a << " - " << b;
            EXPECT_EQ(saturatingMultiply(a, b), limited(1LL * a * b)) << a << " * " << b;
            EXPECT_EQ(lesser(a, b), std::min(a, b));
            EXPECT_EQ(greater(a, b), std::max(a, b));
        }
    }
}
