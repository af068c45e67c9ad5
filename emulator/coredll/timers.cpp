#include "timers.h"
#include "device_clock.h"
#include "exclusive_lock.h"
#include <vector>

namespace {

struct Timer {
    HWND window;
    UINT_PTR id;
    LONGLONG period; // milliseconds
    TIMERPROC work;  // null: the window gets the message
    LONGLONG due;    // once; the others a number of periods before or after
};

} // namespace

static SRWLOCK timersLock = SRWLOCK_INIT;
static std::vector<Timer> timers;

static std::vector<Timer>::iterator find(HWND window, UINT_PTR id) {
    auto timer = timers.begin();
    while (timer != timers.end() && (timer->window != window || timer->id != id)) ++timer;
    return timer;
}

static bool forget(HWND window, UINT_PTR id) {
    auto timer = find(window, id);
    if (timer == timers.end()) return false;
    timers.erase(timer);
    return true;
}

// A window takes its timers along.
static void forgetTimersOfGone() {
    std::erase_if(timers, [](const Timer& timer) { return !IsWindow(timer.window); });
}

// One that is late is not made up for.
static void moveOn(Timer* timer, LONGLONG now) {
    LONGLONG late = now - timer->due;
    if (late >= 0) timer->due += (late / timer->period + 1) * timer->period;
}

static void CALLBACK deliver(HWND window, UINT message, UINT_PTR id, DWORD) {
    TIMERPROC work;
    {
        ExclusiveLock lock(&timersLock);
        KillTimer(window, id);
        auto timer = find(window, id);
        if (timer == timers.end()) return;
        work = timer->work;
        if (!standsClock()) SetTimer(window, id, static_cast<UINT>(timer->period), work);
    }
    if (work)
        work(window, message, id, static_cast<DWORD>(deviceTime()));
    else
        SendMessageW(window, message, id, 0);
}

void holdTimers() {
    ExclusiveLock lock(&timersLock);
    forgetTimersOfGone();
    for (Timer& timer : timers) {
        KillTimer(timer.window, timer.id);
        moveOn(&timer, deviceTime());
    }
}

void resumeTimers() {
    ExclusiveLock lock(&timersLock);
    forgetTimersOfGone();
    for (Timer& timer : timers) {
        moveOn(&timer, deviceTime());
        SetTimer(timer.window, timer.id, static_cast<UINT>(timer.due - deviceTime()), deliver);
    }
}

void deliverDueTimers() {
    ExclusiveLock lock(&timersLock);
    forgetTimersOfGone();
    for (Timer& timer : timers) {
        if (timer.due > deviceTime()) continue;
        SetTimer(timer.window, timer.id, USER_TIMER_MINIMUM, deliver);
        moveOn(&timer, deviceTime());
    }
}

LONGLONG nextDueTimer() {
    ExclusiveLock lock(&timersLock);
    forgetTimersOfGone();
    LONGLONG next = MAXLONGLONG;
    for (const Timer& timer : timers)
        if (timer.due < next) next = timer.due;
    return next;
}

extern "C" {

UINT_PTR WINAPI Device_SetTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC work) {
    if (!window) return SetTimer(nullptr, id, milliseconds, work);
    ExclusiveLock lock(&timersLock);
    UINT_PTR result = SetTimer(window, id, milliseconds, work);
    if (!result) return 0;
    if (standsClock()) KillTimer(window, id);
    forget(window, id);
    LONGLONG period = milliseconds < USER_TIMER_MINIMUM ? USER_TIMER_MINIMUM : milliseconds;
    timers.push_back({window, id, period, work, deviceTime() + period});
    return result;
}

BOOL WINAPI Device_KillTimer(HWND window, UINT_PTR id) {
    ExclusiveLock lock(&timersLock);
    BOOL isKilled = KillTimer(window, id);
    return (window && forget(window, id)) || isKilled;
}

// The caret stays as it was last put while the clock stands; it is drawn by the desk's own timer.
LRESULT WINAPI Device_DispatchMessageW(const MSG* message) {
    constexpr UINT systemTimer = 0x118;
    constexpr WPARAM caretTimer = 0xFFFF;
    bool isOfCaret = message->message == systemTimer && message->wParam == caretTimer;
    return isOfCaret && standsClock() ? 0 : DispatchMessageW(message);
}
}
