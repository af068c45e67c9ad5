package com.nuvik.tests;

import static com.nuvik.wyx.k4tr.OS.Widget_SetData;
import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertFalse;
import static org.junit.Assert.assertSame;
import static org.junit.Assert.assertThrows;
import static org.junit.Assert.assertTrue;

import com.nuvik.program.Clock;
import com.nuvik.program.Listener;
import com.nuvik.program.NativeFailure;
import com.nuvik.program.Program;
import com.nuvik.program.Task;
import com.nuvik.wyx.ErrorCode;
import com.nuvik.wyx.Style;
import com.nuvik.wyx.dovr.OS;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.concurrent.FutureTask;
import org.junit.After;
import org.junit.Test;

/** What programs on the natives are built with. */
public final class ProgramTest {
    private final Program program = new Program();
    private final List<String> done = new ArrayList<>();
    private boolean hasEnded;

    @After
    public void end() {
        if (!hasEnded) program.end();
    }

    private static FutureTask<Void> onOtherThread(Runnable work) {
        FutureTask<Void> task = new FutureTask<>(work, null);
        new Thread(task).start();
        return task;
    }

    @Test
    public void anotherThreadsWorkIsDoneOnTheDisplaysThread() throws Exception {
        Thread[] worker = new Thread[1];
        FutureTask<Void> other =
                onOtherThread(() -> program.call(() -> worker[0] = Thread.currentThread()));
        onOtherThread(
                () -> {
                    while (!other.isDone()) Thread.yield();
                    program.leave();
                });
        program.run();
        other.get();
        assertSame(Thread.currentThread(), worker[0]);
    }

    @Test
    public void whatTheWorkThrowsIsThrownWhereItIsWaitedFor() throws Exception {
        FutureTask<Void> other =
                onOtherThread(
                        () -> {
                            assertThrows(
                                    NumberFormatException.class,
                                    () -> program.call(() -> Integer.parseInt("?")));
                            program.leave();
                        });
        program.run();
        other.get();
    }

    @Test
    public void tasksAreDoneWhenTheyAreDueAndCancelledOnesAreNot() {
        StandingClock clock = new StandingClock();
        Clock.set(clock);
        try {
            program.after(60, program::leave);
            program.after(30, () -> done.add("third"));
            program.after(20, () -> done.add("cancelled")).cancel();
            program.after(10, () -> clock.passAfter(() -> done.add("second"), 60));
            program.later(() -> clock.passAfter(() -> done.add("first"), 10));
            program.run();
        } finally {
            Clock.set(null);
        }
        assertEquals(Arrays.asList("first", "second", "third"), done);
    }

    private static final class StandingClock extends Clock {
        private volatile long now;

        void passAfter(Runnable work, long time) {
            work.run();
            now = time;
            tellMoved();
        }

        @Override
        protected long milliseconds() {
            return now;
        }

        @Override
        protected boolean runs() {
            return false;
        }
    }

    @Test
    public void aRepeatedTaskGoesOnUntilItIsCancelled() {
        Task[] ticking = new Task[1];
        ticking[0] =
                program.every(
                        1,
                        () -> {
                            done.add("tick");
                            if (done.size() < 3) return;
                            ticking[0].cancel();
                            program.after(20, program::leave);
                        });
        program.run();
        assertEquals(Arrays.asList("tick", "tick", "tick"), done);
    }

    @Test
    public void whoeverWaitsForATaskNeedsNoFurtherEvent() {
        for (int round = 1; round <= 2000; round++) {
            program.later(() -> done.add("done"));
            while (done.size() < round) program.dispatch();
        }
    }

    @Test
    public void whoWaitsForWorkIsToldThatTheDisplayHasEnded() throws Exception {
        FutureTask<Void> other =
                onOtherThread(
                        () ->
                                assertThrows(
                                        IllegalStateException.class,
                                        () -> program.call(() -> done.add("done"))));
        program.end();
        hasEnded = true;
        other.get();
        assertTrue(done.isEmpty());
    }

    @Test
    public void aShownShellIsActiveAndItsControlTakesTheFocus() {
        Listener window = new Listener();
        int shell = program.newMainShell("Shown", window);
        Listener entry = new Listener();
        int field = OS.TextField_New(shell, Style.BORDER);
        Widget_SetData(field, entry);
        program.screen.place(field, 10, 10, 100, 20);
        program.showMainShell();
        assertTrue(window.isActive());
        assertFalse(entry.isFocused());
        assertTrue(program.focus(field, entry));
        assertTrue(entry.isFocused());
        program.dispose(field);
        program.dispose(shell);
    }

    @Test
    public void aNativeThatFailsThrowsWhatItTellsOfIt() {
        NativeFailure failure =
                assertThrows(NativeFailure.class, () -> OS.Composite_New(0, Style.BORDER));
        assertEquals("Composite_New", failure.getFunction());
        assertEquals(ErrorCode.FAILED, failure.getCode());
    }
}
