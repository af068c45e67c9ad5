// The device's menu bar: a command bar at the bottom of the screen that belongs to a top-level
// window but never takes the activation from it.

#include "aygshell.h"
#include "emulator.h"
#include <commctrl.h>

static constexpr int menuBarHeight = 26;

static LRESULT CALLBACK menuBarProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto toolbarProc = reinterpret_cast<WNDPROC>(GetClassLongW(window, GCL_WNDPROC));
    if (message == WM_MOUSEACTIVATE) return MA_NOACTIVATE;
    if (message == WM_WINDOWPOSCHANGING)
        reinterpret_cast<WINDOWPOS*>(lParam)->flags |= SWP_NOACTIVATE;
    return CallWindowProcW(toolbarProc, window, message, wParam, lParam);
}

static bool isMenuBar(HWND window) {
    return GetWindowLongW(window, GWL_WNDPROC) == reinterpret_cast<LONG>(menuBarProc);
}

// Every command bar starts with a button of the system's.
static void addSystemButton(HWND bar) {
    TBBUTTON button = {};
    button.fsStyle = BTNS_SEP;
    SendMessageW(bar, TB_BUTTONSTRUCTSIZE, sizeof(button), 0);
    SendMessageW(bar, TB_INSERTBUTTONW, 0, reinterpret_cast<LPARAM>(&button));
}

static HWND createBar(const SHMENUBARINFO& info) {
    constexpr DWORD style = WS_POPUP | WS_CLIPSIBLINGS | CCS_NORESIZE | CCS_NOPARENTALIGN |
                            CCS_NODIVIDER | TBSTYLE_LIST | TBSTYLE_FLAT;
    HWND bar = CreateWindowExW(WS_EX_NOACTIVATE | WS_EX_TOOLWINDOW, TOOLBARCLASSNAMEW, nullptr,
                               style, 0, deviceScreenHeight - menuBarHeight, deviceScreenWidth,
                               menuBarHeight, info.hwndParent, nullptr, info.hInstRes, nullptr);
    if (!bar) return nullptr;
    SetWindowLongW(bar, GWL_WNDPROC, reinterpret_cast<LONG>(menuBarProc));
    addSystemButton(bar);
    return bar;
}

static BOOL CALLBACK findBar(HWND window, LPARAM lParam) {
    auto* search =
        reinterpret_cast<HWND*>(lParam); // the owner on the way in, the bar on the way out
    if (GetWindow(window, GW_OWNER) != *search || !isMenuBar(window)) return TRUE;
    *search = window;
    return FALSE;
}

extern "C" {

// The bar is hidden until its top-level window is activated.
BOOL WINAPI SHCreateMenuBar(SHMENUBARINFO* info) {
    if (info->cbSize != sizeof(*info) || !IsWindow(info->hwndParent)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    info->hwndMB = createBar(*info);
    return info->hwndMB != nullptr;
}

HWND WINAPI SHFindMenuBar(HWND window) {
    HWND search = window;
    bool found = !EnumThreadWindows(GetWindowThreadProcessId(window, nullptr), findBar,
                                    reinterpret_cast<LPARAM>(&search));
    return found ? search : nullptr;
}

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) InitCommonControls();
    return TRUE;
}
}
