#include "storage.h"
#include "emulator.h"
#include "failures.h"
#include <vector>

static bool isOfDevice(const std::wstring& path) {
    return !path.empty() && path[0] == L'\\' && path.compare(0, 2, L"\\\\") != 0;
}

static std::wstring folderOf(const std::wstring& path) { return path.substr(0, path.rfind(L'\\')); }

// Where the environment says. Else beside the folder of the build in which the libraries lie.
static std::wstring placeOfRoot() {
    HMODULE library;
    wchar_t path[MAX_PATH];
    DWORD length = GetEnvironmentVariableW(L"ZEMVOLT_STORAGE", path, MAX_PATH);
    if (length && length < MAX_PATH) return path;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                           GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(placeOfRoot), &library);
    GetModuleFileNameW(library, path, MAX_PATH);
    return folderOf(folderOf(path)) + L"\\storage";
}

static std::wstring makeRoot() {
    std::wstring root = placeOfRoot();
    CreateDirectoryW(root.c_str(), nullptr);
    CreateDirectoryW((root + documentsFolder).c_str(), nullptr);
    return root;
}

static const std::wstring& root() {
    static const std::wstring made = makeRoot();
    return made;
}

std::wstring devicePath(const std::wstring& path) {
    std::vector<std::wstring> names;
    for (size_t start = 0; start < path.size();) {
        size_t end = path.find_first_of(L"\\/", start);
        if (end == std::wstring::npos) end = path.size();
        std::wstring name = path.substr(start, end - start);
        if (name == L"..") {
            if (!names.empty()) names.pop_back();
        } else if (!name.empty() && name != L".") {
            names.push_back(name);
        }
        start = end + 1;
    }
    std::wstring clean;
    for (const std::wstring& name : names) clean += L'\\' + name;
    return clean.empty() ? L"\\" : clean;
}

std::wstring deskPath(const std::wstring& path) {
    return isOfDevice(path) ? root() + devicePath(path) : path;
}

bool isFolder(const std::wstring& path) {
    DWORD attributes = GetFileAttributesW(deskPath(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

extern "C" {

HANDLE WINAPI Device_CreateFileW(LPCWSTR path, DWORD access, DWORD share,
                                 SECURITY_ATTRIBUTES* security, DWORD disposition, DWORD flags,
                                 HANDLE pattern) {
    if (failsNow(failFile)) {
        SetLastError(ERROR_ACCESS_DENIED);
        return INVALID_HANDLE_VALUE;
    }
    return CreateFileW(path ? deskPath(path).c_str() : nullptr, access, share, security,
                       disposition, flags, pattern);
}

BOOL WINAPI Emulator_GetDeskPath(LPCWSTR path, LPWSTR onDesk) {
    std::wstring found = deskPath(path);
    if (found.size() >= MAX_PATH) return FALSE;
    lstrcpyW(onDesk, found.c_str());
    return TRUE;
}
}
