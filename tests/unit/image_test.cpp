#include "faults.h"
#include "image_fixture.h"
#include "leaks.h"

// What the library must store, a byte at a time and with divisions.
static void putDirect(Bytes* row, jint pixel, jint depth, bool wide, std::optional<int> alpha,
                      bool widen) {
    jint red = pixel >> 16 & 0xFF, green = pixel >> 8 & 0xFF, blue = pixel & 0xFF;
    if (depth == 16) {
        red = pixel >> 11 & 0x1F;
        green = pixel >> 5 & 0x3F;
        blue = pixel & 0x1F;
        if (widen) {
            red = red * 255 / 31;
            green = green * 255 / 63;
            blue = blue * 255 / 31;
        } else {
            green = green * 31 / 63;
        }
    }
    if (!wide && depth == 16) {
        jint stored = red << 10 | green << 5 | blue;
        row->push_back(static_cast<jbyte>(stored));
        row->push_back(static_cast<jbyte>(stored >> 8));
        return;
    }
    for (jint component : {blue, green, red}) row->push_back(static_cast<jbyte>(component));
    if (wide || depth == 32) row->push_back(static_cast<jbyte>(alpha ? *alpha : pixel >> 24));
}

static Bytes expectedDirect(jint width, jint height, const Ints& pixels, jint depth, jint alpha,
                            const std::optional<Bytes>& alphas) {
    Bytes stored;
    for (jint i = 0; i < width * height; ++i) {
        std::optional<int> own;
        if (alphas)
            own = (*alphas)[i];
        else if (alpha != -1)
            own = alpha;
        putDirect(&stored, pixels[i], depth, own.has_value(), own, alphas.has_value());
        while (i % width == width - 1 && stored.size() % 4) stored.push_back(0);
    }
    return stored;
}

TEST_F(ImageTest, of_a_size_is_filled_at_every_width) {
    for (jint width = 1; width <= 9; ++width) {
        jint image = newImage(width, 3, 0x7F123456);
        Pixels pixels = pixelsOf(image);
        EXPECT_EQ(pixels.bitCount, 24);
        EXPECT_EQ(pixels.stride, (width * 24 + 31) / 32 * 4);
        EXPECT_EQ(storedIn(image), expectedDirect(width, 3, Ints(width * 3, 0x123456), 24, -1, {}))
            << width;
        disposeImage(image);
    }
}

// The system takes a negative height for rows that run upwards.
TEST_F(ImageTest, of_a_negative_height_is_not_filled) {
    jint image = newImage(4, -2, 0x123456);
    ASSERT_NE(image, 0);
    for (jbyte byte : storedIn(image)) EXPECT_EQ(byte, 0);
    disposeImage(image);
}

TEST_F(ImageTest, of_a_size_is_direct_and_without_transparency) {
    jint image = newImage(5, 7, 0x123456);
    EXPECT_TRUE(isDirect(image));
    EXPECT_EQ(depthOf(image), 24);
    EXPECT_EQ(boundsOf(image), (Ints{0, 0, 5, 7}));
    EXPECT_EQ(transparencyOf(image), -1);
    EXPECT_EQ(recordOf(image)->transparentIndex, 255u);
    EXPECT_EQ(colorAt(image, 4, 6), RGB(0x12, 0x34, 0x56));
    disposeImage(image);
}

TEST_F(ImageTest, record_keeps_its_layout) {
    jint image = newImage(2, 2, 0);
    const ImageRecord& record = *recordOf(image);
    EXPECT_EQ(reinterpret_cast<HBITMAP*>(image)[0], record.bitmap);
    EXPECT_EQ(record.selectedDC, nullptr);
    EXPECT_EQ(record.placeholderBitmap, nullptr);
    EXPECT_EQ(reinterpret_cast<BYTE*>(image)[12], 1);
    EXPECT_EQ(reinterpret_cast<DWORD*>(image)[5], 0xFFFFFFFF);
    disposeImage(image);
}

TEST_F(ImageTest, companions_ask_for_its_size) {
    jint image = newImage(12, 34, 0);
    jint width = 0, height = 0;
    entryPoint<void(ImageRecord*, jint*, jint*, ErrorRecord*)>("_Image_GetSize")(
        recordOf(image), &width, &height, nullptr);
    EXPECT_EQ(width, 12);
    EXPECT_EQ(height, 34);
    disposeImage(image);
}

TEST_F(ImageTest, rows_run_from_the_top) {
    jint image = newDirect(1, 2, {0x0000FF, 0xFF0000}, 24);
    EXPECT_EQ(colorAt(image, 0, 0), RGB(0, 0, 0xFF));
    EXPECT_EQ(colorAt(image, 0, 1), RGB(0xFF, 0, 0));
    disposeImage(image);
}

TEST_F(ImageTest, of_colors_stores_every_depth_and_width_and_alpha) {
    for (jint depth : {16, 24, 32})
        for (jint alpha : {-1, 0, 128, 255})
            for (bool own : {false, true})
                for (jint width = 1; width <= 9; ++width) {
                    const Ints pixels = randomInts(width * 3);
                    std::optional<Bytes> alphas;
                    if (own) alphas = randomBytes(width * 3);
                    jint image = newDirect(width, 3, pixels, depth, -1, alpha, alphas);
                    ASSERT_NE(image, 0);
                    EXPECT_EQ(depthOf(image), own || alpha != -1 ? 32 : depth);
                    EXPECT_TRUE(isDirect(image));
                    EXPECT_EQ(storedIn(image),
                              expectedDirect(width, 3, pixels, depth, alpha, alphas))
                        << depth << " bits, alpha " << alpha << own << ", width " << width;
                    disposeImage(image);
                }
}

TEST_F(ImageTest, with_a_constant_alpha_has_32_bits) {
    const Ints pixels = {0x112233, 0x445566};
    jint plain = newDirect(2, 1, pixels, 24);
    EXPECT_EQ(depthOf(plain), 24);
    jint clear = newDirect(2, 1, pixels, 24, -1, 128);
    EXPECT_EQ(depthOf(clear), 32);
    EXPECT_EQ(highColorOf(clear), (Ints{jint(0x80112233), jint(0x80445566)}));
    disposeImage(plain);
    disposeImage(clear);
}

// All 5-6-5 colours, in an image of a row for each 256 of them.
static Ints allHighColors() {
    Ints pixels(0x10000);
    for (jint i = 0; i < 0x10000; ++i) pixels[i] = i;
    return pixels;
}

TEST_F(ImageTest, narrows_and_widens_all_colors_of_16_bits) {
    const Ints pixels = allHighColors();
    jint narrowed = newDirect(256, 256, pixels, 16);
    EXPECT_EQ(storedIn(narrowed), expectedDirect(256, 256, pixels, 16, -1, {}));
    const Bytes alphas(0x10000, 3);
    jint widened = newDirect(256, 256, pixels, 16, -1, -1, alphas);
    EXPECT_EQ(storedIn(widened), expectedDirect(256, 256, pixels, 16, -1, alphas));
    disposeImage(narrowed);
    disposeImage(widened);
}

TEST_F(ImageTest, reads_all_colors_of_16_bits) {
    jint image = newDirect(256, 256, allHighColors(), 16);
    const Ints read = highColorOf(image);
    ASSERT_EQ(read.size(), 0x10000u);
    const BYTE* bits = pixelsOf(image).bits;
    for (size_t i = 0; i < read.size(); ++i) {
        jint stored = reinterpret_cast<const WORD*>(bits)[i];
        jint green = (stored >> 5 & 0x1F) * 63 / 31;
        ASSERT_EQ(read[i], (stored & 0x1F) | (stored >> 10 & 0x1F) << 11 | green << 5) << i;
    }
    disposeImage(image);
}

TEST_F(ImageTest, brightest_color_of_16_bits_stays_the_brightest) {
    jint image = newDirect(1, 1, {0xFFFF}, 16);
    EXPECT_EQ(storedIn(image), (Bytes{jbyte(0xFF), 0x7F, 0, 0}));
    EXPECT_EQ(highColorOf(image), (Ints{0xFFFF}));
    disposeImage(image);
}

TEST_F(ImageTest, colors_are_read_back_at_every_width) {
    for (jint depth : {24, 32})
        for (jint width = 1; width <= 9; ++width) {
            Ints pixels = randomInts(width * 4);
            jint image = newDirect(width, 4, pixels, depth);
            for (jint& pixel : pixels)
                if (depth == 24) pixel &= 0xFFFFFF;
            EXPECT_EQ(highColorOf(image), pixels) << depth << " bits, width " << width;
            disposeImage(image);
        }
}

TEST_F(ImageTest, high_colors_are_read_back_at_every_width) {
    for (jint width = 1; width <= 9; ++width) {
        Ints pixels(width * 3);
        for (jint& pixel : pixels) pixel = static_cast<jint>(random() % 2 ? 0xF81F : 0x07E0);
        jint image = newDirect(width, 3, pixels, 16);
        EXPECT_EQ(highColorOf(image), pixels) << width;
        disposeImage(image);
    }
}

TEST_F(ImageTest, what_the_pixels_are_too_few_for_is_0) {
    jint image = newDirect(3, 2, {1, 2, 3, 4}, 32);
    EXPECT_EQ(highColorOf(image), (Ints{1, 2, 3, 4, 0, 0}));
    disposeImage(image);
    image = newDirect(3, 2, {1, 2, 3, 4, 5, 6}, 32, -1, -1, Bytes{1, 1});
    EXPECT_EQ(highColorOf(image), (Ints{0x01000001, 0x01000002, 0, 0, 0, 0}));
    disposeImage(image);
    image = call(OS::Image_NewFromIntData, display, 2, 1, nullptr, 32, -1, -1, nullptr);
    EXPECT_EQ(highColorOf(image), (Ints{0, 0}));
    disposeImage(image);
}

TEST_F(ImageTest, pixels_beyond_its_size_are_left) {
    jint image = newDirect(1, 1, Ints(100000, 0x123456), 24);
    EXPECT_EQ(highColorOf(image), Ints{0x123456});
    disposeImage(image);
}

TEST_F(ImageTest, of_colors_takes_the_transparent_color_as_it_is) {
    jint image = newDirect(1, 1, {0}, 24, 0x563412);
    EXPECT_EQ(transparencyOf(image), 0x563412);
    EXPECT_EQ(recordOf(image)->transparentIndex, 0u);
    disposeImage(image);
    image = newDirect(1, 1, {0}, 24, -1);
    EXPECT_EQ(transparencyOf(image), -1);
    disposeImage(image);
}

TEST_F(ImageTest, masks_follow_the_depth) {
    const struct {
        jint depth;
        Ints masks;
    } rows[] = {{16, {0x7C00, 0x3E0, 0x1F, 0}},
                {24, {0xFF0000, 0xFF00, 0xFF, 0}},
                {32, {0xFF0000, 0xFF00, 0xFF, jint(0xFF000000)}}};
    for (const auto& row : rows) {
        jint image = newDirect(1, 1, {0}, row.depth);
        EXPECT_EQ(masksOf(image), row.masks);
        disposeImage(image);
    }
    jint indexed = newIndexed(1, 1, {0}, 1, 8, {0, 1});
    EXPECT_EQ(masksOf(indexed), (Ints{0, 0, 0, 0}));
    disposeImage(indexed);
}

TEST_F(ImageTest, images_leave_nothing_behind) {
    newShell();
    const std::vector<COLORREF> palette = paletteOfLength(16);
    NoLeaks noLeaks;
    Faults faults;
    const int rounds = leakRounds() / 4;
    for (int i = 0; i < rounds; ++i) {
        jint images[] = {newImage(3, 3, i), newDirect(2, 2, {1, 2, 3, 4}, i % 2 ? 16 : 32),
                         newIndexed(3, 1, {1, 2, 3}, 3, 4, palette, 1), 0};
        images[3] = i % 2 ? copyOf(images[2]) : flip(images[1], true, false, 0, 0, 2, 2);
        for (jint image : images) disposeImage(image);
    }
    EXPECT_EQ(faults.countCalls("InitializeCriticalSection"),
              faults.countCalls("DeleteCriticalSection"));
    EXPECT_GE(faults.countCalls("DeleteCriticalSection"), 4 * rounds);
}
