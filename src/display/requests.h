#pragma once
// The requests that any thread sends to a display's message window, and the operations that answer
// them on the display's thread. The modules that own the created objects define these operations.

#include "bridge/error.h"
#include "bridge/widget.h"
#include "ce.h"

struct ControlRecord;
struct DisplayRecord;
struct MenuRecord;
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

struct ControlRequest {
    const wchar_t* className;
    UINT recordSize;
    WNDPROC windowProc;
    DWORD javaStyle;
    DWORD windowStyle;
    DWORD extendedStyle;
    ErrorRecord* error;
};

ShellRecord* Shell_Create(DisplayRecord* display, ShellRecord* parent, DWORD javaStyle,
                          ErrorRecord* error);
// The record is returned even when the bar's window could not be made, which is reported.
MenuRecord* MenuBar_Create(ControlRecord* shell, ErrorRecord* error);
MenuRecord* PopupMenu_Create(ControlRecord* owner, ErrorRecord* error);
ControlRecord* Control_Create(ControlRecord* parent, const ControlRequest& request);
