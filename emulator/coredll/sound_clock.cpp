#include "sound_clock.h"
#include "exclusive_lock.h"
#include "sound_options.h"

static constexpr LONGLONG microseconds = 1000000;

static LONGLONG realTime() {
    LARGE_INTEGER frequency, ticks;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&ticks);
    LONGLONG seconds = ticks.QuadPart / frequency.QuadPart;
    LONGLONG rest = ticks.QuadPart % frequency.QuadPart;
    return seconds * microseconds + rest * microseconds / frequency.QuadPart;
}

namespace {

// The sound time of a moment, and how it has run since.
struct Clock {
    LONGLONG moment = realTime();
    LONGLONG time = 0;
    DWORD speed = soundOptions().speed;

    void moveOn() {
        LONGLONG now = realTime();
        time += (now - moment) * speed;
        moment = now;
    }
};

} // namespace

static SRWLOCK clockLock = SRWLOCK_INIT;

static Clock& theClock() {
    static Clock clock;
    return clock;
}

LONGLONG soundTime() {
    ExclusiveLock lock(&clockLock);
    theClock().moveOn();
    return theClock().time;
}

DWORD soundSpeed() {
    ExclusiveLock lock(&clockLock);
    return theClock().speed;
}

void setSoundSpeed(DWORD factor) {
    ExclusiveLock lock(&clockLock);
    theClock().moveOn();
    theClock().speed = factor;
}

void passSoundTime(DWORD milliseconds) {
    ExclusiveLock lock(&clockLock);
    theClock().time += milliseconds * LONGLONG(1000);
}
