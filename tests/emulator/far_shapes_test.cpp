// Copies and shapes that reach far beyond what they are drawn on.

#include <climits>
#include <cstdlib>
#include <gtest/gtest.h>
#include <vector>
#include <windows.h>

namespace {

// Pixels of 32 bits in a context of their own.
class Canvas {
  public:
    Canvas(int width, int height) : width(width), height(height) {
        BITMAPINFO info = {};
        info.bmiHeader.biSize = sizeof(info.bmiHeader);
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = -height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, reinterpret_cast<void**>(&pixels),
                                  nullptr, 0);
        previous = SelectObject(context, bitmap);
    }
    ~Canvas() {
        SelectObject(context, previous);
        DeleteObject(bitmap);
        DeleteDC(context);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    std::vector<DWORD> copy() const { return {pixels, pixels + width * height}; }
    void fill(DWORD first) {
        for (int i = 0; i < width * height; ++i) pixels[i] = first ? first + i : 0;
    }

    HDC context = CreateCompatibleDC(nullptr);

  private:
    int width, height;
    HBITMAP bitmap;
    HGDIOBJ previous;
    DWORD* pixels = nullptr;
};

class FarShapesTest : public testing::Test {
  protected:
    FarShapesTest() {
        source.fill(0x112200);
        target.fill(0);
    }
    Canvas source{16, 12}, target{64, 48};
};

using Stretch = BOOL(WINAPI*)(HDC, int, int, int, int, HDC, int, int, int, int, DWORD);

} // namespace

static int between(int least, int most) { return least + rand() % (most - least + 1); }
static int eitherWay(int length) { return rand() % 2 ? length : -length; }

TEST_F(FarShapesTest, long_copies_have_the_desks_pixels) {
    auto* desks = reinterpret_cast<Stretch>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"gdi32.dll"), "StretchBlt")));
    srand(20261122);
    int drawn = 0;
    for (int round = 0; round < 500; ++round) {
        int width = eitherWay(between(20000, 60000)), height = eitherWay(between(1, 60000));
        int x = -width * (rand() % 100) / 100 + between(-40, 40);
        int y = -height * (rand() % 100) / 100 + between(-40, 40);
        int fromX = between(4, 12), fromY = between(4, 8);
        int fromWidth = eitherWay(between(1, 4)), fromHeight = eitherWay(between(1, 4));
        auto copied = [&](Stretch copy) {
            target.fill(0x445566);
            copy(target.context, x, y, width, height, source.context, fromX, fromY, fromWidth,
                 fromHeight, SRCINVERT);
            return target.copy();
        };
        target.fill(0x445566);
        drawn += copied(desks) != target.copy();
        ASSERT_EQ(copied(StretchBlt), copied(desks))
            << x << " " << y << " " << width << " " << height << " from " << fromX << " " << fromY
            << " " << fromWidth << " " << fromHeight;
    }
    EXPECT_GT(drawn, 50);
}

TEST_F(FarShapesTest, the_longest_copies_fill_what_is_seen) {
    EXPECT_TRUE(
        StretchBlt(target.context, 0, 0, INT_MAX, INT_MAX, source.context, 3, 2, 4, 4, SRCCOPY));
    std::vector<DWORD> pixels = target.copy();
    EXPECT_EQ(pixels, std::vector<DWORD>(pixels.size(), 0x112200 + 2 * 16 + 3));
    EXPECT_TRUE(StretchBlt(target.context, INT_MIN, INT_MIN, INT_MAX, INT_MAX, source.context, 0, 0,
                           4, 4, SRCCOPY));
    EXPECT_EQ(target.copy(), pixels) << "it ends before the target begins";
}

TEST_F(FarShapesTest, copies_of_more_than_a_bitmap_can_have_are_refused) {
    EXPECT_FALSE(StretchBlt(target.context, 0, 0, 4, 4, source.context, 0, 0, INT_MAX, 4, SRCCOPY));
    EXPECT_EQ(GetLastError(), DWORD(ERROR_INVALID_PARAMETER));
}

TEST_F(FarShapesTest, shapes_that_reach_too_far_are_refused) {
    constexpr LONG farthest = 1 << 20;
    for (LONG place :
         {farthest, -farthest, farthest + 1, -farthest - 1L, LONG(INT_MAX), LONG(INT_MIN)}) {
        bool reaches = place >= -farthest && place <= farthest;
        EXPECT_EQ(Ellipse(target.context, 0, 0, place, 9) != 0, reaches) << place;
        EXPECT_EQ(RoundRect(target.context, 0, place, 9, 9, 3, 3) != 0, reaches) << place;
        POINT corners[] = {{0, 0}, {9, place}, {9, 9}};
        EXPECT_EQ(Polygon(target.context, corners, 3) != 0, reaches) << place;
    }
}
