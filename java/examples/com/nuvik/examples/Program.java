package com.nuvik.examples;

import com.nuvik.wyx.k4tr.OS;

/** The display and event loop that every example needs. */
final class Program {
    private static final int CLOSE_REQUESTED = 201;

    final int display;
    private boolean running = true;

    /** Receives the events of one widget; a widget overrides what it wants to know. */
    static class Listener {
        void selected() {}

        void window(int event) {}

        boolean key(int kind, char character, int keyCode, int modifiers) {
            return false;
        }
    }

    Program() {
        OS.wyxErrorHandler =
                (function, code, message) -> {
                    throw new IllegalStateException(function + ": " + message + " (" + code + ")");
                };
        display = OS.Display_New();
        OS.Display_InitCallbacks(display, this);
        String listener = Listener.class.getName().replace('.', '/');
        OS.Display_RegisterCallback(display, OS.CB_SELECTION, listener, "selected");
        OS.Display_RegisterCallback(display, OS.CB_WINDOW_EVENT, listener, "window");
        OS.Display_RegisterCallback(display, OS.CB_KEY, listener, "key");
    }

    /** A shell that ends the program when the person closes it. */
    int newMainShell(String title) {
        final int hasCloseBox = 1;
        int shell = OS.Shell_New(display, hasCloseBox);
        OS.Shell_SetText(shell, title);
        OS.Widget_SetData(
                shell,
                new Listener() {
                    @Override
                    void window(int event) {
                        if (event == CLOSE_REQUESTED) running = false;
                    }
                });
        return shell;
    }

    /** Dispatches events until the main shell is closed. */
    void run() {
        while (running) {
            if (!OS.Display_ReadAndDispatch(display)) OS.Display_Sleep(display);
        }
    }

    /** Takes a widget's listener away and disposes of it. */
    void dispose(int widget) {
        OS.Widget_SetData(widget, null);
        OS.Widget_Dispose(widget);
    }

    void end() {
        OS.Device_Dispose(display);
    }
}
