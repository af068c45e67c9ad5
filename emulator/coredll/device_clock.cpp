#include "device_clock.h"
#include "emulator.h"
#include "exclusive_lock.h"
#include "timers.h"
#include <vector>

namespace {

struct Clock {
    bool stands;
    LONGLONG standsAt; // while it stands
    LONGLONG ahead;    // of the desk's, while it runs
};

// One thread that waits for a time of the clock.
struct Wait {
    LONGLONG end;
    HANDLE stirred;
    bool rests; // only the clock ends it, which stands
};

} // namespace

static SRWLOCK clockLock = SRWLOCK_INIT;
static Clock clock;
static std::vector<Wait*> waits;

static HANDLE restEvent() {
    static HANDLE event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    return event;
}

static LONGLONG timeNow() {
    return clock.stands ? clock.standsAt : LONGLONG(GetTickCount64()) + clock.ahead;
}

LONGLONG deviceTime() {
    ExclusiveLock lock(&clockLock);
    return timeNow();
}

bool standsClock() {
    ExclusiveLock lock(&clockLock);
    return clock.stands;
}

static void tellWhetherOneRests() {
    for (const Wait* wait : waits) {
        if (!wait->rests) continue;
        SetEvent(restEvent());
        return;
    }
    ResetEvent(restEvent());
}

static void stirAll() {
    for (Wait* wait : waits) {
        wait->rests = false;
        SetEvent(wait->stirred);
    }
    tellWhetherOneRests();
}

void stirWaits() {
    ExclusiveLock lock(&clockLock);
    stirAll();
}

LONGLONG nextEndOfWait() {
    ExclusiveLock lock(&clockLock);
    LONGLONG next = MAXLONGLONG;
    for (const Wait* wait : waits)
        if (wait->end < next) next = wait->end;
    return next;
}

static void begin(Wait* wait, DWORD milliseconds) {
    ExclusiveLock lock(&clockLock);
    wait->end = timeNow() + milliseconds;
    waits.push_back(wait);
}

static void end(Wait* wait) {
    ExclusiveLock lock(&clockLock);
    std::erase(waits, wait);
    tellWhetherOneRests();
}

// How long it sleeps next, milliseconds of the desk's clock; 0: it is over.
static DWORD sleepOf(Wait* wait) {
    ExclusiveLock lock(&clockLock);
    LONGLONG left = wait->end - timeNow();
    if (left <= 0) return 0;
    if (!clock.stands) return static_cast<DWORD>(left);
    wait->rests = true;
    tellWhetherOneRests();
    return INFINITE;
}

DWORD waitOnClock(DWORD count, const HANDLE* objects, DWORD milliseconds, DWORD input,
                  DWORD flags) {
    constexpr DWORD mostObjects = MAXIMUM_WAIT_OBJECTS - 2; // beside input and what stirs
    if (!milliseconds || milliseconds == INFINITE || count > mostObjects)
        return MsgWaitForMultipleObjectsEx(count, objects, milliseconds, input, flags);
    std::vector<HANDLE> handles(objects, objects + count);
    Wait wait = {0, CreateEventW(nullptr, FALSE, FALSE, nullptr), false};
    handles.push_back(wait.stirred);
    begin(&wait, milliseconds);
    const DWORD stirred = WAIT_OBJECT_0 + count, inputCame = stirred + 1;
    DWORD ready, sleep = 0; // what has come already must be seen before it rests
    do {
        ready = MsgWaitForMultipleObjectsEx(count + 1, handles.data(), sleep, input, flags);
        sleep = ready == WAIT_TIMEOUT ? sleepOf(&wait) : 0;
    } while (ready == stirred || (ready == WAIT_TIMEOUT && sleep));
    end(&wait);
    CloseHandle(wait.stirred);
    return ready == inputCame ? stirred : ready;
}

extern "C" {

LONGLONG WINAPI Emulator_GetTime() { return deviceTime(); }

DWORD WINAPI Emulator_AwaitInput(DWORD milliseconds, DWORD kinds) {
    return waitOnClock(0, nullptr, milliseconds, kinds, 0);
}

HANDLE WINAPI Emulator_GetRestEvent() { return restEvent(); }

void WINAPI Emulator_StopClock() {
    {
        ExclusiveLock lock(&clockLock);
        clock = {true, timeNow(), 0};
        stirAll();
    }
    holdTimers();
}

void WINAPI Emulator_RunClock() {
    {
        ExclusiveLock lock(&clockLock);
        if (!clock.stands) return;
        clock = {false, 0, clock.standsAt - LONGLONG(GetTickCount64())};
        stirAll();
    }
    resumeTimers();
}

BOOL WINAPI Emulator_PassTime(DWORD milliseconds) {
    {
        ExclusiveLock lock(&clockLock);
        if (!clock.stands) return FALSE;
        clock.standsAt += milliseconds;
        stirAll();
    }
    deliverDueTimers();
    return TRUE;
}

LONGLONG WINAPI Emulator_GetNextDue() {
    LONGLONG wait = nextEndOfWait(), timer = nextDueTimer();
    return wait < timer ? wait : timer;
}

DWORD WINAPI Device_GetTickCount() { return static_cast<DWORD>(deviceTime()); }
}
