package com.nuvik.program;

/** Waits that nobody interrupts: the threads that wait here are the library's own business. */
final class Waiting {
    private Waiting() {}

    /** Until the object, which the caller holds, is notified; 0 milliseconds wait without end. */
    static void on(Object object, long milliseconds) {
        try {
            object.wait(milliseconds);
        } catch (InterruptedException interrupted) {
            throw new IllegalStateException(interrupted.toString());
        }
    }

    static void forEnd(Thread thread) {
        try {
            thread.join();
        } catch (InterruptedException interrupted) {
            throw new IllegalStateException(interrupted.toString());
        }
    }
}
