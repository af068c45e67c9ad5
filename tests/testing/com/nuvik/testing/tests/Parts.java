package com.nuvik.testing.tests;

import com.nuvik.program.Program;
import com.nuvik.wyx.Style;
import com.nuvik.wyx.dovr.OS;

/** An application with a control of each kind, some of them out of a person's reach. */
public final class Parts {
    private final Program program = new Program();
    private final int shell = program.newMainShell("Parts");

    private int place(int control, int x, int y, int width, int height) {
        program.screen.place(control, x, y, width, height);
        return control;
    }

    private int button(String label, int x, int y) {
        int button = place(OS.PushButton_New(shell, 0), x, y, 70, 20);
        OS.Button_SetLabel(button, label);
        return button;
    }

    private static void onTap(int button, Runnable deed) {
        com.nuvik.wyx.k4tr.OS.Widget_SetData(button, new OnTap(deed));
    }

    private void run() {
        int field = place(OS.TextField_New(shell, Style.BORDER), 60, 4, 100, 20);
        OS.AbstractTextComponent_SetText(field, "first");
        int label = place(OS.Label_New(shell, 0), 4, 4, 50, 20);
        OS.Label_SetText(label, "Name");
        int list = place(OS.List_New(shell, Style.BORDER | Style.VERTICAL_SCROLL), 4, 30, 100, 60);
        for (int i = 1; i <= 30; i++) OS.List_Add(list, "row " + i, -1);
        int choice = place(OS.Choice_New(shell), 110, 30, 100, 20);
        for (String item : new String[] {"red", "green", "blue"}) OS.Choice_AddItem(choice, item, -1);
        int box = place(OS.Checkbox_New(shell, 0), 110, 60, 100, 20);
        OS.Button_SetLabel(box, "Bo&x");
        int off = button("off", 4, 100);
        OS.Control_SetEnabled(off, false);
        com.nuvik.wyx.k4tr.OS.Control_SetVisible(button("hidden", 84, 100), false);
        place(OS.Composite_New(shell, Style.BORDER), 0, 126, 90, 30); // the first lies uppermost
        button("covered", 4, 130);
        button("twin", 100, 130);
        button("twin", 100, 160);
        button("away", 4, 900);
        onTap(button("ask", 4, 180), this::openQuestion);
        onTap(button("busy", 100, 100), this::beBusy);
        int later = button("later", 4, 210);
        onTap(later, () -> program.after(300, () -> OS.Button_SetLabel(later, "done")));
        onTap(
                button("fail", 100, 210),
                () -> {
                    throw new IllegalStateException("as it was asked to");
                });
        program.showMainShell();
        program.run();
    }

    private void openQuestion() {
        int question = OS.Shell_NewChild(shell, Style.MODAL | Style.TITLE | Style.BORDER);
        com.nuvik.wyx.k4tr.OS.Shell_SetText(question, "Question");
        place(question, 20, 100, 200, 60);
    }

    /** Until the thread is ended. */
    static volatile boolean isBusy = true;

    private void beBusy() {
        while (isBusy) Thread.onSpinWait();
    }

    public static void main(String[] arguments) {
        new Parts().run();
    }
}
