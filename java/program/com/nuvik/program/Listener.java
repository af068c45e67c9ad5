package com.nuvik.program;

import com.nuvik.wyx.FocusChange;
import com.nuvik.wyx.GestureAnswer;
import com.nuvik.wyx.WindowEvent;

/**
 * Receives the events of one widget, on the display's thread. A program overrides what it wants to know
 * and hands the listener to {@code Widget_SetData}, which holds it until other data is set. Exceptions
 * surface from {@link Program#dispatch}.
 */
public class Listener {
    private boolean isActive;
    private boolean isFocused;

    /** A listener that wants to know nothing yet. */
    public Listener() {}

    /** What the display calls, before the program hears of it. */
    final void windowEvent(int event) {
        if (event == WindowEvent.ACTIVATED) isActive = true;
        if (event == WindowEvent.DEACTIVATED) isActive = false;
        window(event);
    }

    /** What the display calls, before the program hears of it. */
    final void focusChange(int change) {
        isFocused = change == FocusChange.GAINED;
        focused(change);
    }

    /**
     * Tells whether the widget is the active window.
     *
     * @return false for all but shells
     */
    public final boolean isActive() {
        return isActive;
    }

    /**
     * Tells whether the widget has the focus.
     *
     * @return as the last event told
     */
    public final boolean isFocused() {
        return isFocused;
    }

    /** A button was clicked. */
    public void selected() {}

    /**
     * The selection of a list.
     *
     * @param index of the item; -1 for none
     * @param kind one of {@link com.nuvik.wyx.ListSelection}
     */
    public void listSelected(int index, int kind) {}

    /**
     * The selection of a choice.
     *
     * @param index of the item; -1 for none
     */
    public void choiceSelected(int index) {}

    /** A text was changed. */
    public void modified() {}

    /**
     * A part must be painted.
     *
     * @param x of the part
     * @param y of the part
     * @param width of the part
     * @param height of the part
     */
    public void paint(int x, int y, int width, int height) {}

    /**
     * Something happened to a shell.
     *
     * @param event one of {@link com.nuvik.wyx.WindowEvent}
     */
    public void window(int event) {}

    /**
     * A key.
     *
     * @param kind one of {@link com.nuvik.wyx.KeyKind}
     * @param character what it types
     * @param keyCode one of {@link com.nuvik.wyx.Key}, or an upper-case letter or digit
     * @param modifiers of {@link com.nuvik.wyx.Modifier}, added up
     * @return true when the control itself is not to handle it
     */
    public boolean key(int kind, char character, int keyCode, int modifiers) {
        return false;
    }

    /**
     * A menu item was chosen.
     *
     * @param code 0
     */
    public void menu(int code) {}

    /**
     * A scroll bar moved.
     *
     * @param value where it is now
     * @param kind one of {@link com.nuvik.wyx.ScrollKind}
     */
    public void scrolled(int value, int kind) {}

    /**
     * The wheel.
     *
     * @param type one of {@link com.nuvik.wyx.WheelType}
     * @param x on the screen
     * @param y on the screen
     * @param modifiers of {@link com.nuvik.wyx.Modifier}, added up
     * @param amount the lines of a notch
     * @param notches how many; those forward are negative
     */
    public void wheel(int type, int x, int y, int modifiers, int amount, int notches) {}

    /**
     * The pointer.
     *
     * @param type one of {@link com.nuvik.wyx.PointerType}
     * @param x from the control's left edge
     * @param y from the control's top edge
     * @param button one of {@link com.nuvik.wyx.PointerButton}
     * @param modifiers of {@link com.nuvik.wyx.Modifier}, added up
     */
    public void pointer(int type, int x, int y, int button, int modifiers) {}

    /**
     * The pointer is about to be reported as pressed.
     *
     * @param x from the control's left edge
     * @param y from the control's top edge
     * @return one of {@link GestureAnswer}
     */
    public int pointerDown(int x, int y) {
        return GestureAnswer.BY_TIME;
    }

    /**
     * A shell has another size.
     *
     * @param width in pixels
     * @param height in pixels
     */
    public void resized(int width, int height) {}

    /**
     * A shell has another place.
     *
     * @param x on the screen
     * @param y on the screen
     */
    public void moved(int x, int y) {}

    /**
     * The control has the focus, or no longer.
     *
     * @param change one of {@link com.nuvik.wyx.FocusChange}
     */
    public void focused(int change) {}
}
