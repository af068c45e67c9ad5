package com.nuvik.examples;

import static com.nuvik.wyx.k4tr.OS.Control_GetBounds;
import static com.nuvik.wyx.k4tr.OS.Control_SetVisible;
import static com.nuvik.wyx.k4tr.OS.Scrollable_GetInsets;
import static com.nuvik.wyx.k4tr.OS.Widget_SetData;

import com.nuvik.program.Listener;
import com.nuvik.program.Program;
import com.nuvik.wyx.FocusChange;
import com.nuvik.wyx.Key;
import com.nuvik.wyx.KeyKind;
import com.nuvik.wyx.Modifier;
import com.nuvik.wyx.Style;
import com.nuvik.wyx.dovr.OS;
import java.util.ArrayDeque;
import java.util.ArrayList;
import java.util.Deque;
import java.util.List;

/**
 * A sheet of fields that may be higher than the screen: it scrolls, shows the field that has the
 * focus, and the Tab key leads from field to field in the order in which they were added.
 */
final class Page {
    private static final int LINE = 24;
    private static final int MARGIN = 6;

    /** What the fields are made in. */
    final int sheet;

    private final Program program;
    private final int window; // shows a part of the sheet
    private final int bar;
    private final List<Field> fields = new ArrayList<>();
    private final Deque<Integer> controls = new ArrayDeque<>();
    private Field current;
    private final int windowWidth;
    private final int width;
    private int height;
    private int visible;

    /** The listener of a field; a field overrides what it wants to know. */
    class Field extends Listener {
        int control;
        private int top;
        private int bottom;

        /** The focus goes to another field. */
        void left() {}

        @Override
        public void focused(int change) {
            if (change != FocusChange.GAINED) {
                left();
                return;
            }
            current = this;
            reveal(this);
        }

        @Override
        public boolean key(int kind, char character, int keyCode, int modifiers) {
            if (kind != KeyKind.PRESSED || keyCode != Key.TAB) return false;
            moveFocus((modifiers & Modifier.SHIFT) != 0 ? -1 : 1);
            return true;
        }
    }

    /** A button of any kind. */
    class ButtonField extends Field {
        private final Runnable action;

        ButtonField(Runnable action) {
            this.action = action;
        }

        @Override
        public void selected() {
            action.run();
        }
    }

    Page(Program program, int shell) {
        this.program = program;
        window = OS.Composite_New(shell, Style.VERTICAL_SCROLL);
        sheet = OS.Composite_New(window, 0);
        bar = OS.Scrollable_GetVerticalBar(window);
        OS.Adjustable_SetUnitIncrement(bar, LINE);
        Widget_SetData(
                bar,
                new Listener() {
                    @Override
                    public void scrolled(int value, int kind) {
                        scrollTo(value);
                    }
                });
        int[] insets = Scrollable_GetInsets(window);
        int shellWidth = Control_GetBounds(shell)[2];
        windowWidth = program.screen.unscaled(shellWidth);
        width = program.screen.unscaled(shellWidth - insets[0] - insets[2]);
    }

    int width() {
        return width;
    }

    /** Puts a control that is only looked at on the sheet, which disposes of it in the end. */
    int add(int control, int font, int x, int y, int controlWidth, int controlHeight) {
        OS.Control_SetFont(control, font);
        program.screen.place(control, x, y, controlWidth, controlHeight);
        controls.push(control);
        height = Math.max(height, y + controlHeight + MARGIN);
        return control;
    }

    /** Puts a control on the sheet that the Tab key leads to. */
    void add(Field field, int control, int font, int x, int y, int controlWidth, int controlHeight) {
        add(control, font, x, y, controlWidth, controlHeight);
        Widget_SetData(control, field);
        field.control = control;
        field.top = y;
        field.bottom = y + controlHeight;
        fields.add(field);
    }

    /** Shows the page in the upper part of its shell. */
    void show(int visibleHeight) {
        visible = visibleHeight;
        OS.Adjustable_SetMaximum(bar, height);
        OS.Adjustable_SetVisibleAmount(bar, visible);
        OS.Adjustable_SetBlockIncrement(bar, visible - LINE);
        program.screen.place(window, 0, 0, windowWidth, visible);
        scrollTo(OS.Adjustable_GetValue(bar));
        Control_SetVisible(sheet, true);
    }

    void scrollTo(int wanted) {
        int top = Math.max(0, Math.min(wanted, height - visible));
        OS.Adjustable_SetValue(bar, top);
        program.screen.move(sheet, 0, -top, width, height);
    }

    private void reveal(Field field) {
        int top = OS.Adjustable_GetValue(bar);
        if (field.bottom + MARGIN > top + visible) scrollTo(field.bottom + MARGIN - visible);
        else if (field.top - MARGIN < top) scrollTo(field.top - MARGIN);
    }

    /** A field that is disabled does not take the focus; the next one is tried then. */
    private void moveFocus(int step) {
        int at = fields.indexOf(current);
        for (int tries = 1; tries < fields.size(); tries++) {
            at = Math.floorMod(at + step, fields.size());
            if (OS.Control_ForceFocus(fields.get(at).control)) return;
        }
    }

    /** The control of the field that has the focus, or had it last. */
    int currentControl() {
        return current == null ? 0 : current.control;
    }

    void dispose() {
        while (!controls.isEmpty()) program.dispose(controls.pop());
        Widget_SetData(bar, null);
        program.dispose(sheet);
        program.dispose(window);
    }
}
