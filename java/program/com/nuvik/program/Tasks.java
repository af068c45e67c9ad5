package com.nuvik.program;

import com.nuvik.wyx.k4tr.OS;
import java.util.Vector;

/**
 * What a display's thread is to do beside its events, in the order in which it is due, and the clock that
 * wakes the display for it. Any thread adds, the display's takes.
 */
final class Tasks {
    private final int display;
    private final Vector waiting = new Vector();
    private final Thread clock =
            new Thread(
                    new Runnable() {
                        public void run() {
                            tick();
                        }
                    });
    private boolean isTicking;
    private boolean hasEnded;

    Tasks(int display) {
        this.display = display;
    }

    /** False when it will not be done, as the display has ended. */
    synchronized boolean add(Task task) {
        if (hasEnded) return false;
        insert(task);
        startClock();
        notifyAll();
        return true;
    }

    private void startClock() {
        if (isTicking) return;
        isTicking = true;
        Clock.follow(this);
        clock.setDaemon(true);
        clock.start();
    }

    private void insert(Task task) {
        int place = waiting.size();
        while (place > 0 && ((Task) waiting.elementAt(place - 1)).due > task.due) place--;
        waiting.insertElementAt(task, place);
    }

    /** Does what is due by now, and tells whether there was anything. */
    boolean runDue() {
        long now = Clock.now();
        boolean didTask = false;
        for (Task task = takeDue(now); task != null; task = takeDue(now)) {
            task.run();
            didTask = true;
        }
        return didTask;
    }

    private synchronized Task takeDue(long time) {
        if (waiting.isEmpty() || first().due > time) return null;
        Task task = first();
        waiting.removeElementAt(0);
        repeat(task);
        return task;
    }

    private void repeat(Task task) {
        if (!task.isRepeated() || task.isCancelled()) return;
        task.moveOn();
        insert(task);
        notifyAll();
    }

    private Task first() {
        return (Task) waiting.elementAt(0);
    }

    synchronized boolean isDue() {
        return waiting.size() > 0 && first().due <= Clock.now();
    }

    /** Ends the clock, before the display goes. What was not done yet never is. */
    void end() {
        synchronized (this) {
            hasEnded = true;
            for (int i = 0; i < waiting.size(); i++) ((Task) waiting.elementAt(i)).abandon();
            waiting.removeAllElements();
            notifyAll();
        }
        if (isTicking) Waiting.forEnd(clock);
    }

    private void tick() {
        try {
            announceUntilEnd();
        } finally {
            Clock.leave(this);
        }
    }

    private synchronized void announceUntilEnd() {
        while (!hasEnded) {
            announceDue();
            Waiting.on(this, Clock.patienceUntil(nextDue()));
        }
    }

    private void announceDue() {
        long now = Clock.now();
        for (Task next = nextToAnnounce(); next != null && next.due <= now; next = nextToAnnounce()) {
            next.isAnnounced = true;
            OS.Display_Wake(display);
        }
    }

    private Task nextToAnnounce() {
        for (int i = 0; i < waiting.size(); i++) {
            Task task = (Task) waiting.elementAt(i);
            if (!task.isAnnounced) return task;
        }
        return null;
    }

    /** When the next one is due that the display was not woken for. */
    synchronized long nextDue() {
        Task next = nextToAnnounce();
        return next == null ? Clock.NEVER : next.due;
    }

    /** Wakes the display before it returns. */
    synchronized void clockMoved() {
        announceDue();
        notifyAll();
    }
}
