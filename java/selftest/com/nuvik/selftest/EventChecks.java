package com.nuvik.selftest;

import com.nuvik.wyx.Key;
import com.nuvik.wyx.KeyKind;
import com.nuvik.wyx.dovr.OS;

/** Taps and keys that the program makes itself. */
final class EventChecks extends Checks {
    private static final int[] KEYS = {'a', '7', ' ', '\r', 27, 1015, 1016, 1023, 1034};

    String title() {
        return "event";
    }

    void run() {
        int button = Stage.place(OS.PushButton_New(stage.room, 0), 30, 30, 80, 30);
        Recorder recorder = stage.listen(button);
        at("tap");
        long begin = System.currentTimeMillis();
        stage.tap(50, 40);
        stage.await(recorder, "selected");
        long end = System.currentTimeMillis();
        String taps = recorder.take("");
        came(taps.substring(Math.max(0, taps.indexOf("pointer 1"))));
        figure("milliseconds of a tap", String.valueOf(end - begin));
        hundred(button);
        at("tap beside");
        recorder = stage.listen(button);
        Recorder room = stage.listen(stage.room);
        stage.tap(150, 80);
        stage.await(room, "pointer 2 150 80 8 0");
        came(recorder.take("selected") + " / " + room.take("pointer 2"));
        com.nuvik.wyx.k4tr.OS.Widget_SetData(stage.room, null);
        keys(button, recorder);
        stage.dispose(button);
    }

    private void hundred(int button) {
        at("a hundred taps");
        final int[] count = new int[1];
        Recorder counter =
                new Recorder() {
                    void selected() {
                        if (++count[0] % 100 == 0) super.selected();
                    }
                };
        com.nuvik.wyx.k4tr.OS.Widget_SetData(button, counter);
        long begin = System.currentTimeMillis();
        for (int i = 0; i < 100; i++) {
            stage.tap(50, 40);
            stage.settle();
        }
        stage.await(counter, "selected");
        long end = System.currentTimeMillis();
        came(count[0]);
        figure("milliseconds of a hundred taps", String.valueOf(end - begin));
    }

    private void keys(int button, Recorder recorder) {
        OS.Control_ForceFocus(button);
        stage.settle();
        for (int i = 0; i < KEYS.length; i++) {
            at("key " + KEYS[i]);
            recorder.take("");
            stage.key(KEYS[i]);
            stage.settle();
            came(recorder.take("key"));
        }
        at("key with Shift");
        OS.Display_PostKeyEvent(stage.display, KeyKind.PRESSED, Key.SHIFT, '\0');
        stage.key('a');
        OS.Display_PostKeyEvent(stage.display, KeyKind.RELEASED, Key.SHIFT, '\0');
        stage.settle();
        came(recorder.take("key"));
    }
}
