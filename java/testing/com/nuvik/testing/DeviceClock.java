package com.nuvik.testing;

import com.nuvik.program.Clock;

/** The device's clock while a test has it in hand, with what follows it in Java. */
final class DeviceClock extends Clock {
    private final long ahead = System.currentTimeMillis() - Emulated.time(); // of the device's
    private volatile boolean stands;

    void stop() {
        stands = true;
        Emulated.stopClock();
        Clock.set(this);
    }

    void run() {
        stands = false;
        Emulated.runClock();
        Clock.tellMoved();
    }

    /** From now on it is the system's again. */
    void leave() {
        run();
        Clock.set(null);
    }

    boolean stands() {
        return stands;
    }

    /** Passes to the next thing that is due, when it is due by that time, or to that time. */
    void passOneStep(long until) {
        long next = Math.min(nextOfAll(), until);
        passTo(Math.max(next, Emulated.time() + 1)); // what is overdue has its own reasons
    }

    /** When the next thing is due, in Java or on the device; Long.MAX_VALUE: nothing is. */
    long nextOfAll() {
        long task = Clock.nextDue();
        return Math.min(Emulated.nextDue(), task == NEVER ? NEVER : task - ahead);
    }

    private static void passTo(long time) {
        Emulated.passTime((int) (time - Emulated.time()));
        Clock.tellMoved();
    }

    @Override
    protected long milliseconds() {
        return ahead + Emulated.time();
    }

    @Override
    protected boolean runs() {
        return !stands;
    }
}
