package com.nuvik.program;

import com.nuvik.wyx.Style;
import com.nuvik.wyx.WindowEvent;
import com.nuvik.wyx.k4tr.OS;

/**
 * What every program on the natives needs: a display with listeners, an event loop, and work that other
 * threads hand to it or that is done later. Errors of natives are thrown as {@link NativeFailure}.
 *
 * <p>The thread that makes a program is its display's thread, on which all listeners and tasks run.
 * Unless a method says otherwise it is called on that thread only.
 */
public final class Program {
    /** The display, for the natives that want one. */
    public final int display;

    /** Places of controls on the display's screen. */
    public final Screen screen;

    private final Thread thread = Thread.currentThread();
    private final Tasks tasks;
    private int mainShell;
    private Listener mainListener;
    private boolean running = true;

    /** Ends the program when the person closes its shell. */
    public class MainShell extends Listener {
        /** A listener that knows nothing but the end. */
        public MainShell() {}

        public void window(int event) {
            if (event == WindowEvent.CLOSE_REQUESTED) leave();
        }
    }

    /** Makes the display. There is one program at a time. */
    public Program() {
        OS.wyxErrorHandler = NativeFailure.HANDLER;
        display = OS.Display_New();
        screen = new Screen(display);
        tasks = new Tasks(display);
        OS.Display_InitCallbacks(display, this);
        register(OS.CB_SELECTION, "selected");
        register(OS.CB_LIST_SELECTION, "listSelected");
        register(OS.CB_CHOICE_SELECTION, "choiceSelected");
        register(OS.CB_TEXT_MODIFIED, "modified");
        register(OS.CB_PAINT, "paint");
        register(OS.CB_WINDOW_EVENT, "windowEvent");
        register(OS.CB_KEY, "key");
        register(OS.CB_MENU_SELECTION, "menu");
        register(OS.CB_SCROLL, "scrolled");
        register(OS.CB_WHEEL, "wheel");
        register(OS.CB_POINTER, "pointer");
        register(OS.CB_POINTER_DOWN_QUERY, "pointerDown");
        register(OS.CB_RESIZE, "resized");
        register(OS.CB_MOVE, "moved");
        register(OS.CB_FOCUS, "focusChange");
    }

    private void register(int id, String method) {
        String listener = Listener.class.getName().replace('.', '/');
        OS.Display_RegisterCallback(display, id, listener, method);
    }

    /**
     * Makes a shell that ends the program when the person closes it.
     *
     * @param title its title
     * @return the shell, not shown yet
     */
    public int newMainShell(String title) {
        return newMainShell(title, new MainShell());
    }

    /**
     * Makes the program's main shell.
     *
     * @param title its title
     * @param listener what hears its events; it calls {@link #leave} when it wants the end
     * @return the shell, not shown yet
     */
    public int newMainShell(String title, Listener listener) {
        mainShell = OS.Shell_New(display, Style.CLOSE_BOX);
        mainListener = listener;
        OS.Shell_SetText(mainShell, title);
        OS.Widget_SetData(mainShell, listener);
        return mainShell;
    }

    /** Shows the main shell, as {@link #show} does. */
    public void showMainShell() {
        show(mainShell, mainListener);
    }

    /**
     * Shows a shell and waits as {@link #awaitActive} does. What is said or posted to a program before
     * that may go to the window that was active until then.
     *
     * @param shell the shell
     * @param listener the shell's, set before the shell was placed: a child shell becomes active with its
     *     first place
     */
    public void show(int shell, Listener listener) {
        OS.Control_SetVisible(shell, true);
        awaitActive(listener);
    }

    /**
     * Waits until a person's keys and taps reach a shell: it is the active window, and what made it so
     * has been dispatched. Events and tasks go on meanwhile. While the person is at another program's
     * window this does not return.
     *
     * @param listener the shell's
     */
    public void awaitActive(Listener listener) {
        while (!listener.isActive()) dispatch();
        dispatchAll();
    }

    /**
     * Gives a control the focus, and returns when a person's keys reach it.
     *
     * @param control the control
     * @param listener the control's, which is set already
     * @return false when the control cannot have it, as it is hidden or disabled
     */
    public boolean focus(int control, Listener listener) {
        if (!com.nuvik.wyx.dovr.OS.Control_ForceFocus(control)) return false;
        while (!listener.isFocused()) dispatch();
        dispatchAll();
        return true;
    }

    /** Ends {@link #run}. Any thread. */
    public void leave() {
        later(
                new Runnable() {
                    public void run() {
                        running = false;
                    }
                });
    }

    /** Does what is due and dispatches one event, or waits for the next of either. */
    public void dispatch() {
        // What was done may be what the caller waits for: nothing else needs to come.
        boolean didTask = tasks.runDue();
        boolean dispatched = OS.Display_ReadAndDispatch(display);
        if (!didTask && !dispatched && !tasks.isDue()) OS.Display_Sleep(display);
    }

    /** Dispatches what has come, and waits for nothing. */
    public void dispatchAll() {
        while (OS.Display_ReadAndDispatch(display)) {}
    }

    /** Dispatches events until {@link #leave}. */
    public void run() {
        while (running) dispatch();
    }

    /**
     * Lets the display's thread do something as soon as it dispatches. Any thread.
     *
     * @param work what it does; what that throws surfaces from {@link #dispatch}
     * @return the task; it is never done when the program has ended
     */
    public Task later(Runnable work) {
        return after(0, work);
    }

    /**
     * Lets the display's thread do something and waits until it is done. Any thread; the display's own
     * does it at once.
     *
     * @param work what it does; what that throws is thrown here
     * @throws IllegalStateException when the program ends before it is done
     */
    public void call(Runnable work) {
        if (Thread.currentThread() == thread) {
            work.run();
            return;
        }
        Call call = new Call(work);
        if (!tasks.add(new Task(call, 0, Task.ONCE))) call.abandon();
        call.await();
    }

    /**
     * Lets the display's thread do something after some time. Any thread.
     *
     * @param milliseconds the least time until then
     * @param work what it does
     * @return the task, which can be cancelled
     */
    public Task after(int milliseconds, Runnable work) {
        Task task = new Task(work, milliseconds, Task.ONCE);
        tasks.add(task);
        return task;
    }

    /**
     * Lets the display's thread do something again and again. Any thread.
     *
     * @param milliseconds the least time from one start to the next, at least 1. The first is now
     * @param work what it does
     * @return the task, which goes on until it is cancelled
     */
    public Task every(int milliseconds, Runnable work) {
        Task task = new Task(work, 0, Math.max(1, milliseconds));
        tasks.add(task);
        return task;
    }

    /**
     * Takes a widget's listener away and disposes of it.
     *
     * @param widget the widget
     */
    public void dispose(int widget) {
        OS.Widget_SetData(widget, null);
        OS.Widget_Dispose(widget);
    }

    /** Ends the display, after all its widgets. Tasks that wait are not done any more. */
    public void end() {
        tasks.end();
        OS.Device_Dispose(display);
    }
}
