#pragma once
// The device's shell library: menu bars, activation, gestures. Imported by ordinal. All of it is
// for the thread that owns the windows.

#include "ce.h"
#include <commctrl.h>

// A menu bar without buttons of the program's own resources.
#define SHCMBF_EMPTYBAR 0x0002

// To the menu bar: wParam the command id of a button, lParam the menu that it drops down (null:
// none). The menu stays its maker's.
#define SHCMBM_SETSUBMENU (WM_USER + 400)

// SHRecognizeGesture answers with the gesture and notifies nobody.
#define SHRG_RETURNCMD 0x00000001
// The pointer was pressed and held still.
#define GN_CONTEXTMENU 1000

struct SHMENUBARINFO {
    DWORD cbSize;
    HWND hwndParent;
    DWORD dwFlags;
    UINT nToolBarId;
    HINSTANCE hInstRes;
    int nBmpId;
    int cBmpImages;
    HWND hwndMB; // the created bar
    COLORREF clrBk;
};
static_assert(sizeof(SHMENUBARINFO) == 36 && offsetof(SHMENUBARINFO, hwndMB) == 28);

// What a menu bar is told and asked of its buttons.
static_assert(sizeof(TBBUTTON) == 20 && offsetof(TBBUTTON, fsStyle) == 9);
static_assert(sizeof(TBBUTTONINFOW) == 32 && offsetof(TBBUTTONINFOW, pszText) == 24);

struct SHACTIVATEINFO {
    DWORD cbSize;
    HWND hwndLastFocus;
    DWORD flags;
};
static_assert(sizeof(SHACTIVATEINFO) == 12 && offsetof(SHACTIVATEINFO, hwndLastFocus) == 4);

struct SHRGINFO {
    DWORD cbSize;
    HWND hwndClient;
    POINT ptDown; // client coordinates
    DWORD dwFlags;
};
static_assert(sizeof(SHRGINFO) == 20 && offsetof(SHRGINFO, dwFlags) == 16);

extern "C" {
// Makes a menu bar at the bottom of the screen, hidden, which the window owns; it takes part in
// messages as a tool bar and sends its commands to the window. False, with the last error set.
PLATFORM_IMPORT BOOL WINAPI SHCreateMenuBar(SHMENUBARINFO* info);
// Called on a press: waits until the pointer has told which gesture it makes. 0 for none.
PLATFORM_IMPORT DWORD WINAPI SHRecognizeGesture(SHRGINFO* request);
// To be called on WM_SETTINGCHANGE; the window is null for one that keeps its place.
PLATFORM_IMPORT BOOL WINAPI SHHandleWMSettingChange(HWND window, WPARAM wParam, LPARAM lParam,
                                                    SHACTIVATEINFO* info);
// To be called on WM_ACTIVATE: keeps the focus of a window that is left and gives it back.
PLATFORM_IMPORT BOOL WINAPI SHHandleWMActivate(HWND window, WPARAM wParam, LPARAM lParam,
                                               SHACTIVATEINFO* info, DWORD flags);
// The menu bar that a window owns, the shown one before others; null for none.
PLATFORM_IMPORT HWND WINAPI SHFindMenuBar(HWND window);
}
