#pragma once
// Shells: top-level windows. A top shell has no parent and fills the work area above its menu bar;
// a child shell is owned by another shell and can be moved and sized.

#include "aygshell.h"
#include "control/scrollable.h"
#include "display/accelerators.h"

struct ImageRecord;
struct MenuBarRecord;
struct MenuRecord;

struct ShellRecord : ScrollableRecord {
    MenuRecord* menuBar; // set by Java; null: the default one shows
    ShellAccelerators accelerators;
    SHACTIVATEINFO activation;
    MenuRecord* defaultMenuBar; // empty; owned
    ShellRecord* next;          // of the display's shells
};
ASSERT_OFFSET(ShellRecord, menuBar, 64)
ASSERT_OFFSET(ShellRecord, accelerators, 68)
ASSERT_OFFSET(ShellRecord, activation, 88)
ASSERT_OFFSET(ShellRecord, defaultMenuBar, 100)

ShellRecord* Shell_New(DisplayRecord* display, DWORD style, ErrorRecord* error);
ShellRecord* Shell_NewChild(ShellRecord* parent, DWORD style, ErrorRecord* error);
void Shell_SetText(ShellRecord* shell, const wchar_t* text, ErrorRecord* error);

// Fills the work area; false does nothing.
void Shell_SetMaximized(ShellRecord* shell, bool maximized, ErrorRecord* error);

// Quirk: a shell is never minimised and cannot be, and no error tells so. Pinned by
// ShellTest.minimising_and_images_are_not_this_platforms.
bool Shell_GetMinimized(ShellRecord* shell, ErrorRecord* error);
void Shell_SetMinimized(ShellRecord* shell, bool minimized, ErrorRecord* error);

// Does nothing: shells show no image on this platform.
void Shell_SetImage(ShellRecord* shell, OrNone<ImageRecord> image, ErrorRecord* error);

// Whether the user can size a child shell by its frame. Top shells cannot be sized.
void Shell_SetResizable(ShellRecord* shell, bool resizable, ErrorRecord* error);

// Shows the bar in place of the one that shows; null stands for the empty default bar. The shell
// does not own it.
void Shell_SetMenuBar(ShellRecord* shell, OrNone<MenuBarRecord> menuBar, ErrorRecord* error);

// The shell's window procedure. Display thread.
LRESULT CALLBACK Shell_Proc(HWND window, UINT id, WPARAM wParam, LPARAM lParam);

// Moves the shell over the work area less its visible menu bar. Display thread.
void Shell_Maximize(ShellRecord* shell);

// Shows the window of the shell's menu bar. Display thread.
void Shell_ShowMenuBar(const ShellRecord* shell);

// The menu bar that shows. Null when not even the default one could be made.
MenuRecord* Shell_GetCurrentMenuBar(const ShellRecord* shell);

// Display thread.
ShellRecord* Shell_Create(DisplayRecord* display, ShellRecord* parent, DWORD javaStyle,
                          ErrorRecord* error);

// For the display, to which a shell is a node of its lists.
ShellRecord* Shell_Find(HWND window); // null when it is no shell's. Display thread.
HWND Shell_GetWindow(const ShellRecord* shell);
const ShellRecord* Shell_GetParent(const ShellRecord* shell);
ShellRecord** Shell_GetNext(ShellRecord* shell);
ShellAccelerators* Shell_GetAccelerators(ShellRecord* shell);
