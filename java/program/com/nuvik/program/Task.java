package com.nuvik.program;

/** Something that the display's thread does later, once or at every tick of a clock. */
public final class Task {
    static final int ONCE = -1;

    private final Runnable work;
    private final int period;
    private boolean isCancelled;
    long due; // in milliseconds of the clock; guarded by the tasks that it is one of
    boolean isAnnounced; // the display was woken for it; guarded likewise

    Task(Runnable work, int delay, int period) {
        this.work = work;
        this.period = period;
        due = Clock.now() + delay;
    }

    /** Lets it not be done any more. One that is being done is finished. Any thread. */
    public synchronized void cancel() {
        isCancelled = true;
    }

    synchronized boolean isCancelled() {
        return isCancelled;
    }

    boolean isRepeated() {
        return period != ONCE;
    }

    /** A tick that comes too late is not made up for. */
    void moveOn() {
        due = Clock.now() + period;
        isAnnounced = false;
    }

    void run() {
        if (!isCancelled()) work.run();
    }

    /** It will not be done: whoever waits for it must not go on waiting. */
    void abandon() {
        if (work instanceof Call) ((Call) work).abandon();
    }
}
