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

TEST(Arithmetic, has_the_double_of_every_kind_of_int) {
    for (jint number : interesting) EXPECT_EQ(toDouble(number), number);
    for (int bit = 0; bit < 31; ++bit)
        for (jint step : {-1, 0, 1}) {
            jint number = static_cast<jint>(1u << bit) + step;
            EXPECT_EQ(toDouble(number), number);
            EXPECT_EQ(toDouble(-number), -number);
        }
    jint random = 1;
    for (int i = 0; i < 100000; ++i) {
        random = static_cast<jint>(random * 1664525u + 1013904223u);
        ASSERT_EQ(toDouble(random >> i % 31), random >> i % 31);
    }
}
