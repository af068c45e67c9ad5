// Opens a window and ends, so that the device's desktop is there. Wine starts the desktop with the
// first window and hands it the environment of that moment.

#include <windows.h>

int main() {
    HWND window = CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP, 0, 0, 1, 1, nullptr, nullptr,
                                  nullptr, nullptr);
    if (!window) return 1;
    DestroyWindow(window);
    return 0;
}
