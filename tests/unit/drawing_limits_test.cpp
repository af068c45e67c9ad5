// What the primitives do with numbers at the ends of their range, without what they need, and when
// the system fails.

#include "drawing_fixture.h"
#include "faults.h"
#include "leaks.h"

constexpr jint most = 0x7FFFFFFF;
constexpr jint least = -most - 1;

static RECT edges;
static BOOL WINAPI recordRectangle(HDC, int left, int top, int right, int bottom) {
    edges = {left, top, right, bottom};
    return TRUE;
}
static BOOL WINAPI recordRoundRect(HDC, int left, int top, int right, int bottom, int, int) {
    edges = {left, top, right, bottom};
    return TRUE;
}

class DrawingLimitsTest : public DrawingTest {
  protected:
    void recordPoints() {
        faults.replace("Polyline", reinterpret_cast<void*>(recordPolyline));
        faults.replace("Polygon", reinterpret_cast<void*>(recordPolygon));
        points.clear();
    }
    Faults faults;
};

TEST_F(DrawingLimitsTest, a_clip_to_the_end_reaches_to_the_end) {
    clip(2, 1, most, most);
    draw(OS::Graphics_FillRectangle, 0, 0, 40, 30);
    EXPECT_EQ(count(greenPixel), 38 * 29);
    clip(most, most, most, most);
    draw(OS::Graphics_FillRectangle, 0, 0, 40, 30);
    EXPECT_EQ(count(greenPixel), 38 * 29) << "nothing lies there";
    clip(least, least, most, most);
    draw(OS::Graphics_FillBackground, red, 0, 0, 40, 30);
    EXPECT_EQ(count(redPixel), 0) << "it ends before the image begins";
}

TEST_F(DrawingLimitsTest, a_shape_to_the_end_meets_the_clip) {
    recordPoints();
    for (const auto& shape : {OS::Graphics_DrawArc, OS::Graphics_FillArc}) {
        points.clear();
        draw(shape, 3, 4, most, most, 0, 90);
        EXPECT_FALSE(points.empty()) << shape;
        for (const POINT& point : points) {
            EXPECT_GE(point.x, 3) << shape;
            EXPECT_GE(point.y, 4) << shape;
        }
    }
    EXPECT_TRUE(isUnlocked());
}

TEST_F(DrawingLimitsTest, points_of_a_wide_arc_lie_on_it) {
    recordPoints();
    draw(OS::Graphics_DrawArc, 10 - most, 0, most, 10, 0, 90);
    ASSERT_EQ(points.size(), 91u);
    EXPECT_EQ(points.front().x, 10) << "its right end";
    EXPECT_EQ(points.back().x, (20 - most) >> 1) << "its middle";
}

TEST_F(DrawingLimitsTest, outlines_and_fills_to_the_end_have_their_far_edges_there) {
    for (const char* function : {"Rectangle", "Ellipse"})
        faults.replace(function, reinterpret_cast<void*>(recordRectangle));
    faults.replace("RoundRect", reinterpret_cast<void*>(recordRoundRect));
    for (const auto& shape :
         {OS::Graphics_DrawRectangle, OS::Graphics_DrawOval, OS::Graphics_FillOval}) {
        edges = {};
        draw(shape, 5, 6, most, most);
        EXPECT_EQ(edges.right, most) << shape;
        EXPECT_EQ(edges.bottom, most) << shape;
        draw(shape, -5, -6, least, least);
        EXPECT_EQ(edges.right, least) << shape;
        EXPECT_EQ(edges.bottom, least) << shape;
    }
    draw(OS::Graphics_FillRoundRectangle, 5, 6, most, most, 3, 3);
    EXPECT_EQ(edges.right, most);
    EXPECT_EQ(edges.bottom, most);
}

TEST_F(DrawingLimitsTest, the_longest_arc_backwards_is_a_circle) {
    recordPoints();
    for (const auto& shape : {OS::Graphics_DrawArc, OS::Graphics_FillArc}) {
        points.clear();
        draw(shape, 1, 1, 20, 20, 30, least);
        EXPECT_EQ(points.size(), 361u) << shape;
    }
    EXPECT_TRUE(isUnlocked());
}

TEST_F(DrawingLimitsTest, only_the_longest_arc_is_shortened) {
    recordPoints();
    draw(OS::Graphics_DrawArc, 1, 1, 20, 20, -470, 360);
    std::vector<POINT> expected = points;
    draw(OS::Graphics_DrawArc, 1, 1, 20, 20, 30, -500);
    ASSERT_EQ(points.size(), expected.size());
    for (size_t i = 0; i < points.size(); ++i) {
        EXPECT_EQ(points[i].x, expected[i].x) << i;
        EXPECT_EQ(points[i].y, expected[i].y) << i;
    }
}

TEST_F(DrawingLimitsTest, no_angle_or_size_is_too_large_for_arcs) {
    const jint numbers[] = {least, least + 1, -1, 1, most - 1, most};
    for (const auto& shape : {OS::Graphics_DrawArc, OS::Graphics_FillArc})
        for (jint place : numbers)
            for (jint size : numbers)
                for (jint start : numbers)
                    for (jint arc : numbers) draw(shape, place, place, size, size, start, arc);
    for (jint place : numbers)
        for (jint size : numbers)
            for (jint arc : numbers)
                draw(OS::Graphics_DrawRoundRectangle, place, place, size, size, arc, arc);
    EXPECT_TRUE(isUnlocked());
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(DrawingLimitsTest, less_than_no_points_are_none) {
    recordPoints();
    for (const auto& shape :
         {OS::Graphics_DrawPolygon, OS::Graphics_FillPolygon, OS::Graphics_DrawPolyline})
        for (jint numbers : {-1L, -2L, -8L, least}) {
            points = {{7, 7}};
            draw(shape, vm.newInts({1, 1, 9, 1, 9, 9, 1, 9}), numbers);
            EXPECT_TRUE(points.empty()) << shape << numbers;
        }
    EXPECT_EQ(count(white), 40 * 30);
}

TEST_F(DrawingLimitsTest, an_empty_text_changes_nothing_in_any_mode) {
    for (bool inverts : {false, true})
        for (jint flags : {0, 1, 2, 4, 8, 15})
            for (jstring text : {static_cast<jstring>(nullptr), vm.newString(u"")}) {
                setXOR(inverts);
                draw(OS::Graphics_DrawString, text, 1, 1, flags);
                ASSERT_EQ(count(white), 40 * 30) << inverts << " " << flags << " " << text;
            }
}

TEST_F(DrawingLimitsTest, letters_are_not_inverted_without_a_bitmap_for_them) {
    setXOR(true);
    for (const char* function : {"CreateCompatibleBitmap", "CreateCompatibleDC"}) {
        faults.fail(function);
        draw(OS::Graphics_DrawString, vm.newString(u"W"), 2, 2, 8);
        EXPECT_TRUE(faults.hasFailed());
        EXPECT_EQ(count(white), 40 * 30) << function;
    }
}

TEST_F(DrawingLimitsTest, a_background_without_a_brush_is_not_filled) {
    faults.fail("CreateSolidBrush");
    draw(OS::Graphics_FillBackground, red, 1, 1, 5, 5);
    EXPECT_EQ(count(white), 40 * 30);
    draw(OS::Graphics_FillBackground, red, 1, 1, 5, 5);
    EXPECT_EQ(count(redPixel), 25) << "the next time it is there";
}

TEST_F(DrawingLimitsTest, an_unknown_clip_ends_a_round_rectangle_at_its_first_arc) {
    NoLeaks noLeaks;
    recordPoints();
    faults.fail("GetClipBox", 0, ERROR_INVALID_HANDLE);
    int before = faults.countCalls("GetClipBox");
    draw(OS::Graphics_DrawRoundRectangle, 2, 3, 30, 20, 8, 6);
    EXPECT_EQ(faults.countCalls("GetClipBox") - before, 1);
    expectReport("Graphics_DrawRoundRectangle", u"Error getting clipping area::");
    EXPECT_TRUE(points.empty());
    EXPECT_TRUE(isUnlocked());
}
