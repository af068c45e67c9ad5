package com.nuvik.examples;

import com.nuvik.wyx.WYXErrorHandler;
import com.nuvik.wyx.k4tr.OS;

/**
 * The display and event loop that every example needs. As it runs on devices too it is written for
 * their Java, like the examples that run there.
 */
final class Program {
    static final int CLOSE_REQUESTED = 201;
    private static final int USUAL_DOTS_PER_INCH = 96;

    private static int dotsPerInch;

    final int display;
    private boolean running = true;

    /** Receives the events of one widget; a widget overrides what it wants to know. */
    static class Listener {
        void selected() {}

        void listSelected(int index, int kind) {}

        void choiceSelected(int index) {}

        void modified() {}

        void paint(int x, int y, int width, int height) {}

        void window(int event) {}

        boolean key(int kind, char character, int keyCode, int modifiers) {
            return false;
        }

        void menu(int code) {}

        void scrolled(int value, int kind) {}

        void pointer(int type, int x, int y, int button, int modifiers) {}

        int pointerDown(int x, int y) {
            return 0;
        }

        void resized(int width, int height) {}

        void focused(int change) {}
    }

    /** Ends the program when the person closes its shell. */
    class MainShell extends Listener {
        void window(int event) {
            if (event == CLOSE_REQUESTED) leave();
        }
    }

    Program() {
        OS.wyxErrorHandler =
                new WYXErrorHandler() {
                    public void respond(String function, int code, String message) {
                        throw new IllegalStateException(function + ": " + message + " (" + code + ")");
                    }
                };
        display = OS.Display_New();
        dotsPerInch = com.nuvik.wyx.dovr.OS.Device_GetDPI(display)[1];
        OS.Display_InitCallbacks(display, this);
        register(OS.CB_SELECTION, "selected");
        register(OS.CB_LIST_SELECTION, "listSelected");
        register(OS.CB_CHOICE_SELECTION, "choiceSelected");
        register(OS.CB_TEXT_MODIFIED, "modified");
        register(OS.CB_PAINT, "paint");
        register(OS.CB_WINDOW_EVENT, "window");
        register(OS.CB_KEY, "key");
        register(OS.CB_MENU_SELECTION, "menu");
        register(OS.CB_SCROLL, "scrolled");
        register(OS.CB_POINTER, "pointer");
        register(OS.CB_POINTER_DOWN_QUERY, "pointerDown");
        register(OS.CB_RESIZE, "resized");
        register(OS.CB_FOCUS, "focused");
    }

    private void register(int id, String method) {
        String listener = Listener.class.getName().replace('.', '/');
        OS.Display_RegisterCallback(display, id, listener, method);
    }

    /** A shell that ends the program when the person closes it. */
    int newMainShell(String title) {
        final int hasCloseBox = 1;
        int shell = OS.Shell_New(display, hasCloseBox);
        OS.Shell_SetText(shell, title);
        OS.Widget_SetData(shell, new MainShell());
        return shell;
    }

    /** Ends {@link #run}. */
    void leave() {
        running = false;
    }

    /** The pixels of this screen that are as large to the eye as so many of the usual one. */
    static int scaled(int usualPixels) {
        return usualPixels * dotsPerInch / USUAL_DOTS_PER_INCH;
    }

    /** How many pixels of the usual screen are as large as these. */
    static int unscaled(int pixels) {
        return pixels * USUAL_DOTS_PER_INCH / dotsPerInch;
    }

    /** A control's place, in pixels of the usual screen. */
    static void move(int control, int x, int y, int width, int height) {
        OS.Control_SetBounds(control, scaled(x), scaled(y), scaled(width), scaled(height));
    }

    /** Its place and its first appearance. */
    static void place(int control, int x, int y, int width, int height) {
        move(control, x, y, width, height);
        OS.Control_SetVisible(control, true);
    }

    /** Dispatches one event, or waits for the next. */
    void dispatch() {
        if (!OS.Display_ReadAndDispatch(display)) OS.Display_Sleep(display);
    }

    /** Dispatches events until the main shell is closed. */
    void run() {
        while (running) dispatch();
    }

    /** Dispatches events until the main shell is closed, and does something at every tick. */
    void run(final int milliseconds, Runnable tick) {
        Thread clock =
                new Thread(
                        new Runnable() {
                            public void run() {
                                wakeEvery(milliseconds);
                            }
                        });
        clock.setDaemon(true);
        clock.start();
        long next = System.currentTimeMillis();
        while (running) {
            if (System.currentTimeMillis() >= next) {
                next = System.currentTimeMillis() + milliseconds;
                tick.run();
            }
            dispatch();
        }
        clock.interrupt();
        join(clock);
    }

    private void wakeEvery(int milliseconds) {
        try {
            while (true) {
                Thread.sleep(milliseconds);
                OS.Display_Wake(display);
            }
        } catch (InterruptedException leaving) {
            return;
        }
    }

    private static void join(Thread thread) {
        try {
            thread.join();
        } catch (InterruptedException impossible) {
            throw new IllegalStateException(impossible.toString());
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
