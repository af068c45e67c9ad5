#pragma once
// The keyboard accelerators of a shell, and the translation of key messages by them.
// Display thread only.

#include "bridge/error.h"
#include "bridge/layout.h"
#include "ce.h"

struct DisplayRecord;
struct ShellRecord;

struct ShellAccelerators {
    ACCEL* entries; // owned
    LONG count;
    LONG capacity;
    HACCEL table; // built from the entries when asked for; owned
    BOOL shiftDown;
};
ASSERT_OFFSET(ShellAccelerators, count, 4)
ASSERT_OFFSET(ShellAccelerators, table, 12)
ASSERT_OFFSET(ShellAccelerators, shiftDown, 16)

// The accelerators of the shell that the window is or lies in; null when there is none.
ShellAccelerators* Accelerators_Above(HWND window);

// Replaces the entry of the same command, or adds one.
void Accelerators_Set(ShellAccelerators* accelerators, const ACCEL& entry, ErrorRecord* error);

// Removes the entries of the command.
void Accelerators_Remove(ShellAccelerators* accelerators, WORD command);

// Removes the entries of the command from every shell of the display.
void Accelerators_RemoveAll(const DisplayRecord* display, WORD command);

// The built table, built now if need be; null without entries.
HACCEL Accelerators_GetTable(ShellAccelerators* accelerators);

// Destroys the built table; the next request builds it anew.
void Accelerators_DropTable(ShellAccelerators* accelerators);

// Frees all entries and the built table.
void Accelerators_Free(ShellAccelerators* accelerators);

// Whether the message was a key of an accelerator, which has then been dispatched.
bool Accelerators_Translate(MSG* message);
