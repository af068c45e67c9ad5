package com.nuvik.selftest;

import com.nuvik.wyx.WindowEvent;
import java.io.IOException;

/**
 * Looks at a device through the toolkit's natives and writes down what differs from the emulated
 * device of the desk: {@code SelfTest REPORT [-alone]}. Near its end it asks for a few taps; with -alone
 * it taps itself. What the desk gave lies beside this class; what a device draws, measures and plays
 * otherwise is no fault for that.
 */
public final class SelfTest {
    private static final String ALONE = "-alone";

    private SelfTest() {}

    private static Checks[] groups(boolean alone) {
        return new Checks[] {
            new ScreenChecks(),
            new WindowChecks(),
            new TextChecks(),
            new ListChecks(),
            new BarChecks(),
            new MenuChecks(),
            new FontChecks(),
            new DrawingChecks(),
            new ImageChecks(),
            new FileChecks(),
            new SoundChecks(),
            new ClipboardChecks(),
            new EventChecks(),
            new TapChecks(alone),
        };
    }

    private static void tellSystem(Report report) {
        String[] names = {"os.name", "os.version", "os.arch", "java.version", "java.vm.version"};
        report.line("zemvolt11 self-test");
        for (int i = 0; i < names.length; i++) {
            report.figure(names[i], String.valueOf(System.getProperty(names[i])));
        }
    }

    public static void main(String[] arguments) throws IOException {
        String path = arguments.length > 0 ? arguments[0] : "zemvolt11-report.txt";
        boolean alone = arguments.length > 1 && arguments[1].equals(ALONE);
        Report report = new Report(path, SelfTest.class.getResourceAsStream("desk.txt"));
        tellSystem(report);
        Stage stage = new Stage(report);
        Checks[] groups = groups(alone);
        for (int i = 0; i < groups.length; i++) groups[i].runAll(stage, report);
        report.end();
        if (!alone) showEnd(stage, report);
        stage.end();
    }

    private static void showEnd(Stage stage, Report report) {
        final String closed = "window " + WindowEvent.CLOSE_REQUESTED;
        Recorder recorder = stage.listen(stage.shell);
        String end = report.differences() + " of " + report.done() + " differ. Close with ok.";
        stage.tell(end);
        System.out.println(end);
        stage.awaitPerson(recorder, closed, closed);
    }
}
