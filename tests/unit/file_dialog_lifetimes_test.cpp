// What a person, a listener or another thread does to the toolkit while a file dialog is open.

#include "faults.h"
#include "file_dialog_fixture.h"
#include "leaks.h"
#include <commdlg.h>

class FileDialogLifetimesTest : public FileDialogTest {
  protected:
    std::function<void(HWND)> doing(std::function<void()> work) {
        return [work](HWND) {
            work();
            PostMessageW(nullptr, WM_NULL, 0, 0); // the dialog is idle once more afterwards
        };
    }
};

TEST_F(FileDialogLifetimesTest, a_control_disposed_of_meanwhile_leaves_the_dialog_open) {
    jint dialog = newDialog();
    jint button = newButton(shell);
    EXPECT_TRUE(openWith(
        dialog, {doing([&] { dispose(button); }), tappingEntry(L"a.txt"), tapping(L"OK")}));
    EXPECT_EQ(namesOf(dialog), std::vector<std::u16string>{u"a.txt"});
    dispose(dialog);
}

TEST_F(FileDialogLifetimesTest, a_dialog_disposed_of_meanwhile_keeps_nothing) {
    jint dialog = newDialog();
    set(OS::FileDialog_SetTitle, dialog, u"Choose");
    long blocks = countHeapBlocks() - 3; // the record and its two texts
    EXPECT_TRUE(openWith(
        dialog, {doing([&] { dispose(dialog); }), tappingEntry(L"a.txt"), tapping(L"OK")}));
    EXPECT_EQ(countHeapBlocks(), blocks);
    EXPECT_EQ(textOf(windowOf(shell)), L"Owner");
}

class ModalityTest : public FileDialogLifetimesTest {
  protected:
    static constexpr jint modal = 0x40;

    jint newModalShell() { return call(OS::Shell_NewChild, shell, modal); }
    void show(jint modalShell, bool shown) { call(OS::Control_SetVisible, modalShell, shown); }
    bool isEnabled(jint control) { return IsWindowEnabled(windowOf(control)); }
    static void cancel(HWND dialog) { PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0); }
    void openDuring(std::function<void()> work) {
        jint dialog = newDialog();
        EXPECT_FALSE(openWith(dialog, {doing(std::move(work)), cancel}));
        dispose(dialog);
    }
};

TEST_F(ModalityTest, holds_after_a_dialog_in_which_it_began) {
    jint modalShell = newModalShell();
    openDuring([&] { show(modalShell, true); });
    EXPECT_FALSE(isEnabled(shell));
    EXPECT_TRUE(isEnabled(modalShell));
    show(modalShell, false);
    EXPECT_TRUE(isEnabled(shell));
    dispose(modalShell);
}

TEST_F(ModalityTest, that_ends_leaves_the_owner_of_a_dialog_disabled_until_that_is_closed) {
    jint modalShell = newModalShell();
    openDuring([&] {
        show(modalShell, true);
        show(modalShell, false);
        EXPECT_FALSE(isEnabled(shell));
    });
    EXPECT_TRUE(isEnabled(shell));
    dispose(modalShell);
}

TEST_F(ModalityTest, an_owner_is_enabled_and_disabled_for_the_time_after_its_dialog) {
    for (jboolean wanted : {JNI_FALSE, JNI_TRUE}) {
        openDuring([&] {
            call(OS::Control_SetEnabled, shell, wanted);
            EXPECT_FALSE(isEnabled(shell));
        });
        EXPECT_EQ(isEnabled(shell), wanted == JNI_TRUE);
    }
}

// A system dialog without a person: what it is asked, and what happens while it is open.
static std::vector<OPENFILENAMEW> asked;
static std::function<void()> whileOpen;
static BOOL WINAPI chooseX(OPENFILENAMEW* request) {
    asked.push_back(*request);
    if (whileOpen) std::exchange(whileOpen, nullptr)();
    wcscpy(request->lpstrFile, L"\\x.txt");
    request->nFileOffset = 1;
    return TRUE;
}

class AnsweredDialogTest : public FileDialogLifetimesTest {
  protected:
    AnsweredDialogTest() {
        asked.clear();
        faults.replace("GetOpenFileNameW", reinterpret_cast<void*>(chooseX));
    }
    Faults faults;
};

TEST_F(AnsweredDialogTest, has_no_owner_when_that_was_disposed_of_before) {
    jint other = newShell();
    jint dialog = call(OS::FileDialog_New, other, plain);
    openDialog(dialog);
    HWND window = windowOf(other);
    dispose(other);
    set(OS::FileDialog_SetTitle, dialog, u"Choose");
    EXPECT_TRUE(openDialog(dialog));
    EXPECT_EQ(asked[0].hwndOwner, window);
    EXPECT_EQ(asked[1].hwndOwner, nullptr);
    dispose(dialog);
}

TEST_F(AnsweredDialogTest, opened_once_more_while_it_is_open_leaves_nothing_behind) {
    long blocks = countHeapBlocks();
    jint dialog = call(OS::FileDialog_New, shell, plain);
    whileOpen = [&] { EXPECT_TRUE(openDialog(dialog)); };
    EXPECT_TRUE(openDialog(dialog));
    EXPECT_EQ(asked.size(), 2u);
    EXPECT_EQ(namesOf(dialog), std::vector<std::u16string>{u"x.txt"});
    dispose(dialog);
    EXPECT_EQ(countHeapBlocks(), blocks);
}
