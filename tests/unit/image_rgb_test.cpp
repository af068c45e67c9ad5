// Pixels read and set one rectangle at a time.

#include "image_fixture.h"

class RgbTest : public ImageFixture {
  protected:
    Ints getRgb(jint image, jint x, jint y, jint width, jint height, jint offset, jint scanSize,
                size_t room) {
        jintArray out = vm.newInts(Ints(room, -7));
        call(OS::Image_GetRGB, image, x, y, width, height, offset, scanSize, out);
        return vm.ints(out);
    }
    void setRgb(jint image, jint x, jint y, jint rgb) { call(OS::Image_SetRGB, image, x, y, rgb); }
};

TEST_F(RgbTest, every_rectangle_is_read) {
    constexpr jint width = 9, height = 3;
    Ints pixels = randomInts(width * height);
    jint image = newDirect(width, height, pixels, 24);
    for (jint x = 0; x < width; ++x)
        for (jint count = 1; count <= width - x; ++count) {
            Ints expected(40, -7);
            for (jint row = 0; row < 2; ++row)
                for (jint column = 0; column < count; ++column)
                    expected[3 + row * 12 + column] =
                        jint(0xFF000000) | pixels[(row + 1) * width + x + column];
            EXPECT_EQ(getRgb(image, x, 1, count, 2, 3, 12, 40), expected) << x << ", " << count;
        }
    disposeImage(image);
}

TEST_F(RgbTest, rows_may_be_stored_backwards) {
    jint image = newDirect(2, 2, {1, 2, 3, 4}, 24);
    constexpr jint opaque = 0xFF000000;
    EXPECT_EQ(getRgb(image, 0, 0, 2, 2, 2, -2, 4),
              (Ints{opaque | 3, opaque | 4, opaque | 1, opaque | 2}));
    disposeImage(image);
}

TEST_F(RgbTest, nothing_is_read_outside_the_image_or_written_outside_the_array) {
    jint image = newDirect(4, 2, {1, 2, 3, 4, 5, 6, 7, 8}, 24);
    constexpr jint opaque = 0xFF000000;
    EXPECT_EQ(getRgb(image, -1, -1, 3, 2, 0, 3, 6), (Ints{-7, -7, -7, -7, opaque | 1, opaque | 2}));
    EXPECT_EQ(getRgb(image, 2, 1, 9, 9, 0, 2, 4), (Ints{opaque | 7, opaque | 8, -7, -7}));
    EXPECT_EQ(getRgb(image, 0, 0, 4, 2, 0, 4, 5),
              (Ints{opaque | 1, opaque | 2, opaque | 3, opaque | 4, opaque | 5}));
    EXPECT_EQ(getRgb(image, 0, 0, 4, 1, -2, 4, 3), (Ints{opaque | 3, opaque | 4, -7}));
    for (jint distant : {INT_MIN, INT_MIN + 1, -5, 5, INT_MAX - 1, INT_MAX}) {
        EXPECT_EQ(getRgb(image, distant, 0, 3, 1, 0, 3, 3), Ints(3, -7));
        EXPECT_EQ(getRgb(image, 0, distant, 3, 1, 0, 3, 3), Ints(3, -7));
        EXPECT_EQ(getRgb(image, 0, 0, 3, 1, distant, 3, 3), Ints(3, -7));
        EXPECT_EQ(getRgb(image, distant, distant, distant, distant, distant, distant, 3),
                  Ints(3, -7));
    }
    EXPECT_EQ(getRgb(image, 0, 0, -1, 2, 0, 0, 2), Ints(2, -7));
    EXPECT_EQ(getRgb(image, 0, 0, INT_MAX, INT_MAX, 0, INT_MAX, 2), (Ints{opaque | 1, opaque | 2}));
    disposeImage(image);
}

TEST_F(RgbTest, another_depth_is_read_as_if_it_had_24_bits) {
    jint image = newDirect(3, 1, {0x11223344, 0x55667788, jint(0x99AABBCC)}, 32);
    EXPECT_EQ(getRgb(image, 0, 0, 4, 1, 0, 4, 4),
              (Ints{jint(0xFF223344), jint(0xFF778811), jint(0xFFCC5566), jint(0xFF99AABB)}));
    disposeImage(image);
}

TEST_F(RgbTest, a_null_array_takes_nothing) {
    jint image = newImage(1, 1, 0);
    call(OS::Image_GetRGB, image, 0, 0, 1, 1, 0, 1, nullptr);
    EXPECT_TRUE(vm.reports.empty());
    disposeImage(image);
}

TEST_F(RgbTest, one_pixel_is_set) {
    jint image = newImage(3, 2, 0);
    setRgb(image, 1, 1, 0x7F123456);
    EXPECT_EQ(highColorOf(image), (Ints{0, 0, 0, 0, 0x123456, 0}));
    disposeImage(image);
}

TEST_F(RgbTest, nothing_is_set_outside_the_image) {
    jint image = newImage(3, 2, 0);
    for (const auto& [x, y] : std::vector<std::pair<jint, jint>>{
             {-1, 0}, {0, -1}, {4, 0}, {0, 2}, {INT_MIN, 0}, {0, INT_MAX}, {INT_MAX, INT_MIN}})
        setRgb(image, x, y, 0xFFFFFF);
    EXPECT_EQ(storedIn(image), Bytes(24, 0));
    disposeImage(image);
}
