package com.nuvik.tests;

import static com.nuvik.wyx.dovr.OS.Display_GetInsets;
import static com.nuvik.wyx.dovr.OS.Display_PostKeyEvent;
import static com.nuvik.wyx.dovr.OS.Display_PostPointerEvent;
import static com.nuvik.wyx.dovr.OS.Display_PostPointerMoveEvent;
import static com.nuvik.wyx.dovr.OS.PushButton_New;

import com.nuvik.wyx.KeyKind;
import com.nuvik.wyx.PointerButton;
import com.nuvik.wyx.PointerType;
import com.nuvik.wyx.k4tr.OS;
import java.util.ArrayList;
import java.util.Collections;
import java.util.List;
import java.util.concurrent.Callable;
import java.util.concurrent.FutureTask;

/** One display on the emulated device, made by the thread that the tests run on. */
final class Device {
    final List<String> errors = Collections.synchronizedList(new ArrayList<>());
    final int display;
    private final String missing;

    /** Keeps the events of one widget in the order of their firing. */
    static class Recorder {
        final List<String> events = new ArrayList<>();
        Thread thread;

        /** What happened to the widget itself; not paints, and nothing of the pointer. */
        List<String> takeOwn() {
            List<String> own = new ArrayList<>(events);
            own.removeIf(event -> event.matches("(paint|pointer|down).*"));
            events.clear();
            return own;
        }

        private void record(String event) {
            thread = Thread.currentThread();
            events.add(event);
        }

        void selected() {
            record("selected");
        }

        void listSelected(int index, int kind) {
            record("list " + index + " " + kind);
        }

        void choiceSelected(int index) {
            record("choice " + index);
        }

        void modified() {
            record("modified");
        }

        void menu(int code) {
            record("menu " + code);
        }

        void scrolled(int value, int kind) {
            record("scrolled " + value + " " + kind);
        }

        void wheel(int type, int x, int y, int modifiers, int amount, int notches) {
            record("wheel " + type + " " + x + " " + y + " " + modifiers + " " + amount + " " + notches);
        }

        void window(int event) {
            record("window " + event);
        }

        boolean key(int kind, char character, int keyCode, int modifiers) {
            record("key " + kind + " " + (int) character + " " + keyCode + " " + modifiers);
            return false;
        }

        void pointer(int type, int x, int y, int button, int modifiers) {
            record("pointer " + type + " " + x + " " + y + " " + button + " " + modifiers);
        }

        void focus(int change) {
            record("focus " + change);
        }

        void paint(int x, int y, int width, int height) {
            record("paint");
        }

        void resize(int width, int height) {
            record("resize " + width + " " + height);
        }

        void move(int x, int y) {
            record("move " + x + " " + y);
        }

        int pointerDown(int x, int y) {
            record("down " + x + " " + y);
            return 0;
        }
    }

    Device() {
        this(null);
    }

    /** A device whose events that have the named method have none instead. */
    Device(String missing) {
        this.missing = missing;
        OS.wyxErrorHandler =
                (function, code, message) -> errors.add(function + " " + code + " " + message);
        display = OS.Display_New();
        OS.Display_InitCallbacks(display, this);
        register(OS.CB_SELECTION, "selected");
        register(OS.CB_LIST_SELECTION, "listSelected");
        register(OS.CB_CHOICE_SELECTION, "choiceSelected");
        register(OS.CB_TEXT_MODIFIED, "modified");
        register(OS.CB_MENU_SELECTION, "menu");
        register(OS.CB_SCROLL, "scrolled");
        register(OS.CB_WHEEL, "wheel");
        register(OS.CB_WINDOW_EVENT, "window");
        register(OS.CB_KEY, "key");
        register(OS.CB_POINTER, "pointer");
        register(OS.CB_FOCUS, "focus");
        register(OS.CB_PAINT, "paint");
        register(OS.CB_RESIZE, "resize");
        register(OS.CB_MOVE, "move");
        register(OS.CB_POINTER_DOWN_QUERY, "pointerDown");
    }

    private void register(int id, String method) {
        OS.Display_RegisterCallback(
                display,
                id,
                "com/nuvik/tests/Device$Recorder",
                method.equals(missing) ? "missing" : method);
    }

    Recorder listen(int widget) {
        Recorder recorder = new Recorder();
        OS.Widget_SetData(widget, recorder);
        return recorder;
    }

    /** A listener that runs the work once and, before that, disposes of the widget if it is not 0. */
    Recorder disposing(Runnable work, int widget) {
        return new Recorder() {
            @Override
            void selected() {
                if (widget != 0) dispose(widget);
                work.run();
            }
        };
    }

    int newShell() {
        int shell = OS.Shell_New(display, 0);
        OS.Control_SetVisible(shell, true);
        dispatchAll();
        return shell;
    }

    int newButton(int parent) {
        int button = PushButton_New(parent, 0);
        OS.Control_SetBounds(button, 40, 50, 100, 40);
        OS.Control_SetVisible(button, true);
        dispatchAll();
        return button;
    }

    void dispatchAll() {
        while (OS.Display_ReadAndDispatch(display)) {}
    }

    /** A person's tap at a point of the work area, which top shells fill. */
    void tap(int x, int y) {
        int[] insets = Display_GetInsets(display);
        tapScreen(insets[0] + x, insets[1] + y);
    }

    /** A person's tap on the screen. What tracks the pointer finds the release waiting. */
    void tapScreen(int x, int y) {
        Display_PostPointerMoveEvent(display, x, y);
        Display_PostPointerEvent(display, PointerType.PRESS, PointerButton.LEFT);
        Display_PostPointerEvent(display, PointerType.RELEASE, PointerButton.LEFT);
        dispatchAll();
    }

    /** A key goes down; it is handled with the next dispatch. */
    void press(int key) {
        Display_PostKeyEvent(display, KeyKind.PRESSED, key, '\0');
    }

    void release(int key) {
        Display_PostKeyEvent(display, KeyKind.RELEASED, key, '\0');
    }

    /** Shows a control at its place in its parent. */
    int show(int control, int x, int y, int width, int height) {
        OS.Control_SetBounds(control, x, y, width, height);
        OS.Control_SetVisible(control, true);
        dispatchAll();
        return control;
    }

    /** The key goes down and up; the control with the focus gets it. */
    void pressKey(int key) {
        for (int kind : new int[] {KeyKind.PRESSED, KeyKind.RELEASED}) {
            Display_PostKeyEvent(display, kind, key, (char) 0);
            dispatchAll();
        }
    }

    /** A person's keys: lower-case letters, digits, spaces. */
    void type(String characters) {
        for (char character : characters.toCharArray()) pressKey(character);
    }

    /** The one error since the last look. */
    String onlyError() {
        if (errors.size() != 1) throw new AssertionError("not one error but " + errors);
        return errors.remove(0);
    }

    /** Runs the work on another thread while this one dispatches messages. */
    <T> T onOtherThread(Callable<T> work) throws Exception {
        FutureTask<T> task = new FutureTask<>(work);
        Thread thread =
                new Thread(
                        () -> {
                            task.run();
                            OS.Display_Wake(display);
                        });
        thread.start();
        while (!task.isDone()) {
            if (!OS.Display_ReadAndDispatch(display)) OS.Display_Sleep(display);
        }
        thread.join();
        return task.get();
    }

    void dispose(int widget) {
        OS.Widget_SetData(widget, null);
        OS.Widget_Dispose(widget);
    }

    void end() {
        dispatchAll();
        OS.Device_Dispose(display);
    }
}
