// Images of indices and their palettes.

#include "faults.h"
#include "image_fixture.h"

TEST_F(ImageTest, of_indices_stores_every_depth_and_width) {
    for (jint depth : {1, 4, 8})
        for (jint width = 1; width <= 33; ++width) {
            jint bytesPerLine = (width * depth + 7) / 8;
            const Bytes data = randomBytes(bytesPerLine * 3);
            jint image = newIndexed(width, 3, data, bytesPerLine, depth, paletteOfLength(2));
            ASSERT_NE(image, 0);
            EXPECT_EQ(depthOf(image), depth);
            EXPECT_FALSE(isDirect(image));
            jint stride = (width * depth + 31) / 32 * 4;
            Bytes stored;
            for (jint row = 0; row < 3; ++row) {
                stored.insert(stored.end(), &data[row * bytesPerLine],
                              &data[row * bytesPerLine] + bytesPerLine);
                stored.resize((row + 1) * stride);
            }
            EXPECT_EQ(storedIn(image), stored) << depth << " bits, width " << width;
            EXPECT_EQ(lowColorOf(image), stored) << "padding included";
            disposeImage(image);
        }
}

TEST_F(ImageTest, of_2_bits_is_stored_with_4) {
    for (jint width = 1; width <= 33; ++width) {
        jint bytesPerLine = (width + 3) / 4;
        const Bytes data = randomBytes(bytesPerLine * 3);
        jint image = newIndexed(width, 3, data, bytesPerLine, 2, paletteOfLength(4));
        ASSERT_NE(image, 0);
        Pixels pixels = pixelsOf(image);
        EXPECT_EQ(depthOf(image), 4);
        EXPECT_EQ(pixels.stride, (width * 4 + 31) / 32 * 4);
        for (jint row = 0; row < 3; ++row)
            for (jint x = 0; x < width; ++x) {
                BYTE two = pixels.bits[row * pixels.stride + x / 2];
                int index = data[row * bytesPerLine + x / 4] >> (6 - x % 4 * 2) & 3;
                EXPECT_EQ(x % 2 ? two & 15 : two >> 4, index)
                    << x << ", " << row << " of " << width;
            }
        disposeImage(image);
    }
}

TEST_F(ImageTest, of_2_bits_shows_the_leftmost_pixel_first) {
    jint image = newIndexed(4, 1, {0x1B}, 1, 2, paletteOfLength(4));
    EXPECT_EQ(lowColorOf(image), (Bytes{0x01, 0x23, 0, 0}));
    for (int x = 0; x < 4; ++x) EXPECT_EQ(colorAt(image, x, 0), paletteOfLength(4)[x]);
    disposeImage(image);
}

TEST_F(ImageTest, rows_of_indices_longer_than_the_sections_are_cut) {
    jint image =
        newIndexed(2, 2, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}, 6, 8, paletteOfLength(16));
    EXPECT_EQ(lowColorOf(image), (Bytes{1, 2, 3, 4, 7, 8, 9, 10}));
    disposeImage(image);
    image = newIndexed(1, 2, Bytes(12, jbyte(0xFF)), 6, 2, paletteOfLength(4));
    EXPECT_EQ(lowColorOf(image), Bytes(8, 0x33));
    disposeImage(image);
}

TEST_F(ImageTest, what_the_indices_are_too_few_for_is_0) {
    jint image = newIndexed(4, 3, {1, 2, 3, 4, 5, 6}, 4, 8, paletteOfLength(8));
    EXPECT_EQ(lowColorOf(image), (Bytes{1, 2, 3, 4, 5, 6, 0, 0, 0, 0, 0, 0}));
    disposeImage(image);
    image = newIndexed(4, 2, {1, 2, 3, 4}, -4, 8, paletteOfLength(8));
    EXPECT_EQ(lowColorOf(image), Bytes(8, 0)) << "rows that run backwards";
    disposeImage(image);
}

TEST_F(ImageTest, keeps_palettes_of_every_length) {
    for (jint depth : {1, 4, 8})
        for (size_t length = 1; length <= 1u << depth; length += depth == 8 ? 17 : 1) {
            const std::vector<COLORREF> palette = paletteOfLength(length);
            jint image = newIndexed(1, 1, {0}, 1, depth, palette);
            EXPECT_EQ(pixelsOf(image).colorsUsed, length);
            std::vector<COLORREF> read = paletteOf(image);
            EXPECT_EQ(std::vector<COLORREF>(read.begin(), read.begin() + length), palette);
            if (length < 256) {
                EXPECT_EQ(read[length], untouchedColor) << "what it has not got is not filled in";
            }
            disposeImage(image);
        }
}

TEST_F(ImageTest, palette_fills_no_more_than_the_shortest_array) {
    jint image = newIndexed(1, 1, {0}, 1, 8, paletteOfLength(256));
    EXPECT_EQ(paletteOf(image, 10), paletteOfLength(10));
    jbyteArray reds = vm.newBytes(Bytes(256)), greens = vm.newBytes(Bytes(3));
    call(OS::Image_GetIndexedPalette, image, reds, greens, nullptr);
    EXPECT_EQ(vm.bytes(reds), Bytes(256)) << "a missing array has room for none";
    EXPECT_TRUE(vm.reports.empty());
    disposeImage(image);
}

TEST_F(ImageTest, without_a_palette_length_has_one_as_long_as_its_pixels_count) {
    jint image = newIndexed(1, 1, {0}, 1, 4, {});
    EXPECT_EQ(pixelsOf(image).colorsUsed, 0u);
    std::vector<COLORREF> read = paletteOf(image);
    EXPECT_EQ(std::vector<COLORREF>(read.begin(), read.begin() + 16), std::vector<COLORREF>(16, 0));
    EXPECT_EQ(read[16], untouchedColor);
    disposeImage(image);
}

TEST_F(ImageTest, palette_longer_than_its_pixels_count_is_cut) {
    jint image = newIndexed(1, 1, {0}, 1, 4, paletteOfLength(40));
    ASSERT_NE(image, 0);
    std::vector<COLORREF> read = paletteOf(image);
    EXPECT_EQ(std::vector<COLORREF>(read.begin(), read.begin() + 16), paletteOfLength(16));
    EXPECT_EQ(read[16], untouchedColor);
    jint copy = copyOf(image);
    EXPECT_EQ(colorAt(copy, 0, 0), paletteOfLength(1)[0]);
    disposeImage(copy);
    disposeImage(image);
}

TEST_F(ImageTest, palette_is_read_from_the_context_that_holds_the_image) {
    jint image = newIndexed(1, 1, {0}, 1, 8, paletteOfLength(256));
    HDC context = CreateCompatibleDC(nullptr);
    recordOf(image)->selectedDC = context;
    recordOf(image)->placeholderBitmap =
        static_cast<HBITMAP>(SelectObject(context, recordOf(image)->bitmap));
    Faults faults;
    watchLock(faults, recordOf(image));
    EXPECT_EQ(paletteOf(image), paletteOfLength(256));
    EXPECT_EQ(faults.countCalls("CreateCompatibleDC"), 0);
    EXPECT_EQ(entries, 1);
    EXPECT_EQ(exits, 1);
    SelectObject(context, recordOf(image)->placeholderBitmap);
    DeleteDC(context);
    disposeImage(image);
}

TEST_F(ImageTest, of_indices_without_transparency_has_none) {
    jint image = newIndexed(1, 1, {0}, 1, 8, paletteOfLength(4), -1);
    EXPECT_EQ(transparencyOf(image), -1);
    EXPECT_EQ(recordOf(image)->transparentIndex, 255u);
    disposeImage(image);
}

TEST_F(ImageTest, of_indices_has_no_color_before_its_palette) {
    for (jint index : {-2, -1000000, INT_MIN}) {
        jint image = newIndexed(1, 1, {0}, 1, 8, paletteOfLength(4), index);
        EXPECT_EQ(recordOf(image)->transparentColor, 0u) << index;
        disposeImage(image);
    }
}

TEST_F(ImageTest, of_indices_knows_its_transparent_index_and_color) {
    jint image = newIndexed(1, 1, {0}, 1, 8, paletteOfLength(4), 2);
    EXPECT_EQ(transparencyOf(image), 2);
    EXPECT_EQ(recordOf(image)->transparentColor, paletteOfLength(4)[2]);
    disposeImage(image);
    image = newIndexed(1, 1, {0}, 1, 8, paletteOfLength(4), 0x107);
    EXPECT_EQ(transparencyOf(image), 7) << "the low byte";
    EXPECT_EQ(recordOf(image)->transparentColor, 0u) << "there is no such colour";
    disposeImage(image);
}

TEST_F(ImageTest, of_shortened_color_arrays_is_black_there) {
    jint image = call(OS::Image_NewFromByteData, display, 1, 1, vm.newBytes({1}), 1, 8,
                      vm.newBytes({10, 20}), vm.newBytes({30}), nullptr, 2, 1);
    std::vector<COLORREF> read = paletteOf(image, 2);
    EXPECT_EQ(read, (std::vector<COLORREF>{RGB(10, 30, 0), RGB(20, 0, 0)}));
    EXPECT_EQ(recordOf(image)->transparentColor, RGB(20, 0, 0));
    disposeImage(image);
}

TEST_F(ImageTest, copies_the_palette_as_its_pixels_show_it) {
    jint image = newIndexed(1, 1, {0}, 1, 4, paletteOfLength(16));
    Faults faults;
    jint copy = copyOf(image);
    EXPECT_EQ(faults.countCalls("GetPixel"), 16);
    EXPECT_EQ(faults.countCalls("GetDIBColorTable"), 0);
    disposeImage(copy);
    disposeImage(image);
}
