package com.nuvik.program;

/** Work that another thread waits for. */
final class Call implements Runnable {
    private final Runnable work;
    private boolean isOver;
    private Throwable thrown;

    Call(Runnable work) {
        this.work = work;
    }

    public void run() {
        try {
            work.run();
        } catch (RuntimeException exception) {
            thrown = exception;
        } catch (Error error) {
            thrown = error;
        } finally {
            finish();
        }
    }

    void abandon() {
        thrown = new IllegalStateException("the display has ended");
        finish();
    }

    private synchronized void finish() {
        isOver = true;
        notifyAll();
    }

    /** Waits for the work and throws what it threw. */
    synchronized void await() {
        while (!isOver) Waiting.on(this, 0);
        if (thrown instanceof RuntimeException) throw (RuntimeException) thrown;
        if (thrown instanceof Error) throw (Error) thrown;
    }
}
