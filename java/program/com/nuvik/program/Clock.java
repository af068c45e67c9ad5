package com.nuvik.program;

import java.util.Vector;

/**
 * The time that the tasks of programs follow: the system's, unless a test has set another clock, which it
 * lets stand still and moves on. A program that asks this one instead of the system follows it too. Any
 * thread.
 */
public abstract class Clock {
    /** A time that never comes. */
    public static final long NEVER = Long.MAX_VALUE;

    private static final Clock SYSTEM =
            new Clock() {
                protected long milliseconds() {
                    return System.currentTimeMillis();
                }

                protected boolean runs() {
                    return true;
                }
            };
    private static final Vector followers = new Vector(); // of Tasks
    private static Clock current = SYSTEM;

    /** A clock that tells the time of somebody else. */
    protected Clock() {}

    /**
     * What time it is.
     *
     * @return milliseconds, as those of the system
     */
    protected abstract long milliseconds();

    /**
     * Whether it moves by itself.
     *
     * @return false when only {@link #tellMoved} tells of its moves
     */
    protected abstract boolean runs();

    /**
     * What time it is.
     *
     * @return milliseconds, as those of the system
     */
    public static long now() {
        return current().milliseconds();
    }

    /**
     * Lets all tasks follow another clock.
     *
     * @param clock the clock; null for the system's
     */
    public static void set(Clock clock) {
        synchronized (followers) {
            current = clock == null ? SYSTEM : clock;
        }
        tellMoved();
    }

    /** Lets the programs wake for what is due by now: a clock was moved, stopped or let run. */
    public static void tellMoved() {
        Tasks[] all = all();
        for (int i = 0; i < all.length; i++) all[i].clockMoved();
    }

    /**
     * When the next task is due that no program was woken for yet.
     *
     * @return milliseconds; {@link #NEVER} when there is none
     */
    public static long nextDue() {
        long next = NEVER;
        Tasks[] all = all();
        for (int i = 0; i < all.length; i++) {
            long due = all[i].nextDue();
            if (due < next) next = due;
        }
        return next;
    }

    /** How long a thread may wait for a time, at least 1; 0 when only a move of the clock brings it. */
    static long patienceUntil(long time) {
        Clock clock = current();
        if (time == NEVER || !clock.runs()) return 0;
        long left = time - clock.milliseconds();
        return left > 0 ? left : 1;
    }

    static void follow(Tasks tasks) {
        followers.addElement(tasks);
    }

    static void leave(Tasks tasks) {
        synchronized (followers) {
            for (int i = followers.size(); i-- > 0; ) {
                if (followers.elementAt(i) == tasks) followers.removeElementAt(i);
            }
        }
    }

    private static Clock current() {
        synchronized (followers) {
            return current;
        }
    }

    private static Tasks[] all() {
        synchronized (followers) {
            Tasks[] all = new Tasks[followers.size()];
            for (int i = 0; i < all.length; i++) all[i] = (Tasks) followers.elementAt(i);
            return all;
        }
    }
}
