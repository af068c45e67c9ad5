#include "recorder.h"

class CaptureTest : public RecorderTest {
  protected:
    HWND newPaintedWindow(RECT place, COLORREF color) {
        HWND window = newShownWindow(place);
        HDC context = GetDC(window);
        HBRUSH brush = CreateSolidBrush(color);
        RECT client;
        GetClientRect(window, &client);
        FillRect(context, &client, brush);
        DeleteObject(brush);
        ReleaseDC(window, context);
        return window;
    }
};

constexpr DWORD red = 0xFF0000;
constexpr DWORD blue = 0x0000FF;

TEST_F(CaptureTest, shows_a_window_where_it_stands) {
    newPaintedWindow({10, 120, 50, 160}, RGB(255, 0, 0));
    EXPECT_EQ(pixel(10, 120), red);
    EXPECT_EQ(pixel(49, 159), red);
    EXPECT_NE(pixel(9, 120), red);
    EXPECT_NE(pixel(50, 159), red);
    EXPECT_NE(pixel(10, 160), red);
}

TEST_F(CaptureTest, shows_the_upper_of_two_windows) {
    HWND lower = newPaintedWindow({10, 120, 50, 160}, RGB(255, 0, 0));
    newPaintedWindow({30, 140, 90, 190}, RGB(0, 0, 255));
    EXPECT_EQ(pixel(35, 145), blue);
    EXPECT_EQ(pixel(15, 125), red);
    SetWindowPos(lower, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    newPaintedWindow({200, 200, 201, 201}, 0); // repaints nothing of the others
    EXPECT_EQ(pixel(15, 125), red);
}

TEST_F(CaptureTest, shows_what_a_child_draws) {
    HWND window = newPaintedWindow({10, 120, 110, 220}, RGB(255, 0, 0));
    HWND child = CreateWindowExW(0, L"STATIC", nullptr, WS_CHILD | WS_VISIBLE | SS_WHITERECT, 20,
                                 20, 30, 30, window, nullptr, nullptr, nullptr);
    UpdateWindow(child);
    dispatchAll();
    EXPECT_EQ(pixel(40, 150), 0xFFFFFFu);
}

TEST_F(CaptureTest, shows_no_hidden_window) {
    HWND window = newPaintedWindow({10, 120, 50, 160}, RGB(255, 0, 0));
    ShowWindow(window, SW_HIDE);
    EXPECT_NE(pixel(20, 130), red);
}

TEST_F(CaptureTest, writes_a_bitmap_of_the_whole_screen) {
    SetLastError(0);
    EXPECT_TRUE(Emulator_SaveScreen(L"C:\\screen.bmp"));
    WIN32_FILE_ATTRIBUTE_DATA file;
    EXPECT_TRUE(GetFileAttributesExW(L"C:\\screen.bmp", GetFileExInfoStandard, &file));
    EXPECT_EQ(file.nFileSizeLow, DWORD(54 + screen().cx * screen().cy * 3));
    EXPECT_TRUE(DeleteFileW(L"C:\\screen.bmp"));
}

TEST_F(CaptureTest, fails_where_no_file_can_be_made) {
    EXPECT_FALSE(Emulator_SaveScreen(L"no\\such\\folder\\screen.bmp"));
    EXPECT_EQ(GetLastError(), DWORD(ERROR_PATH_NOT_FOUND));
}

TEST_F(CaptureTest, copies_the_same_into_memory) {
    newPaintedWindow({10, 120, 50, 160}, RGB(255, 0, 0));
    newPaintedWindow({30, 140, 90, 190}, RGB(0, 0, 255));
    SIZE size;
    Emulator_GetScreen(&size);
    std::vector<DWORD> copy(size.cx * size.cy);
    ASSERT_TRUE(Emulator_CopyScreen(copy.data(), copy.size()));
    EXPECT_EQ(copy, pixels({0, 0, size.cx, size.cy}));
}

TEST_F(CaptureTest, is_copied_to_exactly_its_size_only) {
    SIZE size;
    Emulator_GetScreen(&size);
    std::vector<DWORD> copy(size.cx * size.cy);
    EXPECT_FALSE(Emulator_CopyScreen(copy.data(), copy.size() - 1));
}
