#pragma once
// A context on an image of 40 by 30 white pixels, drawing in red on green.

#include "device.h"
#include "graphics/graphics.h"
#include <thread>

class DrawingTest : public DeviceTest {
  protected:
    DrawingTest() {
        image = call(OS::Image_NewFromSize, display, 40, 30, 0xFFFFFF);
        graphics = call(OS::Image_NewGraphics, image);
        red = newColor(255, 0, 0);
        green = newColor(0, 255, 0);
        setForeground(red);
        setBackground(green);
    }
    ~DrawingTest() override {
        call(OS::Graphics_Dispose, graphics);
        call(OS::Image_Dispose, image);
        call(OS::Color_Dispose, red);
        call(OS::Color_Dispose, green);
    }
    jint newColor(jint r, jint g, jint b) { return call(OS::Color_New, display, r, g, b); }
    void setForeground(jint color) { call(OS::Graphics_SetForeground, graphics, color); }
    void setBackground(jint color) { call(OS::Graphics_SetBackground, graphics, color); }
    void setXOR(bool on) { call(OS::Graphics_SetXORMode, graphics, on); }
    void clip(jint x, jint y, jint width, jint height) {
        call(OS::Graphics_SetClipping, graphics, x, y, width, height);
    }
    template <class Signature, class... Arguments>
    void draw(const Native<Signature>& shape, Arguments... arguments) {
        call(shape, graphics, arguments...);
    }
    ImageRecord* record() { return reinterpret_cast<ImageRecord*>(image); }
    // 0xRRGGBB
    DWORD at(int x, int y) {
        BITMAP bitmap = {};
        GetObjectW(record()->bitmap, sizeof(bitmap), &bitmap);
        const BYTE* pixel = static_cast<BYTE*>(bitmap.bmBits) + y * bitmap.bmWidthBytes +
                            x * bitmap.bmBitsPixel / 8;
        return pixel[2] << 16 | pixel[1] << 8 | pixel[0];
    }
    // The image as rows of characters: '.' white, 'r' red, 'g' green, '?' any other.
    std::vector<std::string> picture(int width, int height) {
        std::vector<std::string> rows(height, std::string(width, '?'));
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) {
                DWORD color = at(x, y);
                rows[y][x] = color == white        ? '.'
                             : color == redPixel   ? 'r'
                             : color == greenPixel ? 'g'
                                                   : '?';
            }
        return rows;
    }
    int count(DWORD color) {
        int found = 0;
        for (int y = 0; y < 30; ++y)
            for (int x = 0; x < 40; ++x) found += at(x, y) == color;
        return found;
    }
    // Whether another thread can take the image's lock.
    bool isUnlocked() {
        BOOL taken = FALSE;
        std::thread other([&] {
            taken = TryEnterCriticalSection(&record()->lock);
            if (taken) LeaveCriticalSection(&record()->lock);
        });
        other.join();
        return taken;
    }
    void expectReport(const char* function, const std::u16string& message) {
        DeviceTest::expectReport(function, -3, message);
    }
    using Picture = std::vector<std::string>;
    static constexpr DWORD white = 0xFFFFFF, redPixel = 0xFF0000, greenPixel = 0x00FF00;
    jint image, graphics, red, green;
};

// The points of the last Polyline or Polygon.
inline std::vector<POINT> points;
inline BOOL WINAPI recordPolyline(HDC dc, const POINT* list, int count) {
    points.assign(list, list + count);
    return Polyline(dc, list, count);
}
inline BOOL WINAPI recordPolygon(HDC dc, const POINT* list, int count) {
    points.assign(list, list + count);
    return Polygon(dc, list, count);
}
