// What the primitives draw: the calls of the system with their points, and the pixels.

#include "drawing_fixture.h"
#include "faults.h"
#include "leaks.h"
#include <cmath>

TEST_F(DrawingTest, a_line_has_both_its_ends) {
    draw(OS::Graphics_DrawLine, 1, 1, 4, 1);
    draw(OS::Graphics_DrawLine, 5, 3, 2, 3);
    EXPECT_EQ(picture(7, 5), (Picture{".......", ".rrrr..", ".......", "..rrrr.", "......."}));
}

TEST_F(DrawingTest, a_line_of_no_length_is_one_pixel) {
    Faults faults;
    draw(OS::Graphics_DrawLine, 3, 2, 3, 2);
    EXPECT_EQ(count(redPixel), 1);
    EXPECT_EQ(at(3, 2), redPixel);
    EXPECT_EQ(faults.countCalls("LineTo"), 0);
}

TEST_F(DrawingTest, outlines_of_rectangles_and_ovals_leave_the_inside) {
    draw(OS::Graphics_DrawRectangle, 1, 1, 5, 4);
    EXPECT_EQ(picture(7, 6),
              (Picture{".......", ".rrrrr.", ".r...r.", ".r...r.", ".rrrrr.", "......."}));
    draw(OS::Graphics_FillRectangle, 0, 0, 40, 30);
    draw(OS::Graphics_DrawOval, 1, 1, 9, 9);
    EXPECT_EQ(at(5, 5), greenPixel) << "the inside";
    EXPECT_EQ(at(5, 1), redPixel);
    EXPECT_EQ(at(1, 5), redPixel);
}

TEST_F(DrawingTest, fills_have_no_outline) {
    draw(OS::Graphics_FillRectangle, 1, 1, 3, 2);
    EXPECT_EQ(picture(5, 4), (Picture{".....", ".ggg.", ".ggg.", "....."}));
    draw(OS::Graphics_FillOval, 10, 10, 12, 12);
    draw(OS::Graphics_FillRoundRectangle, 24, 10, 12, 12, 4, 4);
    EXPECT_EQ(count(redPixel), 0);
    EXPECT_EQ(at(16, 16), greenPixel);
    EXPECT_EQ(at(30, 16), greenPixel);
    EXPECT_EQ(at(24, 10), white) << "a round corner";
}

TEST_F(DrawingTest, a_round_rectangle_is_filled_by_the_systems_own_rounding) {
    Faults faults;
    draw(OS::Graphics_FillRoundRectangle, 1, 2, 10, 9, 4, 3);
    EXPECT_EQ(faults.countCalls("RoundRect"), 1);
    draw(OS::Graphics_DrawRoundRectangle, 1, 2, 10, 9, 4, 3);
    EXPECT_EQ(faults.countCalls("RoundRect"), 1) << "its outline is not";
}

TEST_F(DrawingTest, polygons_take_half_as_many_points_as_numbers) {
    Faults faults;
    faults.replace("Polygon", reinterpret_cast<void*>(recordPolygon));
    faults.replace("Polyline", reinterpret_cast<void*>(recordPolyline));
    jintArray corners = vm.newInts({1, 1, 11, 1, 11, 11, 1, 11});
    for (const auto& shape :
         {OS::Graphics_DrawPolygon, OS::Graphics_FillPolygon, OS::Graphics_DrawPolyline}) {
        for (jint numbers : {8, 7, 6}) {
            draw(shape, corners, numbers);
            EXPECT_EQ(points.size(), size_t(numbers / 2)) << shape;
        }
        draw(shape, corners, 100);
        EXPECT_EQ(points.size(), 4u) << "never more than the array has";
    }
}

TEST_F(DrawingTest, polygons_are_closed_and_polylines_are_not) {
    jintArray corners = vm.newInts({1, 1, 6, 1, 6, 6, 1, 6});
    draw(OS::Graphics_DrawPolyline, corners, 8);
    EXPECT_EQ(at(1, 3), white);
    draw(OS::Graphics_DrawPolygon, corners, 8);
    EXPECT_EQ(at(1, 3), redPixel);
    EXPECT_EQ(at(3, 3), white);
    draw(OS::Graphics_FillPolygon, corners, 8);
    EXPECT_EQ(at(3, 3), greenPixel);
}

TEST_F(DrawingTest, a_null_array_of_points_draws_nothing) {
    for (const auto& shape :
         {OS::Graphics_DrawPolygon, OS::Graphics_FillPolygon, OS::Graphics_DrawPolyline})
        draw(shape, nullptr, 8);
    EXPECT_EQ(count(white), 40 * 30);
}

TEST_F(DrawingTest, inverting_fills_twice_leaves_nothing) {
    setXOR(true);
    draw(OS::Graphics_FillRectangle, 2, 2, 5, 5);
    EXPECT_EQ(at(3, 3), white ^ greenPixel);
    draw(OS::Graphics_FillRectangle, 2, 2, 5, 5);
    EXPECT_EQ(count(white), 40 * 30);
}

TEST_F(DrawingTest, a_background_is_filled_with_its_colour_whatever_the_state) {
    setXOR(true);
    draw(OS::Graphics_FillBackground, red, 1, 1, 2, 2);
    EXPECT_EQ(picture(4, 4), (Picture{"....", ".rr.", ".rr.", "...."}));
    draw(OS::Graphics_FillRectangle, 5, 1, 1, 1);
    EXPECT_EQ(at(5, 1), white ^ greenPixel) << "the context's own brush is back";
}

TEST_F(DrawingTest, a_fill_that_fails_is_an_error) {
    Faults faults;
    faults.fail("PatBlt", 1, ERROR_INVALID_HANDLE);
    draw(OS::Graphics_FillRectangle, 1, 1, 2, 2);
    expectReport("Graphics_FillRectangle", u"Unable to complete blitting operation::");
    EXPECT_TRUE(isUnlocked());
}

TEST_F(DrawingTest, an_area_is_copied_also_onto_itself) {
    draw(OS::Graphics_FillRectangle, 0, 0, 3, 1);
    draw(OS::Graphics_CopyArea, 0, 0, 3, 1, 2, 0);
    draw(OS::Graphics_CopyArea, 0, 0, 5, 1, 0, 2);
    EXPECT_EQ(picture(6, 3), (Picture{"ggggg.", "......", "ggggg."}));
}

TEST_F(DrawingTest, drawing_stays_within_the_clip) {
    clip(2, 2, 4, 3);
    draw(OS::Graphics_FillRectangle, 0, 0, 40, 30);
    EXPECT_EQ(count(greenPixel), 12);
    draw(OS::Graphics_DrawLine, 0, 3, 39, 3);
    EXPECT_EQ(count(redPixel), 4);
}

// Arcs and pies.
class ArcTest : public DrawingTest {
  protected:
    ArcTest() {
        faults.replace("Polygon", reinterpret_cast<void*>(recordPolygon));
        faults.replace("Polyline", reinterpret_cast<void*>(recordPolyline));
        points.clear();
    }
    static POINT expectedPoint(int x, int y, int width, int height, int degrees) {
        double angle = degrees * 0.017453292519943295;
        return {(2 * x + width + static_cast<int>(width * std::cos(angle))) >> 1,
                (2 * y + height - static_cast<int>(height * std::sin(angle))) >> 1};
    }
    static bool same(const POINT& a, const POINT& b) { return a.x == b.x && a.y == b.y; }
    Faults faults;
};

TEST_F(ArcTest, has_one_point_for_every_degree) {
    for (int size : {1, 2, 7, 30, 33})
        for (int start = -400; start <= 400; start += 37)
            for (int arc = -370; arc <= 720; arc += 41) {
                if (arc == 0) continue;
                points.clear();
                draw(OS::Graphics_DrawArc, 3, 4, size, size + 2, start, arc);
                int from = arc < 0 ? start + arc : start;
                int degrees = std::min(std::abs(arc), 360);
                ASSERT_EQ(points.size(), size_t(degrees + 1)) << size << " " << start << " " << arc;
                for (int i = 0; i <= degrees; ++i)
                    ASSERT_TRUE(same(points[i], expectedPoint(3, 4, size, size + 2, from + i)))
                        << size << " " << start << " " << arc << " " << i;
            }
}

TEST_F(ArcTest, all_start_and_arc_angles_are_those_of_the_formula) {
    for (int start = 0; start < 360; ++start)
        for (int arc : {1, 45, 90, 359, 360}) {
            draw(OS::Graphics_DrawArc, 0, 0, 24, 17, start, arc);
            ASSERT_EQ(points.size(), size_t(arc + 1));
            ASSERT_TRUE(same(points.front(), expectedPoint(0, 0, 24, 17, start)));
            ASSERT_TRUE(same(points.back(), expectedPoint(0, 0, 24, 17, start + arc)));
        }
}

TEST_F(ArcTest, of_720_degrees_is_a_closed_ellipse) {
    draw(OS::Graphics_DrawArc, 1, 1, 20, 20, 0, 720);
    ASSERT_EQ(points.size(), 361u);
    EXPECT_TRUE(same(points.front(), points.back()));
}

TEST_F(ArcTest, of_negative_degrees_goes_clockwise) {
    draw(OS::Graphics_DrawArc, 1, 1, 20, 20, 0, -90);
    ASSERT_EQ(points.size(), 91u);
    EXPECT_TRUE(same(points.front(), expectedPoint(1, 1, 20, 20, -90)));
    EXPECT_TRUE(same(points.back(), expectedPoint(1, 1, 20, 20, 0)));
}

TEST_F(ArcTest, of_negative_size_is_that_of_the_turned_rectangle) {
    draw(OS::Graphics_DrawArc, 21, 22, -20, -10, 0, 90);
    std::vector<POINT> turned = points;
    draw(OS::Graphics_DrawArc, 1, 12, 20, 10, 0, 90);
    ASSERT_EQ(turned.size(), points.size());
    EXPECT_TRUE(std::equal(turned.begin(), turned.end(), points.begin(), same));
}

TEST_F(ArcTest, without_size_or_angle_draws_nothing_and_takes_no_lock) {
    int before = faults.countCalls("EnterCriticalSection");
    draw(OS::Graphics_DrawArc, 1, 1, 0, 10, 0, 90);
    draw(OS::Graphics_DrawArc, 1, 1, 10, 0, 0, 90);
    draw(OS::Graphics_DrawArc, 1, 1, 10, 10, 0, 0);
    EXPECT_TRUE(points.empty());
    EXPECT_EQ(faults.countCalls("EnterCriticalSection"), before);
}

TEST_F(ArcTest, a_pie_has_its_centre_at_both_ends_and_an_ellipse_none) {
    draw(OS::Graphics_FillArc, 2, 2, 20, 20, 0, 359);
    ASSERT_EQ(points.size(), 362u);
    EXPECT_TRUE(same(points.front(), {12, 12}));
    EXPECT_TRUE(same(points.back(), {12, 12}));
    draw(OS::Graphics_FillArc, 2, 2, 20, 20, 0, 360);
    ASSERT_EQ(points.size(), 361u);
    EXPECT_FALSE(same(points.front(), {12, 12}));
    draw(OS::Graphics_FillArc, 2, 2, 21, 21, 10, -45);
    ASSERT_EQ(points.size(), 48u);
    EXPECT_TRUE(same(points.front(), {12, 12})) << "halved once";
    EXPECT_TRUE(same(points[1], expectedPoint(2, 2, 21, 21, -35)));
    EXPECT_EQ(count(redPixel), 0) << "no outline";
}

TEST_F(ArcTest, an_empty_pie_leaves_the_lock_entered) {
    draw(OS::Graphics_FillArc, 2, 2, 0, 20, 0, 90);
    EXPECT_FALSE(isUnlocked());
    LeaveCriticalSection(&record()->lock);
    EXPECT_TRUE(isUnlocked());
    draw(OS::Graphics_FillArc, 100, 100, 5, 5, 0, 0);
    EXPECT_FALSE(isUnlocked()) << "outside the clip too";
    LeaveCriticalSection(&record()->lock);
    EXPECT_TRUE(points.empty());
}

TEST_F(ArcTest, outside_the_clip_is_not_computed) {
    draw(OS::Graphics_DrawArc, 100, 100, 20, 20, 0, 90);
    draw(OS::Graphics_FillArc, 100, 100, 20, 20, 0, 90);
    EXPECT_TRUE(points.empty());
    EXPECT_TRUE(isUnlocked());
}

TEST_F(ArcTest, an_unknown_clip_is_an_error_and_nothing_is_drawn) {
    for (const auto& shape : {OS::Graphics_DrawArc, OS::Graphics_FillArc}) {
        faults.fail("GetClipBox", 1, ERROR_INVALID_HANDLE);
        draw(shape, 1, 1, 20, 20, 0, 90);
        expectReport(shape.name, u"Error getting clipping area::");
        EXPECT_TRUE(points.empty());
        EXPECT_TRUE(isUnlocked());
    }
}

// Lines and arcs of a round rectangle.
struct Line {
    int x1, y1, x2, y2;
    bool operator==(const Line&) const = default;
};
static std::vector<Line> lines;
static POINT lineStart;
static BOOL WINAPI recordMove(HDC dc, int x, int y, POINT* previous) {
    lineStart = {x, y};
    return MoveToEx(dc, x, y, previous);
}
static BOOL WINAPI recordLine(HDC dc, int x, int y) {
    lines.push_back({int(lineStart.x), int(lineStart.y), x, y});
    return LineTo(dc, x, y);
}
static std::vector<std::vector<POINT>> arcs;
static BOOL WINAPI collectArcs(HDC dc, const POINT* list, int count) {
    arcs.emplace_back(list, list + count);
    return Polyline(dc, list, count);
}

class RoundRectangleTest : public ArcTest {
  protected:
    RoundRectangleTest() {
        faults.replace("MoveToEx", reinterpret_cast<void*>(recordMove));
        faults.replace("LineTo", reinterpret_cast<void*>(recordLine));
        faults.replace("Polyline", reinterpret_cast<void*>(collectArcs));
        lines.clear();
        arcs.clear();
    }
};

TEST_F(RoundRectangleTest, is_made_of_four_lines_and_four_quarter_arcs) {
    draw(OS::Graphics_DrawRoundRectangle, 2, 3, 30, 20, 8, 6);
    EXPECT_EQ(lines,
              (std::vector<Line>{{6, 3, 27, 3}, {6, 22, 27, 22}, {2, 6, 2, 19}, {31, 6, 31, 19}}));
    ASSERT_EQ(arcs.size(), 4u);
    EXPECT_TRUE(same(arcs[0].front(), expectedPoint(2, 3, 8, 6, 90)));
    EXPECT_TRUE(same(arcs[1].front(), expectedPoint(23, 3, 8, 6, 0)));
    EXPECT_TRUE(same(arcs[2].front(), expectedPoint(23, 16, 8, 6, -90)));
    EXPECT_TRUE(same(arcs[3].front(), expectedPoint(2, 16, 8, 6, 180)));
    for (const auto& arc : arcs) EXPECT_EQ(arc.size(), 91u);
}

TEST_F(RoundRectangleTest, of_wide_arcs_has_no_top_or_bottom_line) {
    draw(OS::Graphics_DrawRoundRectangle, 2, 3, 30, 20, 30, 6);
    EXPECT_EQ(lines.size(), 2u) << "the sides alone";
    draw(OS::Graphics_DrawRoundRectangle, 2, 3, 30, 20, 100, -100);
    EXPECT_EQ(lines.size(), 2u) << "no line at all";
    ASSERT_EQ(arcs.size(), 8u);
    EXPECT_TRUE(same(arcs[4].front(), expectedPoint(2, 3, 30, 20, 90))) << "as large as it is";
    EXPECT_TRUE(same(arcs[6].front(), expectedPoint(1, 2, 30, 20, -90)));
}

TEST_F(RoundRectangleTest, without_arcs_is_a_rectangle_and_without_size_nothing) {
    draw(OS::Graphics_DrawRoundRectangle, 2, 3, 10, 8, 0, 6);
    draw(OS::Graphics_DrawRoundRectangle, 2, 3, 10, 8, 6, 0);
    EXPECT_EQ(faults.countCalls("Rectangle"), 2);
    draw(OS::Graphics_DrawRoundRectangle, 2, 3, 0, 8, 6, 6);
    draw(OS::Graphics_DrawRoundRectangle, 2, 3, 10, 0, 6, 6);
    EXPECT_EQ(faults.countCalls("Rectangle"), 2);
    EXPECT_TRUE(lines.empty() && arcs.empty());
    EXPECT_TRUE(isUnlocked());
}

TEST_F(RoundRectangleTest, of_negative_size_places_its_far_edges_from_that) {
    draw(OS::Graphics_DrawRoundRectangle, 32, 3, -30, 20, 8, 6);
    // x becomes 2 and the width 30, but the right edge stays 2 + (-30 - 1).
    EXPECT_EQ(lines.back(), (Line{2 - 31, 6, 2 - 31, 19}));
}

// Text.
static std::vector<std::pair<int, UINT>> texts; // count and format of each call
static RECT layout;
static int WINAPI recordText(HDC dc, LPCWSTR text, int count, RECT* area, UINT format) {
    texts.emplace_back(count, format);
    layout = *area;
    return DrawTextW(dc, text, count, area, format);
}

class TextTest : public DrawingTest {
  protected:
    TextTest() {
        faults.replace("DrawTextW", reinterpret_cast<void*>(recordText));
        texts.clear();
    }
    void drawText(const std::u16string& text, jint x, jint y, jint flags) {
        draw(OS::Graphics_DrawString, vm.newString(text), x, y, flags);
    }
    Faults faults;
};

TEST_F(TextTest, flags_choose_the_format) {
    const struct {
        jint flags;
        UINT format;
    } rows[] = {{0, 0x820}, {1, 0x810}, {2, 0x860}, {4, 0x20}, {7, 0x50}, {8, 0x820}};
    for (const auto& row : rows) {
        texts.clear();
        drawText(u"Text", 3, 4, row.flags);
        ASSERT_EQ(texts.size(), 1u);
        EXPECT_EQ(texts[0].first, -1);
        EXPECT_EQ(texts[0].second, row.format) << row.flags;
        EXPECT_EQ(layout.left, 3);
        EXPECT_EQ(layout.right, 0x6FFFFFF);
    }
}

TEST_F(TextTest, has_the_background_colour_behind_it_unless_it_is_left) {
    drawText(u"  ", 0, 0, 0);
    EXPECT_GT(count(greenPixel), 0);
    draw(OS::Graphics_FillBackground, red, 0, 0, 40, 30);
    int mode = GetBkMode(reinterpret_cast<GraphicsRecord*>(graphics)->dc);
    drawText(u"  ", 0, 0, 8);
    EXPECT_EQ(count(redPixel), 40 * 30);
    EXPECT_EQ(GetBkMode(reinterpret_cast<GraphicsRecord*>(graphics)->dc), mode);
}

TEST_F(TextTest, is_in_the_foreground_colour) {
    drawText(u"W", 0, 0, 8);
    EXPECT_GT(count(redPixel), 10);
    EXPECT_EQ(count(redPixel) + count(white), 40 * 30);
}

TEST_F(TextTest, inverting_with_a_background_draws_the_first_character_alone) {
    setXOR(true);
    drawText(u"WWWW", 0, 0, 0);
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_EQ(texts[0].first, 1);
    EXPECT_GT(count(redPixel ^ greenPixel), 0) << "in the colours' difference";
    EXPECT_EQ(GetTextColor(reinterpret_cast<GraphicsRecord*>(graphics)->dc), RGB(255, 0, 0));
}

TEST_F(TextTest, inverting_letters_twice_leaves_nothing) {
    NoLeaks noLeaks;
    setXOR(true);
    drawText(u"WX", 2, 2, 8);
    EXPECT_GT(count(white ^ redPixel), 10);
    EXPECT_EQ(count(white ^ redPixel) + count(white), 40 * 30);
    drawText(u"WX", 2, 2, 8);
    EXPECT_EQ(count(white), 40 * 30);
}

TEST_F(TextTest, inverted_letters_lie_where_plain_ones_do) {
    drawText(u"gX", 3, 5, 8);
    int plain = count(redPixel);
    EXPECT_GT(plain, 10);
    setXOR(true);
    drawText(u"gX", 3, 5, 8);
    EXPECT_EQ(count(0), plain) << "red inverts itself";
    EXPECT_EQ(count(white), 40 * 30 - plain);
}

TEST_F(TextTest, null_is_the_empty_text) {
    for (bool inverts : {false, true})
        for (jint flags : {0, 8}) {
            setXOR(inverts);
            draw(OS::Graphics_DrawString, static_cast<jstring>(nullptr), 1, 1, flags);
        }
    EXPECT_TRUE(vm.reports.empty());
    EXPECT_TRUE(isUnlocked());
}
