package com.nuvik.selftest;

import com.nuvik.wyx.Key;
import com.nuvik.wyx.KeyKind;
import com.nuvik.wyx.Modifier;
import com.nuvik.wyx.dovr.OS;

/** Menu bars, menus, their items and the keys that choose them. */
final class MenuChecks extends Checks {
    private static final int CONTROL = Modifier.CONTROL << 16;

    String title() {
        return "menu";
    }

    void run() {
        items();
        keys();
        bar();
        popup();
    }

    /** An item can be described only in the size that the system knows. */
    private void items() {
        int menu = OS.DropDownMenu_New(stage.shell);
        at("new menu");
        came(made(menu));
        at("new item");
        int first = OS.PushMenuItem_New(menu, 0);
        came(made(first));
        at("text of an item");
        OS.LabeledMenuItem_SetText(first, "First", "Ctrl+F");
        done();
        at("new separator");
        int line = OS.SeparatorItem_New(menu, 1);
        came(made(line));
        at("new state item");
        int state = OS.StateMenuItem_New(menu, 2, 0);
        came(made(state));
        at("mark of an item");
        OS.StateMenuItem_SetSelection(state, true);
        done();
        at("item disabled");
        OS.AbstractMenuItem_SetEnabled(first, false);
        done();
        at("item past the end");
        int far = OS.PushMenuItem_New(menu, 50);
        came(made(far));
        if (far != 0) {
            at("text of an item past the end");
            OS.LabeledMenuItem_SetText(far, "Far", null);
            done();
            stage.dispose(far);
        }
        at("sub-menu");
        int cascade = OS.CascadeMenuItem_New(menu, 0);
        int below = OS.DropDownMenu_New(stage.shell);
        OS.LabeledMenuItem_SetText(cascade, "Below", null);
        OS.CascadeMenuItem_SetMenu(cascade, below);
        came(made(cascade));
        at("sub-menu taken away");
        OS.CascadeMenuItem_SetMenu(cascade, 0);
        done();
        stage.dispose(cascade);
        stage.dispose(below);
        stage.dispose(state);
        stage.dispose(line);
        stage.dispose(first);
        stage.dispose(menu);
    }

    private void keys() {
        int menu = OS.DropDownMenu_New(stage.shell);
        int item = OS.StateMenuItem_New(menu, 0, 0);
        OS.LabeledMenuItem_SetText(item, "Grid", "Ctrl+G");
        OS.LabeledMenuItem_SetAccelerator(item, CONTROL | 'g');
        Recorder recorder = stage.listen(item);
        at("key of an item");
        OS.Control_ForceFocus(stage.shell);
        OS.Display_PostKeyEvent(stage.display, KeyKind.PRESSED, Key.CONTROL, '\0');
        stage.key('g');
        OS.Display_PostKeyEvent(stage.display, KeyKind.RELEASED, Key.CONTROL, '\0');
        stage.await(recorder, "menu 0");
        came(recorder.take("menu"));
        stage.dispose(item);
        stage.dispose(menu);
    }

    private void bar() {
        at("new bar");
        int bar = OS.MenuBar_New(stage.shell);
        came(made(bar));
        if (bar == 0) return;
        at("new item of a bar");
        int item = OS.PushMenuItem_New(bar, 0);
        came(made(item));
        at("text of an item of a bar");
        OS.LabeledMenuItem_SetText(item, "Done", null);
        done();
        at("menu of a bar");
        int cascade = OS.CascadeMenuItem_New(bar, 1);
        int menu = OS.DropDownMenu_New(stage.shell);
        OS.LabeledMenuItem_SetText(cascade, "More", null);
        OS.CascadeMenuItem_SetMenu(cascade, menu);
        came(made(cascade));
        at("item of a bar past the end");
        int far = OS.PushMenuItem_New(bar, 50);
        came(made(far));
        if (far != 0) stage.dispose(far);
        at("bar shown");
        OS.Shell_SetMenuBar(stage.shell, bar);
        stage.settle();
        done();
        at("item of a bar disabled");
        OS.AbstractMenuItem_SetEnabled(item, false);
        done();
        at("bar taken away");
        OS.Shell_SetMenuBar(stage.shell, 0);
        stage.settle();
        done();
        stage.dispose(cascade);
        stage.dispose(menu);
        stage.dispose(item);
        stage.dispose(bar);
    }

    /** The keys that choose wait when the menu opens. */
    private void popup() {
        int menu = OS.PopupMenu_New(stage.room);
        int item = OS.PushMenuItem_New(menu, 0);
        OS.LabeledMenuItem_SetText(item, "Mark", null);
        Recorder recorder = stage.listen(item);
        at("item of a pop-up");
        stage.key(Key.DOWN);
        stage.key('\r');
        OS.PopupMenu_Show(menu, 10, 10);
        stage.await(recorder, "menu 0");
        came(recorder.take("menu"));
        stage.dispose(item);
        stage.dispose(menu);
    }
}
