// Primitives against the same calls of the system, and alpha images against the system's own blit.

#include "compare.h"
#include "graphics/blending.h"
#include "graphics/graphics.h"
#include <vector>

// The natives as Java calls them, without the VM's way to them.
template <class... Arguments>
static auto nativeOf(const char* name) {
    using Function = void(JNICALL*)(JNIEnv*, jclass, Arguments...);
    return reinterpret_cast<Function>(reinterpret_cast<void*>(exported(name)));
}

static auto boxNative(const char* name) { return nativeOf<jint, jint, jint, jint, jint>(name); }

static void outlined(HDC dc, BOOL(WINAPI* shape)(HDC, int, int, int, int)) {
    HGDIOBJ brush = SelectObject(dc, GetStockObject(NULL_BRUSH));
    shape(dc, 10, 10, 110, 90);
    SelectObject(dc, brush);
}

static void filled(HDC dc, BOOL(WINAPI* shape)(HDC, int, int, int, int)) {
    HGDIOBJ pen = SelectObject(dc, GetStockObject(NULL_PEN));
    shape(dc, 10, 10, 110, 90);
    SelectObject(dc, pen);
}

// What Java's arc of 90 degrees is made of.
static std::vector<POINT> arcPoints() {
    std::vector<POINT> points;
    for (int degrees = 0; degrees <= 90; ++degrees) {
        double angle = degrees * 0.017453292519943295;
        points.push_back({(2 * 10 + 100 + static_cast<int>(100 * __builtin_cos(angle))) >> 1,
                          (2 * 10 + 80 - static_cast<int>(80 * __builtin_sin(angle))) >> 1});
    }
    return points;
}

static jintArray measure(JNIEnv* env, GraphicsRecord* graphics, jint which) {
    jint handle = reinterpret_cast<jint>(graphics);
    HDC dc = graphics->dc;
    constexpr int count = 300;
    switch (which) {
    case 0: {
        auto draw = boxNative("Java_com_nuvik_wyx_k4tr_OS_Graphics_1DrawLine");
        return compare(
            env, count, [&] { draw(env, nullptr, handle, 10, 10, 110, 90); },
            [&] {
                MoveToEx(dc, 10, 10, nullptr);
                LineTo(dc, 110, 90);
                SetPixel(dc, 110, 90, GetTextColor(dc));
            });
    }
    case 1: {
        auto draw = boxNative("Java_com_nuvik_wyx_k4tr_OS_Graphics_1DrawRectangle");
        return compare(
            env, count, [&] { draw(env, nullptr, handle, 10, 10, 100, 80); },
            [&] { outlined(dc, Rectangle); });
    }
    case 2: {
        auto draw = boxNative("Java_com_nuvik_wyx_k4tr_OS_Graphics_1DrawOval");
        return compare(
            env, count, [&] { draw(env, nullptr, handle, 10, 10, 100, 80); },
            [&] { outlined(dc, Ellipse); });
    }
    case 3: {
        auto draw = boxNative("Java_com_nuvik_wyx_k4tr_OS_Graphics_1FillRectangle");
        return compare(
            env, count, [&] { draw(env, nullptr, handle, 10, 10, 100, 80); },
            [&] { PatBlt(dc, 10, 10, 100, 80, PATCOPY); });
    }
    case 4: {
        auto draw = boxNative("Java_com_nuvik_wyx_k4tr_OS_Graphics_1FillOval");
        return compare(
            env, count, [&] { draw(env, nullptr, handle, 10, 10, 100, 80); },
            [&] { filled(dc, Ellipse); });
    }
    default: {
        auto draw = nativeOf<jint, jint, jint, jint, jint, jint, jint>(
            "Java_com_nuvik_wyx_k4tr_OS_Graphics_1DrawArc");
        std::vector<POINT> points = arcPoints();
        return compare(
            env, count, [&] { draw(env, nullptr, handle, 10, 10, 100, 80, 0, 90); },
            [&] { Polyline(dc, points.data(), static_cast<int>(points.size())); });
    }
    }
}

extern "C" {

// which: line, rectangle, oval, filled rectangle, filled oval, arc.
__declspec(dllexport) jintArray JNICALL
    Java_com_nuvik_bench_Natives_primitive(JNIEnv* env, jclass, jint graphics, jint which) {
    return measure(env, reinterpret_cast<GraphicsRecord*>(graphics), which);
}

// An image with alpha of the screen's size, drawn by the library and by the system.
__declspec(dllexport) jintArray JNICALL
    Java_com_nuvik_bench_Natives_alphaImage(JNIEnv* env, jclass, jint graphicsHandle,
                                            jint imageHandle) {
    auto draw = nativeOf<jint, jint, jint, jint>("Java_com_nuvik_wyx_k4tr_OS_Graphics_1DrawImage");
    auto* graphics = reinterpret_cast<GraphicsRecord*>(graphicsHandle);
    HDC source = CreateCompatibleDC(nullptr);
    HGDIOBJ before = SelectObject(source, reinterpret_cast<ImageRecord*>(imageHandle)->bitmap);
    BLENDFUNCTION blend = {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
    jintArray result = compare(
        env, 5,
        [&] {
            SelectObject(source, before);
            draw(env, nullptr, graphicsHandle, imageHandle, 0, 0);
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
        env, 5, [&] { blendRow(static_cast<DWORD*>(memory), bits, pixels); },
        [&] { GdiAlphaBlend(target, 0, 0, 240, 320, source, 0, 0, 240, 320, blend); });
    SelectObject(target, oldTarget);
    SelectObject(source, oldSource);
    DeleteDC(target);
    DeleteDC(source);
    DeleteObject(section);
    return result;
}
}
