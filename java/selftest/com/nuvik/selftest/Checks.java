package com.nuvik.selftest;

/** A group of checks, which come one after the other. */
abstract class Checks {
    Stage stage;
    private Report report;
    private String title;

    abstract String title();

    abstract void run() throws Exception;

    final void runAll(Stage onStage, Report into) {
        stage = onStage;
        report = into;
        title = title();
        report.line("");
        report.line("[" + title + "]");
        try {
            run();
        } catch (Exception thrown) {
            report.threw(thrown);
        } catch (Error thrown) {
            report.threw(thrown);
        }
        stage.settle();
    }

    /** The next check is this. */
    final void at(String name) {
        stage.tell(title + ": " + (report.done() + 1) + " of " + report.expected());
        report.begin(title + "." + name);
    }

    final void came(String value) {
        report.came(value);
    }

    /** Nothing came that could be told, but for errors. */
    final void done() {
        report.came("done");
    }

    final void came(int value) {
        report.came(String.valueOf(value));
    }

    final void came(boolean value) {
        report.came(String.valueOf(value));
    }

    final void came(int[] values) {
        report.came(list(values));
    }

    final void figure(String name, String value) {
        report.figure(title + "." + name, value);
    }

    static String list(int[] values) {
        if (values == null) return "null";
        StringBuffer text = new StringBuffer();
        for (int i = 0; i < values.length; i++) text.append(i > 0 ? " " : "").append(values[i]);
        return text.toString();
    }

    static String made(int handle) {
        return handle == 0 ? "none" : "made";
    }
}
