#pragma once
// The shells that a display knows, and which of them a modal shell leaves enabled. A shell is
// inside another when it is that shell or has it among its parents. Display thread only.

#include "bridge/error.h"
#include "ce.h"

struct DisplayRecord;
struct ShellRecord;

// The shell module owns these.
HWND Shell_GetWindow(const ShellRecord* shell);
const ShellRecord* Shell_GetParent(const ShellRecord* shell);

// Lists a new shell whose window is enabled, and disables it when it is outside the current modal
// shell.
void Display_AddControl(DisplayRecord* display, ShellRecord* shell, ErrorRecord* error);

// Whether the shell was listed. It leaves the modal shells too.
bool Display_RemoveControl(DisplayRecord* display, ShellRecord* shell);

// Lists the shell or takes it off. Whether its window must stay disabled for now, because it is
// outside the current modal shell.
bool Display_SetControlEnabled(DisplayRecord* display, ShellRecord* shell, bool enabled);

bool Display_IsListed(const DisplayRecord* display, const ShellRecord* shell);

// Begins or ends the modality of a shell, then enables exactly the listed shells inside the
// current modal shell, or all without one.
extern "C" void Display_UpdateModalShellVisibility(DisplayRecord* display, ShellRecord* shell,
                                                   BOOL modal);
