// A picture of the device's screen, composed from the windows' own surfaces: it needs no display.

#include "emulator.h"
#include "screen.h"
#include <stdint.h>
#include <vector>

namespace {

constexpr int bytesPerPixel = 3;

struct Picture {
    BITMAPINFO info;
    void* pixels;
    HBITMAP bitmap;
    HDC context;
    HGDIOBJ displaced;
};

} // namespace

static DWORD imageBytes() {
    DWORD stride = (screenSize().cx * bytesPerPixel + 3) & ~3;
    return stride * screenSize().cy;
}

static bool makePicture(Picture* picture) {
    BITMAPINFOHEADER& header = picture->info.bmiHeader;
    header.biSize = sizeof(header);
    header.biWidth = screenSize().cx;
    header.biHeight = screenSize().cy;
    header.biPlanes = 1;
    header.biBitCount = bytesPerPixel * 8;
    picture->bitmap =
        CreateDIBSection(nullptr, &picture->info, DIB_RGB_COLORS, &picture->pixels, nullptr, 0);
    if (!picture->bitmap || !picture->pixels) return false;
    picture->context = CreateCompatibleDC(nullptr);
    if (!picture->context) {
        DeleteObject(picture->bitmap);
        return false;
    }
    picture->displaced = SelectObject(picture->context, picture->bitmap);
    return true;
}

static void discardPicture(const Picture& picture) {
    SelectObject(picture.context, picture.displaced);
    DeleteDC(picture.context);
    DeleteObject(picture.bitmap);
}

static BOOL CALLBACK collectShown(HWND window, LPARAM windows) {
    DWORD process;
    GetWindowThreadProcessId(window, &process);
    if (process == GetCurrentProcessId() && IsWindowVisible(window))
        reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
    return TRUE;
}

static void paintWindow(HDC picture, HWND window) {
    RECT place;
    GetWindowRect(window, &place);
    HDC surface = GetDCEx(window, nullptr, DCX_WINDOW | DCX_CACHE | DCX_LOCKWINDOWUPDATE);
    if (!surface) return;
    BitBlt(picture, place.left, place.top, place.right - place.left, place.bottom - place.top,
           surface, 0, 0, SRCCOPY);
    ReleaseDC(window, surface);
}

static void paintScreen(HDC picture) {
    RECT screen = {0, 0, screenSize().cx, screenSize().cy};
    FillRect(picture, &screen, GetSysColorBrush(COLOR_BACKGROUND));
    std::vector<HWND> windows; // the topmost first
    EnumWindows(collectShown, reinterpret_cast<LPARAM>(&windows));
    for (auto window = windows.rbegin(); window != windows.rend(); ++window)
        paintWindow(picture, *window);
    GdiFlush();
}

static bool writeAll(HANDLE file, const void* bytes, DWORD count) {
    DWORD written;
    return WriteFile(file, bytes, count, &written, nullptr) && written == count;
}

static bool writeBitmap(LPCWSTR path, const Picture& picture) {
    HANDLE file =
        CreateFileW(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    constexpr uint16_t bitmapFile = 'B' | 'M' << 8;
    constexpr DWORD pixelsAt = sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER);
    BITMAPFILEHEADER header = {bitmapFile, pixelsAt + imageBytes(), 0, 0, pixelsAt};
    bool written = writeAll(file, &header, sizeof(header)) &&
                   writeAll(file, &picture.info.bmiHeader, sizeof(BITMAPINFOHEADER)) &&
                   writeAll(file, picture.pixels, imageBytes());
    CloseHandle(file);
    return written;
}

// Bottom-up rows of blue, green and red become top-down pixels.
static void copyPixels(const Picture& picture, DWORD* pixels) {
    const BITMAPINFOHEADER& header = picture.info.bmiHeader;
    size_t stride = (header.biWidth * bytesPerPixel + 3) & ~3;
    for (LONG y = header.biHeight - 1; y >= 0; --y) {
        const BYTE* byte = static_cast<const BYTE*>(picture.pixels) + y * stride;
        for (LONG x = 0; x < header.biWidth; ++x, byte += bytesPerPixel)
            *pixels++ = byte[0] | byte[1] << 8 | byte[2] << 16;
    }
}

extern "C" BOOL WINAPI Emulator_CopyScreen(DWORD* pixels, DWORD count) {
    Picture picture = {};
    if (!makePicture(&picture)) return FALSE;
    const BITMAPINFOHEADER& header = picture.info.bmiHeader;
    bool fits = count == static_cast<DWORD>(header.biWidth * header.biHeight);
    if (fits) {
        paintScreen(picture.context);
        copyPixels(picture, pixels);
    }
    discardPicture(picture);
    return fits;
}

extern "C" BOOL WINAPI Emulator_SaveScreen(LPCWSTR path) {
    Picture picture = {};
    if (!makePicture(&picture)) return FALSE;
    paintScreen(picture.context);
    bool written = writeBitmap(path, picture);
    DWORD error = GetLastError();
    discardPicture(picture);
    if (!written) SetLastError(error);
    return written;
}
