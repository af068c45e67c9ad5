// Shapes and copies far larger than any screen. The desk goes along every row and column of them,
// seen or not, and faults where they are too many for it.

#include "refusal.h"
#include <stdlib.h>

// No longer a copy than this is left to the desk.
static constexpr int longest = 0x7FFF;
// The device refuses shapes that reach farther: the desk cannot draw them.
static constexpr LONG farthest = 1 << 20;

namespace {

// Along one axis. A negative length goes back from the start.
struct Span {
    int start, length;

    bool isLong() const { return length < -longest || length > longest; }
    long long at(long long offset) const { return length < 0 ? start - offset : start + offset; }
};

struct Range {
    int begin, end;
};

struct Axes {
    Span x, y;
};

// What a copy takes the place of its source by.
struct Scratch {
    HDC context;
    HBITMAP bitmap;
    HGDIOBJ previous;

    Scratch(HDC like, int width, int height)
        : context(CreateCompatibleDC(like)), bitmap(CreateCompatibleBitmap(like, width, height)),
          previous(SelectObject(context, bitmap)) {}
    ~Scratch() {
        SelectObject(context, previous);
        DeleteObject(bitmap);
        DeleteDC(context);
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
};

} // namespace

static SIZE sizeOfBitmap(HDC context) {
    BITMAP bitmap = {};
    GetObjectW(GetCurrentObject(context, OBJ_BITMAP), sizeof(bitmap), &bitmap);
    return {bitmap.bmWidth, bitmap.bmHeight};
}

// Where the pixel of the target comes from, as the desk enlarges.
static long long sourceOf(const Span& from, const Span& to, int pixel) {
    long long offset = to.length < 0 ? 0LL + to.start - pixel : 0LL + pixel - to.start;
    long long index = ((2 * offset + 1) * abs(from.length) - 1) / (2 * llabs(to.length));
    return from.at(index);
}

// The pixels of the target within the clip that come from the source's bitmap.
static Range seenOf(const Span& from, const Span& to, Range clip, int sourceSize) {
    long long end = to.length < 0 ? to.start + 1LL : 0LL + to.start + to.length;
    long long begin = to.length < 0 ? end + to.length : to.start;
    Range seen = {begin > clip.begin ? static_cast<int>(begin) : clip.begin,
                  end < clip.end ? static_cast<int>(end) : clip.end};
    auto isInside = [&](int pixel) {
        long long source = sourceOf(from, to, pixel);
        return source >= 0 && source < sourceSize;
    };
    while (seen.begin < seen.end && !isInside(seen.begin)) ++seen.begin;
    while (seen.begin < seen.end && !isInside(seen.end - 1)) --seen.end;
    return seen;
}

static BOOL stretch(HDC target, const Axes& to, HDC source, const Axes& from, DWORD operation);

// The same copy from a source whose pixels along x are as many as are seen.
static BOOL stretchColumns(HDC target, const Axes& to, HDC source, const Axes& from, Range clip,
                           DWORD operation) {
    SIZE size = sizeOfBitmap(source);
    Range seen = seenOf(from.x, to.x, clip, size.cx);
    if (seen.begin >= seen.end) return TRUE;
    Scratch columns(source, seen.end - seen.begin, size.cy);
    for (int pixel = seen.begin; pixel < seen.end; ++pixel)
        BitBlt(columns.context, pixel - seen.begin, 0, 1, size.cy, source,
               static_cast<int>(sourceOf(from.x, to.x, pixel)), 0, SRCCOPY);
    Span width = {0, seen.end - seen.begin};
    return stretch(target, {{seen.begin, width.length}, to.y}, columns.context, {width, from.y},
                   operation);
}

static BOOL stretchRows(HDC target, const Axes& to, HDC source, const Axes& from, Range clip,
                        DWORD operation) {
    SIZE size = sizeOfBitmap(source);
    Range seen = seenOf(from.y, to.y, clip, size.cy);
    if (seen.begin >= seen.end) return TRUE;
    Scratch rows(source, size.cx, seen.end - seen.begin);
    for (int pixel = seen.begin; pixel < seen.end; ++pixel)
        BitBlt(rows.context, 0, pixel - seen.begin, size.cx, 1, source, 0,
               static_cast<int>(sourceOf(from.y, to.y, pixel)), SRCCOPY);
    Span height = {0, seen.end - seen.begin};
    return stretch(target, {to.x, {seen.begin, height.length}}, rows.context, {from.x, height},
                   operation);
}

static BOOL stretch(HDC target, const Axes& to, HDC source, const Axes& from, DWORD operation) {
    RECT clip;
    if (to.x.isLong() || to.y.isLong()) {
        if (GetClipBox(target, &clip) <= NULLREGION) return TRUE;
        if (to.x.isLong())
            return stretchColumns(target, to, source, from, {clip.left, clip.right}, operation);
        return stretchRows(target, to, source, from, {clip.top, clip.bottom}, operation);
    }
    return StretchBlt(target, to.x.start, to.y.start, to.x.length, to.y.length, source,
                      from.x.start, from.y.start, from.x.length, from.y.length, operation);
}

static bool reaches(LONG coordinate) { return coordinate >= -farthest && coordinate <= farthest; }

static bool reaches(int left, int top, int right, int bottom) {
    return isAllowed(reaches(left) && reaches(top) && reaches(right) && reaches(bottom));
}

extern "C" {

BOOL WINAPI Device_StretchBlt(HDC target, int x, int y, int width, int height, HDC source,
                              int sourceX, int sourceY, int sourceWidth, int sourceHeight,
                              DWORD operation) {
    Axes to = {{x, width}, {y, height}};
    Axes from = {{sourceX, sourceWidth}, {sourceY, sourceHeight}};
    if (!isAllowed(!from.x.isLong() && !from.y.isLong())) return FALSE;
    return stretch(target, to, source, from, operation);
}

BOOL WINAPI Device_Ellipse(HDC context, int left, int top, int right, int bottom) {
    return reaches(left, top, right, bottom) && Ellipse(context, left, top, right, bottom);
}

BOOL WINAPI Device_RoundRect(HDC context, int left, int top, int right, int bottom, int width,
                             int height) {
    return reaches(left, top, right, bottom) && reaches(width, height, 0, 0) &&
           RoundRect(context, left, top, right, bottom, width, height);
}

BOOL WINAPI Device_Polygon(HDC context, const POINT* points, int count) {
    for (int i = 0; i < count; ++i)
        if (!reaches(points[i].x, points[i].y, 0, 0)) return FALSE;
    return Polygon(context, points, count);
}
}
