// The device's files, and what its file dialogs refuse before they are shown.

#include "recorder.h"
#include <commdlg.h>
#include <string>

class StorageTest : public RecorderTest {
  protected:
    static std::wstring onDesk(const wchar_t* path) {
        wchar_t found[MAX_PATH];
        EXPECT_TRUE(Emulator_GetDeskPath(path, found));
        return found;
    }
    static HANDLE create(const wchar_t* path, DWORD disposition) {
        return CreateFileW(path, GENERIC_READ | GENERIC_WRITE, 0, nullptr, disposition, 0, nullptr);
    }
};

TEST_F(StorageTest, paths_of_the_device_lie_in_its_folder) {
    std::wstring root = onDesk(L"\\");
    root.pop_back();
    EXPECT_EQ(onDesk(L"\\My Documents\\x.txt"), root + L"\\My Documents\\x.txt");
    EXPECT_EQ(onDesk(L"\\a/b\\.\\c\\..\\d\\"), root + L"\\a\\b\\d");
    EXPECT_EQ(onDesk(L"\\..\\..\\x"), root + L"\\x") << "nothing lies above the root";
}

TEST_F(StorageTest, paths_of_the_desk_stay_what_they_are) {
    for (const wchar_t* path : {L"Z:\\tmp\\..\\x", L"relative", L"\\\\server\\share", L""})
        EXPECT_EQ(onDesk(path), path);
}

TEST_F(StorageTest, a_path_that_is_too_long_is_refused) {
    wchar_t found[MAX_PATH];
    EXPECT_FALSE(Emulator_GetDeskPath((L"\\" + std::wstring(MAX_PATH, L'm')).c_str(), found));
}

TEST_F(StorageTest, files_of_the_device_are_made_and_read_there) {
    constexpr wchar_t path[] = L"\\My Documents\\storage test.txt";
    HANDLE file = create(path, CREATE_ALWAYS);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    CloseHandle(file);
    EXPECT_NE(GetFileAttributesW(onDesk(path).c_str()), INVALID_FILE_ATTRIBUTES);
    file = create(path, OPEN_EXISTING);
    EXPECT_NE(file, INVALID_HANDLE_VALUE);
    CloseHandle(file);
    EXPECT_TRUE(DeleteFileW(onDesk(path).c_str()));
    EXPECT_EQ(create(path, OPEN_EXISTING), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_FILE_NOT_FOUND));
}

TEST_F(StorageTest, a_file_dialog_refuses_what_it_cannot_use) {
    wchar_t name[MAX_PATH] = L"a<b";
    OPENFILENAMEW request = {};
    request.lStructSize = 76;
    request.lpstrFile = name;
    request.nMaxFile = MAX_PATH;
    auto expectRefused = [&] {
        for (auto* ask : {GetOpenFileNameW, GetSaveFileNameW}) {
            SetLastError(ERROR_SUCCESS);
            EXPECT_FALSE(ask(&request));
            EXPECT_EQ(GetLastError(), DWORD(ERROR_INVALID_PARAMETER));
        }
    };
    expectRefused();
    wcscpy(name, L"a");
    request.lStructSize = 75;
    expectRefused();
    request.lStructSize = 76;
    request.nMaxFile = 0;
    expectRefused();
    request.nMaxFile = MAX_PATH;
    request.lpstrFile = nullptr;
    expectRefused();
    EXPECT_FALSE(GetOpenFileNameW(nullptr));
}

TEST_F(StorageTest, a_file_dialog_that_the_end_of_its_thread_closes_has_chosen_nothing) {
    wchar_t name[MAX_PATH] = L"a";
    OPENFILENAMEW request = {};
    request.lStructSize = 76;
    request.lpstrFile = name;
    request.nMaxFile = MAX_PATH;
    PostQuitMessage(0);
    EXPECT_FALSE(GetOpenFileNameW(&request));
    EXPECT_STREQ(name, L"a");
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    }
}

// A person who types a name as soon as the dialog waits for it.
static LRESULT CALLBACK typeName(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_ENTERIDLE)
        for (WORD key : {WORD('A'), WORD(VK_RETURN)})
            for (DWORD flags : {DWORD(0), DWORD(KEYEVENTF_KEYUP)})
                keybd_event(static_cast<BYTE>(key), 0, flags, 0);
    return DefWindowProcW(window, message, wParam, lParam);
}

TEST_F(StorageTest, a_file_dialog_fails_when_the_path_does_not_fit) {
    HWND owner = newShownWindow(wholeScreen);
    SetWindowLongW(owner, GWL_WNDPROC, reinterpret_cast<LONG>(typeName));
    wchar_t name[20] = L"";
    OPENFILENAMEW request = {};
    request.lStructSize = 76;
    request.hwndOwner = owner;
    request.lpstrFile = name;
    auto ask = [&](DWORD capacity) {
        name[0] = L'\0';
        request.nMaxFile = capacity;
        SetLastError(ERROR_SUCCESS);
        return GetOpenFileNameW(&request);
    };
    EXPECT_FALSE(ask(16));
    EXPECT_EQ(GetLastError(), DWORD(ERROR_INSUFFICIENT_BUFFER));
    EXPECT_TRUE(ask(17));
    EXPECT_STREQ(name, L"\\My Documents\\a");
    EXPECT_EQ(request.nFileOffset, 14);
    EXPECT_EQ(request.nFileExtension, 0);
}
