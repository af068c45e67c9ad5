#include "device.h"
#include "faults.h"
#include "graphics/graphics.h"
#include "leaks.h"
#include <thread>

class GraphicsTest : public DeviceTest {
  protected:
    static GraphicsRecord* graphicsOf(jint handle) {
        return reinterpret_cast<GraphicsRecord*>(handle);
    }
    static ImageRecord* imageOf(jint handle) { return reinterpret_cast<ImageRecord*>(handle); }
    jint newImage(jint width = 20, jint height = 10) {
        return call(OS::Image_NewFromSize, display, width, height, 0xFFFFFF);
    }
    jint onImage(jint image) { return call(OS::Image_NewGraphics, image); }
    jint onControl(jint control) { return call(OS::Control_NewGraphics, control); }
    void end(jint graphics) { call(OS::Graphics_Dispose, graphics); }
    void disposeImage(jint image) { call(OS::Image_Dispose, image); }
    jint newColor(jint red, jint green, jint blue) {
        return call(OS::Color_New, display, red, green, blue);
    }
    void disposeColor(jint color) { call(OS::Color_Dispose, color); }
    void set(const Native<void(jint, jint)>& property, jint graphics, jint value) {
        call(property, graphics, value);
    }
    void clip(jint graphics, jint x, jint y, jint width, jint height) {
        call(OS::Graphics_SetClipping, graphics, x, y, width, height);
    }
    static RECT clipOf(jint graphics) {
        RECT box = {-1, -1, -1, -1};
        GetClipBox(graphicsOf(graphics)->dc, &box);
        return box;
    }
    void fill(jint graphics, jint x, jint y, jint width, jint height) {
        call(OS::Graphics_FillRectangle, graphics, x, y, width, height);
    }
    // 0xRRGGBB
    static DWORD pixelOf(jint image, int x, int y) {
        BITMAP bitmap = {};
        GetObjectW(imageOf(image)->bitmap, sizeof(bitmap), &bitmap);
        const BYTE* pixel = static_cast<BYTE*>(bitmap.bmBits) + y * bitmap.bmWidthBytes +
                            x * (bitmap.bmBitsPixel / 8);
        return pixel[2] << 16 | pixel[1] << 8 | pixel[0];
    }
    static bool equal(const RECT& a, const RECT& b) { return EqualRect(&a, &b); }
};

TEST_F(GraphicsTest, on_a_control_is_bounded_by_its_client_area) {
    jint button = newButton(newShell()); // 100 by 40
    jint graphics = onControl(button);
    EXPECT_TRUE(equal(graphicsOf(graphics)->bounds, {0, 0, 100, 40}));
    EXPECT_EQ(graphicsOf(graphics)->image, nullptr);
    EXPECT_EQ(WindowFromDC(graphicsOf(graphics)->dc), windowOf(button));
    end(graphics);
}

TEST_F(GraphicsTest, on_an_image_is_bounded_by_it_and_takes_its_bitmap_when_it_draws) {
    jint image = newImage();
    jint graphics = onImage(image);
    EXPECT_TRUE(equal(graphicsOf(graphics)->bounds, {0, 0, 20, 10}));
    EXPECT_EQ(imageOf(image)->selectedDC, nullptr);
    fill(graphics, 0, 0, 1, 1);
    EXPECT_EQ(imageOf(image)->selectedDC, graphicsOf(graphics)->dc);
    end(graphics);
    EXPECT_EQ(imageOf(image)->selectedDC, nullptr);
    disposeImage(image);
}

TEST_F(GraphicsTest, two_on_one_image_draw_in_turn) {
    jint image = newImage();
    jint first = onImage(image);
    jint second = onImage(image);
    jint red = newColor(255, 0, 0);
    jint blue = newColor(0, 0, 255);
    set(OS::Graphics_SetBackground, first, red);
    set(OS::Graphics_SetBackground, second, blue);
    for (int i = 0; i < 10; ++i) {
        jint graphics = i % 2 ? second : first;
        fill(graphics, i, i, 1, 1);
        EXPECT_EQ(imageOf(image)->selectedDC, graphicsOf(graphics)->dc);
    }
    for (int i = 0; i < 10; ++i) EXPECT_EQ(pixelOf(image, i, i), i % 2 ? 0x0000FFu : 0xFF0000u);
    end(first);
    EXPECT_EQ(imageOf(image)->selectedDC, graphicsOf(second)->dc) << "the other one holds it";
    end(second);
    disposeImage(image);
    disposeColor(red);
    disposeColor(blue);
}

TEST_F(GraphicsTest, contexts_of_an_image_end_while_another_thread_draws_on_it) {
    jint image = newImage(64, 64);
    jint red = newColor(255, 0, 0);
    jint graphics = onImage(image);
    set(OS::Graphics_SetBackground, graphics, red);
    std::thread other([&] {
        for (int i = 0; i < 500; ++i) {
            jint brief = onImage(image);
            set(OS::Graphics_SetBackground, brief, red);
            end(brief);
        }
    });
    for (jint i = 0; i < 64 * 64; ++i) fill(graphics, i % 64, i / 64, 1, 1);
    other.join();
    end(graphics);
    for (int i = 0; i < 64 * 64; ++i) ASSERT_EQ(pixelOf(image, i % 64, i / 64), 0xFF0000u) << i;
    disposeImage(image);
    disposeColor(red);
}

TEST_F(GraphicsTest, two_threads_may_draw_on_one_image) {
    jint image = newImage(64, 64);
    jint red = newColor(255, 0, 0);
    auto draw = [&](jint offset) {
        jint graphics = onImage(image);
        set(OS::Graphics_SetBackground, graphics, red);
        for (jint i = offset; i < 64 * 64; i += 2) fill(graphics, i % 64, i / 64, 1, 1);
        end(graphics);
    };
    std::thread other([&] { draw(1); });
    draw(0);
    other.join();
    for (int i = 0; i < 64 * 64; ++i) ASSERT_EQ(pixelOf(image, i % 64, i / 64), 0xFF0000u) << i;
    disposeImage(image);
    disposeColor(red);
}

TEST_F(GraphicsTest, a_foreground_changes_text_and_pen) {
    jint image = newImage();
    jint graphics = onImage(image);
    jint color = newColor(1, 2, 3);
    set(OS::Graphics_SetForeground, graphics, color);
    EXPECT_EQ(GetTextColor(graphicsOf(graphics)->dc), RGB(1, 2, 3));
    LOGPEN pen = {};
    GetObjectW(GetCurrentObject(graphicsOf(graphics)->dc, OBJ_PEN), sizeof(pen), &pen);
    EXPECT_EQ(pen.lopnColor, RGB(1, 2, 3));
    EXPECT_EQ(graphicsOf(graphics)->pen.lopnColor, RGB(1, 2, 3));
    end(graphics);
    disposeColor(color);
    disposeImage(image);
}

TEST_F(GraphicsTest, a_pen_that_cannot_be_made_is_an_error_and_the_old_one_stays) {
    jint image = newImage();
    jint graphics = onImage(image);
    jint color = newColor(1, 2, 3);
    COLORREF before = graphicsOf(graphics)->pen.lopnColor;
    Faults faults;
    faults.fail("CreatePenIndirect", 0, ERROR_INVALID_PARAMETER);
    set(OS::Graphics_SetForeground, graphics, color);
    expectReport("Graphics_SetForeground", -3, u"Unable to create new pen::");
    EXPECT_EQ(GetTextColor(graphicsOf(graphics)->dc), RGB(1, 2, 3)) << "the text has it already";
    EXPECT_EQ(graphicsOf(graphics)->pen.lopnColor, before);
    set(OS::Graphics_SetLineWidth, graphics, 7);
    expectReport("Graphics_SetLineWidth", -3, u"Unable to create new pen::");
    EXPECT_NE(graphicsOf(graphics)->pen.lopnWidth.x, 7);
    end(graphics);
    disposeColor(color);
    disposeImage(image);
}

TEST_F(GraphicsTest, the_same_line_width_makes_no_pen) {
    jint image = newImage();
    jint graphics = onImage(image);
    Faults faults;
    set(OS::Graphics_SetLineWidth, graphics, 3);
    set(OS::Graphics_SetLineWidth, graphics, 3);
    EXPECT_EQ(faults.countCalls("CreatePenIndirect"), 1);
    set(OS::Graphics_SetLineWidth, graphics, 1);
    EXPECT_EQ(faults.countCalls("CreatePenIndirect"), 2);
    end(graphics);
    disposeImage(image);
}

static constexpr LOGPEN widePen = {PS_SOLID, {3, 0}, RGB(9, 8, 7)};
static int WINAPI answerWidePen(HGDIOBJ object, int size, void* described) {
    if (GetObjectType(object) != OBJ_PEN) return GetObjectW(object, size, described);
    *static_cast<LOGPEN*>(described) = widePen;
    return sizeof(LOGPEN);
}

TEST_F(GraphicsTest, the_pen_that_its_context_has_is_its_first_one) {
    jint image = newImage();
    Faults faults;
    faults.replace("GetObjectW", reinterpret_cast<void*>(answerWidePen));
    jint graphics = onImage(image);
    set(OS::Graphics_SetLineWidth, graphics, widePen.lopnWidth.x);
    EXPECT_EQ(faults.countCalls("CreatePenIndirect"), 0);
    EXPECT_EQ(graphicsOf(graphics)->pen.lopnColor, widePen.lopnColor);
    end(graphics);
    disposeImage(image);
}

TEST_F(GraphicsTest, a_background_that_cannot_be_set_is_an_error) {
    jint image = newImage();
    jint graphics = onImage(image);
    jint color = newColor(1, 2, 3);
    Faults faults;
    faults.fail("SetBkColor", 1, ERROR_INVALID_HANDLE, CLR_INVALID);
    set(OS::Graphics_SetBackground, graphics, color);
    expectReport("Graphics_SetBackground", -3, u"Error in setting background color::");
    faults.fail("CreateSolidBrush", 1, ERROR_NOT_ENOUGH_MEMORY);
    set(OS::Graphics_SetBackground, graphics, color);
    expectReport("Graphics_SetBackground", -4, u"Error creating new background brush::");
    EXPECT_EQ(GetBkColor(graphicsOf(graphics)->dc), RGB(1, 2, 3)) << "the colour is changed";
    end(graphics);
    disposeColor(color);
    disposeImage(image);
}

TEST_F(GraphicsTest, a_font_is_selected_and_none_is_the_systems) {
    jint image = newImage();
    jint graphics = onImage(image);
    jint font = call(OS::Font_NewLogical, display, 2, 12, 0);
    auto current = [&] { return GetCurrentObject(graphicsOf(graphics)->dc, OBJ_FONT); };
    set(OS::Graphics_SetFont, graphics, font);
    EXPECT_EQ(current(), reinterpret_cast<FontRecord*>(font)->font);
    set(OS::Graphics_SetFont, graphics, 0);
    EXPECT_EQ(current(), GetStockObject(SYSTEM_FONT));
    {
        Faults faults;
        faults.fail("SelectObject", 1, ERROR_INVALID_HANDLE);
        set(OS::Graphics_SetFont, graphics, font);
        expectReport("Graphics_SetFont", -3, u"Unable to select new font into device context::");
    }
    end(graphics);
    call(OS::Font_Dispose, font);
    disposeImage(image);
}

TEST_F(GraphicsTest, a_clip_is_limited_by_the_bounds_and_replaces_the_one_before) {
    jint image = newImage(); // 20 by 10
    jint graphics = onImage(image);
    fill(graphics, 0, 0, 0, 0); // takes the bitmap
    clip(graphics, 5, 5, 100, 100);
    EXPECT_TRUE(equal(clipOf(graphics), {5, 5, 20, 10}));
    clip(graphics, 0, 0, 3, 3);
    EXPECT_TRUE(equal(clipOf(graphics), {0, 0, 3, 3}));
    clip(graphics, 50, 50, 10, 10);
    RECT none = clipOf(graphics);
    EXPECT_TRUE(IsRectEmpty(&none)) << "wholly outside: everything is clipped";
    call(OS::Graphics_ClearClipping, graphics);
    EXPECT_TRUE(equal(clipOf(graphics), {0, 0, 20, 10}));
    end(graphics);
    disposeImage(image);
}

TEST_F(GraphicsTest, a_cleared_clip_is_the_bounds_and_not_the_device) {
    jint shell = newShell();
    jint graphics = onControl(shell);
    graphicsOf(graphics)->bounds = {10, 10, 30, 30};
    call(OS::Graphics_ClearClipping, graphics);
    EXPECT_TRUE(equal(clipOf(graphics), {10, 10, 30, 30}));
    end(graphics);
}

TEST_F(GraphicsTest, a_clip_that_cannot_be_set_is_an_error) {
    jint image = newImage();
    jint graphics = onImage(image);
    Faults faults;
    faults.fail("CreateRectRgnIndirect");
    clip(graphics, 0, 0, 5, 5);
    expectReport("Graphics_SetClipping", -3, u"Unable to create clip region");
    faults.fail("SelectClipRgn");
    clip(graphics, 0, 0, 5, 5);
    expectReport("Graphics_SetClipping", -3, u"Unable to select clip region");
    faults.fail("CreateRectRgnIndirect");
    call(OS::Graphics_ClearClipping, graphics);
    expectReport("Graphics_ClearClipping", -3, u"Unable to create clip region");
    faults.fail("SelectClipRgn");
    call(OS::Graphics_ClearClipping, graphics);
    expectReport("Graphics_ClearClipping", -3, u"Unable to select clip region");
    end(graphics);
    disposeImage(image);
}

TEST_F(GraphicsTest, the_inverting_mode_lives_in_the_device_context) {
    jint image = newImage();
    jint graphics = onImage(image);
    call(OS::Graphics_SetXORMode, graphics, true);
    EXPECT_EQ(GetROP2(graphicsOf(graphics)->dc), R2_XORPEN);
    call(OS::Graphics_SetXORMode, graphics, false);
    EXPECT_EQ(GetROP2(graphicsOf(graphics)->dc), R2_COPYPEN);
    end(graphics);
    disposeImage(image);
}

TEST_F(GraphicsTest, line_node_styles_are_ignored) {
    jint image = newImage();
    jint graphics = onImage(image);
    Faults faults;
    call(OS::Graphics_SetLineNodeStyle, graphics, 1, 2, 3);
    EXPECT_TRUE(faults.calls().empty());
    end(graphics);
    disposeImage(image);
}

TEST_F(GraphicsTest, a_context_that_cannot_be_made_is_an_error_and_leaks_nothing) {
    jint button = newButton(newShell());
    jint image = newImage();
    NoLeaks noLeaks;
    Faults faults;
    faults.fail("LocalAlloc");
    EXPECT_EQ(onControl(button), 0);
    expectReport("Control_NewGraphics", -4, u"Unable to allocate enough memory for device context");
    EXPECT_EQ(faults.countCalls("ReleaseDC"), faults.countCalls("GetDC"));
    faults.fail("LocalAlloc");
    EXPECT_EQ(onImage(image), 0);
    expectReport("Image_NewGraphics", -4, u"Unable to allocate enough memory for device context");
    EXPECT_EQ(faults.countCalls("DeleteDC"), faults.countCalls("CreateCompatibleDC"));
    faults.fail("GetDC", 1, ERROR_INVALID_HANDLE);
    EXPECT_EQ(onControl(button), 0);
    expectReport("Control_NewGraphics", -3, u"Unable to create DC from control::");
}

TEST_F(GraphicsTest, without_a_region_for_its_bounds_it_has_no_clip) {
    jint button = newButton(newShell());
    Faults faults;
    faults.fail("CreateRectRgnIndirect");
    jint graphics = onControl(button);
    ASSERT_NE(graphics, 0);
    EXPECT_EQ(faults.countCalls("SelectClipRgn"), 0);
    EXPECT_EQ(faults.countCalls("DeleteObject"), 0);
    EXPECT_TRUE(vm.reports.empty());
    end(graphics);
}

TEST_F(GraphicsTest, a_context_that_does_not_tell_its_first_bitmap_leaves_the_images_as_it_was) {
    jint image = newImage();
    HBITMAP before = imageOf(image)->placeholderBitmap = CreateBitmap(1, 1, 1, 1, nullptr);
    Faults faults;
    faults.fail("SelectObject");
    jint graphics = onImage(image);
    EXPECT_EQ(imageOf(image)->placeholderBitmap, before);
    end(graphics);
    DeleteObject(before);
    disposeImage(image);
}

TEST_F(GraphicsTest, a_device_that_nothing_ends_is_left_alone) {
    DeviceRecord device = {};
    call(OS::Device_Dispose, reinterpret_cast<jint>(&device));
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(GraphicsTest, a_control_that_does_not_tell_its_client_area_is_an_error) {
    jint button = newButton(newShell());
    NoLeaks noLeaks;
    Faults faults;
    faults.fail("GetClientRect", 1, ERROR_INVALID_WINDOW_HANDLE);
    EXPECT_EQ(onControl(button), 0);
    expectReport("Control_NewGraphics", -3, u"Unable to get clipping area::");
    EXPECT_EQ(faults.countCalls("ReleaseDC"), faults.countCalls("GetDC"))
        << "Java never learns of the context";
}

TEST_F(GraphicsTest, contexts_leave_nothing_behind) {
    jint button = newButton(newShell());
    jint image = newImage();
    jint color = newColor(9, 8, 7);
    NoLeaks noLeaks;
    for (int i = 0; i < leakRounds(); ++i) {
        jint graphics = i % 2 ? onControl(button) : onImage(image);
        for (jint width = 1; width < 4; ++width) {
            set(OS::Graphics_SetForeground, graphics, color);
            set(OS::Graphics_SetBackground, graphics, color);
            set(OS::Graphics_SetLineWidth, graphics, width);
        }
        clip(graphics, 1, 1, 5, 5);
        fill(graphics, 1, 1, 5, 5);
        end(graphics);
    }
}

TEST_F(GraphicsTest, a_controls_pixels_are_copied_to_an_image) {
    jint shell = newShell();
    jint image = newImage();
    jint graphics = onControl(shell);
    jint red = newColor(255, 0, 0);
    set(OS::Graphics_SetBackground, graphics, red);
    fill(graphics, 10, 10, 5, 5);
    end(graphics);
    auto copy = [&](jint x, jint y) { call(OS::Control_CopyArea, shell, image, x, y, 4, 4); };
    copy(12, 12);
    EXPECT_EQ(pixelOf(image, 0, 0), 0xFF0000u);
    EXPECT_EQ(pixelOf(image, 2, 2), 0xFF0000u);
    EXPECT_NE(pixelOf(image, 3, 3), 0xFF0000u);
    EXPECT_EQ(pixelOf(image, 5, 5), 0xFFFFFFu) << "beyond the copy";
    {
        NoLeaks noLeaks;
        Faults faults;
        faults.fail("BitBlt", 1, ERROR_INVALID_HANDLE);
        copy(12, 12);
        expectReport("Control_CopyArea", -3, u"Unable to bit blit from control to image::");
        faults.fail("GetClientRect", 1, ERROR_INVALID_WINDOW_HANDLE);
        copy(12, 12);
        expectReport("Control_CopyArea", -3, u"Unable to get clipping area::");
        EXPECT_EQ(faults.countCalls("ReleaseDC"), faults.countCalls("GetDC"));
        EXPECT_EQ(faults.countCalls("DeleteDC"), faults.countCalls("CreateCompatibleDC"));
        faults.fail("GetDC", 1, ERROR_INVALID_HANDLE);
        copy(12, 12);
        expectReport("Control_CopyArea", -3, u"Unable to create DC from control::");
        faults.fail("CreateCompatibleDC", 1, ERROR_INVALID_HANDLE);
        copy(12, 12);
        expectReport("Control_CopyArea", -3,
                     u"Unable to allocate enough memory for device context::");
    }
    disposeColor(red);
    disposeImage(image);
}
