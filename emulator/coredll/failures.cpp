#include "failures.h"

// Calls of each kind until one fails; 0: none will.
static LONG left[failureKinds];

bool failsNow(EmulatorFailure kind) {
    LONG before = InterlockedCompareExchange(&left[kind], 0, 0);
    while (before > 0) {
        LONG seen = InterlockedCompareExchange(&left[kind], before - 1, before);
        if (seen == before) return before == 1;
        before = seen;
    }
    return false;
}

extern "C" void WINAPI Emulator_FailCall(EmulatorFailure kind, LONG number) {
    InterlockedExchange(&left[kind], number);
}
