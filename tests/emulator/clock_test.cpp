#include "recorder.h"
#include <functional>
#include <thread>

class ClockTest : public RecorderTest {
  protected:
    static constexpr UINT_PTR timer = 5, deskTimer = 0xDE5C;

    ClockTest() {
        forgetReceived();
        Emulator_StopClock();
    }

    ~ClockTest() override { Emulator_RunClock(); }

    template <class Function>
    static Function* ofDesk(const char* name) {
        return reinterpret_cast<Function*>(
            reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), name)));
    }

    // Returns when the desk's own timer has come, which is asked for last and so comes last.
    void dispatchUntilQuiet(UINT milliseconds = 30) {
        ofDesk<decltype(SetTimer)>("SetTimer")(window, deskTimer, milliseconds, nullptr);
        MSG message = {};
        while (message.message != WM_TIMER || message.wParam != deskTimer) {
            GetMessageW(&message, nullptr, 0, 0);
            DispatchMessageW(&message);
        }
        ofDesk<decltype(KillTimer)>("KillTimer")(window, deskTimer);
    }

    // Of the timers of the device that came.
    std::vector<UINT_PTR> ticks() {
        dispatchUntilQuiet();
        std::vector<UINT_PTR> ids;
        for (const Recorded& one : received(WM_TIMER))
            if (one.wParam != deskTimer) ids.push_back(one.wParam);
        forgetReceived();
        return ids;
    }

    HWND window = newShownWindow({20, 20, 220, 220});
};

using Ids = std::vector<UINT_PTR>;

TEST_F(ClockTest, stands_still_but_for_what_is_let_pass) {
    DWORD tick = GetTickCount();
    dispatchUntilQuiet();
    EXPECT_EQ(GetTickCount(), tick);
    EXPECT_TRUE(Emulator_PassTime(600'000));
    EXPECT_EQ(GetTickCount(), tick + 600'000);
    EXPECT_EQ(static_cast<DWORD>(Emulator_GetTime()), GetTickCount());
}

TEST_F(ClockTest, goes_on_from_where_it_stood) {
    Emulator_PassTime(3'600'000);
    LONGLONG stood = Emulator_GetTime();
    Emulator_RunClock();
    EXPECT_GE(Emulator_GetTime(), stood);
    EXPECT_LT(Emulator_GetTime(), stood + 3'600'000);
    while (Emulator_GetTime() == stood) {
    }
    EXPECT_FALSE(Emulator_PassTime(1));
}

TEST_F(ClockTest, lets_a_timer_come_when_its_time_has_passed) {
    ASSERT_EQ(SetTimer(window, timer, 10, nullptr), timer);
    EXPECT_EQ(ticks(), Ids());
    Emulator_PassTime(9);
    EXPECT_EQ(ticks(), Ids());
    Emulator_PassTime(1);
    EXPECT_EQ(ticks(), Ids({timer}));
    Emulator_PassTime(9);
    EXPECT_EQ(ticks(), Ids());
    Emulator_PassTime(1);
    EXPECT_EQ(ticks(), Ids({timer}));
    Emulator_PassTime(35);
    EXPECT_EQ(ticks(), Ids({timer}));
    Emulator_PassTime(5);
    EXPECT_EQ(ticks(), Ids({timer}));
}

TEST_F(ClockTest, holds_a_timer_that_ran) {
    Emulator_RunClock();
    SetTimer(window, timer, 10, nullptr);
    Emulator_StopClock();
    EXPECT_EQ(ticks(), Ids());
    Emulator_PassTime(10);
    EXPECT_EQ(ticks(), Ids({timer}));
}

TEST_F(ClockTest, lets_a_timer_run_again) {
    SetTimer(window, timer, 10, nullptr);
    Emulator_RunClock();
    MSG message = {};
    for (int times = 0; times < 3; ++times) {
        do {
            GetMessageW(&message, nullptr, 0, 0);
            DispatchMessageW(&message);
        } while (message.message != WM_TIMER);
    }
    EXPECT_EQ(message.lParam, 0);
    EXPECT_GE(received(WM_TIMER).size(), 3u);
}

TEST_F(ClockTest, knows_when_something_is_due) {
    EXPECT_EQ(Emulator_GetNextDue(), MAXLONGLONG);
    SetTimer(window, timer, 500, nullptr);
    SetTimer(window, timer + 1, 70, nullptr);
    LONGLONG now = Emulator_GetTime();
    EXPECT_EQ(Emulator_GetNextDue(), now + 70);
    Emulator_PassTime(70);
    EXPECT_EQ(Emulator_GetNextDue(), now + 140);
    EXPECT_TRUE(KillTimer(window, timer + 1));
    EXPECT_EQ(Emulator_GetNextDue(), now + 500);
    SetTimer(window, timer, 600, nullptr); // anew
    EXPECT_EQ(Emulator_GetNextDue(), now + 670);
    Emulator_PassTime(2000);
    EXPECT_EQ(Emulator_GetNextDue(), now + 2470); // what is late is not made up for
    DestroyWindow(window);
    EXPECT_EQ(Emulator_GetNextDue(), MAXLONGLONG);
}

TEST_F(ClockTest, lets_a_timer_be_killed_before_and_after_it_was_due) {
    SetTimer(window, timer, 10, nullptr);
    EXPECT_TRUE(KillTimer(window, timer));
    SetTimer(window, timer, 10, nullptr);
    Emulator_PassTime(10);
    EXPECT_TRUE(KillTimer(window, timer));
    EXPECT_FALSE(KillTimer(window, timer));
    EXPECT_EQ(ticks(), Ids());
    Emulator_PassTime(10);
    EXPECT_EQ(ticks(), Ids());
}

TEST_F(ClockTest, refuses_a_timer_of_no_window) {
    EXPECT_EQ(SetTimer(reinterpret_cast<HWND>(0x1234), timer, 10, nullptr), 0u);
    EXPECT_EQ(Emulator_GetNextDue(), MAXLONGLONG);
}

TEST_F(ClockTest, lets_a_timer_come_after_all_else) {
    SetTimer(window, timer, 10, nullptr);
    Emulator_PassTime(10);
    dispatchUntilQuiet(1); // until it is there
    forgetReceived();
    Emulator_PassTime(10);
    std::vector<UINT> order;
    bool posts = true;
    MSG message = {};
    while (message.message != WM_TIMER) {
        if (posts) PostMessageW(window, WM_APP, 0, 0);
        GetMessageW(&message, nullptr, 0, 0);
        // A thread that has something to do for long gets it then only.
        posts = order.size() < 2000;
        order.push_back(message.message);
    }
    EXPECT_GT(order.size(), 2000u);
}

static DWORD tickOfWork;

static void CALLBACK noteTick(HWND, UINT, UINT_PTR, DWORD tick) { tickOfWork = tick; }

TEST_F(ClockTest, calls_a_timers_procedure_at_its_time) {
    tickOfWork = 0;
    SetTimer(window, timer, 1000, noteTick);
    DWORD tick = GetTickCount();
    Emulator_PassTime(1000);
    EXPECT_EQ(ticks(), Ids());
    EXPECT_EQ(tickOfWork, tick + 1000);
}

TEST_F(ClockTest, tells_double_taps_by_its_time) {
    tap(100, 100);
    tap(100, 100);
    EXPECT_EQ(received(WM_LBUTTONDBLCLK).size(), 1u);
    EXPECT_EQ(static_cast<DWORD>(GetMessageTime()), GetTickCount());
    forgetReceived();
    Emulator_PassTime(10'000);
    tap(100, 100);
    Emulator_PassTime(GetDoubleClickTime() + 1);
    tap(100, 100);
    EXPECT_EQ(received(WM_LBUTTONDBLCLK).size(), 0u);
    EXPECT_EQ(received(WM_LBUTTONDOWN).size(), 2u);
}

TEST_F(ClockTest, ends_a_wait_at_its_time) {
    LONGLONG ended = 0;
    DWORD result = 0;
    LONGLONG start = Emulator_GetTime();
    std::thread waiter([&] {
        result = MsgWaitForMultipleObjectsEx(0, nullptr, 500, QS_ALLINPUT & 0x7F, 0);
        ended = Emulator_GetTime();
    });
    WaitForSingleObject(Emulator_GetRestEvent(), INFINITE);
    EXPECT_EQ(Emulator_GetNextDue(), start + 500);
    Emulator_PassTime(499);
    WaitForSingleObject(Emulator_GetRestEvent(), INFINITE);
    Emulator_PassTime(1);
    waiter.join();
    EXPECT_EQ(result, DWORD(WAIT_TIMEOUT));
    EXPECT_EQ(ended, start + 500);
    EXPECT_EQ(Emulator_GetNextDue(), MAXLONGLONG);
    EXPECT_EQ(WaitForSingleObject(Emulator_GetRestEvent(), 0), DWORD(WAIT_TIMEOUT));
}

TEST_F(ClockTest, lets_a_wait_end_by_what_it_waits_for) {
    HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    HANDLE hasEnded = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    DWORD id = 0, byEvent = 0, byMessage = 0;
    std::thread waiter([&] {
        id = GetCurrentThreadId();
        byEvent = MsgWaitForMultipleObjectsEx(1, &event, 500, 0x7F, 0);
        SetEvent(hasEnded);
        byMessage = MsgWaitForMultipleObjectsEx(1, &event, 500, 0x7F, 0);
    });
    WaitForSingleObject(Emulator_GetRestEvent(), INFINITE);
    SetEvent(event);
    WaitForSingleObject(hasEnded, INFINITE);
    WaitForSingleObject(Emulator_GetRestEvent(), INFINITE);
    PostThreadMessageW(id, WM_NULL, 0, 0);
    waiter.join();
    EXPECT_EQ(byEvent, DWORD(WAIT_OBJECT_0));
    EXPECT_EQ(byMessage, DWORD(WAIT_OBJECT_0 + 1));
    CloseHandle(event);
    CloseHandle(hasEnded);
}

TEST_F(ClockTest, decides_on_tap_and_hold) {
    movePointer(100, 100);
    press();
    std::thread person([] {
        WaitForSingleObject(Emulator_GetRestEvent(), INFINITE);
        Emulator_PassTime(500);
    });
    SHRGINFO request = {sizeof(request), window, {80, 80}, SHRG_RETURNCMD};
    EXPECT_EQ(SHRecognizeGesture(&request), DWORD(GN_CONTEXTMENU));
    person.join();
    release();
    press();
    std::thread other([] {
        WaitForSingleObject(Emulator_GetRestEvent(), INFINITE);
        Emulator_PassTime(499);
        WaitForSingleObject(Emulator_GetRestEvent(), INFINITE);
        release();
    });
    EXPECT_EQ(SHRecognizeGesture(&request), 0u);
    other.join();
}

TEST_F(ClockTest, keeps_a_caret_as_it_is) {
    CreateCaret(window, nullptr, 4, 10);
    SetCaretPos(50, 50);
    ShowCaret(window);
    DWORD shown = pixel(71, 71);
    DWORD around = pixel(81, 71);
    EXPECT_NE(shown, around);
    dispatchUntilQuiet(GetCaretBlinkTime() + 100);
    EXPECT_EQ(pixel(71, 71), shown);
    Emulator_RunClock();
    while (pixel(71, 71) == shown) dispatchUntilQuiet(1);
    DestroyCaret();
}
