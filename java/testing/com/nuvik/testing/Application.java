package com.nuvik.testing;

import java.lang.reflect.InvocationTargetException;
import java.lang.reflect.Method;
import java.util.ArrayList;
import java.util.List;

/** An application that runs in this process, on threads of its own. */
final class Application {
    private static final long STACK_BYTES = 8 << 20; // as much as the launcher gives a main thread
    private static final int FAILED = 1; // the exit code of a program that an exception ends
    private static final int ROUNDS_OF_STOP = 25;

    final Class<?> mainClass;
    private final Group threads = new Group();
    private final Thread thread;
    private volatile Throwable thrown;
    private volatile Throwable uncaught; // the last of another thread
    private volatile Integer exitCode; // of System.exit; null: it was not called
    private volatile boolean isStopped;

    private static volatile Application last;

    /** What a program runs in. */
    private final class Group extends ThreadGroup {
        Group() {
            super("application");
        }

        @Override
        public void uncaughtException(Thread thread, Throwable exception) {
            if (isStopped || exception instanceof ThreadDeath) return;
            uncaught = exception;
            super.uncaughtException(thread, exception);
        }
    }

    Application(Class<?> mainClass, String... arguments) {
        this.mainClass = mainClass;
        Method main = mainOf(mainClass);
        Emulated.setSecurityManager(new ExitGuard());
        thread = new Thread(threads, () -> run(main, arguments), mainClass.getSimpleName(), STACK_BYTES);
        thread.setDaemon(false);
        last = this;
        thread.start();
    }

    /** The application that the caller is a thread of; null: none. Asks nothing that is guarded. */
    static Application ofThisThread() {
        Application application = last;
        boolean isIts = application != null && application.threads.parentOf(Thread.currentThread().getThreadGroup());
        return isIts ? application : null;
    }

    private static Method mainOf(Class<?> mainClass) {
        try {
            Method main = mainClass.getDeclaredMethod("main", String[].class);
            main.setAccessible(true); // the class need not be public
            return main;
        } catch (NoSuchMethodException missing) {
            throw new IllegalArgumentException(
                    mainClass.getName() + " has no method main(String[])", missing);
        }
    }

    private void run(Method main, String[] arguments) {
        try {
            main.invoke(null, (Object) arguments);
        } catch (InvocationTargetException failed) {
            if (!isStopped) thrown = failed.getCause();
        } catch (IllegalAccessException | RuntimeException notStarted) {
            thrown = notStarted;
        } catch (ThreadDeath stopped) {
            // The test is over, or the application has called System.exit.
        }
    }

    /** Its threads that keep it running, as those of a process do. */
    private List<Thread> running() {
        Thread[] all;
        int count;
        do {
            all = new Thread[threads.activeCount() + 16];
            count = threads.enumerate(all);
        } while (count == all.length);
        List<Thread> running = new ArrayList<>();
        for (int i = 0; i < count; i++) if (!all[i].isDaemon()) running.add(all[i]);
        return running;
    }

    boolean hasEnded() {
        return running().isEmpty();
    }

    /** What main has thrown, or what has ended the last of its threads; null for nothing. */
    Throwable thrown() {
        return thrown != null || !hasEnded() ? thrown : uncaught;
    }

    /** Whether it has called System.exit, and may still be about to end. */
    boolean isExiting() {
        return exitCode != null;
    }

    /** Whether it is being ended, or was. */
    boolean isStopped() {
        return isStopped;
    }

    /** Of one that has ended, as a process has it. */
    int exitCode() {
        if (exitCode != null) return exitCode;
        return thrown == null ? 0 : FAILED;
    }

    void awaitEnd(long milliseconds) {
        long deadline = System.nanoTime() + milliseconds * 1_000_000;
        try {
            for (Thread each : running()) {
                long left = (deadline - System.nanoTime()) / 1_000_000;
                each.join(Math.max(1, left));
            }
        } catch (InterruptedException interrupted) {
            throw new IllegalStateException(interrupted);
        }
    }

    /** Where its main thread is, or another one when that has ended, for a person to read. */
    String stack() {
        List<Thread> running = running();
        Thread shown = thread.isAlive() || running.isEmpty() ? thread : running.get(0);
        StringBuilder text = new StringBuilder();
        for (StackTraceElement element : shown.getStackTrace()) {
            text.append("    at ").append(element).append('\n');
        }
        return text.toString();
    }

    /** Ends it as System.exit ends a process; the caller, one of its threads, does not return. */
    void exit(int code, long milliseconds) {
        if (exitCode == null) exitCode = code;
        Thread ender = new Thread(threads.getParent(), () -> endThreads(milliseconds), "end of " + mainClass.getSimpleName());
        ender.setDaemon(true);
        isStopped = true; // no thread of its own is made from now on
        ender.start();
        throw new ThreadDeath();
    }

    /** Ends all its threads, wherever they are: it is asked nothing, and saves nothing. */
    void stop(long milliseconds) {
        endThreads(milliseconds);
        if (!hasEnded()) {
            throw new TestFailure(
                    mainClass.getSimpleName() + " cannot be ended; its thread is here:\n" + stack());
        }
    }

    @SuppressWarnings({"deprecation", "removal"})
    private void endThreads(long milliseconds) {
        isStopped = true;
        long deadline = System.nanoTime() + milliseconds * 1_000_000;
        for (int round = 0; round == 0 || (!hasEnded() && System.nanoTime() < deadline); round++) {
            if (round % ROUNDS_OF_STOP == 0) threads.stop(); // again for who has caught that
            if (hasEnded()) return;
            Emulated.quit(); // once for each loop that it is in
            awaitEnd(20);
        }
    }
}
