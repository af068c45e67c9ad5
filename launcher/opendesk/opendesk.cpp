// Opens a window and says so, so that the device's desktop is there. Wine starts the desktop with
// the first window and hands it the environment of that moment; it ends both it and the server
// behind the last program, so this one stays for as long as it may take the next to begin.

#include <stdio.h>
#include <windows.h>

static constexpr DWORD stay = 60000; // milliseconds

int main() {
    HWND window = CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP, 0, 0, 1, 1, nullptr, nullptr,
                                  nullptr, nullptr);
    if (!window) return 1;
    DestroyWindow(window);
    puts("open");
    fflush(stdout);
    Sleep(stay);
    return 0;
}
