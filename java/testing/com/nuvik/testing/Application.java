package com.nuvik.testing;

import java.lang.reflect.InvocationTargetException;
import java.lang.reflect.Method;

/** An application that runs in this process, on threads of its own. */
final class Application {
    private static final long STACK_BYTES = 8 << 20; // as much as the launcher gives a main thread

    final Class<?> mainClass;
    private final ThreadGroup threads;
    private final Thread thread;
    private volatile Throwable thrown;
    private volatile boolean isStopped;

    Application(Class<?> mainClass, String... arguments) {
        this.mainClass = mainClass;
        Method main = mainOf(mainClass);
        threads = new ThreadGroup("application");
        thread = new Thread(threads, () -> run(main, arguments), mainClass.getSimpleName(), STACK_BYTES);
        thread.setDaemon(true);
        thread.start();
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
            // The test is over.
        }
    }

    boolean hasEnded() {
        return !thread.isAlive();
    }

    /** What main has thrown; null for nothing. */
    Throwable thrown() {
        return thrown;
    }

    void awaitEnd(long milliseconds) {
        try {
            thread.join(milliseconds);
        } catch (InterruptedException interrupted) {
            throw new IllegalStateException(interrupted);
        }
    }

    /** Where its main thread is, for a person to read. */
    String stack() {
        StringBuilder text = new StringBuilder();
        for (StackTraceElement element : thread.getStackTrace()) {
            text.append("    at ").append(element).append('\n');
        }
        return text.toString();
    }

    /** Ends all its threads, wherever they are: it is asked nothing, and saves nothing. */
    @SuppressWarnings({"deprecation", "removal"})
    void stop(long milliseconds) {
        isStopped = true;
        threads.stop();
        long deadline = System.nanoTime() + milliseconds * 1_000_000;
        while (!hasEnded() && System.nanoTime() < deadline) {
            Emulated.quit(); // once for each loop that it is in
            awaitEnd(20);
        }
        if (!hasEnded()) {
            throw new TestFailure(
                    mainClass.getSimpleName() + " cannot be ended; its thread is here:\n" + stack());
        }
    }
}
