#include "recorder.h"
#include <cstdio>

static std::vector<Recorded> records;
static std::vector<HWND> windows;
static WNDPROC dialogProc;

static LRESULT CALLBACK record(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    records.push_back({window, message, wParam, lParam});
    return CallWindowProcW(dialogProc, window, message, wParam, lParam);
}

RecorderTest::~RecorderTest() {
    for (HWND window : windows) DestroyWindow(window);
    windows.clear();
    dispatchAll();
    forgetReceived();
}

HWND RecorderTest::newWindow(RECT place, DWORD style, DWORD extendedStyle) {
    HWND window = CreateWindowExW(extendedStyle, DIALOG_CLASS, nullptr, style, place.left,
                                  place.top, place.right - place.left, place.bottom - place.top,
                                  nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    EXPECT_NE(window, nullptr);
    dialogProc = reinterpret_cast<WNDPROC>(
        SetWindowLongW(window, GWL_WNDPROC, reinterpret_cast<LONG>(record)));
    windows.push_back(window);
    return window;
}

HWND RecorderTest::newShownWindow(RECT place, DWORD style, DWORD extendedStyle) {
    HWND window = newWindow(place, style, extendedStyle);
    ShowWindow(window, SW_SHOW);
    SetForegroundWindow(window);
    UpdateWindow(window);
    dispatchAll();
    forgetReceived();
    return window;
}

std::vector<Recorded> RecorderTest::received(UINT message) {
    dispatchAll();
    std::vector<Recorded> found;
    for (const Recorded& one : records)
        if (one.message == message) found.push_back(one);
    return found;
}

void RecorderTest::forgetReceived() { records.clear(); }

void RecorderTest::dispatchAll() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

static void sendPointer(DWORD flags, LONG x = 0, LONG y = 0) {
    INPUT input = {};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    input.mi.dx = x;
    input.mi.dy = y;
    EXPECT_EQ(SendInput(1, &input, sizeof(input)), 1u);
}

void RecorderTest::movePointer(int x, int y) {
    constexpr LONG fullScale = 65535;
    sendPointer(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE,
                x * fullScale / (GetSystemMetrics(SM_CXSCREEN) - 1),
                y * fullScale / (GetSystemMetrics(SM_CYSCREEN) - 1));
}

void RecorderTest::press() { sendPointer(MOUSEEVENTF_LEFTDOWN); }

void RecorderTest::release() { sendPointer(MOUSEEVENTF_LEFTUP); }

void RecorderTest::tap(int x, int y) {
    movePointer(x, y);
    press();
    release();
    dispatchAll();
}

std::vector<DWORD> RecorderTest::pixels(RECT place) {
    constexpr const char* name = "C:\\screen.bmp";
    const int rowBytes = (screen().cx * 3 + 3) & ~3;
    EXPECT_TRUE(Emulator_SaveScreen(L"C:\\screen.bmp"));
    std::vector<DWORD> found;
    FILE* file = std::fopen(name, "rb");
    if (!file) return found;
    for (LONG y = place.top; y < place.bottom; ++y) {
        std::fseek(file, 54 + (screen().cy - 1 - y) * rowBytes + place.left * 3, SEEK_SET);
        for (LONG x = place.left; x < place.right; ++x) {
            unsigned char colors[3] = {};
            EXPECT_EQ(std::fread(colors, 1, sizeof(colors), file), sizeof(colors));
            found.push_back(colors[2] << 16 | colors[1] << 8 | colors[0]);
        }
    }
    std::fclose(file);
    std::remove(name);
    return found;
}

DWORD RecorderTest::pixel(int x, int y) {
    std::vector<DWORD> found = pixels({x, y, x + 1, y + 1});
    return found.empty() ? 0xFFFFFFFF : found[0];
}
