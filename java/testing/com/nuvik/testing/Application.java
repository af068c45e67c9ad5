package com.nuvik.testing;

import java.lang.reflect.InvocationTargetException;
import java.lang.reflect.Method;

/** An application that runs in this process, on threads of its own. */
final class Application {
    private static final long STACK_BYTES = 8 << 20; // as much as the launcher gives a main thread

    /** Whether the application may end the whole process: a script is at its last line. */
    static volatile boolean mayExit;

    private static volatile Application current;

    static {
        Runtime.getRuntime().addShutdownHook(new Thread(Application::tellOfExit));
    }

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
        current = this;
        thread.start();
    }

    /** An application that ends the process takes the tests that are left along: they must not pass. */
    private static void tellOfExit() {
        Application application = current;
        if (application == null || mayExit) return;
        Thread[] threads = new Thread[application.threads.activeCount()];
        int count = application.threads.enumerate(threads);
        for (int i = 0; i < count; i++) {
            if (!isExiting(threads[i])) continue;
            System.err.println(
                    "zemvolt: " + application.mainClass.getSimpleName()
                            + " has called System.exit, which ends the tests too; they have not passed");
            Runtime.getRuntime().halt(1);
        }
    }

    private static boolean isExiting(Thread thread) {
        for (StackTraceElement element : thread.getStackTrace()) {
            if (element.getClassName().equals("java.lang.Runtime") && element.getMethodName().equals("exit")) {
                return true;
            }
        }
        return false;
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
