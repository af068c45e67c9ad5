package com.nuvik.checking;

import java.util.Arrays;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.Set;

/** What the launcher tells of misuse, and what was never disposed of when the program ends. */
final class Checking {
    private Checking() {}

    /** What is still to be disposed of: of each its kind and where it was made, in turn. */
    private static native Object[] left();

    /** From now on the end of the program tells what is left. */
    static void start() {
        Runtime.getRuntime().addShutdownHook(new Thread(Checking::tellLeft, "left handles"));
    }

    /** Tells a misuse in one line. */
    static void report(Misuse misuse) {
        System.err.println("check: " + misuse.line());
    }

    /** Those that were made at one place. */
    private static final class Group {
        final Place made;
        int count;

        Group(Place made) {
            this.made = made;
        }
    }

    private static void tellUnheard() {
        try {
            Set<String> unheard = Callbacks.unheard();
            if (!unheard.isEmpty())
                System.err.println(
                        "check: no listener hears "
                                + String.join(", ", unheard)
                                + ": Display_RegisterCallback was never called for them");
        } catch (ReflectiveOperationException wrong) {
            throw new IllegalStateException(wrong);
        }
    }

    private static void tellLeft() {
        Object[] left = left();
        Map<List<Object>, Group> groups = new LinkedHashMap<>();
        for (int i = 0; i < left.length; i += 2) {
            Place made = (Place) left[i + 1];
            Object stack = made == null ? "" : Arrays.asList(made.getStackTrace());
            groups.computeIfAbsent(List.of(left[i], stack), one -> new Group(made)).count++;
        }
        tellUnheard();
        groups.forEach((what, group) -> tell((String) what.get(0), group));
    }

    private static void tell(String kind, Group group) {
        String times = group.count == 1 ? "" : group.count + " times, ";
        System.err.println("check: never disposed of: " + times + kind + ", which was made");
        if (group.made == null) return;
        for (StackTraceElement frame : group.made.getStackTrace())
            System.err.println("\tat " + frame);
    }
}
