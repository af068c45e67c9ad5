package com.nuvik.selftest;

import com.nuvik.wyx.Style;
import com.nuvik.wyx.dovr.OS;

/** Text fields and areas. */
final class TextChecks extends Checks {
    private static final String LINES = "one\r\ntwo\r\nthree";
    private static final String OTHER_LETTERS = "\u00e4\u0416\u4e2d";

    String title() {
        return "text";
    }

    void run() {
        field(Stage.place(OS.TextField_New(stage.room, Style.BORDER), 10, 10, 120, 22));
        int area = OS.TextArea_New(stage.room, Style.BORDER | Style.VERTICAL_SCROLL);
        area(Stage.place(area, 10, 10, 120, 80));
    }

    private void field(int field) {
        Recorder recorder = stage.listen(field);
        at("smallest field of 10 columns");
        came(OS.TextField_GetMinimumSize(field, 10));
        at("text set");
        OS.AbstractTextComponent_SetText(field, "Some text");
        came(OS.AbstractTextComponent_GetText(field));
        at("change is told");
        stage.settle();
        came(recorder.take("modified"));
        at("length");
        came(OS.AbstractTextComponent_GetCharCount(field));
        at("selection");
        OS.AbstractTextComponent_SetSelection(field, 5, 7);
        came(OS.AbstractTextComponent_GetSelection(field));
        at("selected text");
        came(OS.AbstractTextComponent_GetSelectionText(field));
        at("replaced");
        OS.AbstractTextComponent_Replace(field, "other", 0, 4);
        came(OS.AbstractTextComponent_GetText(field));
        at("caret beyond the end");
        OS.AbstractTextComponent_SetCaretPosition(field, 99);
        came(OS.AbstractTextComponent_GetSelection(field));
        at("all selected");
        OS.AbstractTextComponent_SelectAll(field);
        came(OS.AbstractTextComponent_GetSelection(field));
        at("hidden text");
        OS.AbstractTextComponent_SetEchoChar(field, '*');
        came(OS.AbstractTextComponent_GetText(field));
        at("other letters");
        OS.AbstractTextComponent_SetText(field, OTHER_LETTERS);
        came(OS.AbstractTextComponent_GetText(field));
        typing(field);
        stage.dispose(field);
    }

    private void typing(int field) {
        OS.AbstractTextComponent_SetEchoChar(field, '\0');
        OS.AbstractTextComponent_SetText(field, "");
        stage.settle();
        Recorder recorder = stage.listen(field);
        OS.Control_ForceFocus(field);
        at("typed");
        stage.key('a');
        stage.await(recorder, "modified");
        came(OS.AbstractTextComponent_GetText(field));
        at("typed where nothing may be");
        OS.AbstractTextComponent_SetEditable(field, false);
        stage.key('b');
        stage.await(recorder, "key 2 98 66 0");
        came(OS.AbstractTextComponent_GetText(field));
    }

    private void area(int area) {
        Recorder recorder = stage.listen(area);
        at("smallest area");
        came(OS.TextArea_GetMinimumSize(area, 3, 10));
        at("lines");
        OS.AbstractTextComponent_SetText(area, LINES);
        came(OS.AbstractTextComponent_GetText(area));
        at("change of lines is told");
        stage.settle();
        came(recorder.take("modified"));
        at("length of lines");
        came(OS.AbstractTextComponent_GetCharCount(area));
        at("other line breaks");
        OS.AbstractTextComponent_SetText(area, "one\ntwo");
        came(OS.AbstractTextComponent_GetText(area));
        at("insets");
        came(com.nuvik.wyx.k4tr.OS.Control_GetBounds(area));
        stage.dispose(area);
    }
}
