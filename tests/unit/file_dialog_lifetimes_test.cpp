// What a person, a listener or another thread does to the toolkit while a file dialog is open.

#include "file_dialog_fixture.h"

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
