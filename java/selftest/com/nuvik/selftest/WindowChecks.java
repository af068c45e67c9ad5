package com.nuvik.selftest;

import com.nuvik.wyx.Style;
import com.nuvik.wyx.dovr.OS;

/** Controls and shells: that they can be made, their places, sizes, colours and focus. */
final class WindowChecks extends Checks {
    private static final int[] STYLES = {
        0,
        Style.BORDER,
        Style.HORIZONTAL_SCROLL,
        Style.VERTICAL_SCROLL,
        Style.HORIZONTAL_SCROLL | Style.VERTICAL_SCROLL
    };

    String title() {
        return "window";
    }

    void run() {
        everyKind();
        places();
        composites();
        childShell();
        colors();
        focus();
        onAnotherThread();
    }

    /** Every kind needs the system's class of its name, and its procedure. */
    private void everyKind() {
        kind("push button", OS.PushButton_New(stage.room, 0));
        kind("check box", OS.Checkbox_New(stage.room, 0));
        kind("radio button", OS.RadioButton_New(stage.room, 0));
        kind("label", OS.Label_New(stage.room, 0));
        kind("text field", OS.TextField_New(stage.room, 0));
        kind("text area", OS.TextArea_New(stage.room, 0));
        kind("choice", OS.Choice_New(stage.room));
        kind("list", OS.List_New(stage.room, 0));
        kind("scroll bar", OS.Scrollbar_New(stage.room));
        kind("composite", OS.Composite_New(stage.room, 0));
    }

    private void kind(String name, int control) {
        at("new " + name);
        came(made(control));
        if (control == 0) return;
        at("smallest " + name);
        came(OS.Control_GetMinimumSize(control));
        at("background below " + name);
        came(OS.Control_InheritsBackground(control));
        stage.dispose(control);
    }

    private void places() {
        int button = Stage.place(OS.PushButton_New(stage.room, 0), 10, 20, 90, 30);
        at("bounds");
        came(com.nuvik.wyx.k4tr.OS.Control_GetBounds(button));
        at("bounds of nothing");
        Stage.place(button, -5, -6, 0, 0);
        came(com.nuvik.wyx.k4tr.OS.Control_GetBounds(button));
        at("bounds far outside");
        Stage.place(button, 2000, 3000, 40, 20);
        came(com.nuvik.wyx.k4tr.OS.Control_GetBounds(button));
        OS.Button_SetLabel(button, "Measured");
        at("smallest with a label");
        came(OS.Control_GetMinimumSize(button));
        OS.Button_SetLabel(button, "&Two words");
        at("smallest with a mark");
        came(OS.Control_GetMinimumSize(button));
        stage.dispose(button);
    }

    private void composites() {
        for (int i = 0; i < STYLES.length; i++) {
            String style = Integer.toHexString(STYLES[i]);
            int composite = Stage.place(OS.Composite_New(stage.room, STYLES[i]), 10, 10, 120, 100);
            at("insets of style " + style);
            came(com.nuvik.wyx.k4tr.OS.Scrollable_GetInsets(composite));
            if ((STYLES[i] & Style.VERTICAL_SCROLL) != 0) {
                at("vertical bar of style " + style);
                int bar = OS.Scrollable_GetVerticalBar(composite);
                came(OS.Scrollable_GetAdjustableBounds(composite, bar));
                at("insets without bar of style " + style);
                OS.Scrollable_SetAdjustableVisible(composite, bar, false);
                came(com.nuvik.wyx.k4tr.OS.Scrollable_GetInsets(composite));
            }
            stage.dispose(composite);
        }
    }

    private void childShell() {
        int child = OS.Shell_NewChild(stage.shell, Style.TITLE | Style.CLOSE_BOX);
        Recorder recorder = stage.listen(child);
        at("new child shell");
        came(made(child));
        at("insets of a child shell");
        came(com.nuvik.wyx.k4tr.OS.Scrollable_GetInsets(child));
        at("bounds of a child shell");
        Stage.place(child, 20, 100, 160, 80);
        stage.settle();
        came(com.nuvik.wyx.k4tr.OS.Control_GetBounds(child));
        at("child shell is told its size");
        came(recorder.take("resize"));
        at("child shell is resized");
        com.nuvik.wyx.k4tr.OS.Control_SetBounds(child, 30, 110, 150, 70);
        stage.settle();
        came(recorder.take("resize"));
        at("child shell is minimised");
        came(OS.Shell_GetMinimized(child));
        stage.dispose(child);
    }

    private void colors() {
        int label = Stage.place(OS.Label_New(stage.room, 0), 10, 10, 60, 20);
        at("default background");
        came(Integer.toHexString(OS.Control_GetBackgroundRGB(label)));
        at("default foreground");
        came(Integer.toHexString(OS.Control_GetForegroundRGB(label)));
        int color = com.nuvik.wyx.k4tr.OS.Color_New(stage.display, 10, 200, 30);
        OS.Control_SetBackground(label, color);
        OS.Control_SetForeground(label, color);
        at("background");
        came(Integer.toHexString(OS.Control_GetBackgroundRGB(label)));
        at("foreground");
        came(Integer.toHexString(OS.Control_GetForegroundRGB(label)));
        stage.dispose(label);
        com.nuvik.wyx.k4tr.OS.Color_Dispose(color);
        at("color beyond 255");
        came(made(com.nuvik.wyx.k4tr.OS.Color_New(stage.display, 256, 0, 0)));
    }

    private void focus() {
        int first = Stage.place(OS.PushButton_New(stage.room, 0), 10, 10, 60, 20);
        int second = Stage.place(OS.PushButton_New(stage.room, 0), 10, 40, 60, 20);
        Recorder recorder = stage.listen(first);
        at("focus");
        came(OS.Control_ForceFocus(first));
        at("focus moves on");
        OS.Control_ForceFocus(second);
        stage.settle();
        came(recorder.take("focus"));
        at("focus of a disabled control");
        OS.Control_SetEnabled(first, false);
        came(OS.Control_ForceFocus(first));
        at("focus of a hidden control");
        OS.Control_SetEnabled(first, true);
        com.nuvik.wyx.k4tr.OS.Control_SetVisible(first, false);
        came(OS.Control_ForceFocus(first));
        stage.dispose(first);
        stage.dispose(second);
    }

    private void onAnotherThread() {
        final int[] control = new int[1];
        final Recorder done = new Recorder();
        Thread other =
                new Thread() {
                    public void run() {
                        control[0] = OS.PushButton_New(stage.room, 0);
                        done.selected();
                    }
                };
        at("new button on another thread");
        other.start();
        stage.await(done, "selected");
        came(made(control[0]));
        if (control[0] != 0) stage.dispose(control[0]);
    }
}
