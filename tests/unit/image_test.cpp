#include "faults.h"
#include "image_fixture.h"
#include "leaks.h"

class ImageTest : public ImageFixture {};

static const char16_t noHandle[] = u"Unable to create device-independent image handle";

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

// Different colours, none of them grey.
static std::vector<COLORREF> paletteOfLength(size_t length) {
    std::vector<COLORREF> palette;
    for (size_t i = 0; i < length; ++i)
        palette.push_back(RGB(255 - i, 7 * i % 256, (i * 37 + 11) % 256));
    return palette;
}

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

// How often a lock is entered and left.
static CRITICAL_SECTION* watchedLock;
static int entries, exits;
static void WINAPI countEntry(CRITICAL_SECTION* lock) {
    entries += lock == watchedLock;
    EnterCriticalSection(lock);
}
static void WINAPI countExit(CRITICAL_SECTION* lock) {
    exits += lock == watchedLock;
    LeaveCriticalSection(lock);
}
static void watchLock(Faults& faults, ImageRecord* image) {
    watchedLock = &image->lock;
    entries = exits = 0;
    faults.replace("EnterCriticalSection", reinterpret_cast<void*>(countEntry));
    faults.replace("LeaveCriticalSection", reinterpret_cast<void*>(countExit));
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

// An image that a drawing context holds.
class HeldImage {
  public:
    explicit HeldImage(jint image)
        : record(reinterpret_cast<ImageRecord*>(image)), context(CreateCompatibleDC(nullptr)) {
        record->placeholderBitmap = static_cast<HBITMAP>(SelectObject(context, record->bitmap));
        record->selectedDC = context;
    }
    ~HeldImage() {
        SelectObject(context, record->placeholderBitmap);
        record->selectedDC = nullptr;
        DeleteDC(context);
    }
    bool isHeld() const { return GetCurrentObject(context, OBJ_BITMAP) == record->bitmap; }

  private:
    ImageRecord* record;
    HDC context;
};

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

class ImageErrorTest : public ImageFixture {};

TEST_F(ImageErrorTest, a_section_that_cannot_be_made) {
    Faults faults;
    faults.fail("CreateDIBSection", 0, ERROR_INVALID_PARAMETER);
    EXPECT_EQ(newImage(1, 1, 0), 0);
    expectReport("Image_NewFromSize", -3, std::u16string(noHandle) + u"::");
    EXPECT_EQ(newDirect(1, 1, {0}, 24), 0);
    expectReport("Image_NewFromIntData", -3, std::u16string(noHandle) + u"::");
    EXPECT_EQ(newIndexed(1, 1, {0}, 1, 8, {0}), 0);
    TestVm::Report report = onlyReport();
    EXPECT_EQ(report.function, "Image_NewFromByteData");
    EXPECT_EQ(report.code, -3);
    EXPECT_EQ(report.message, noHandle) << "without the system's text";
}

TEST_F(ImageErrorTest, the_systems_out_of_memory_is_told_as_such) {
    Faults faults;
    faults.fail("CreateDIBSection", 0, ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_EQ(newImage(1, 1, 0), 0);
    expectReport("Image_NewFromSize", -4, std::u16string(noHandle) + u"::");
}

TEST_F(ImageErrorTest, a_copy_or_flip_without_a_section) {
    jint image = newImage(1, 1, 0);
    {
        NoLeaks noLeaks;
        HeldImage held(image);
        Faults faults;
        faults.fail("CreateDIBSection", 0, ERROR_INVALID_PARAMETER);
        EXPECT_EQ(copyOf(image), 0);
        expectReport("Image_NewFromHandle", -3, std::u16string(noHandle) + u"::");
        EXPECT_TRUE(held.isHeld());
        EXPECT_EQ(flip(image, false, false, 0, 0, 1, 1), 0);
        expectReport("Image_Flip", -3, std::u16string(noHandle) + u"::");
    }
    disposeImage(image);
}

TEST_F(ImageErrorTest, the_systems_text_is_that_of_the_failed_call) {
    jint image = newImage(1, 1, 0);
    Faults faults;
    faults.fail("CreateDIBSection", 0, ERROR_INVALID_PARAMETER);
    copyOf(image);
    const std::u16string copied = onlyReport().message;
    newImage(1, 1, 0);
    EXPECT_EQ(copied, onlyReport().message) << "not that of what was called since";
    disposeImage(image);
}

TEST_F(ImageErrorTest, sizes_that_are_none) {
    for (const auto& [width, height] : std::vector<std::pair<jint, jint>>{
             {0, 1}, {1, 0}, {-1, 1}, {0, 0}, {INT_MIN, 1}, {0x7FFFFFFF, 0x7FFFFFFF}}) {
        EXPECT_EQ(newImage(width, height, 0), 0) << width << " x " << height;
        TestVm::Report report = onlyReport();
        EXPECT_EQ(report.function, "Image_NewFromSize");
        EXPECT_NE(report.code, 0);
        EXPECT_EQ(report.message.find(noHandle), 0u);
    }
}

TEST_F(ImageErrorTest, without_memory_for_the_record_nothing_is_left) {
    jint source = newImage(1, 1, 0);
    newShell();
    {
        NoLeaks noLeaks;
        Faults faults;
        faults.fail("LocalAlloc");
        EXPECT_EQ(newImage(1, 1, 0), 0);
        expectReportWithoutMessage("Image_NewFromSize", -4);
        faults.fail("LocalAlloc");
        EXPECT_EQ(newDirect(1, 1, {0}, 24), 0);
        expectReportWithoutMessage("Image_NewFromIntData", -4);
        faults.fail("LocalAlloc", 2);
        EXPECT_EQ(newIndexed(1, 1, {0}, 1, 8, {0}), 0);
        expectReportWithoutMessage("Image_NewFromByteData", -4);
        faults.fail("LocalAlloc");
        EXPECT_EQ(copyOf(source), 0);
        expectReportWithoutMessage("Image_NewFromHandle", -4);
        faults.fail("LocalAlloc");
        EXPECT_EQ(flip(source, false, false, 0, 0, 1, 1), 0);
        expectReportWithoutMessage("Image_Flip", -4);
    }
    disposeImage(source);
}

TEST_F(ImageErrorTest, without_memory_for_the_palette) {
    Faults faults;
    faults.fail("LocalAlloc");
    EXPECT_EQ(newIndexed(1, 1, {0}, 1, 8, {0}), 0);
    expectReport("Image_NewFromByteData", -4, u"Not enough memory to create image");
    EXPECT_EQ(call(OS::Image_NewFromByteData, display, 1, 1, vm.newBytes({0}), 1, 8,
                   vm.newBytes({0}), vm.newBytes({0}), vm.newBytes({0}), 0x7FFFFFFF, -1),
              0);
    expectReport("Image_NewFromByteData", -4, u"Not enough memory to create image");
}

TEST_F(ImageErrorTest, a_negative_palette_size_is_none) {
    jint image = call(OS::Image_NewFromByteData, display, 1, 1, vm.newBytes({0}), 1, 8,
                      vm.newBytes({0}), vm.newBytes({0}), vm.newBytes({0}), -5, -1);
    EXPECT_EQ(pixelsOf(image).colorsUsed, 0u);
    disposeImage(image);
}

TEST_F(ImageErrorTest, a_palette_asked_of_a_direct_image) {
    jint image = newImage(1, 1, 0);
    EXPECT_EQ(paletteOf(image, 1)[0], untouchedColor);
    expectReport("Image_GetIndexedPalette", -3,
                 u"Indexed palette not available for direct color image");
    disposeImage(image);
}

TEST_F(ImageErrorTest, a_palette_that_cannot_be_read) {
    jint image = newIndexed(1, 1, {0}, 1, 8, {1});
    Faults faults;
    faults.fail("GetDIBColorTable");
    EXPECT_EQ(paletteOf(image, 1)[0], untouchedColor);
    expectReport("Image_GetIndexedPalette", -3, u"Unable to get DIB color table");
    disposeImage(image);
}

TEST_F(ImageErrorTest, pixels_of_the_other_kind) {
    jint direct = newImage(1, 1, 0);
    jint indexed = newIndexed(1, 1, {0}, 1, 8, {1});
    EXPECT_EQ(call(OS::Image_GetPixelsHighColor, indexed), nullptr);
    expectReport("Image_GetPixelsHighColor", -3,
                 u"Pixels High color invalid on indexed color image");
    EXPECT_EQ(call(OS::Image_GetPixelsLowColor, direct), nullptr);
    expectReport("Image_GetPixelsLowColor", -3, u"Pixels Low color invalid on direct color image");
    disposeImage(direct);
    disposeImage(indexed);
}

TEST_F(ImageErrorTest, pixels_without_memory) {
    jint image = newImage(1, 1, 0);
    Faults faults;
    faults.fail("LocalAlloc");
    EXPECT_EQ(call(OS::Image_GetPixelsHighColor, image), nullptr);
    expectReportWithoutMessage("Image_GetPixelsHighColor", -4);
    disposeImage(image);
}

TEST_F(ImageErrorTest, pixels_without_a_java_array_are_null_and_freed) {
    jint direct = newImage(1, 1, 0);
    jint indexed = newIndexed(1, 1, {0}, 1, 8, {1});
    long blocks = countHeapBlocks();
    vm.failCall("NewIntArray");
    EXPECT_EQ(call(OS::Image_GetPixelsHighColor, direct), nullptr);
    EXPECT_EQ(vm.pendingException, "java/lang/OutOfMemoryError");
    vm.clearException();
    vm.failCall("NewByteArray");
    EXPECT_EQ(call(OS::Image_GetPixelsLowColor, indexed), nullptr);
    EXPECT_EQ(vm.pendingException, "java/lang/OutOfMemoryError");
    vm.clearException();
    EXPECT_EQ(countHeapBlocks(), blocks);
    disposeImage(direct);
    disposeImage(indexed);
}

TEST_F(ImageErrorTest, a_depth_without_colors_stores_none) {
    jint image = newDirect(2, 1, {-1, -1}, 8);
    ASSERT_NE(image, 0);
    EXPECT_EQ(storedIn(image), Bytes(4, 0));
    disposeImage(image);
    EXPECT_EQ(newDirect(2, 1, {-1, -1}, 17), 0);
    expectReport("Image_NewFromIntData", -3, std::u16string(noHandle) + u"::");
}

TEST_F(ImageErrorTest, any_failing_call_is_reported_at_most_once_and_leaves_nothing) {
    newShell();
    NoLeaks noLeaks;
    int failures = forEachFailure([&](Faults&) {
        jint image = newIndexed(3, 3, Bytes(9), 3, 8, paletteOfLength(5), 1);
        EXPECT_LE(vm.reports.size(), image ? 0u : 1u);
        vm.reports.clear();
        if (!image) return;
        for (jint made : {copyOf(image), flip(image, true, true, 0, 0, 3, 3)}) {
            if (made) {
                highColorOf(made);
                lowColorOf(made);
                disposeImage(made);
            }
        }
        paletteOf(image);
        vm.reports.clear();
        disposeImage(image);
    });
    EXPECT_GT(failures, 10);
}

TEST_F(ImageTest, thousands_leave_nothing_behind) {
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
