// Primitives against the same calls of the system, and alpha images against the system's own blit.

#include "compare.h"
#include "graphics/blending.h"
#include "graphics/gdi_guards.h"
#include "graphics/graphics.h"
#include "natives.h"
#include <vector>

using BoxNative = Native<void(jint, jint, jint, jint, jint)>;
using PointsNative = Native<void(jint, jintArray, jint)>;

static void outlined(HDC dc, BOOL(WINAPI* shape)(HDC, int, int, int, int)) {
    SelectedObject outlineOnly(dc, GetStockObject(NULL_BRUSH));
    shape(dc, 10, 10, 110, 90);
}

static void filled(HDC dc, BOOL(WINAPI* shape)(HDC, int, int, int, int)) {
    SelectedObject fillOnly(dc, GetStockObject(NULL_PEN));
    shape(dc, 10, 10, 110, 90);
}

// What Java's arcs are made of: a point for each degree.
static std::vector<POINT> arcPoints(const RECT& box, int start, int degrees) {
    std::vector<POINT> points;
    LONG width = box.right - box.left, height = box.bottom - box.top;
    for (int i = 0; i <= degrees; ++i) {
        double angle = (start + i) * 0.017453292519943295;
        points.push_back(
            {(2 * box.left + width + static_cast<int>(width * __builtin_cos(angle))) >> 1,
             (2 * box.top + height - static_cast<int>(height * __builtin_sin(angle))) >> 1});
    }
    return points;
}

static void drawPoints(HDC dc, const std::vector<POINT>& points,
                       BOOL(WINAPI* shape)(HDC, const POINT*, int)) {
    shape(dc, points.data(), static_cast<int>(points.size()));
}

static void drawLine(HDC dc, int x1, int y1, int x2, int y2) {
    MoveToEx(dc, x1, y1, nullptr);
    LineTo(dc, x2, y2);
    SetPixel(dc, x2, y2, GetTextColor(dc));
}

static constexpr int count = 20; // of shapes in one round

static jintArray measureOutline(JNIEnv* env, GraphicsRecord* graphics, const BoxNative& draw,
                                BOOL(WINAPI* shape)(HDC, int, int, int, int)) {
    return compare(
        env, count, [&] { draw(env, reinterpret_cast<jint>(graphics), 10, 10, 100, 80); },
        [&] { outlined(graphics->dc, shape); });
}

static jintArray measureArc(JNIEnv* env, GraphicsRecord* graphics, bool isFilled) {
    const auto& draw = isFilled ? OS::Graphics_FillArc : OS::Graphics_DrawArc;
    std::vector<POINT> points = arcPoints({10, 10, 110, 90}, 0, 90);
    if (isFilled) {
        points.insert(points.begin(), {60, 50});
        points.push_back({60, 50});
    }
    return compare(
        env, count, [&] { draw(env, reinterpret_cast<jint>(graphics), 10, 10, 100, 80, 0, 90); },
        [&] {
            if (!isFilled) return drawPoints(graphics->dc, points, Polyline);
            SelectedObject fillOnly(graphics->dc, GetStockObject(NULL_PEN));
            drawPoints(graphics->dc, points, Polygon);
        });
}

// Four lines and four corners; or the system's own, filled.
static jintArray measureRoundRectangle(JNIEnv* env, GraphicsRecord* graphics, bool isFilled) {
    const auto& draw = isFilled ? OS::Graphics_FillRoundRectangle : OS::Graphics_DrawRoundRectangle;
    HDC dc = graphics->dc;
    const std::vector<POINT> corners[] = {
        arcPoints({10, 10, 30, 30}, 90, 90), arcPoints({89, 10, 109, 30}, 0, 90),
        arcPoints({89, 69, 109, 89}, -90, 90), arcPoints({10, 69, 30, 89}, 180, 90)};
    return compare(
        env, count, [&] { draw(env, reinterpret_cast<jint>(graphics), 10, 10, 100, 80, 20, 20); },
        [&] {
            if (isFilled) {
                SelectedObject fillOnly(dc, GetStockObject(NULL_PEN));
                RoundRect(dc, 10, 10, 110, 90, 20, 20);
                return;
            }
            drawLine(dc, 20, 10, 99, 10);
            drawLine(dc, 20, 89, 99, 89);
            drawLine(dc, 10, 20, 10, 79);
            drawLine(dc, 109, 20, 109, 79);
            for (const auto& corner : corners) drawPoints(dc, corner, Polyline);
        });
}

// Both ways take the points out of Java's array, as many as it has.
static jintArray measurePoints(JNIEnv* env, GraphicsRecord* graphics, const PointsNative& draw,
                               BOOL(WINAPI* shape)(HDC, const POINT*, int), int without = -1) {
    const jint star[] = {60, 10, 90, 90, 10, 40, 110, 40, 30, 90};
    constexpr jint words = 10;
    jintArray points = env->NewIntArray(words);
    env->SetIntArrayRegion(points, 0, words, star);
    return compare(
        env, count, [&] { draw(env, reinterpret_cast<jint>(graphics), points, words); },
        [&] {
            jint* elements = env->GetIntArrayElements(points, nullptr);
            HGDIOBJ before =
                without < 0 ? nullptr : SelectObject(graphics->dc, GetStockObject(without));
            shape(graphics->dc, reinterpret_cast<const POINT*>(elements),
                  std::min(words, env->GetArrayLength(points)) / 2);
            if (before) SelectObject(graphics->dc, before);
            env->ReleaseIntArrayElements(points, elements, 0);
        });
}

// Both ways take the characters out of Java's string.
static jintArray measureText(JNIEnv* env, GraphicsRecord* graphics) {
    constexpr jint lettersOnly = 8;
    static constexpr wchar_t text[] = L"Needs work at once";
    jstring string = env->NewString(reinterpret_cast<const jchar*>(text), wcslen(text));
    return compare(
        env, count,
        [&] {
            OS::Graphics_DrawString(env, reinterpret_cast<jint>(graphics), string, 10, 10,
                                    lettersOnly);
        },
        [&] {
            RECT layout = {10, 10, 0x6FFFFFF, 0x6FFFFFF};
            const jchar* characters = env->GetStringChars(string, nullptr);
            int length = env->GetStringLength(string);
            int mode = SetBkMode(graphics->dc, TRANSPARENT);
            DrawTextW(graphics->dc, reinterpret_cast<const wchar_t*>(characters), length, &layout,
                      DT_SINGLELINE | DT_NOPREFIX);
            SetBkMode(graphics->dc, mode);
            env->ReleaseStringChars(string, characters);
        });
}

static jintArray measureCopy(JNIEnv* env, GraphicsRecord* graphics) {
    HDC dc = graphics->dc;
    return compare(
        env, count,
        [&] {
            OS::Graphics_CopyArea(env, reinterpret_cast<jint>(graphics), 10, 10, 100, 80, 20, 30);
        },
        [&] { BitBlt(dc, 20, 30, 100, 80, dc, 10, 10, SRCCOPY); });
}

static jintArray measure(JNIEnv* env, GraphicsRecord* graphics, jint which) {
    jint handle = reinterpret_cast<jint>(graphics);
    HDC dc = graphics->dc;
    switch (which) {
    case 0:
        return compare(
            env, count, [&] { OS::Graphics_DrawLine(env, handle, 10, 10, 110, 90); },
            [&] { drawLine(dc, 10, 10, 110, 90); });
    case 1:
        return measureOutline(env, graphics, OS::Graphics_DrawRectangle, Rectangle);
    case 2:
        return measureOutline(env, graphics, OS::Graphics_DrawOval, Ellipse);
    case 3:
        return measureRoundRectangle(env, graphics, false);
    case 4:
        return measureArc(env, graphics, false);
    case 5:
        return measurePoints(env, graphics, OS::Graphics_DrawPolygon, Polygon, NULL_BRUSH);
    case 6:
        return measurePoints(env, graphics, OS::Graphics_DrawPolyline, Polyline);
    case 7:
        return compare(
            env, count, [&] { OS::Graphics_FillRectangle(env, handle, 10, 10, 100, 80); },
            [&] { PatBlt(dc, 10, 10, 100, 80, PATCOPY); });
    case 8:
        return compare(
            env, count, [&] { OS::Graphics_FillOval(env, handle, 10, 10, 100, 80); },
            [&] { filled(dc, Ellipse); });
    case 9:
        return measureRoundRectangle(env, graphics, true);
    case 10:
        return measureArc(env, graphics, true);
    case 11:
        return measurePoints(env, graphics, OS::Graphics_FillPolygon, Polygon, NULL_PEN);
    case 12:
        return measureText(env, graphics);
    default:
        return measureCopy(env, graphics);
    }
}

extern "C" {

// which: see Bench.
__declspec(dllexport) jintArray JNICALL
    Java_com_nuvik_bench_Natives_primitive(JNIEnv* env, jclass, jint graphics, jint which) {
    return measure(env, reinterpret_cast<GraphicsRecord*>(graphics), which);
}

// An image with alpha of the screen's size, drawn by the library and by the system.
__declspec(dllexport) jintArray JNICALL
    Java_com_nuvik_bench_Natives_alphaImage(JNIEnv* env, jclass, jint graphicsHandle,
                                            jint imageHandle) {
    auto* graphics = reinterpret_cast<GraphicsRecord*>(graphicsHandle);
    HDC source = CreateCompatibleDC(nullptr);
    HGDIOBJ before = SelectObject(source, reinterpret_cast<ImageRecord*>(imageHandle)->bitmap);
    BLENDFUNCTION blend = {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
    jintArray result = compare(
        env, 1,
        [&] {
            SelectObject(source, before);
            OS::Graphics_DrawImage(env, graphicsHandle, imageHandle, 0, 0);
            SelectObject(source, reinterpret_cast<ImageRecord*>(imageHandle)->bitmap);
        },
        [&] { GdiAlphaBlend(graphics->dc, 0, 0, 240, 320, source, 0, 0, 240, 320, blend); });
    SelectObject(source, before);
    DeleteDC(source);
    return result;
}

// The blending of its pixels alone.
__declspec(dllexport) jintArray JNICALL
    Java_com_nuvik_bench_Natives_blending(JNIEnv* env, jclass, jint imageHandle) {
    constexpr LONG pixels = 240 * 320;
    HBITMAP bitmap = reinterpret_cast<ImageRecord*>(imageHandle)->bitmap;
    BITMAP description;
    GetObjectW(bitmap, sizeof(description), &description);
    auto* bits = static_cast<const DWORD*>(description.bmBits);
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = 240;
    info.bmiHeader.biHeight = -320;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* memory = nullptr;
    HBITMAP section = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &memory, nullptr, 0);
    HDC target = CreateCompatibleDC(nullptr);
    HDC source = CreateCompatibleDC(nullptr);
    HGDIOBJ oldTarget = SelectObject(target, section);
    HGDIOBJ oldSource = SelectObject(source, bitmap);
    BLENDFUNCTION blend = {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
    jintArray result = compare(
        env, 1, [&] { blendRow(static_cast<DWORD*>(memory), bits, pixels); },
        [&] { GdiAlphaBlend(target, 0, 0, 240, 320, source, 0, 0, 240, 320, blend); });
    SelectObject(target, oldTarget);
    SelectObject(source, oldSource);
    DeleteDC(target);
    DeleteDC(source);
    DeleteObject(section);
    return result;
}
}
