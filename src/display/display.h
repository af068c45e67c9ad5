#pragma once
// The display: the hidden message window that runs other threads' window work on the display's
// thread, the event loop, and what belongs to all windows of a display.
//
// The thread that creates the display owns all its windows; only that thread reads and dispatches
// or sleeps. Other threads send the requests below, and may wake it.

#include "bridge/error.h"
#include "bridge/handles.h"
#include "bridge/layout.h"
#include "ce.h"
#include "display/callbacks.h"
#include "display/widget.h"
#include "graphics/device.h"
#include "kernel_data.h"

struct ControlRecord;
struct FontRecord;
struct MenuItemRecord;
struct MenuRecord;
struct ShellRecord;
class ModalLoop;
class OpenDialog;

// What a key message leaves for the character message and the release that follow it.
struct KeyTranslation {
    DWORD pendingKey; // virtual key, or Java key code once translated
    wchar_t pendingCharacter;
    bool translate;         // pendingKey goes through the key table
    bool characterIsZero;   // the character really is 0
    bool characterExpected; // a dead key is queued; its character reports the key
};

struct PendingTap {
    ControlRecord* control; // null: none
    DWORD pressTick;        // milliseconds
    POINT press;            // client coordinates
};

struct PointerState {
    HWND lastPress;
    RECT doubleClickArea;      // client coordinates of lastPress
    DWORD doubleClickDeadline; // tick count, milliseconds
    bool dragStarted;
    HWND under;
    PendingTap tap;
};

struct ShellNode {
    ShellRecord* shell;
    ShellNode* next;
    LONG modalityWalk; // the last one that came by
};

// The display ends when Java disposes of it: it has no message window any more then, and its events
// vanish. The record lives on until the last of its widgets is freed.
struct DisplayRecord {
    DeviceRecord device;            // its dispose ends the display
    CallbackLookup* callbackLookup; // null until Display_InitCallbacks
    DWORD threadId;
    DWORD processId;
    HINSTANCE instance;
    HWND messageWindow;            // null when the display has ended
    MenuItemRecord** commandItems; // by command id, see display/commands.h; owned
    LONG commandItemCapacity;
    FontRecord* systemFont;   // owned; null until asked for
    ShellNode* modalShells;   // most recently made modal first; owned
    ShellNode* listedShells;  // the shells that Java wants enabled; owned
    DWORD comctlMajorVersion; // 0 until asked for
    DWORD comctlMinorVersion;
    KeyTranslation key;
    PointerState pointer;
    ModalLoop* modalLoop; // the innermost of the system's that runs now; null: none
    LONG owners;          // Java, the widgets and the modal loops
    ShellRecord* shells;  // all that have a window, see display/shells.h
    MenuRecord* menus;    // all, see menu/menu.h
    OpenDialog* dialogs;  // of the system, the last opened first; null: none
    LONG modalityWalk;    // counts how often modality was applied
};
ASSERT_OFFSET(DisplayRecord, callbackLookup, 4)
ASSERT_OFFSET(DisplayRecord, messageWindow, 20)
ASSERT_OFFSET(DisplayRecord, commandItems, 24)
ASSERT_OFFSET(DisplayRecord, systemFont, 32)
ASSERT_OFFSET(DisplayRecord, modalShells, 36)
ASSERT_OFFSET(DisplayRecord, comctlMajorVersion, 44)

// The window class of message windows and composites.
constexpr wchar_t displayWindowClass[] = L"Window Class Name";

DisplayRecord* Display_New(ErrorRecord* error);

// Takes one message from the queue; false when there is none.
bool Display_ReadAndDispatch(OfThisThread<DisplayRecord> display, ErrorRecord* error);

// Waits until there is any input, also input from before the call. The system's wait result.
DWORD Display_Sleep(OfThisThread<DisplayRecord> display, ErrorRecord* error);

// Ends a sleep. Any thread. Non-zero when the wake-up was posted.
jint Display_Wake(DisplayRecord* display, ErrorRecord* error);

// Major version of the common controls; 0 with the error set when it cannot be had.
extern "C" DWORD _Display_GetComCtrlMajorVersion(DisplayRecord* display, ErrorRecord* error);

inline bool Display_IsCurrentThread(const DisplayRecord* display) {
    return currentThreadId() == display->threadId;
}

// Destroys the window on the display's thread. Any thread. The result of DestroyWindow.
BOOL Display_DestroyWindow(DisplayRecord* display, HWND window);

using DisplayWork = LRESULT (*)(void* context);
LRESULT Display_RunWork(DisplayRecord* display, DisplayWork work, void* context);

// Does the work on the display's thread, as one message, and returns its result: what asks or tells
// the system more than one thing cannot be interrupted then. Any thread; done at once on the
// display's own, and when the display has ended.
template <class Work>
LRESULT Display_Run(DisplayRecord* display, Work work) {
    DisplayWork call = [](void* context) -> LRESULT { return (*static_cast<Work*>(context))(); };
    return Display_RunWork(display, call, &work);
}

// The display's record is kept until it is released as often. Any thread.
void Display_Retain(DisplayRecord* display);
void Display_Release(DisplayRecord* display);
