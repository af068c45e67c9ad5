#pragma once
// The shells of a display, and which of them a modal shell leaves enabled. A shell is inside
// another when it is that shell or has it among its parents. Any thread but where it is said;
// listeners of the focus run while shells are enabled and disabled.

#include "bridge/error.h"
#include "ce.h"

struct DisplayRecord;
struct ShellRecord;

// The window itself, or the nearest around it, that is no child; null for null.
HWND topLevelWindow(HWND window);

// Takes note of a shell that has a window, until it is forgotten. Display thread.
void Display_RememberShell(DisplayRecord* display, ShellRecord* shell);

// The shell is in none of the display's lists any more. Whether it was modal. Display thread.
bool Display_ForgetShell(DisplayRecord* display, ShellRecord* shell);

// The display's shell that has the window; null when it is no shell's. Display thread.
ShellRecord* Display_FindShell(const DisplayRecord* display, HWND window);

// Lists a new shell whose window is enabled, and disables it when it is outside the current modal
// shell.
void Display_ListShell(DisplayRecord* display, ShellRecord* shell, ErrorRecord* error);

// Whether the shell was listed. It leaves the modal shells too.
bool Display_UnlistShell(DisplayRecord* display, ShellRecord* shell);

// Lists the shell or takes it off. Whether its window must stay disabled for now, because it is
// outside the current modal shell.
bool Display_SetShellListed(DisplayRecord* display, ShellRecord* shell, bool listed);

bool Display_IsListed(const DisplayRecord* display, const ShellRecord* shell);

// Enables exactly the listed shells inside the current modal shell, or all without one.
void Display_ApplyModality(DisplayRecord* display);

// A dialog of the system's, for as long as this lives: the shell that its owner is or lies in stays
// disabled, whatever becomes of modal shells meanwhile. The system enables that shell when the
// dialog ends; then modality, and what Java wanted of the shell, hold again.
class OpenDialog {
  public:
    // Null: a dialog without owner.
    OpenDialog(DisplayRecord* display, HWND owner);
    ~OpenDialog();
    OpenDialog(const OpenDialog&) = delete;
    OpenDialog& operator=(const OpenDialog&) = delete;

    bool isOver(const ShellRecord* shell) const;
    const OpenDialog* outerDialog() const { return outer; }

  private:
    DisplayRecord* display;
    HWND window; // of the shell
    bool wasListed;
    OpenDialog* outer;
};

// Begins or ends the modality of a shell and applies it.
extern "C" void Display_UpdateModalShellVisibility(DisplayRecord* display, ShellRecord* shell,
                                                   BOOL modal);
