// Images on graphics contexts: transparency, alpha, stretching, and what is left behind.

#include "device.h"
#include "faults.h"
#include "graphics/blending.h"
#include "graphics/graphics.h"
#include "leaks.h"
#include "variety.h"
#include <climits>
#include <thread>

class ImageDrawingTest : public DeviceTest {
  protected:
    ImageDrawingTest() {
        target = newImage(8, 6);
        graphics = call(OS::Image_NewGraphics, target);
    }
    ~ImageDrawingTest() override {
        call(OS::Graphics_Dispose, graphics);
        images.push_back(target);
        for (jint image : images) call(OS::Image_Dispose, image);
    }
    jint newImage(jint width, jint height, jint color = 0x808080) {
        return call(OS::Image_NewFromSize, display, width, height, color);
    }
    // Pixels 0xRRGGBB of 24 bits, or of 32 with one alpha for each.
    jint newDirect(jint width, const std::vector<jint>& pixels, jint transparent = -1,
                   const std::vector<jbyte>& alpha = {}) {
        jint image = call(OS::Image_NewFromIntData, display, width, jint(pixels.size()) / width,
                          vm.newInts(pixels), 24, transparent, -1,
                          alpha.empty() ? nullptr : vm.newBytes(alpha));
        images.push_back(image);
        return image;
    }
    // One byte for each pixel.
    jint newIndexed(jint width, const std::vector<jbyte>& pixels, const std::vector<jbyte>& reds,
                    jint transparentIndex) {
        jint height = jint(pixels.size()) / width;
        jint image = call(OS::Image_NewFromByteData, display, width, height, vm.newBytes(pixels),
                          width, 8, vm.newBytes(reds), vm.newBytes(reds), vm.newBytes(reds),
                          jint(reds.size()), transparentIndex);
        images.push_back(image);
        return image;
    }
    void drawImage(jint image, jint x, jint y) {
        call(OS::Graphics_DrawImage, graphics, image, x, y);
    }
    void drawRegion(jint image, jint sx, jint sy, jint sw, jint sh, jint x, jint y, jint w,
                    jint h) {
        call(OS::Graphics_DrawImageRegion, graphics, image, sx, sy, sw, sh, x, y, w, h);
    }
    void setXOR(bool on) { call(OS::Graphics_SetXORMode, graphics, on); }
    static ImageRecord* record(jint image) { return reinterpret_cast<ImageRecord*>(image); }
    static DWORD at(jint image, int x, int y) {
        BITMAP bitmap = {};
        GetObjectW(record(image)->bitmap, sizeof(bitmap), &bitmap);
        const BYTE* pixel = static_cast<BYTE*>(bitmap.bmBits) + y * bitmap.bmWidthBytes +
                            x * bitmap.bmBitsPixel / 8;
        return pixel[2] << 16 | pixel[1] << 8 | pixel[0];
    }
    DWORD at(int x, int y) { return at(target, x, y); }
    std::vector<DWORD> row(int y, int from, int to) {
        std::vector<DWORD> pixels;
        for (int x = from; x < to; ++x) pixels.push_back(at(x, y));
        return pixels;
    }
    bool isUnlocked(jint image) {
        BOOL taken = FALSE;
        std::thread other([&] {
            taken = TryEnterCriticalSection(&record(image)->lock);
            if (taken) LeaveCriticalSection(&record(image)->lock);
        });
        other.join();
        return taken;
    }
    using Pixels = std::vector<DWORD>;
    static constexpr DWORD gray = 0x808080;
    jint target, graphics;
    std::vector<jint> images;
};

TEST_F(ImageDrawingTest, an_opaque_image_covers_what_is_there) {
    jint image = newDirect(2, {0x112233, 0x445566, 0x778899, 0xAABBCC});
    drawImage(image, 1, 2);
    EXPECT_EQ(row(2, 0, 4), (Pixels{gray, 0x112233, 0x445566, gray}));
    EXPECT_EQ(row(3, 0, 4), (Pixels{gray, 0x778899, 0xAABBCC, gray}));
    EXPECT_EQ(at(1, 1), gray);
}

TEST_F(ImageDrawingTest, an_opaque_image_inverts_and_twice_leaves_nothing) {
    jint image = newDirect(1, {0x112233});
    setXOR(true);
    drawImage(image, 0, 0);
    EXPECT_EQ(at(0, 0), gray ^ 0x112233);
    drawImage(image, 0, 0);
    EXPECT_EQ(at(0, 0), gray);
}

TEST_F(ImageDrawingTest, pixels_of_the_transparent_colour_leave_what_is_there) {
    constexpr jint key = 0x030201; // 0x010203 as Java's pixels have it
    jint image = newDirect(3, {0x010203, 0xFFFFFF, 0x010204}, key);
    for (bool inverts : {false, true}) {
        setXOR(inverts); // the mode is ignored
        drawImage(image, 0, 0);
        EXPECT_EQ(row(0, 0, 4), (Pixels{gray, 0xFFFFFF, 0x010204, gray}));
    }
}

TEST_F(ImageDrawingTest, transparency_of_an_indexed_image_goes_by_the_index) {
    // Entries 1 and 3 have the same colour; entry 1 is transparent.
    jint image = newIndexed(4, {0, 1, 2, 3}, {10, 77, 20, 77}, 1);
    drawImage(image, 0, 0);
    EXPECT_EQ(row(0, 0, 4), (Pixels{0x0A0A0A, gray, 0x141414, 0x4D4D4D}));
    drawImage(image, 4, 1);
    EXPECT_EQ(row(1, 4, 8), (Pixels{0x0A0A0A, gray, 0x141414, 0x4D4D4D}))
        << "its palette is as before";
}

static std::vector<std::vector<DWORD>> palettes; // 0xRRGGBB
static UINT WINAPI recordPalette(HDC dc, UINT first, UINT count, const RGBQUAD* colors) {
    auto* words = reinterpret_cast<const DWORD*>(colors);
    palettes.emplace_back(words, words + count);
    return SetDIBColorTable(dc, first, count, colors);
}

TEST_F(ImageDrawingTest, a_transparent_index_alone_is_white_while_its_pixels_are_looked_for) {
    jint image = newIndexed(4, {0, 1, 2, 3}, {10, 77, 20, 77}, 1);
    palettes.clear();
    Faults faults;
    faults.replace("SetDIBColorTable", reinterpret_cast<void*>(recordPalette));
    drawImage(image, 0, 0);
    ASSERT_EQ(palettes.size(), 2u);
    Pixels onlyOne(palettes[0].size()), own(palettes[0].size());
    onlyOne.at(1) = 0xFFFFFF;
    EXPECT_EQ(palettes[0], onlyOne);
    own.at(0) = 0x0A0A0A, own.at(1) = own.at(3) = 0x4D4D4D, own.at(2) = 0x141414;
    EXPECT_EQ(palettes[1], own);
}

static UINT mostColorsAsked;
static UINT WINAPI countColorsAsked(HDC dc, UINT first, UINT count, RGBQUAD* colors) {
    if (count > mostColorsAsked) mostColorsAsked = count;
    return GetDIBColorTable(dc, first, count < 256 ? count : 256, colors);
}

TEST_F(ImageDrawingTest, an_image_without_palette_is_asked_for_no_more_colors_than_there_are) {
    jint image = newDirect(1, {0});
    record(image)->isDirect = FALSE;
    record(image)->transparentColor = 0;
    mostColorsAsked = 0;
    Faults faults;
    faults.replace("GetDIBColorTable", reinterpret_cast<void*>(countColorsAsked));
    drawImage(image, 0, 0);
    EXPECT_EQ(mostColorsAsked, 0u);
    EXPECT_EQ(faults.countCalls("GetDIBColorTable"), 1);
}

TEST_F(ImageDrawingTest, alpha_blends_with_what_is_there) {
    jint image =
        newDirect(4, {0xFF0000, 0xFF0000, 0xFF0000, 0x00FF40}, -1, {0, jbyte(255), jbyte(128), 1});
    for (bool inverts : {false, true}) {
        setXOR(inverts); // the mode is ignored
        ColorRecord grayColor = {RGB(0x80, 0x80, 0x80), nullptr};
        call(OS::Graphics_FillBackground, graphics, reinterpret_cast<jint>(&grayColor), 0, 0, 8, 6);
        DeleteObject(grayColor.brush);
        drawImage(image, 2, 1);
        EXPECT_EQ(at(1, 1), gray);
        EXPECT_EQ(at(2, 1), gray);
        EXPECT_EQ(at(3, 1), 0xFF0000u);
        EXPECT_EQ(at(4, 1), blendPixel(gray, 0x80FF0000));
        EXPECT_EQ(at(5, 1), blendPixel(gray, 0x0100FF40));
    }
}

TEST_F(ImageDrawingTest, an_image_that_lies_partly_outside_is_drawn_as_far_as_it_goes) {
    jint blended = newDirect(2, {0x112233, 0x445566}, -1, {jbyte(255), jbyte(255)});
    jint opaque = newDirect(2, {0x112233, 0x445566});
    for (jint image : {blended, opaque}) {
        drawImage(image, -1, 0);
        EXPECT_EQ(row(0, 0, 2), (Pixels{0x445566, gray}));
        drawImage(image, 7, 1);
        EXPECT_EQ(row(1, 6, 8), (Pixels{gray, 0x112233}));
        drawImage(image, 100, 100);
    }
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(ImageDrawingTest, a_region_is_drawn_and_stretched) {
    jint image = newDirect(3, {1, 2, 3, 4, 5, 6});
    drawRegion(image, 1, 0, 2, 2, 0, 0, 2, 2);
    EXPECT_EQ(row(0, 0, 3), (Pixels{2, 3, gray}));
    EXPECT_EQ(row(1, 0, 3), (Pixels{5, 6, gray}));
    drawRegion(image, 0, 1, 2, 1, 2, 3, 4, 2);
    EXPECT_EQ(row(3, 1, 7), (Pixels{gray, 4, 4, 5, 5, gray}));
    EXPECT_EQ(row(4, 1, 7), (Pixels{gray, 4, 4, 5, 5, gray}));
}

TEST_F(ImageDrawingTest, a_region_is_stretched_in_one_direction) {
    jint image = newDirect(2, {1, 2, 3, 4});
    drawRegion(image, 0, 0, 2, 2, 0, 0, 2, 4);
    for (int y = 0; y < 4; ++y)
        EXPECT_EQ(row(y, 0, 3), (y < 2 ? Pixels{1, 2, gray} : Pixels{3, 4, gray}));
    EXPECT_EQ(row(4, 0, 2), (Pixels{gray, gray}));
    drawRegion(image, 0, 0, 2, 2, 3, 0, 4, 2);
    EXPECT_EQ(row(0, 2, 8), (Pixels{gray, 1, 1, 2, 2, gray}));
    EXPECT_EQ(row(1, 2, 8), (Pixels{gray, 3, 3, 4, 4, gray}));
    EXPECT_EQ(row(2, 3, 7), (Pixels{gray, gray, gray, gray}));
}

TEST_F(ImageDrawingTest, a_region_inverts) {
    jint image = newDirect(1, {0x112233});
    setXOR(true);
    drawRegion(image, 0, 0, 1, 1, 0, 0, 2, 1);
    EXPECT_EQ(row(0, 0, 3), (Pixels{gray ^ 0x112233, gray ^ 0x112233, gray}));
}

TEST_F(ImageDrawingTest, a_transparent_region_is_stretched_with_its_mask) {
    jint direct = newDirect(3, {0, 0x010203, 0x112233}, 0x030201);
    drawRegion(direct, 1, 0, 2, 1, 0, 0, 4, 1);
    EXPECT_EQ(row(0, 0, 5), (Pixels{gray, gray, 0x112233, 0x112233, gray}));
    jint indexed = newIndexed(3, {0, 1, 2}, {10, 77, 77}, 1);
    drawRegion(indexed, 1, 0, 2, 1, 0, 1, 2, 1);
    EXPECT_EQ(row(1, 0, 3), (Pixels{gray, 0x4D4D4D, gray}));
}

TEST_F(ImageDrawingTest, a_region_with_alpha_is_blended) {
    jint image = newDirect(3, {0, 0xFF0000, 0x0000FF}, -1, {jbyte(255), jbyte(128), jbyte(255)});
    drawRegion(image, 1, 0, 2, 1, 3, 2, 2, 1);
    EXPECT_EQ(row(2, 2, 6), (Pixels{gray, blendPixel(gray, 0x80FF0000), 0x0000FF, gray}));
}

TEST_F(ImageDrawingTest, a_stretched_region_with_alpha_stretches_what_was_behind_its_own_size) {
    drawImage(newDirect(4, {0x204060, 0x406020, 0x602040, 0x808000}), 2, 2);
    jint image = newDirect(2, {0xFF0000, 0xFF0000}, -1, {jbyte(128), jbyte(128)});
    drawRegion(image, 0, 0, 2, 1, 2, 2, 4, 1);
    DWORD left = blendPixel(0x204060, 0x80FF0000), right = blendPixel(0x406020, 0x80FF0000);
    EXPECT_EQ(row(2, 1, 7), (Pixels{gray, left, left, right, right, gray}));
}

TEST_F(ImageDrawingTest, a_region_that_reaches_beyond_its_image_leaves_the_rest) {
    jint image = newDirect(1, {0x0000FF}, -1, {jbyte(255)});
    drawRegion(image, -1, -1, 3, 3, 0, 0, 3, 3);
    EXPECT_EQ(row(0, 0, 3), (Pixels{gray, gray, gray}));
    EXPECT_EQ(row(1, 0, 3), (Pixels{gray, 0x0000FF, gray}));
    EXPECT_EQ(row(2, 0, 3), (Pixels{gray, gray, gray}));
}

TEST_F(ImageDrawingTest, the_place_of_an_unplaced_image_draws_nothing) {
    jint image = newDirect(1, {0});
    Faults faults;
    constexpr jint unplaced = jint(0x80000002);
    constexpr jint unsized = 0x7FFFFFFF;
    drawRegion(image, 0, 0, 1, 1, unplaced, unplaced, unsized, unsized);
    EXPECT_EQ(faults.countCalls("EnterCriticalSection"), 0);
    EXPECT_TRUE(vm.reports.empty());
    const struct {
        jint x, y, width, height;
    } placed[] = {{0, unplaced, unsized, unsized},
                  {unplaced, 0, unsized, unsized},
                  {unplaced, unplaced, 1, unsized},
                  {unplaced, unplaced, unsized, 1}};
    for (const auto& row : placed) {
        int before = faults.countCalls("EnterCriticalSection");
        drawRegion(image, 0, 0, 1, 1, row.x, row.y, row.width, row.height);
        EXPECT_GT(faults.countCalls("EnterCriticalSection"), before) << row.x << " " << row.width;
    }
}

// Its bitmap is taken out of the context to be read.
TEST_F(ImageDrawingTest, an_image_that_is_drawn_onto_itself_stays_as_it_is) {
    jint before = newDirect(2, {0x112233, 0x445566});
    drawImage(before, 0, 0);
    drawImage(target, 2, 1);
    drawRegion(target, 0, 0, 2, 1, 2, 1, 2, 1);
    EXPECT_EQ(row(1, 0, 5), (Pixels{gray, gray, gray, gray, gray}));
    EXPECT_TRUE(vm.reports.empty());
    EXPECT_TRUE(isUnlocked(target));
    drawImage(before, 2, 1);
    EXPECT_EQ(row(1, 0, 5), (Pixels{gray, gray, 0x112233, 0x445566, gray})) << "it is back";
}

TEST_F(ImageDrawingTest, an_image_goes_back_to_the_context_that_holds_it) {
    jint source = newDirect(1, {0x112233});
    jint holder = call(OS::Image_NewGraphics, source);
    call(OS::Graphics_DrawLine, holder, 0, 0, 0, 0); // takes it
    call(OS::Graphics_FillRectangle, holder, 0, 0, 1, 1);
    HDC dc = reinterpret_cast<GraphicsRecord*>(holder)->dc;
    drawImage(source, 0, 0);
    EXPECT_EQ(record(source)->selectedDC, dc);
    EXPECT_EQ(GetCurrentObject(dc, OBJ_BITMAP), record(source)->bitmap);
    EXPECT_EQ(at(0, 0), 0xFFFFFFu) << "as it was filled";
    call(OS::Graphics_Dispose, holder);
}

TEST_F(ImageDrawingTest, failures_are_errors_of_whole_images_alone) {
    jint opaque = newDirect(1, {0});
    jint alpha = newDirect(1, {0}, -1, {55});
    jint masked = newDirect(1, {0}, 0x030201);
    for (jint image : {opaque, alpha, masked}) {
        int failures = forEachFailure([&](Faults&) { drawImage(image, 0, 0); });
        EXPECT_GT(failures, 3);
        bool blitFailed = false, clipUnknown = false;
        for (const TestVm::Report& report : vm.reports) {
            EXPECT_EQ(report.function, "Graphics_DrawImage");
            blitFailed |= report.message.find(u"Unable to complete blitting operation::") == 0;
            clipUnknown |= report.message.find(u"Error getting clipping area::") == 0;
        }
        EXPECT_TRUE(blitFailed) << image;
        EXPECT_TRUE(clipUnknown) << image;
        vm.reports.clear();
        forEachFailure([&](Faults&) { drawRegion(image, 0, 0, 1, 1, 0, 0, 1, 1); });
        EXPECT_TRUE(vm.reports.empty());
        EXPECT_TRUE(isUnlocked(image));
        EXPECT_TRUE(isUnlocked(target));
    }
}

static BOOL WINAPI deleteAndForgetTheError(HDC dc) {
    BOOL deleted = DeleteDC(dc);
    SetLastError(ERROR_SUCCESS);
    return deleted;
}

static int WINAPI answerRasterPrinter(HDC dc, int index) {
    return index == TECHNOLOGY ? DT_RASPRINTER : GetDeviceCaps(dc, index);
}

TEST_F(ImageDrawingTest, a_raster_printer_gets_no_transparent_image) {
    jint image = newDirect(1, {0}, 0x030201);
    Faults faults;
    faults.replace("GetDeviceCaps", reinterpret_cast<void*>(answerRasterPrinter));
    drawImage(image, 0, 0);
    EXPECT_EQ(at(0, 0), gray);
    const std::u16string message = onlyReport().message;
    EXPECT_EQ(message, u"Unable to complete blitting operation::" + textOf(ERROR_NOT_SUPPORTED));
}

TEST_F(ImageDrawingTest, a_failure_is_told_by_its_own_call_whatever_is_cleaned_up_after_it) {
    jint opaque = newDirect(1, {0});
    jint alpha = newDirect(1, {0}, -1, {55});
    jint masked = newDirect(1, {0}, 0x030201);
    const struct {
        jint image;
        const char* function;
        int nth;
    } rows[] = {
        {opaque, "BitBlt", 1},
        {alpha, "BitBlt", 1},
        {alpha, "BitBlt", 2},
        {alpha, "CreateDIBSection", 1},
        {alpha, "CreateCompatibleDC", 2},
        {masked, "CreateBitmap", 1},
        {masked, "CreateCompatibleBitmap", 1},
        {masked, "BitBlt", 6},
    };
    for (const auto& row : rows) {
        Faults faults;
        faults.replace("DeleteDC", reinterpret_cast<void*>(deleteAndForgetTheError));
        faults.fail(row.function, row.nth, ERROR_INVALID_PARAMETER);
        drawImage(row.image, 0, 0);
        EXPECT_EQ(onlyReport().message,
                  u"Unable to complete blitting operation::" + textOf(ERROR_INVALID_PARAMETER))
            << row.function << row.nth;
    }
}

TEST_F(ImageDrawingTest, nothing_is_drawn_without_a_bitmap_to_draw_in) {
    jint alpha = newDirect(2, {0, 1}, -1, {55, 66});
    jint masked = newDirect(2, {0, 1}, 0x030201);
    jint nothing = newDirect(8, std::vector<jint>(8, gray));
    for (jint image : {alpha, masked})
        for (const char* function :
             {"CreateBitmap", "CreateCompatibleBitmap", "CreateDIBSection", "CreateCompatibleDC"})
            for (int nth : {1, 2, 3}) {
                drawImage(nothing, 0, 1);
                Faults faults;
                faults.fail(function, nth, ERROR_NOT_ENOUGH_MEMORY);
                drawImage(image, 1, 1);
                if (!faults.hasFailed()) continue;
                EXPECT_EQ(onlyReport().code, -4) << function << nth;
                EXPECT_EQ(row(1, 0, 8), Pixels(8, gray)) << function << nth;
                faults.fail(function, nth, ERROR_NOT_ENOUGH_MEMORY);
                drawRegion(image, 0, 0, 2, 1, 1, 1, 4, 2);
                EXPECT_EQ(row(1, 0, 8), Pixels(8, gray)) << function << nth;
            }
}

TEST_F(ImageDrawingTest,
       a_region_of_less_than_no_size_draws_nothing_where_it_goes_through_bitmaps) {
    jint alpha = newDirect(2, {0, 1}, -1, {jbyte(255), 66});
    jint masked = newDirect(2, {0, 1}, 0x030201);
    for (jint image : {alpha, masked})
        for (jint width : {-3, 0, 2})
            for (jint height : {-2, 0, 1}) {
                if (width > 0 && height > 0) continue;
                drawRegion(image, 0, 0, width, height, 4, 3, 2, 1);
                if (image == masked) drawRegion(image, 0, 0, 2, 1, 4, 3, width, height);
                for (int y = 0; y < 6; ++y)
                    ASSERT_EQ(row(y, 0, 8), Pixels(8, gray)) << width << " " << height;
            }
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(ImageDrawingTest, a_region_without_pixels_needs_no_bitmap) {
    jint masked = newDirect(2, {1, 2, 3, 4}, 1);
    jint blended = newDirect(2, {1, 2, 3, 4}, -1, {0, 1, 2, 3});
    Faults faults;
    for (SIZE empty : {SIZE{0, 2}, SIZE{2, 0}, SIZE{-1, 2}, SIZE{2, -1}}) {
        drawRegion(masked, 0, 0, empty.cx, empty.cy, 0, 0, 2, 2);
        drawRegion(masked, 0, 0, 2, 2, 0, 0, empty.cx, empty.cy);
        drawRegion(blended, 0, 0, empty.cx, empty.cy, 0, 0, 2, 2);
    }
    for (const char* maker : {"CreateBitmap", "CreateCompatibleBitmap", "CreateDIBSection"})
        EXPECT_EQ(faults.countCalls(maker), 0) << maker;
    EXPECT_EQ(row(0, 0, 3), (Pixels{gray, gray, gray}));
}

TEST_F(ImageDrawingTest, a_region_from_far_away_has_nothing_of_the_image) {
    jint alpha = newDirect(2, {0, 1}, -1, {jbyte(255), jbyte(255)});
    jint opaque = newDirect(2, {0, 1});
    jint masked = newDirect(2, {0, 1}, 0x030201);
    for (jint image : {alpha, opaque, masked})
        for (jint x : {INT_MIN, INT_MIN + 1, INT_MAX - 3, INT_MAX - 1, INT_MAX})
            for (jint y : {INT_MIN, 0, INT_MAX - 1, INT_MAX}) {
                drawRegion(image, x, y, 4, 3, 1, 1, 4, 3);
                drawRegion(image, y, x, 4, 3, 1, 1, 4, 3);
                drawImage(image, x, y);
            }
    EXPECT_TRUE(isUnlocked(target));
    drawRegion(alpha, INT_MAX - 1, 0, 2, 1, 0, 5, 2, 1);
    EXPECT_EQ(row(5, 0, 3), Pixels(3, gray)) << "what an image lacks leaves what is there";
}

TEST_F(ImageDrawingTest, drawing_leaves_nothing_behind) {
    jint alpha = newDirect(2, {0, 1}, -1, {55, 66});
    jint masked = newDirect(2, {0, 1}, 0x030201);
    jint indexed = newIndexed(4, {0, 1, 2, 3}, {10, 77, 20, 77}, 1);
    drawImage(alpha, 0, 0);
    NoLeaks noLeaks;
    for (int i = 0; i < 3000; ++i)
        for (jint image : {alpha, masked, indexed}) {
            drawImage(image, 1, 1);
            drawRegion(image, 0, 0, 2, 1, 0, 0, 3, 2);
        }
}
