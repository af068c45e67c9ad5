package com.nuvik.selftest;

import com.nuvik.wyx.PointerType;
import com.nuvik.wyx.Style;
import com.nuvik.wyx.WindowEvent;
import com.nuvik.wyx.dovr.OS;

/** What only a stylus does: a person is asked for three taps, which closing the shell leaves out. */
final class TapChecks extends Checks {
    private static final String CLOSED = "window " + WindowEvent.CLOSE_REQUESTED;
    private static final int CONTEXT_GESTURE = 64;
    private static final int BY_THE_SYSTEM = 1;
    private final boolean alone;

    TapChecks(boolean alone) {
        this.alone = alone;
    }

    String title() {
        return "stylus";
    }

    void run() {
        tap();
        hold();
        menuBar();
    }

    /** Waits for a person, or closes what nobody will tap. */
    private void await(Recorder recorder, String event) {
        if (alone) {
            stage.await(recorder, event);
        } else {
            stage.awaitPerson(recorder, event, CLOSED);
        }
    }

    private void ask(String what) {
        stage.tell(what);
        if (!alone) System.out.println(what);
    }

    private void tap() {
        int button = Stage.place(OS.PushButton_New(stage.room, 0), 30, 30, 140, 60);
        OS.Button_SetLabel(button, "Tap me");
        Recorder recorder = stage.listen(button);
        at("tap");
        ask("Tap the button");
        if (alone) stage.tap(60, 50);
        await(recorder, "selected");
        came(recorder.take("selected"));
        stage.dispose(button);
    }

    private void hold() {
        int composite = Stage.place(OS.Composite_New(stage.room, Style.BORDER), 30, 30, 140, 60);
        final boolean[] context = new boolean[1];
        Recorder recorder =
                new Recorder() {
                    int pointerDown(int x, int y) {
                        return BY_THE_SYSTEM;
                    }

                    void pointer(int type, int x, int y, int button, int modifiers) {
                        context[0] |= (modifiers & CONTEXT_GESTURE) != 0;
                        if (type == PointerType.RELEASE) selected();
                    }
                };
        com.nuvik.wyx.k4tr.OS.Widget_SetData(composite, recorder);
        at("tap and hold");
        ask("Tap and hold in the frame");
        if (alone) hold(60, 50);
        await(recorder, "selected");
        came(context[0] ? "context" : "plain");
        stage.dispose(composite);
    }

    /** The stylus stays until the system has taken it for held. */
    private void hold(int x, int y) {
        stage.press(stage.left + x, stage.top + y);
        stage.settle();
        stage.release();
    }

    private void menuBar() {
        int bar = OS.MenuBar_New(stage.shell);
        int item = OS.PushMenuItem_New(bar, 0);
        OS.LabeledMenuItem_SetText(item, "Here", null);
        OS.Shell_SetMenuBar(stage.shell, bar);
        stage.settle();
        Recorder recorder = stage.listen(item);
        at("item of the menu bar");
        ask("Tap Here at the screen's bottom");
        if (alone) {
            int[] screen = com.nuvik.wyx.k4tr.OS.Device_GetBounds(stage.display);
            stage.press(12, screen[3] - 14);
            stage.release();
        }
        await(recorder, "menu 0");
        came(recorder.take("menu"));
        OS.Shell_SetMenuBar(stage.shell, 0);
        stage.dispose(item);
        stage.dispose(bar);
    }
}
