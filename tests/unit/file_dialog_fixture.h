#pragma once
// A person at the device's file dialogs, in a folder of a few files.

#include "device.h"
#include "widgets/file_dialog.h"
#include <algorithm>

constexpr jint plain = 0, save = 0x2000, several = 0x800000;

// A person at a dialog: each time it has nothing more to do and waits for input, the next step.
struct Person {
    std::vector<std::function<void(HWND dialog)>> steps;
    size_t next = 0;
    WNDPROC ownerProc = nullptr;
};
inline Person person;

inline LRESULT CALLBACK watchOwner(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_ENTERIDLE && wParam == MSGF_DIALOGBOX) {
        HWND dialog = reinterpret_cast<HWND>(lParam);
        if (person.next < person.steps.size()) {
            person.steps[person.next++](dialog);
        } else {
            ADD_FAILURE() << "the dialog is still open";
            PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
        }
    }
    return CallWindowProcW(person.ownerProc, window, message, wParam, lParam);
}

inline std::wstring textOf(HWND window) {
    std::wstring text(GetWindowTextLengthW(window) + 1, L'\0');
    text.resize(GetWindowTextW(window, text.data(), static_cast<int>(text.size())));
    return text;
}

class FileDialogTest : public DeviceTest {
  protected:
    FileDialogTest() {
        for (const wchar_t* path : {L"", L"\\sub"}) CreateDirectoryW(onDesk(path).c_str(), nullptr);
        for (const wchar_t* path : {L"\\a.txt", L"\\b.txt", L"\\x.txt", L"\\sub\\deep.txt"})
            CloseHandle(CreateFileW(onDesk(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    0, nullptr));
        SetWindowTextW(windowOf(shell), L"Owner");
        person = {};
        person.ownerProc = reinterpret_cast<WNDPROC>(
            SetWindowLongW(windowOf(shell), GWL_WNDPROC, reinterpret_cast<LONG>(watchOwner)));
    }
    ~FileDialogTest() override {
        EXPECT_EQ(person.next, person.steps.size()) << "steps were left";
        SetWindowLongW(windowOf(shell), GWL_WNDPROC, reinterpret_cast<LONG>(person.ownerProc));
        for (const wchar_t* path : {L"\\a.txt", L"\\b.txt", L"\\x.txt", L"\\sub\\deep.txt"})
            DeleteFileW(onDesk(path).c_str());
        for (const wchar_t* path : {L"\\sub", L""}) RemoveDirectoryW(onDesk(path).c_str());
    }

    // Where the desk has the test's files.
    static std::wstring onDesk(const std::wstring& path) {
        using GetDeskPath = BOOL(WINAPI*)(LPCWSTR, LPWSTR);
        theLibrary();
        auto* getDeskPath = reinterpret_cast<GetDeskPath>(reinterpret_cast<void*>(
            GetProcAddress(GetModuleHandleW(L"coredll.dll"), "Emulator_GetDeskPath")));
        wchar_t found[MAX_PATH];
        EXPECT_TRUE(getDeskPath((L"\\My Documents\\dialog test" + path).c_str(), found));
        return found;
    }
    static constexpr char16_t folder[] = u"\\My Documents\\dialog test";

    jint newDialog(jint style = plain, const std::u16string& startFolder = folder) {
        jint dialog = call(OS::FileDialog_New, shell, style);
        setPath(dialog, startFolder);
        return dialog;
    }
    void set(const Native<void(jint, jstring)>& property, jint dialog, const std::u16string& text) {
        call(property, dialog, vm.newString(text));
    }
    void setPath(jint dialog, const std::u16string& path) {
        set(OS::FileDialog_SetFilterPath, dialog, path);
    }
    void setName(jint dialog, const std::u16string& name) {
        set(OS::FileDialog_SetFileName, dialog, name);
    }
    bool openDialog(jint dialog) { return call(OS::FileDialog_Open, dialog); }
    bool openWith(jint dialog, std::vector<std::function<void(HWND)>> steps) {
        person.steps = std::move(steps);
        person.next = 0;
        return openDialog(dialog);
    }
    std::u16string pathOf(jint dialog) {
        return vm.text(call(OS::FileDialog_GetFilterPath, dialog));
    }
    std::vector<std::u16string> namesOf(jint dialog) {
        return vm.texts(call(OS::FileDialog_GetFileNames, dialog));
    }
    static FileDialogRecord* record(jint dialog) {
        return reinterpret_cast<FileDialogRecord*>(dialog);
    }

    // The dialog's parts, as a person sees them.
    static HWND part(HWND dialog, const wchar_t* className, const wchar_t* text = nullptr) {
        HWND found = FindWindowExW(dialog, nullptr, className, text);
        EXPECT_NE(found, nullptr) << "the dialog has no such part";
        return found;
    }
    static HWND nameField(HWND dialog) { return part(dialog, L"Edit"); }
    static HWND entries(HWND dialog) { return part(dialog, L"ListBox"); }
    static std::vector<std::wstring> shownEntries(HWND dialog) {
        HWND list = entries(dialog);
        std::vector<std::wstring> found;
        for (int i = 0; i < SendMessageW(list, LB_GETCOUNT, 0, 0); ++i) {
            wchar_t text[MAX_PATH];
            SendMessageW(list, LB_GETTEXT, i, reinterpret_cast<LPARAM>(text));
            found.push_back(text);
        }
        return found;
    }

    // What the person does there. Nothing is dispatched: the dialog sees to that.
    void tapOn(HWND window, POINT point) {
        ClientToScreen(window, &point);
        call(OS::Display_PostPointerMoveEvent, display, point.x, point.y);
        for (PointerType type : {pointerPress, pointerRelease})
            call(OS::Display_PostPointerEvent, display, type, buttonLeft);
    }
    void tapButton(HWND dialog, const wchar_t* text) {
        HWND button = part(dialog, L"Button", text);
        RECT client;
        GetClientRect(button, &client);
        tapOn(button, {client.right / 2, client.bottom / 2});
    }
    void tapEntry(HWND dialog, const std::wstring& text) {
        std::vector<std::wstring> shown = shownEntries(dialog);
        auto index = std::find(shown.begin(), shown.end(), text) - shown.begin();
        RECT place;
        SendMessageW(entries(dialog), LB_GETITEMRECT, index, reinterpret_cast<LPARAM>(&place));
        tapOn(entries(dialog), {20, (place.top + place.bottom) / 2});
    }
    static void typeKeys(const std::wstring& text) {
        auto press = [](WORD key, DWORD flags) {
            INPUT input = {};
            input.type = INPUT_KEYBOARD;
            input.ki.wVk = key;
            input.ki.dwFlags = flags;
            SendInput(1, &input, sizeof(input));
        };
        for (wchar_t character : text) {
            SHORT key = VkKeyScanW(character);
            bool shifted = HIBYTE(key) & 1;
            if (shifted) press(VK_SHIFT, 0);
            press(LOBYTE(key), 0);
            press(LOBYTE(key), KEYEVENTF_KEYUP);
            if (shifted) press(VK_SHIFT, KEYEVENTF_KEYUP);
        }
    }
    std::function<void(HWND)> tapping(const wchar_t* button) {
        return [=, this](HWND dialog) { tapButton(dialog, button); };
    }
    std::function<void(HWND)> tappingEntry(const wchar_t* entry) {
        return [=, this](HWND dialog) { tapEntry(dialog, entry); };
    }
    static std::function<void(HWND)> typing(const std::wstring& text) {
        return [=](HWND) { typeKeys(text); };
    }

    jint shell = newShell();
};
