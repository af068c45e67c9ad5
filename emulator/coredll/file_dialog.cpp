// The device's dialogs that ask for a file to open or to save: as large as the work area, with the
// entries of one folder. A tap on a folder's entry and OK, or two taps, lead into it.

#include "emulator.h"
#include "screen.h"
#include "storage.h"
#include <algorithm>
#include <commdlg.h>
#include <vector>

enum Child : int { listId = 100, folderId, upId, nameId };

static constexpr wchar_t refusedCharacters[] = L"<>|\"";

namespace {

struct FileDialog {
    OPENFILENAMEW* request;
    bool saves;
    std::wstring folder; // a path of the device
    HWND window;
    bool delivered;
    DWORD failure; // a system error code
};

struct Entry {
    std::wstring name;
    bool isFolder;
    bool operator<(const Entry& other) const {
        if (isFolder != other.isFolder) return isFolder;
        return lstrcmpiW(name.c_str(), other.name.c_str()) < 0;
    }
};

} // namespace

static HWND childOf(const FileDialog& dialog, int id) { return GetDlgItem(dialog.window, id); }

// In the explorer's style several files can be chosen, unless the device has no such style. The
// desk's flag for several means nothing here.
static bool takesSeveral(const OPENFILENAMEW& request) {
    return (request.Flags & OFN_EXPLORER) && !Emulator_GetVariety()->choosesOneFileOnly;
}

static std::wstring inside(const std::wstring& folder, const std::wstring& name) {
    bool isWhole = !name.empty() && (name[0] == L'\\' || name[0] == L'/');
    return devicePath(isWhole ? name : folder + L'\\' + name);
}

static std::wstring textOf(HWND window) {
    std::wstring text(GetWindowTextLengthW(window) + 1, L'\0');
    text.resize(GetWindowTextW(window, text.data(), static_cast<int>(text.size())));
    return text;
}

// The pattern of the filter that was asked for.
static std::wstring patternOf(const OPENFILENAMEW& request) {
    const wchar_t* filter = request.lpstrFilter;
    if (!filter) return L"*";
    for (DWORD i = 1; i < request.nFilterIndex && *filter; ++i)
        for (int part = 0; part < 2; ++part) filter += wcslen(filter) + 1;
    filter += wcslen(filter) + 1; // its description
    return *filter ? filter : L"*";
}

static void addEntries(std::vector<Entry>* entries, const FileDialog& dialog,
                       const std::wstring& pattern, bool folders) {
    WIN32_FIND_DATAW found;
    HANDLE search = FindFirstFileW((deskPath(dialog.folder) + L'\\' + pattern).c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return;
    do {
        std::wstring name = found.cFileName;
        bool isFolder = found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY;
        if (isFolder == folders && name != L"." && name != L"..")
            entries->push_back({name, isFolder});
    } while (FindNextFileW(search, &found));
    FindClose(search);
}

static void showFolder(const FileDialog& dialog) {
    std::vector<Entry> entries;
    addEntries(&entries, dialog, L"*", true);
    addEntries(&entries, dialog, patternOf(*dialog.request), false);
    std::sort(entries.begin(), entries.end());
    HWND list = childOf(dialog, listId);
    SendMessageW(list, LB_RESETCONTENT, 0, 0);
    for (const Entry& entry : entries) {
        std::wstring text = entry.isFolder ? L'[' + entry.name + L']' : entry.name;
        LRESULT item = SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str()));
        SendMessageW(list, LB_SETITEMDATA, item, entry.isFolder);
    }
    SetWindowTextW(childOf(dialog, folderId), dialog.folder.c_str());
    EnableWindow(childOf(dialog, upId), dialog.folder != L"\\");
}

static void enter(FileDialog* dialog, const std::wstring& folder) {
    dialog->folder = folder;
    showFolder(*dialog);
}

static bool isFolderItem(HWND list, int item) {
    return SendMessageW(list, LB_GETITEMDATA, item, 0) == TRUE;
}

// The name of an item, without a folder's brackets.
static std::wstring nameOf(HWND list, int item) {
    std::wstring text(SendMessageW(list, LB_GETTEXTLEN, item, 0) + 1, L'\0');
    text.resize(SendMessageW(list, LB_GETTEXT, item, reinterpret_cast<LPARAM>(text.data())));
    return isFolderItem(list, item) ? text.substr(1, text.size() - 2) : text;
}

static std::vector<int> selectedItems(HWND list) {
    std::vector<int> items;
    LRESULT count = SendMessageW(list, LB_GETCOUNT, 0, 0);
    for (int i = 0; i < count; ++i)
        if (SendMessageW(list, LB_GETSEL, i, 0) > 0) items.push_back(i);
    return items;
}

static std::wstring join(const std::vector<std::wstring>& names) {
    if (names.size() == 1) return names.front();
    std::wstring all;
    for (const std::wstring& name : names) all += (all.empty() ? L"\"" : L" \"") + name + L'"';
    return all;
}

static std::vector<std::wstring> split(const std::wstring& text) {
    if (text.find(L'"') == std::wstring::npos) return {text};
    std::vector<std::wstring> names;
    for (size_t start = text.find(L'"'); start != std::wstring::npos;
         start = text.find(L'"', start + 1)) {
        size_t end = text.find(L'"', start + 1);
        if (end == std::wstring::npos) break;
        names.push_back(text.substr(start + 1, end - start - 1));
        start = end;
    }
    return names;
}

// Selected files are named; a single folder is what OK leads into.
static void nameSelection(const FileDialog& dialog) {
    HWND list = childOf(dialog, listId);
    std::vector<std::wstring> names;
    std::vector<int> items = selectedItems(list);
    for (int item : items)
        if (items.size() == 1 || !isFolderItem(list, item)) names.push_back(nameOf(list, item));
    if (!names.empty()) SetWindowTextW(childOf(dialog, nameId), join(names).c_str());
}

// The folder first, then the names; a single file as its whole path.
static std::wstring describe(const FileDialog& dialog, const std::vector<std::wstring>& names) {
    if (names.size() == 1) return inside(dialog.folder, names.front()) + L'\0';
    std::wstring all = dialog.folder + L'\0';
    for (const std::wstring& name : names) all += name + L'\0';
    return all;
}

static void deliver(FileDialog* dialog, const std::vector<std::wstring>& names) {
    OPENFILENAMEW& request = *dialog->request;
    std::wstring files = describe(*dialog, names);
    if (files.size() + 1 > request.nMaxFile) {
        dialog->failure = ERROR_INSUFFICIENT_BUFFER;
        EndDialog(dialog->window, FALSE);
        return;
    }
    std::copy(files.begin(), files.end(), request.lpstrFile);
    request.lpstrFile[files.size()] = L'\0'; // the second one
    size_t folder = names.size() == 1 ? files.rfind(L'\\') + 1 : dialog->folder.size() + 1;
    request.nFileOffset = static_cast<WORD>(folder);
    size_t dot = files.rfind(L'.');
    bool hasExtension = dot != std::wstring::npos && dot > folder;
    request.nFileExtension = hasExtension ? static_cast<WORD>(dot + 1) : 0;
    dialog->delivered = true;
    EndDialog(dialog->window, TRUE);
}

static bool isRefused(const std::wstring& name) {
    return name.empty() || name.find_first_of(refusedCharacters) != std::wstring::npos;
}

static void accept(FileDialog* dialog) {
    HWND field = childOf(*dialog, nameId);
    std::vector<std::wstring> names = split(textOf(field));
    if (!takesSeveral(*dialog->request) && names.size() > 1) names.resize(1);
    if (names.empty() || std::any_of(names.begin(), names.end(), isRefused)) {
        MessageBeep(MB_ICONWARNING);
        return;
    }
    std::wstring path = inside(dialog->folder, names.front());
    if (names.size() == 1 && isFolder(path)) {
        SetWindowTextW(field, L"");
        enter(dialog, path);
        return;
    }
    deliver(dialog, names);
}

static std::wstring firstFolder(const OPENFILENAMEW& request) {
    if (request.lpstrInitialDir && *request.lpstrInitialDir) {
        std::wstring folder = devicePath(request.lpstrInitialDir);
        if (isFolder(folder)) return folder;
    }
    return isFolder(documentsFolder) ? documentsFolder : L"\\";
}

static void addChild(HWND window, const wchar_t* className, const wchar_t* text, DWORD style,
                     int id, const RECT& place) {
    HWND child =
        CreateWindowExW(0, className, text, WS_CHILD | WS_VISIBLE | style, place.left, place.top,
                        place.right - place.left, place.bottom - place.top, window,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
    SendMessageW(child, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(SYSTEM_FONT)), FALSE);
}

static void addChildren(const FileDialog& dialog) {
    constexpr int row = 22, gap = 3, buttonWidth = 64, labelWidth = 46;
    HWND window = dialog.window;
    RECT client;
    GetClientRect(window, &client);
    LONG right = client.right - gap;
    LONG buttons = client.bottom - gap - row;
    LONG name = buttons - gap - row;
    DWORD several = takesSeveral(*dialog.request) ? LBS_MULTIPLESEL : 0;
    addChild(window, L"STATIC", L"Name:", SS_CENTERIMAGE, -1,
             {gap, name, gap + labelWidth, name + row});
    addChild(window, L"EDIT", L"", WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL, nameId,
             {gap + labelWidth, name, right, name + row});
    addChild(window, L"BUTTON", L"OK", WS_TABSTOP | BS_DEFPUSHBUTTON, IDOK,
             {right - 2 * buttonWidth - gap, buttons, right - buttonWidth - gap, buttons + row});
    addChild(window, L"BUTTON", L"Cancel", WS_TABSTOP, IDCANCEL,
             {right - buttonWidth, buttons, right, buttons + row});
    addChild(window, L"STATIC", L"", SS_CENTERIMAGE | SS_NOPREFIX, folderId,
             {gap, gap, right - buttonWidth - gap, gap + row});
    addChild(window, L"BUTTON", L"Up", WS_TABSTOP, upId,
             {right - buttonWidth, gap, right, gap + row});
    addChild(window, L"LISTBOX", L"",
             WS_BORDER | WS_VSCROLL | WS_TABSTOP | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT | several,
             listId, {gap, 2 * gap + row, right, name - gap});
}

static void start(FileDialog* dialog) {
    const OPENFILENAMEW& request = *dialog->request;
    const wchar_t* title = dialog->saves ? L"Save As" : L"Open";
    SetWindowTextW(dialog->window, request.lpstrTitle ? request.lpstrTitle : title);
    RECT work = workArea();
    SetWindowPos(dialog->window, nullptr, work.left, work.top, work.right - work.left,
                 work.bottom - work.top, SWP_NOZORDER | SWP_NOACTIVATE);
    addChildren(*dialog);
    enter(dialog, firstFolder(request));
    HWND name = childOf(*dialog, nameId);
    SetWindowTextW(name, request.lpstrFile);
    SendMessageW(name, EM_SETSEL, 0, -1);
    SetFocus(name);
}

static void command(FileDialog* dialog, int id, int notification) {
    switch (id) {
    case listId:
        if (notification == LBN_SELCHANGE) nameSelection(*dialog);
        if (notification == LBN_DBLCLK) accept(dialog);
        return;
    case upId:
        enter(dialog, inside(dialog->folder, L".."));
        return;
    case IDOK:
        accept(dialog);
        return;
    case IDCANCEL:
        EndDialog(dialog->window, FALSE);
        return;
    }
}

static INT_PTR CALLBACK dialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        SetWindowLongW(window, DWL_USER, lParam);
        auto* dialog = reinterpret_cast<FileDialog*>(lParam);
        dialog->window = window;
        start(dialog);
        return FALSE; // the focus is set
    }
    if (message != WM_COMMAND) return FALSE;
    command(reinterpret_cast<FileDialog*>(GetWindowLongW(window, DWL_USER)), LOWORD(wParam),
            HIWORD(wParam));
    return TRUE;
}

static bool isValid(const OPENFILENAMEW& request) {
    const DWORD deviceSize = OPENFILENAME_SIZE_VERSION_400;
    return request.lStructSize == deviceSize && request.lpstrFile && request.nMaxFile &&
           std::wstring(request.lpstrFile).find_first_of(refusedCharacters) == std::wstring::npos;
}

static BOOL run(OPENFILENAMEW* request, bool saves) {
    if (!request || !isValid(*request)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    struct {
        DLGTEMPLATE head;
        WORD menu, windowClass, title;
    } const dialogTemplate = {{WS_POPUP | WS_CAPTION | DS_MODALFRAME, 0, 0, 0, 0, 0, 0}, 0, 0, 0};
    FileDialog dialog = {request, saves, {}, nullptr, false, ERROR_SUCCESS};
    // Its result says nothing: a dialog that a quit message ends answers as if it were accepted.
    DialogBoxIndirectParamW(GetModuleHandleW(nullptr), &dialogTemplate.head, request->hwndOwner,
                            dialogProc, reinterpret_cast<LPARAM>(&dialog));
    SetLastError(dialog.failure);
    return dialog.delivered;
}

extern "C" {

BOOL WINAPI Device_GetOpenFileNameW(OPENFILENAMEW* request) { return run(request, false); }

BOOL WINAPI Device_GetSaveFileNameW(OPENFILENAMEW* request) { return run(request, true); }
}
