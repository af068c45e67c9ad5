package com.nuvik.selftest;

import com.nuvik.wyx.KeyKind;
import com.nuvik.wyx.PointerButton;
import com.nuvik.wyx.PointerType;
import com.nuvik.wyx.Style;
import com.nuvik.wyx.WYXErrorHandler;
import com.nuvik.wyx.dovr.OS;

/** The display, the program's shell with a line that tells the progress, and room for the checks. */
final class Stage {
    private static final int LINE = 22;
    private static final int PATIENCE = 3000;
    private static final int TICK = 50;

    final int display;
    final int shell;
    /** The composite that checks put their controls into, and where it lies on the screen. */
    final int room;
    final int left;
    final int top;
    private final int progress;

    Stage(final Report report) {
        com.nuvik.wyx.k4tr.OS.wyxErrorHandler =
                new WYXErrorHandler() {
                    public void respond(String function, int code, String message) {
                        report.error(function, code, message);
                    }
                };
        display = com.nuvik.wyx.k4tr.OS.Display_New();
        com.nuvik.wyx.k4tr.OS.Display_InitCallbacks(display, this);
        register(com.nuvik.wyx.k4tr.OS.CB_SELECTION, "selected");
        register(com.nuvik.wyx.k4tr.OS.CB_LIST_SELECTION, "listSelected");
        register(com.nuvik.wyx.k4tr.OS.CB_CHOICE_SELECTION, "choiceSelected");
        register(com.nuvik.wyx.k4tr.OS.CB_TEXT_MODIFIED, "modified");
        register(com.nuvik.wyx.k4tr.OS.CB_MENU_SELECTION, "menu");
        register(com.nuvik.wyx.k4tr.OS.CB_SCROLL, "scrolled");
        register(com.nuvik.wyx.k4tr.OS.CB_WINDOW_EVENT, "window");
        register(com.nuvik.wyx.k4tr.OS.CB_KEY, "key");
        register(com.nuvik.wyx.k4tr.OS.CB_POINTER, "pointer");
        register(com.nuvik.wyx.k4tr.OS.CB_POINTER_DOWN_QUERY, "pointerDown");
        register(com.nuvik.wyx.k4tr.OS.CB_FOCUS, "focus");
        register(com.nuvik.wyx.k4tr.OS.CB_RESIZE, "resize");
        register(com.nuvik.wyx.k4tr.OS.CB_MOVE, "move");

        shell = com.nuvik.wyx.k4tr.OS.Shell_New(display, Style.CLOSE_BOX);
        com.nuvik.wyx.k4tr.OS.Shell_SetText(shell, "Self-test");
        int[] bounds = com.nuvik.wyx.k4tr.OS.Control_GetBounds(shell);
        progress = OS.Label_New(shell, 0);
        place(progress, 4, 2, bounds[2] - 8, LINE - 4);
        room = OS.Composite_New(shell, 0);
        place(room, 0, LINE, bounds[2], bounds[3] - LINE);
        left = bounds[0];
        top = bounds[1] + LINE;
        com.nuvik.wyx.k4tr.OS.Control_SetVisible(shell, true);
        settle();
    }

    private void register(int id, String method) {
        String listener = "com/nuvik/selftest/Recorder";
        com.nuvik.wyx.k4tr.OS.Display_RegisterCallback(display, id, listener, method);
    }

    void tell(String text) {
        OS.Label_SetText(progress, text);
        settle();
    }

    static int place(int control, int x, int y, int width, int height) {
        com.nuvik.wyx.k4tr.OS.Control_SetBounds(control, x, y, width, height);
        com.nuvik.wyx.k4tr.OS.Control_SetVisible(control, true);
        return control;
    }

    Recorder listen(int widget) {
        Recorder recorder = new Recorder();
        com.nuvik.wyx.k4tr.OS.Widget_SetData(widget, recorder);
        return recorder;
    }

    void dispose(int widget) {
        com.nuvik.wyx.k4tr.OS.Widget_SetData(widget, null);
        com.nuvik.wyx.k4tr.OS.Widget_Dispose(widget);
    }

    /** Dispatches what has come. */
    void settle() {
        while (com.nuvik.wyx.k4tr.OS.Display_ReadAndDispatch(display)) {}
    }

    /** Dispatches until the event has come, or long enough has passed. */
    void await(Recorder recorder, String event) {
        long end = System.currentTimeMillis() + PATIENCE;
        Clock clock = new Clock();
        clock.start();
        while (!recorder.has(event) && System.currentTimeMillis() < end) dispatchOrSleep();
        clock.stopTicking();
        settle();
    }

    /** Dispatches until the person has brought one of the events about. */
    void awaitPerson(Recorder recorder, String event, String other) {
        while (!recorder.has(event) && !recorder.has(other)) dispatchOrSleep();
        settle();
    }

    private void dispatchOrSleep() {
        if (!com.nuvik.wyx.k4tr.OS.Display_ReadAndDispatch(display)) {
            com.nuvik.wyx.k4tr.OS.Display_Sleep(display);
        }
    }

    void press(int x, int y) {
        OS.Display_PostPointerMoveEvent(display, x, y);
        OS.Display_PostPointerEvent(display, PointerType.PRESS, PointerButton.LEFT);
    }

    void release() {
        OS.Display_PostPointerEvent(display, PointerType.RELEASE, PointerButton.LEFT);
    }

    /** A tap at a place in the room. */
    void tap(int x, int y) {
        press(left + x, top + y);
        release();
    }

    void key(int key) {
        OS.Display_PostKeyEvent(display, KeyKind.PRESSED, key, '\0');
        OS.Display_PostKeyEvent(display, KeyKind.RELEASED, key, '\0');
    }

    void end() {
        dispose(room);
        dispose(progress);
        dispose(shell);
        com.nuvik.wyx.k4tr.OS.Device_Dispose(display);
    }

    /** Lets a display that waits look at the time. */
    private final class Clock extends Thread {
        private boolean ticking = true;

        public void run() {
            while (ticks()) com.nuvik.wyx.k4tr.OS.Display_Wake(display);
        }

        private synchronized boolean ticks() {
            try {
                if (ticking) wait(TICK);
            } catch (InterruptedException ending) {
                ticking = false;
            }
            return ticking;
        }

        void stopTicking() {
            synchronized (this) {
                ticking = false;
                notify();
            }
            try {
                join();
            } catch (InterruptedException impossible) {
                throw new IllegalStateException(impossible.toString());
            }
        }
    }
}
