package com.acme.notes;

import com.nuvik.program.Listener;
import com.nuvik.program.Program;
import com.nuvik.wyx.Style;
import com.nuvik.wyx.dovr.OS;

/** A list of notes with a field to add one. */
public final class Notes {
    private final Program program = new Program();
    private final int shell = program.newMainShell("Notes");
    private final int label = OS.Label_New(shell, Style.CENTERED_LINE);
    private final int field = OS.TextField_New(shell, Style.BORDER);
    private final int add = OS.PushButton_New(shell, 0);
    private final int list = OS.List_New(shell, Style.BORDER | Style.VERTICAL_SCROLL);
    private final int state = OS.Label_New(shell, 0);
    private int count;

    private void addNote() {
        String note = OS.AbstractTextComponent_GetText(field);
        if (note.isEmpty()) {
            OS.Label_SetText(state, "There is nothing to add");
            return;
        }
        OS.List_Add(list, note, -1);
        OS.AbstractTextComponent_SetText(field, "");
        OS.Label_SetText(state, ++count == 1 ? "1 note" : count + " notes");
    }

    private void run() {
        OS.Label_SetText(label, "Note");
        OS.Button_SetLabel(add, "Add");
        OS.Label_SetText(state, "No notes");
        program.screen.place(label, 6, 6, 40, 20);
        program.screen.place(field, 50, 6, 120, 20);
        program.screen.place(add, 176, 6, 56, 20);
        program.screen.place(list, 6, 32, 226, 120);
        program.screen.place(state, 6, 160, 226, 20);
        com.nuvik.wyx.k4tr.OS.Widget_SetData(
                add,
                new Listener() {
                    public void selected() {
                        addNote();
                    }
                });
        program.showMainShell();
        program.run();
        int[] widgets = {state, list, add, field, label, shell};
        for (int i = 0; i < widgets.length; i++) program.dispose(widgets[i]);
        program.end();
    }

    public static void main(String[] arguments) {
        new Notes().run();
    }
}
