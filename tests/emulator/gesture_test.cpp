#include "recorder.h"

class GestureTest : public RecorderTest {
  protected:
    // Of a press at a place of the screen.
    static DWORD recognize(HWND window, int x, int y, DWORD flags = SHRG_RETURNCMD) {
        SHRGINFO request = {sizeof(request), window, {x, y}, flags};
        ScreenToClient(window, &request.ptDown);
        return SHRecognizeGesture(&request);
    }

    static DWORD WINAPI lift(LPVOID) {
        release();
        return 0;
    }

    HWND window = newShownWindow({20, 20, 220, 220});
};

TEST_F(GestureTest, is_the_context_menu_when_the_pointer_is_held_still) {
    movePointer(100, 100);
    press();
    EXPECT_EQ(recognize(window, 100, 100), DWORD(GN_CONTEXTMENU));
    release();
}

TEST_F(GestureTest, is_none_when_the_pointer_is_up) {
    movePointer(100, 100);
    EXPECT_EQ(recognize(window, 100, 100), 0u);
}

TEST_F(GestureTest, is_none_when_the_pointer_is_lifted_while_it_is_watched) {
    movePointer(100, 100);
    press();
    HANDLE lifter = CreateThread(nullptr, 0, lift, nullptr, 0, nullptr);
    EXPECT_EQ(recognize(window, 100, 100), 0u);
    WaitForSingleObject(lifter, INFINITE);
    CloseHandle(lifter);
}

TEST_F(GestureTest, is_none_when_the_pointer_has_moved_away) {
    movePointer(100, 100);
    press();
    movePointer(107, 100);
    EXPECT_EQ(recognize(window, 100, 100), 0u);
    release();
}

TEST_F(GestureTest, forgives_a_trembling_hand) {
    movePointer(103, 97);
    press();
    EXPECT_EQ(recognize(window, 100, 100), DWORD(GN_CONTEXTMENU));
    release();
}

TEST_F(GestureTest, is_what_a_test_wants_once) {
    Emulator_AnswerNextGesture(GN_CONTEXTMENU);
    EXPECT_EQ(recognize(window, 100, 100), DWORD(GN_CONTEXTMENU));
    EXPECT_EQ(recognize(window, 100, 100), 0u);
}

TEST_F(GestureTest, is_refused_to_who_wants_no_answer) {
    Emulator_AnswerNextGesture(GN_CONTEXTMENU);
    SetLastError(0);
    EXPECT_EQ(recognize(window, 100, 100, 0), 0u);
    EXPECT_EQ(GetLastError(), DWORD(ERROR_INVALID_PARAMETER));
    DWORD waiting;
    EXPECT_TRUE(Emulator_TakeGestureAnswer(&waiting));
}
