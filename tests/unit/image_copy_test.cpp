// Images made of others: copied and flipped.

#include "faults.h"
#include "image_fixture.h"

TEST_F(ImageTest, copies_every_kind) {
    std::vector<jint> images = {
        newImage(7, 5, 0x123456), newDirect(5, 3, randomInts(15), 16, 0x102030),
        newDirect(5, 3, randomInts(15), 24, 0x102030), newDirect(5, 3, randomInts(15), 32, -1),
        newDirect(5, 3, randomInts(15), 24, -1, 77)};
    for (jint depth : {1, 2, 4, 8})
        for (size_t length : {1u, 2u, 3u, 16u, 200u, 256u})
            if (length <= 1u << depth)
                images.push_back(newIndexed(13, 4, randomBytes(4 * 13), 13, depth,
                                            paletteOfLength(length), int(length) - 1));
    for (jint image : images) {
        const Bytes before = storedIn(image);
        jint copy = copyOf(image);
        ASSERT_NE(copy, 0);
        EXPECT_NE(recordOf(copy)->bitmap, recordOf(image)->bitmap);
        EXPECT_EQ(depthOf(copy), depthOf(image));
        EXPECT_EQ(boundsOf(copy), boundsOf(image));
        EXPECT_EQ(isDirect(copy), isDirect(image));
        EXPECT_EQ(transparencyOf(copy), transparencyOf(image));
        EXPECT_EQ(recordOf(copy)->transparentIndex, recordOf(image)->transparentIndex);
        EXPECT_EQ(storedIn(copy), before);
        EXPECT_EQ(storedIn(image), before) << "reading the palette leaves the pixels alone";
        if (!isDirect(image)) {
            EXPECT_EQ(paletteOf(copy), paletteOf(image)) << depthOf(image);
            EXPECT_EQ(pixelsOf(copy).colorsUsed, pixelsOf(image).colorsUsed);
        }
        EXPECT_EQ(colorAt(copy, 3, 2), colorAt(image, 3, 2));
        disposeImage(copy);
        disposeImage(image);
    }
}

TEST_F(ImageTest, copy_has_pixels_of_its_own) {
    jint image = newImage(2, 2, 0x111111);
    jint copy = copyOf(image);
    call(OS::Image_SetRGB, copy, 0, 0, 0x222222);
    EXPECT_EQ(colorAt(image, 0, 0), RGB(0x11, 0x11, 0x11));
    EXPECT_EQ(colorAt(copy, 0, 0), RGB(0x22, 0x22, 0x22));
    disposeImage(image);
    EXPECT_EQ(colorAt(copy, 1, 1), RGB(0x11, 0x11, 0x11));
    disposeImage(copy);
}

TEST_F(ImageTest, copying_takes_it_out_of_its_context_for_a_while) {
    jint image = newIndexed(3, 1, {0, 1, 2}, 3, 8, paletteOfLength(3));
    {
        HeldImage held(image);
        Faults faults;
        jint copy = copyOf(image);
        EXPECT_TRUE(held.isHeld());
        EXPECT_EQ(recordOf(copy)->selectedDC, nullptr);
        EXPECT_EQ(paletteOf(copy, 3), paletteOfLength(3));
        EXPECT_EQ(lowColorOf(copy), lowColorOf(image));
        disposeImage(copy);
    }
    disposeImage(image);
}

TEST_F(ImageTest, copying_holds_the_lock) {
    jint image = newImage(1, 1, 0);
    Faults faults;
    watchLock(faults, recordOf(image));
    jint copy = copyOf(image);
    EXPECT_EQ(entries, 1);
    EXPECT_EQ(exits, 1);
    disposeImage(copy);
    disposeImage(image);
}

// The system keeps them to itself where a companion library has chosen another bitmap.
TEST_F(ImageTest, copies_a_bitmap_whose_pixels_are_not_told) {
    jint image = newImage(8, 2, 0);
    HBITMAP before = recordOf(image)->bitmap;
    recordOf(image)->bitmap = CreateBitmap(8, 2, 1, 1, nullptr);
    jint copy = copyOf(image);
    ASSERT_NE(copy, 0);
    EXPECT_EQ(boundsOf(copy), (Ints{0, 0, 8, 2}));
    disposeImage(copy);
    DeleteObject(std::exchange(recordOf(image)->bitmap, before));
    disposeImage(image);
}

TEST_F(ImageTest, flips_exactly) {
    for (jint width : {1, 2, 5, 8})
        for (jint height : {1, 2, 3}) {
            Ints pixels = randomInts(width * height);
            for (jint& pixel : pixels) pixel &= 0xFFFFFF;
            jint image = newDirect(width, height, pixels, 24);
            for (bool horizontal : {false, true})
                for (bool vertical : {false, true}) {
                    jint flipped = flip(image, horizontal, vertical, 0, 0, width, height);
                    Ints expected;
                    for (jint y = 0; y < height; ++y)
                        for (jint x = 0; x < width; ++x)
                            expected.push_back(pixels[(vertical ? height - 1 - y : y) * width +
                                                      (horizontal ? width - 1 - x : x)]);
                    EXPECT_EQ(highColorOf(flipped), expected)
                        << width << " x " << height << horizontal << vertical;
                    disposeImage(flipped);
                }
            disposeImage(image);
        }
}

TEST_F(ImageTest, flips_a_part) {
    jint image = newDirect(3, 2, {1, 2, 3, 4, 5, 6}, 24);
    jint flipped = flip(image, true, true, 1, 0, 2, 2);
    EXPECT_EQ(highColorOf(flipped), (Ints{6, 5, 3, 2}));
    disposeImage(flipped);
    disposeImage(image);
}

TEST_F(ImageTest, flips_every_depth_into_24_bits) {
    for (jint depth : {16, 24, 32}) {
        jint image = newDirect(2, 1, {depth == 16 ? 0xF800 : 0xFF0000, 0}, depth);
        jint flipped = flip(image, true, false, 0, 0, 2, 1);
        EXPECT_EQ(depthOf(flipped), 24);
        EXPECT_EQ(highColorOf(flipped), (Ints{0, 0xFF0000})) << depth;
        disposeImage(flipped);
        disposeImage(image);
    }
    for (jint depth : {1, 4, 8}) {
        jint image = newIndexed(2, 1,
                                {jbyte(depth == 1   ? 0x40
                                       : depth == 4 ? 0x01
                                                    : 0),
                                 1},
                                2, depth, {RGB(1, 2, 3), RGB(4, 5, 6)});
        jint flipped = flip(image, true, false, 0, 0, 2, 1);
        EXPECT_EQ(highColorOf(flipped), (Ints{0x040506, 0x010203})) << depth;
        disposeImage(flipped);
        disposeImage(image);
    }
}

TEST_F(ImageTest, flipped_keeps_the_transparency) {
    jint image = newIndexed(1, 1, {0}, 1, 8, paletteOfLength(4), 3);
    jint flipped = flip(image, false, false, 0, 0, 1, 1);
    EXPECT_TRUE(isDirect(flipped));
    EXPECT_EQ(recordOf(flipped)->transparentIndex, 3u);
    EXPECT_EQ(transparencyOf(flipped), static_cast<jint>(paletteOfLength(4)[3]));
    disposeImage(flipped);
    disposeImage(image);
}

TEST_F(ImageTest, flipped_beyond_its_edge_is_black_there) {
    jint image = newImage(2, 2, 0x123456);
    jint flipped = flip(image, false, false, 5, 5, 2, 2);
    EXPECT_EQ(highColorOf(flipped), (Ints{0, 0, 0, 0}));
    disposeImage(flipped);
    disposeImage(image);
}

TEST_F(ImageTest, flipping_works_on_a_held_image_and_takes_no_lock) {
    jint image = newDirect(2, 1, {1, 2}, 24);
    {
        HeldImage held(image);
        Faults faults;
        jint flipped = flip(image, true, false, 0, 0, 2, 1);
        EXPECT_EQ(highColorOf(flipped), (Ints{2, 1}));
        EXPECT_EQ(faults.countCalls("EnterCriticalSection"), 0);
        EXPECT_TRUE(held.isHeld());
        disposeImage(flipped);
    }
    disposeImage(image);
}
