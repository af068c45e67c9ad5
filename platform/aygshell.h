#pragma once
// The device's shell library: menu bars, activation, gestures. Imported by ordinal.

#include "ce.h"

#define SHCMBF_EMPTYBAR 0x0002

// To the command bar: wParam the command id of a button, lParam the menu that it drops down.
#define SHCMBM_SETSUBMENU (WM_USER + 400)

#define SHRG_RETURNCMD 0x00000001
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

struct SHACTIVATEINFO {
    DWORD cbSize;
    HWND hwndLastFocus;
    DWORD flags;
};
static_assert(sizeof(SHACTIVATEINFO) == 12);

struct SHRGINFO {
    DWORD cbSize;
    HWND hwndClient;
    POINT ptDown; // client coordinates
    DWORD dwFlags;
};
static_assert(sizeof(SHRGINFO) == 20);

extern "C" {
PLATFORM_IMPORT BOOL WINAPI SHCreateMenuBar(SHMENUBARINFO* info);
PLATFORM_IMPORT DWORD WINAPI SHRecognizeGesture(SHRGINFO* request);
PLATFORM_IMPORT BOOL WINAPI SHHandleWMSettingChange(HWND window, WPARAM wParam, LPARAM lParam,
                                                    SHACTIVATEINFO* info);
PLATFORM_IMPORT BOOL WINAPI SHHandleWMActivate(HWND window, WPARAM wParam, LPARAM lParam,
                                               SHACTIVATEINFO* info, DWORD flags);
// The menu bar of a top-level window, or null.
PLATFORM_IMPORT HWND WINAPI SHFindMenuBar(HWND window);
}
