package com.nuvik.testing.tests;

import com.nuvik.program.Clock;
import com.nuvik.program.Listener;
import com.nuvik.program.Program;
import com.nuvik.wyx.GestureAnswer;
import com.nuvik.wyx.Modifier;
import com.nuvik.wyx.PointerType;
import com.nuvik.wyx.Style;
import com.nuvik.wyx.dovr.OS;
import java.util.ArrayList;
import java.util.List;

/** An application that does things later, and whose controls know how long they are held. */
public final class Later {
    /** When its task that is repeated was done, from the start. */
    static final List<Long> TIMES = new ArrayList<>();

    private final Program program = new Program();
    private final int shell = program.newMainShell("Later");
    private final int state = OS.Label_New(shell, 0);
    private final long start = Clock.now();

    private void say(String text) {
        OS.Label_SetText(state, text);
    }

    private void button(String label, int y, Runnable deed) {
        int button = OS.PushButton_New(shell, 0);
        OS.Button_SetLabel(button, label);
        listen(button, y, new OnTap(deed));
    }

    private void pad(int y, int gesture) {
        listen(
                OS.Composite_New(shell, Style.BORDER),
                y,
                new Listener() {
                    private int fromX;
                    private int fromY;

                    @Override
                    public int pointerDown(int x, int y) {
                        return gesture;
                    }

                    @Override
                    public void pointer(int type, int x, int y, int button, int modifiers) {
                        if ((modifiers & Modifier.CONTEXT_GESTURE) != 0) say("held");
                        if (type == PointerType.DOUBLE_CLICK) say("tapped twice");
                        if (type == PointerType.PRESS) {
                            fromX = x;
                            fromY = y;
                        }
                        boolean isAway = x != fromX || y != fromY;
                        if (type == PointerType.RELEASE && isAway) say("dragged " + (x - fromX) + "," + (y - fromY));
                    }
                });
    }

    private void listen(int control, int y, Listener listener) {
        program.screen.place(control, 4, y, 100, 20);
        com.nuvik.wyx.k4tr.OS.Widget_SetData(control, listener);
    }

    private void sayLater(int milliseconds) {
        say("waiting");
        program.after(milliseconds, () -> say("done"));
    }

    private void repeat() {
        program.every(1000, () -> TIMES.add(Clock.now() - start));
    }

    /** By a thread that knows Java's own time only. */
    private void work() {
        new Thread(
                        () -> {
                            try {
                                Thread.sleep(50);
                            } catch (InterruptedException interrupted) {
                                throw new IllegalStateException(interrupted);
                            }
                            program.later(() -> say("done"));
                        })
                .start();
    }

    private void run() {
        TIMES.clear();
        program.screen.place(state, 4, 4, 200, 20);
        say("ready");
        button("minutes", 30, () -> sayLater(600_000));
        button("seconds", 52, () -> sayLater(5000));
        button("again", 74, this::repeat);
        button("work", 96, this::work);
        pad(120, GestureAnswer.BY_TIME);
        pad(142, GestureAnswer.BY_SHELL);
        program.showMainShell();
        program.run();
    }

    public static void main(String[] arguments) {
        new Later().run();
    }
}
