#include "widgets/file_dialog.h"
#include "bridge/leaf_lock.h"
#include "bridge/links.h"
#include "bridge/memory.h"
#include "bridge/string_list.h"
#include "control/control.h"
#include "display/display.h"
#include "display/quit.h"
#include "display/shells.h"
#include <commdlg.h>
#include <string.h>

static constexpr DWORD structureSize = 76; // the device's; later desktops' is larger
static_assert(offsetof(OPENFILENAMEW, lpTemplateName) + sizeof(LPCWSTR) == structureSize);

static constexpr UINT singleCapacity = 260; // characters
static constexpr UINT severalCapacity = 32768;
static constexpr UINT folderCapacity = 260;
static constexpr UINT captionCapacity = 100;

static void failWithoutMemory(ErrorRecord* error) {
    Win32Error_SetError(error, errorOutOfMemory, L"Not enough memory to allocate file dialog");
}

static wchar_t* copyOf(const wchar_t* text, UINT length) {
    wchar_t* copy = allocateArray<wchar_t>(length + 1);
    if (copy) memcpy(copy, text, length * sizeof(wchar_t));
    return copy;
}

static void replace(wchar_t** field, wchar_t* text) {
    freeBlock(*field);
    *field = text;
}

static void store(wchar_t** field, const wchar_t* text, ErrorRecord* error) {
    wchar_t* copy = text ? copyOf(text, wcslen(text)) : nullptr;
    if (text && !copy)
        failWithoutMemory(error);
    else
        replace(field, copy);
}

static void releaseNames(FileDialogRecord* dialog) {
    stringListFree(dialog->fileNames);
    dialog->fileNames = nullptr;
}

// One showing of the dialog.
struct Showing {
    OPENFILENAMEW request;
    FileDialogRecord* dialog; // null: gone
    Showing* outer;           // of the same dialog, opened before and open still
    bool several;
    wchar_t* title; // owned; null: none
    bool saves;
    DisplayRecord* loopOf; // whose thread runs the dialog; null: a thread of its own
    wchar_t folder[folderCapacity + 1];
    wchar_t caption[captionCapacity + 1]; // the owner's own
    wchar_t files[1];                     // capacity + 1 characters
};

namespace {

// What was chosen, as the record will keep it.
struct Chosen {
    wchar_t* folder;
    wchar_t* firstName;
    wchar_t** names;
};

} // namespace

static void forgetRecord(FileDialogRecord* dialog) {
    LeafLock lock;
    for (Showing* showing = dialog->showing; showing; showing = showing->outer)
        showing->dialog = nullptr;
}

static int disposeDialog(WidgetRecord* widget, ErrorRecord*) {
    auto* dialog = static_cast<FileDialogRecord*>(widget);
    forgetRecord(dialog);
    freeBlock(dialog->filterPath);
    freeBlock(dialog->fileName);
    freeBlock(dialog->title);
    releaseNames(dialog);
    return TRUE;
}

FileDialogRecord* FileDialog_New(ControlRecord* owner, DWORD style, ErrorRecord* error) {
    auto* dialog = allocate<FileDialogRecord>();
    if (!dialog) {
        failWithoutMemory(error);
        return nullptr;
    }
    Widget_SetDisplay(dialog, Control_GetDisplay(owner));
    dialog->style = style;
    dialog->dispose = disposeDialog;
    dialog->owner = owner;
    dialog->ownerWindow = owner->hwnd;
    return dialog;
}

void FileDialog_SetTitle(FileDialogRecord* dialog, const wchar_t* title, ErrorRecord* error) {
    store(&dialog->title, title, error);
}

void FileDialog_SetFileName(FileDialogRecord* dialog, const wchar_t* name, ErrorRecord* error) {
    store(&dialog->fileName, name, error);
}

void FileDialog_SetFilterPath(FileDialogRecord* dialog, const wchar_t* path, ErrorRecord* error) {
    store(&dialog->filterPath, path, error);
}

NativeString FileDialog_GetFilterPath(FileDialogRecord* dialog, ErrorRecord*) {
    return {dialog->filterPath, false};
}

NativeStringList FileDialog_GetFileNames(FileDialogRecord* dialog, ErrorRecord*) {
    wchar_t** names = dialog->fileNames;
    dialog->fileNames = nullptr;
    return {names, true};
}

static bool takesSeveral(const FileDialogRecord* dialog) { return dialog->style & styleMultiple; }

static UINT capacityOf(const FileDialogRecord* dialog) {
    return takesSeveral(dialog) ? severalCapacity : singleCapacity;
}

static void copyInto(wchar_t* buffer, const wchar_t* text, UINT capacity) {
    if (text) wcsncpy(buffer, text, capacity);
}

static void useBackslashes(wchar_t* text) {
    for (; text && *text; ++text)
        if (*text == L'/') *text = L'\\';
}

// Null when it is gone.
static HWND ownerOf(const FileDialogRecord* dialog) {
    HWND window = dialog->ownerWindow;
    return controlOf(window) == dialog->owner ? window : nullptr;
}

// Quirk: the dialog shows the name with the slashes that it was given with; the record keeps it
// with backslashes. Pinned by
// FileDialogTest.the_name_is_shown_as_it_was_given_and_kept_with_backslashes.
static Showing* newShowing(FileDialogRecord* dialog) {
    UINT capacity = capacityOf(dialog);
    Block<Showing> showing(
        static_cast<Showing*>(allocateBytes(sizeof(Showing) + capacity * sizeof(wchar_t))));
    if (!showing) return nullptr;
    bool hasTitle = dialog->title && *dialog->title;
    showing->title = hasTitle ? copyOf(dialog->title, wcslen(dialog->title)) : nullptr;
    if (hasTitle && !showing->title) return nullptr;
    showing->several = takesSeveral(dialog);
    showing->saves = dialog->style & styleSave;
    copyInto(showing->files, dialog->fileName, capacity);
    copyInto(showing->folder, dialog->filterPath, folderCapacity);
    useBackslashes(dialog->fileName);

    OPENFILENAMEW& request = showing->request;
    request.lStructSize = structureSize;
    request.hwndOwner = ownerOf(dialog);
    request.lpstrFilter = L"*.*\0*.*\0";
    request.lpstrFile = showing->files;
    request.nMaxFile = capacity;
    request.lpstrInitialDir = showing->folder;
    request.Flags = OFN_HIDEREADONLY;
    if (showing->several) request.Flags |= OFN_EXPLORER;
    if (showing->saves) request.lpstrDefExt = L"";
    return showing.release();
}

static BOOL ask(Showing* showing) {
    ModalLoop loop(showing->loopOf);
    SetLastError(ERROR_SUCCESS); // a dialog that is cancelled leaves it as it was
    return showing->saves ? GetSaveFileNameW(&showing->request)
                          : GetOpenFileNameW(&showing->request);
}

// A name that the dialog does not take is left out.
static BOOL show(Showing* showing) {
    if (ask(showing)) return TRUE;
    if (GetLastError() != ERROR_INVALID_PARAMETER) return FALSE;
    memset(showing->files, 0, showing->request.nMaxFile * sizeof(wchar_t));
    return ask(showing);
}

static DWORD CALLBACK showOnThread(void* showing) { return show(static_cast<Showing*>(showing)); }

static bool showOnOwnThread(Showing* showing, ErrorRecord* error) {
    HANDLE thread = CreateThread(nullptr, 0, showOnThread, showing, 0, nullptr);
    if (!thread) {
        Win32Error_SetLast(error, L"Unable to create thread for file dialog");
        return false;
    }
    DWORD chosen = FALSE;
    WaitForSingleObject(thread, INFINITE);
    GetExitCodeThread(thread, &chosen);
    CloseHandle(thread);
    return chosen;
}

static bool showTitled(Showing* showing, DisplayRecord* display, ErrorRecord* error) {
    HWND owner = showing->request.hwndOwner;
    if (showing->title) {
        GetWindowTextW(owner, showing->caption, captionCapacity + 1);
        SetWindowTextW(owner, showing->title);
    }
    OpenDialog dialog(display, owner);
    bool isDisplayThread = Display_IsCurrentThread(display);
    showing->loopOf = isDisplayThread ? display : nullptr;
    bool chosen = isDisplayThread ? show(showing) : showOnOwnThread(showing, error);
    if (showing->title) SetWindowTextW(owner, showing->caption);
    return chosen;
}

// Quirk: only the low byte of each character is looked at, so that some letters end the folder or
// part it. Pinned by SystemDialogTest.without_an_offset_the_low_bytes_tell_the_folder.
static UINT folderLength(const OPENFILENAMEW& request) {
    if (request.nFileOffset) return request.nFileOffset;
    UINT length = 0;
    const wchar_t* files = request.lpstrFile;
    for (UINT i = 0; LOBYTE(files[i]); ++i)
        if (LOBYTE(files[i]) == '\\') length = i + 1;
    return length;
}

// Names end with a NUL each, the last with two. The buffer ends with one beyond its capacity.
static UINT nextName(const OPENFILENAMEW& request, UINT name) {
    UINT next = name + wcslen(request.lpstrFile + name) + 1;
    return next < request.nMaxFile && request.lpstrFile[next] ? next : 0;
}

static UINT countNames(const OPENFILENAMEW& request, UINT first, bool several) {
    if (!several) return 1;
    UINT count = 0;
    for (UINT name = first; name; name = nextName(request, name)) ++count;
    return count;
}

static wchar_t** copyNames(const OPENFILENAMEW& request, UINT first, bool several) {
    UINT count = countNames(request, first, several);
    wchar_t** names = allocateArray<wchar_t*>(count + 1);
    UINT name = first;
    for (UINT i = 0; names && i < count; ++i, name = nextName(request, name)) {
        const wchar_t* text = request.lpstrFile + name;
        names[i] = copyOf(text, wcslen(text));
        if (names[i]) continue;
        stringListFree(names);
        return nullptr;
    }
    return names;
}

static bool isComplete(const Chosen& chosen, bool hasNames) {
    return chosen.folder && (!hasNames || (chosen.names && chosen.firstName));
}

static void release(const Chosen& chosen) {
    freeBlock(chosen.folder);
    freeBlock(chosen.firstName);
    stringListFree(chosen.names);
}

template <class Field>
static void swap(Field* a, Field* b) {
    Field before = *a;
    *a = *b;
    *b = before;
}

// The record, as long as there is one, for what it had before.
static void exchange(const Showing* showing, Chosen* chosen) {
    LeafLock lock;
    FileDialogRecord* dialog = showing->dialog;
    if (!dialog) return;
    swap(&dialog->filterPath, &chosen->folder);
    if (!chosen->names) return;
    swap(&dialog->fileName, &chosen->firstName);
    swap(&dialog->fileNames, &chosen->names);
}

static void keepChosen(const Showing* showing, ErrorRecord* error) {
    const OPENFILENAMEW& request = showing->request;
    UINT length = folderLength(request);
    if (length > request.nMaxFile) length = request.nMaxFile;
    Chosen chosen = {copyOf(request.lpstrFile, length), nullptr, nullptr};
    if (length) chosen.names = copyNames(request, length, showing->several);
    if (chosen.names) chosen.firstName = copyOf(*chosen.names, wcslen(*chosen.names));
    if (isComplete(chosen, length > 0))
        exchange(showing, &chosen);
    else
        failWithoutMemory(error);
    release(chosen);
}

static void begin(Showing* showing, FileDialogRecord* dialog) {
    LeafLock lock;
    showing->dialog = dialog;
    showing->outer = dialog->showing;
    dialog->showing = showing;
}

static void leaveRecord(const Showing* showing) {
    LeafLock lock;
    if (showing->dialog) takeOut<&Showing::outer>(&showing->dialog->showing, showing);
}

static void end(Showing* showing) {
    leaveRecord(showing);
    freeBlock(showing->title);
    freeBlock(showing);
}

bool FileDialog_Open(FileDialogRecord* dialog, ErrorRecord* error) {
    releaseNames(dialog);
    Showing* showing = newShowing(dialog);
    if (!showing) {
        failWithoutMemory(error);
        return false;
    }
    begin(showing, dialog);
    bool chosen = showTitled(showing, dialog->display, error);
    if (chosen) keepChosen(showing, error);
    end(showing);
    return chosen;
}
