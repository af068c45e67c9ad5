#pragma once
// The system's dialogs that ask for a file to open or to save. Any thread; the dialog runs on the
// display's when it is opened there, else on a thread of its own.

#include "bridge/values.h"
#include "display/widget.h"

struct ControlRecord;
struct Showing;

struct FileDialogRecord : WidgetRecord {
    ControlRecord* owner; // its window is disabled while the dialog is open
    wchar_t* filterPath;  // the folder; this text and the next two are owned, null: none
    wchar_t* fileName;
    wchar_t* title;
    wchar_t** fileNames; // chosen last; owned, null: none
    HWND ownerWindow;    // leads to the owner as long as there is one
    Showing* showing;    // the last that has not ended; null: the dialog is closed
};
ASSERT_OFFSET(FileDialogRecord, owner, 16)
ASSERT_OFFSET(FileDialogRecord, filterPath, 20)
ASSERT_OFFSET(FileDialogRecord, fileName, 24)
ASSERT_OFFSET(FileDialogRecord, title, 28)
ASSERT_OFFSET(FileDialogRecord, fileNames, 32)

FileDialogRecord* FileDialog_New(ControlRecord* owner, DWORD style, ErrorRecord* error);

// What the dialog starts with; null stands for none. The title is the owner's while the dialog is
// open.
void FileDialog_SetTitle(FileDialogRecord* dialog, const wchar_t* title, ErrorRecord* error);
void FileDialog_SetFileName(FileDialogRecord* dialog, const wchar_t* name, ErrorRecord* error);
void FileDialog_SetFilterPath(FileDialogRecord* dialog, const wchar_t* path, ErrorRecord* error);

// Returns when the dialog is closed: whether files were chosen. The record and its owner may be
// disposed of meanwhile. Without its owner the dialog has none.
bool FileDialog_Open(FileDialogRecord* dialog, ErrorRecord* error);

// The folder of what was chosen. Owned by the dialog.
NativeString FileDialog_GetFilterPath(FileDialogRecord* dialog, ErrorRecord* error);

// Hands the names over: the caller frees them, and the dialog has them no longer.
NativeStringList FileDialog_GetFileNames(FileDialogRecord* dialog, ErrorRecord* error);
