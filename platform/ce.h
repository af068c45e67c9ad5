#pragma once
// The Windows CE system as the library sees it: the desktop's headers, and what the device adds or
// has different.

#ifndef UNICODE
#define UNICODE
#endif
#ifndef _UNICODE
#define _UNICODE
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <stddef.h>

// The window class of top-level windows. A close request does not destroy such a window.
#define DIALOG_CLASS L"Dialog"

// GetSysColor and GetSysColorBrush take the index of a system colour marked as one.
#define SYS_COLOR_INDEX_FLAG 0x40000000
#ifndef COLOR_STATIC
#define COLOR_STATIC 25
#define COLOR_STATICTEXT 26
#endif

// Extended style: the caption of a DIALOG_CLASS window shows an OK button, which sends IDOK with no
// control.
#define WS_EX_CAPTIONOKBTN 0x80000000

// The last message of a key; the desktop's headers have later ones.
#undef WM_KEYLAST
#define WM_KEYLAST 0x0108

// The device's MENUITEMINFOW ends here, with no bitmap behind, and it takes no other size.
#define MENU_ITEM_INFO_SIZE (offsetof(MENUITEMINFOW, cch) + sizeof(UINT))

// What EventModify does to an event.
#define EVENT_PULSE 1
#define EVENT_RESET 2
#define EVENT_SET 3

// The emulated device defines what everybody else imports.
#ifndef PLATFORM_IMPORT
#define PLATFORM_IMPORT __declspec(dllimport)
#endif

extern "C" {
// False, with the last error set, for another action or a bad handle. Any thread.
PLATFORM_IMPORT BOOL WINAPI EventModify(HANDLE event, DWORD action);
// The device looks exports up by wide names. Null, with the last error set, for a missing one.
PLATFORM_IMPORT FARPROC WINAPI GetProcAddressW(HMODULE module, LPCWSTR name);
}

// The layouts that cross the border to the system, which are the device's.
static_assert(sizeof(void*) == 4 && sizeof(wchar_t) == 2 && sizeof(long) == 4);
static_assert(sizeof(POINT) == 8 && sizeof(RECT) == 16);
static_assert(sizeof(MSG) == 28 && offsetof(MSG, time) == 16 && offsetof(MSG, pt) == 20);
static_assert(sizeof(WNDCLASSW) == 40 && offsetof(WNDCLASSW, lpszClassName) == 36);
static_assert(sizeof(PAINTSTRUCT) == 64 && offsetof(PAINTSTRUCT, rcPaint) == 8);
static_assert(sizeof(DRAWITEMSTRUCT) == 48 && offsetof(DRAWITEMSTRUCT, itemData) == 44);
static_assert(sizeof(NMHDR) == 12);
static_assert(MENU_ITEM_INFO_SIZE == 44 && offsetof(MENUITEMINFOW, dwTypeData) == 36);
static_assert(sizeof(WAVEHDR) == 32 && offsetof(WAVEHDR, dwFlags) == 16);
static_assert(sizeof(WAVEFORMATEX) == 18 && offsetof(WAVEFORMATEX, cbSize) == 16);
static_assert(sizeof(SCROLLINFO) == 28 && offsetof(SCROLLINFO, nTrackPos) == 24);
static_assert(sizeof(COMBOBOXINFO) == 52 && offsetof(COMBOBOXINFO, rcButton) == 20);
static_assert(sizeof(ACCEL) == 6 && offsetof(ACCEL, key) == 2 && offsetof(ACCEL, cmd) == 4);
static_assert(sizeof(INPUT) == 28 && offsetof(INPUT, mi) == 4);
static_assert(sizeof(LOGPEN) == 16 && sizeof(LOGBRUSH) == 12 && sizeof(LOGFONTW) == 92);
static_assert(sizeof(TEXTMETRICW) == 60 && offsetof(TEXTMETRICW, tmItalic) == 52);
static_assert(sizeof(BITMAP) == 24 && sizeof(BITMAPINFOHEADER) == 40 && sizeof(DIBSECTION) == 84);
static_assert(sizeof(CRITICAL_SECTION) >= 20); // the device's own needs 20
