// The device's window class "Dialog", which the desk does not have.

#ifndef UNICODE
#define UNICODE
#endif
#include <windows.h>

// Programs decide themselves what closing such a window means.
static LRESULT CALLBACK dialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_CLOSE) return 0;
    return DefDlgProcW(window, message, wParam, lParam);
}

static void registerDialogClass(HINSTANCE instance) {
    WNDCLASSW windowClass = {};
    windowClass.style = CS_DBLCLKS | CS_GLOBALCLASS;
    windowClass.lpfnWndProc = dialogProc;
    windowClass.cbWndExtra = DLGWINDOWEXTRA;
    windowClass.hInstance = instance;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.lpszClassName = L"Dialog";
    RegisterClassW(&windowClass);
}

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) registerDialogClass(instance);
    return TRUE;
}
