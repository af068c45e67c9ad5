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

// GetSysColor and GetSysColorBrush take the index of a system colour marked as one.
#define SYS_COLOR_INDEX_FLAG 0x40000000
#ifndef COLOR_STATIC
#define COLOR_STATIC 25
#define COLOR_STATICTEXT 26
#endif

// The caption shows an OK button, which sends IDOK.
#define WS_EX_CAPTIONOKBTN 0x80000000

#define EVENT_PULSE 1
#define EVENT_RESET 2
#define EVENT_SET 3

// The emulated device defines what everybody else imports.
#ifndef PLATFORM_IMPORT
#define PLATFORM_IMPORT __declspec(dllimport)
#endif

extern "C" {
PLATFORM_IMPORT BOOL WINAPI EventModify(HANDLE event, DWORD action);
// The device looks exports up by wide names.
PLATFORM_IMPORT FARPROC WINAPI GetProcAddressW(HMODULE module, LPCWSTR name);
}

static_assert(sizeof(wchar_t) == 2);
static_assert(sizeof(MSG) == 28);
static_assert(sizeof(RECT) == 16);
static_assert(sizeof(ACCEL) == 6 && offsetof(ACCEL, key) == 2 && offsetof(ACCEL, cmd) == 4);
static_assert(sizeof(INPUT) == 28);
static_assert(sizeof(SCROLLINFO) == 28);
static_assert(sizeof(LOGBRUSH) == 12);
static_assert(sizeof(WNDCLASSW) == 40);
static_assert(sizeof(DRAWITEMSTRUCT) == 48);
