package com.nuvik.selftest;

import com.nuvik.wyx.Key;
import com.nuvik.wyx.Orientation;
import com.nuvik.wyx.Style;
import com.nuvik.wyx.dovr.OS;

/** Scroll bars, alone and of a composite. */
final class BarChecks extends Checks {
    String title() {
        return "bar";
    }

    private static String values(int bar) {
        return OS.Adjustable_GetMinimum(bar) + " " + OS.Adjustable_GetMaximum(bar) + " "
                + OS.Adjustable_GetValue(bar) + " " + OS.Adjustable_GetVisibleAmount(bar);
    }

    void run() {
        int bar = Stage.place(OS.Scrollbar_New(stage.room), 20, 10, 16, 100);
        at("at first");
        came(values(bar));
        at("range");
        OS.Adjustable_SetMinimum(bar, 10);
        OS.Adjustable_SetMaximum(bar, 300);
        OS.Adjustable_SetVisibleAmount(bar, 50);
        OS.Adjustable_SetValue(bar, 60);
        came(values(bar));
        at("value beyond the range");
        OS.Adjustable_SetValue(bar, 1000);
        came(values(bar));
        at("arrow key");
        OS.Adjustable_SetValue(bar, 20);
        OS.Adjustable_SetUnitIncrement(bar, 7);
        Recorder recorder = stage.listen(bar);
        OS.Control_ForceFocus(bar);
        stage.key(Key.DOWN);
        stage.await(recorder, "scrolled 27 1");
        came(recorder.take("scrolled"));
        at("tap on the arrow");
        stage.tap(28, 104);
        stage.await(recorder, "scrolled 34 1");
        came(recorder.take("scrolled"));
        at("turned");
        OS.Scrollbar_SetOrientation(bar, Orientation.HORIZONTAL);
        came(values(bar));
        stage.dispose(bar);
        int composite = OS.Composite_New(stage.room, Style.VERTICAL_SCROLL);
        ofComposite(Stage.place(composite, 10, 10, 100, 100));
    }

    private void ofComposite(int composite) {
        int bar = OS.Scrollable_GetVerticalBar(composite);
        at("of a composite");
        OS.Adjustable_SetMaximum(bar, 300);
        OS.Adjustable_SetVisibleAmount(bar, 100);
        OS.Adjustable_SetUnitIncrement(bar, 25);
        came(values(bar));
        at("tap on the arrow of a composite's");
        Recorder recorder = stage.listen(bar);
        stage.tap(10 + 100 - 5, 10 + 100 - 5);
        stage.await(recorder, "scrolled 25 1");
        came(recorder.take("scrolled"));
        com.nuvik.wyx.k4tr.OS.Widget_SetData(bar, null);
        stage.dispose(composite);
    }
}
