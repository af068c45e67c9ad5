#pragma once
// The requests that any thread sends to a display's message window, which answers them on the
// display's thread.

#include "bridge/error.h"
#include "ce.h"

struct ShellRecord;

enum DisplayRequest : UINT {
    requestCreateShell = WM_APP + 0x1,   // wParam Java style, lParam ShellRequest*
    requestCreateControl = WM_APP + 0x2, // wParam parent record, lParam ControlRequest*
    requestDestroyWindow = WM_APP + 0x3, // wParam window
    requestSetFocus = WM_APP + 0x4,      // wParam window
    requestCreateMenuBar = WM_APP + 0xE, // wParam owner record, lParam ErrorRecord**
    requestCreatePopupMenu = WM_APP + 0x13,
    requestSwapCallbackTarget = WM_APP + 0x1C, // wParam widget record, lParam CallbackTarget*
    requestRun = WM_APP + 0x1D,                // wParam DisplayWorkRequest*
};

// Sent to a control whose display has ended.
constexpr UINT requestDestroyItself = WM_APP + 0x1E;

struct ShellRequest {
    ShellRecord* parent;
    ErrorRecord* error;
};

// What _Control_New takes beside the parent.
struct ControlRequest {
    const wchar_t* className = nullptr;
    UINT recordSize = 0;
    WNDPROC windowProc = nullptr; // null: _Control_Proc
    DWORD javaStyle = 0;
    DWORD windowStyle = 0;
    DWORD extendedStyle = 0;
    ErrorRecord* error = nullptr;
};
