package com.nuvik.examples;

import com.nuvik.program.Listener;
import com.nuvik.program.Program;
import com.nuvik.wyx.Modifier;
import com.nuvik.wyx.dovr.OS;
import java.util.ArrayDeque;
import java.util.Deque;
import java.util.HashMap;
import java.util.Map;

/** A menu bar whose items have a key each, which is pressed with Control. */
final class FormMenus {
    private final Program program;
    private final int shell;
    private final int bar;
    private final Map<Integer, Integer> lengths = new HashMap<>(); // of the menus, in items
    private final Deque<Integer> parts = new ArrayDeque<>();

    FormMenus(Program program, int shell) {
        this.program = program;
        this.shell = shell;
        bar = keep(OS.MenuBar_New(shell));
    }

    private int keep(int menuOrItem) {
        parts.push(menuOrItem);
        return menuOrItem;
    }

    /** The index of the menu's next item. */
    private int next(int menu) {
        return lengths.merge(menu, 1, Integer::sum) - 1;
    }

    int addMenu(String text) {
        int menu = keep(OS.DropDownMenu_New(shell));
        int item = keep(OS.CascadeMenuItem_New(bar, next(bar)));
        OS.LabeledMenuItem_SetText(item, text, null);
        OS.CascadeMenuItem_SetMenu(item, menu);
        return menu;
    }

    void addItem(int menu, String text, char key, Runnable action) {
        int item = keep(OS.PushMenuItem_New(menu, next(menu)));
        OS.LabeledMenuItem_SetText(item, text, "Ctrl+" + key);
        OS.LabeledMenuItem_SetAccelerator(
                item, Modifier.CONTROL << 16 | Character.toLowerCase(key));
        com.nuvik.wyx.k4tr.OS.Widget_SetData(
                item,
                new Listener() {
                    @Override
                    public void menu(int code) {
                        action.run();
                    }
                });
    }

    void addSeparator(int menu) {
        keep(OS.SeparatorItem_New(menu, next(menu)));
    }

    void show() {
        OS.Shell_SetMenuBar(shell, bar);
    }

    /** Items before their menus, and nothing while the shell shows it. */
    void dispose() {
        OS.Shell_SetMenuBar(shell, 0);
        while (!parts.isEmpty()) program.dispose(parts.pop());
    }
}
