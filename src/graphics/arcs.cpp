// Arcs, pies and round rectangles, which the device's system does not draw: they are computed as
// lists of points, one for every degree.

#include "bridge/arithmetic.h"
#include "graphics/drawing.h"
#include "graphics/gdi_guards.h"
#include <math.h>

static constexpr double radiansPerDegree = 0.017453292519943295;
static constexpr jint fullCircle = 360;
static constexpr jint mostPoints = fullCircle + 3; // of a pie, whose centre comes first and last

namespace {

struct ArcBox {
    jint x, y, width, height;
};

struct Direction {
    double cosine, sine;
};

} // namespace

// Sines are dear on devices, which have no floating-point unit.
static Direction knownDirections[fullCircle + 1];
static volatile bool areDirectionsKnown;

static Direction computedDirection(jint degrees) {
    double angle = toDouble(degrees) * radiansPerDegree;
    return {cos(angle), sin(angle)};
}

// Threads that come here together write the same.
static void learnDirections() {
    if (areDirectionsKnown) return;
    for (jint degrees = 0; degrees <= fullCircle; ++degrees)
        knownDirections[degrees] = computedDirection(degrees);
    asm volatile("" ::: "memory"); // the mark is set last: who sees it sees all directions
    areDirectionsKnown = true;
}

// Angles of more than a circle are not brought back into it: their points differ by rounding.
static Direction directionOf(jint degrees) {
    if (degrees < -fullCircle || degrees > fullCircle) return computedDirection(degrees);
    if (degrees >= 0) return knownDirections[degrees];
    Direction mirrored = knownDirections[-degrees];
    return {mirrored.cosine, -mirrored.sine};
}

static void normalize(jint* position, jint* size) {
    if (*size >= 0) return;
    *position = saturatingAdd(*position, *size);
    *size = saturatingNegate(*size);
}

static ArcBox normalized(jint x, jint y, jint width, jint height) {
    normalize(&x, &width);
    normalize(&y, &height);
    return {x, y, width, height};
}

// Half of twice the start, a length and an offset, which alone fits into the range.
static jint halved(jint start, jint length, jint offset) {
    long long twice = 2LL * start + length + offset;
    return twice >> 1 > greatestInt ? greatestInt : static_cast<jint>(twice >> 1);
}

// The centre and the radius keep twice the resolution until the end.
static POINT pointAt(const ArcBox& box, double width, double height, jint degrees) {
    Direction direction = directionOf(degrees);
    return {halved(box.x, box.width, static_cast<jint>(width * direction.cosine)),
            halved(box.y, box.height, -static_cast<jint>(height * direction.sine))};
}

static void fillPoints(POINT* points, const ArcBox& box, jint start, jint count) {
    learnDirections();
    double width = toDouble(box.width), height = toDouble(box.height);
    for (jint i = 0; i <= count; ++i)
        points[i] = pointAt(box, width, height, saturatingAdd(start, i));
}

static void turnForward(jint* start, jint* arc) {
    if (*arc >= 0) return;
    *start = saturatingAdd(*start, *arc);
    *arc = saturatingNegate(*arc);
}

void Graphics_DrawArc(GraphicsRecord* graphics, jint x, jint y, jint width, jint height,
                      jint startAngle, jint arcAngle, ErrorRecord* error) {
    ArcBox box = normalized(x, y, width, height);
    if (box.width == 0 || box.height == 0 || arcAngle == 0) return;
    Drawing drawing(graphics);
    if (!Graphics_MeetsClip(drawing, box.x, box.y, box.width, box.height, error)) return;
    turnForward(&startAngle, &arcAngle);
    jint count = arcAngle < fullCircle ? arcAngle : fullCircle;
    POINT points[mostPoints];
    fillPoints(points, box, startAngle, count);
    Polyline(drawing, points, count + 1);
}

static void fillPie(HDC dc, const ArcBox& box, jint start, jint arc) {
    bool isPie = arc < fullCircle;
    jint count = isPie ? arc : fullCircle;
    jint total = count + 1 + (isPie ? 2 : 0);
    POINT points[mostPoints];
    fillPoints(isPie ? points + 1 : points, box, start, count);
    if (isPie) {
        POINT center = {halved(box.x, box.width, 0), halved(box.y, box.height, 0)};
        points[0] = center;
        points[total - 1] = center;
    }
    SelectedObject fillOnly(dc, GetStockObject(NULL_PEN));
    Polygon(dc, points, total);
}

void Graphics_FillArc(GraphicsRecord* graphics, jint x, jint y, jint width, jint height,
                      jint startAngle, jint arcAngle, ErrorRecord* error) {
    ArcBox box = normalized(x, y, width, height);
    graphics->beginDraw(graphics);
    // Quirk: an empty pie leaves an image's lock entered once more by its thread. Pinned by
    // ArcTest.an_empty_pie_leaves_the_lock_entered.
    if (box.width == 0 || box.height == 0 || arcAngle == 0) return;
    if (Graphics_MeetsClip(graphics->dc, box.x, box.y, box.width, box.height, error)) {
        turnForward(&startAngle, &arcAngle);
        fillPie(graphics->dc, box, startAngle, arcAngle);
    }
    graphics->endDraw(graphics);
}

static jint limited(jint size, jint limit) {
    return lesser(size < 0 ? saturatingNegate(size) : size, limit);
}

// An arc that fails is the last one, so that there is one report.
static void drawCorners(GraphicsRecord* graphics, jint x, jint y, jint right, jint bottom,
                        jint width, jint height, ErrorRecord* error) {
    jint farX = saturatingSubtract(right, width);
    jint farY = saturatingSubtract(bottom, height);
    const struct {
        jint x, y, start, arc;
    } corners[] = {{x, y, 90, 90}, {farX, y, 0, 90}, {farX, farY, 0, -90}, {x, farY, 180, 90}};
    for (const auto& corner : corners) {
        Graphics_DrawArc(graphics, corner.x, corner.y, width, height, corner.start, corner.arc,
                         error);
        if (WYX_GetError(error) != errorNone) return;
    }
}

void Graphics_DrawRoundRectangle(GraphicsRecord* graphics, jint x, jint y, jint width, jint height,
                                 jint arcWidth, jint arcHeight, ErrorRecord* error) {
    Drawing drawing(graphics);
    if (width == 0 || height == 0) return;
    if (arcWidth == 0 || arcHeight == 0) {
        Graphics_DrawRectangle(graphics, x, y, width, height, error);
        return;
    }
    // Quirk: with a negative size the far edges lie on the other side of the near ones. Pinned by
    // RoundRectangleTest.of_negative_size_places_its_far_edges_from_that.
    jint lastColumn = saturatingSubtract(width, 1);
    jint lastRow = saturatingSubtract(height, 1);
    normalize(&x, &width);
    normalize(&y, &height);
    jint right = saturatingAdd(x, lastColumn);
    jint bottom = saturatingAdd(y, lastRow);
    arcWidth = limited(arcWidth, width);
    arcHeight = limited(arcHeight, height);
    if (arcWidth < width) {
        jint from = saturatingAdd(x, arcWidth / 2);
        jint to = saturatingSubtract(right, arcWidth / 2);
        Graphics_DrawLine(graphics, from, y, to, y, error);
        Graphics_DrawLine(graphics, from, bottom, to, bottom, error);
    }
    if (arcHeight < height) {
        jint from = saturatingAdd(y, arcHeight / 2);
        jint to = saturatingSubtract(bottom, arcHeight / 2);
        Graphics_DrawLine(graphics, x, from, x, to, error);
        Graphics_DrawLine(graphics, right, from, right, to, error);
    }
    drawCorners(graphics, x, y, right, bottom, arcWidth, arcHeight, error);
}
