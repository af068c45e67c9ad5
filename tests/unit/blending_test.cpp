#include "graphics/blending.h"
#include <gtest/gtest.h>
#include <vector>

// The definition, in plain arithmetic.
static int blendByte(int target, int source, int alpha) {
    return target + alpha * (source - target) / 255;
}

static DWORD pixel(int alpha, int red, int green, int blue) {
    return static_cast<DWORD>(alpha) << 24 | red << 16 | green << 8 | blue;
}

TEST(Blending, of_every_source_target_and_alpha_is_exact) {
    for (int alpha = 0; alpha < 256; ++alpha)
        for (int source = 0; source < 256; ++source)
            for (int target = 0; target < 256; ++target) {
                int other = 255 - target; // the lanes must not disturb each other
                DWORD result = blendPixel(pixel(0x5A, target, other, target),
                                          pixel(alpha, source, source, 255 - source));
                DWORD expected =
                    pixel(0x5A, blendByte(target, source, alpha), blendByte(other, source, alpha),
                          blendByte(target, 255 - source, alpha));
                ASSERT_EQ(result, expected) << alpha << " " << source << " " << target;
            }
}

TEST(Blending, leaves_the_targets_fourth_byte) {
    for (int alpha = 0; alpha < 256; ++alpha)
        for (int fourth = 0; fourth < 256; ++fourth)
            ASSERT_EQ(blendPixel(pixel(fourth, 1, 2, 3), pixel(alpha, 200, 100, 50)) >> 24,
                      DWORD(fourth));
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
