#include "graphics/blending.h"
#include <cstring>
#include <gtest/gtest.h>
#include <vector>

// The definition, in plain arithmetic.
static int blendByte(int target, int source, int alpha) {
    return target + alpha * (source - target) / 255;
}

static DWORD pixel(int alpha, int red, int green, int blue) {
    return static_cast<DWORD>(alpha) << 24 | red << 16 | green << 8 | blue;
}

// One row holds every target of a source and an alpha.
TEST(Blending, of_every_source_target_and_alpha_is_exact) {
    constexpr int values = 256;
    DWORD targets[values], sources[values], expected[values];
    for (int alpha = 0; alpha < values; ++alpha)
        for (int source = 0; source < values; ++source) {
            for (int target = 0; target < values; ++target) {
                int other = 255 - target; // the lanes must not disturb each other
                int fourth = target * 5 & 255;
                targets[target] = pixel(fourth, target, other, target);
                sources[target] = pixel(alpha, source, source, 255 - source);
                expected[target] =
                    pixel(fourth, blendByte(target, source, alpha), blendByte(other, source, alpha),
                          blendByte(target, 255 - source, alpha));
                ASSERT_EQ(blendPixel(targets[target], sources[target]), expected[target])
                    << alpha << " " << source << " " << target;
            }
            blendRow(targets, sources, values);
            ASSERT_EQ(memcmp(targets, expected, sizeof(targets)), 0) << alpha << " " << source;
        }
}

TEST(Blending, of_a_row_is_that_of_its_pixels_and_stops_at_its_end) {
    std::vector<DWORD> target, source, expected;
    DWORD random = 12345;
    for (int i = 0; i < 1000; ++i) {
        target.push_back(random = random * 1664525 + 1013904223);
        source.push_back(random = random * 1664525 + 1013904223);
        expected.push_back(blendPixel(target[i], source[i]));
    }
    expected.back() = target.back();
    blendRow(target.data(), source.data(), 999);
    EXPECT_EQ(target, expected);
}
