package com.nuvik.testing;

import java.util.Map;

/** What the threads of the process do while the device is idle. */
final class Threads {
    private Threads() {}

    /**
     * Whether none of them will do anything by itself: each waits for another one, but for the caller and
     * the one that the device is known to be idle of. A thread in doubt is not at rest.
     */
    static boolean areAtRest() {
        for (Map.Entry<Thread, StackTraceElement[]> entry : Thread.getAllStackTraces().entrySet()) {
            Thread thread = entry.getKey();
            if (thread == Thread.currentThread() || isOfTheMachine(thread) || isInToolkit(entry.getValue())) {
                continue;
            }
            Thread.State state = thread.getState();
            boolean rests =
                    state == Thread.State.WAITING || state == Thread.State.BLOCKED || state == Thread.State.TERMINATED;
            if (!rests) return false;
        }
        return true;
    }

    /** The Java library's and machine's own; one of them waits for a process that the application has started. */
    private static boolean isOfTheMachine(Thread thread) {
        ThreadGroup group = thread.getThreadGroup();
        boolean isTheirs = group != null && (group.getParent() == null || group.getName().equals("InnocuousThreadGroup"));
        return isTheirs && !thread.getName().equals("process reaper");
    }

    private static boolean isInToolkit(StackTraceElement[] stack) {
        return stack.length > 0 && stack[0].isNativeMethod() && stack[0].getClassName().startsWith("com.nuvik.wyx.");
    }
}
