package com.nuvik.wyx.dovr;

/**
 * The widget layer of the toolkit's natives. Handles, errors, threads and units are those of the
 * base layer, {@link com.nuvik.wyx.k4tr.OS}.
 */
public final class OS {
    static {
        System.loadLibrary("zemvolt11");
    }

    private OS() {}

    /**
     * Makes a composite: a control that holds other controls.
     *
     * @param parent the shell or composite that it lies in
     * @param style 0x800 border, 0x10000 and 0x20000 horizontal and vertical scroll bar
     * @return the composite; 0 when it cannot be made. Errors: "Argument invalid, need parent" (-3)
     *     for parent 0, "Unable to create handle for widget" with the system's text
     */
    public static native int Composite_New(int parent, int style);

    /**
     * Makes a push button. A click fires {@code CB_SELECTION}.
     *
     * @param parent the shell or composite that it lies in
     * @param style 1 left, 2 centred, 4 right, 0x800 border
     * @return the button; 0 when it cannot be made. Error: "Unable to create handle for widget" with
     *     the system's text
     */
    public static native int PushButton_New(int parent, int style);

    /**
     * Makes a check box. A click toggles it and fires {@code CB_SELECTION}.
     *
     * @param parent the shell or composite that it lies in
     * @param style 1 left, 2 centred, 4 right, 0x800 border
     * @return the check box; 0 when it cannot be made. Error: "Unable to create handle for widget"
     *     with the system's text
     */
    public static native int Checkbox_New(int parent, int style);

    /**
     * Makes a radio button. A click toggles it, also off, and fires {@code CB_SELECTION}; keeping
     * one of a group selected is the listener's task.
     *
     * @param parent the shell or composite that it lies in
     * @param style 1 left, 2 centred, 4 right, 0x800 border
     * @return the radio button; 0 when it cannot be made. Error: "Unable to create handle for
     *     widget" with the system's text
     */
    public static native int RadioButton_New(int parent, int style);

    /**
     * Sets the text of a button.
     *
     * @param button a push button, check box or radio button
     * @param label null is the empty text
     */
    public static native void Button_SetLabel(int button, String label);

    /**
     * Sets the check state of a check box or radio button without firing an event.
     *
     * @param button the button; a push button has no such state
     * @param selected whether it is checked
     */
    public static native void Button_SetSelection(int button, boolean selected);

    /**
     * Makes a child shell: a window of its own that belongs to another shell.
     *
     * @param parent the shell that it belongs to; must not be 0
     * @param style 0x1 OK button in the caption, 0x20 caption, 0x40 modal, 0x800 border, 0x10000 and
     *     0x20000 horizontal and vertical scroll bar
     * @return the shell; 0 when it cannot be made. Errors as for {@code Shell_New}
     */
    public static native int Shell_NewChild(int parent, int style);

    /**
     * Smallest useful size of a control.
     *
     * @param control the control
     * @return width, height; 0, 0 when its type asks for nothing
     */
    public static native int[] Control_GetMinimumSize(int control);

    /**
     * Lets a control take input, or not. A shell outside the current modal shell stays disabled
     * until that one goes.
     *
     * @param control the control
     * @param enabled whether it takes input
     */
    public static native void Control_SetEnabled(int control, boolean enabled);

    /**
     * Switches the drawing of a control and all in it off or on. What was not drawn meanwhile is
     * drawn then.
     *
     * @param control the control
     * @param redraw whether it draws
     */
    public static native void Control_SetRedraw(int control, boolean redraw);

    /**
     * Gives a control the focus.
     *
     * @param control the control
     * @return true when it has it already, or another window had it; false when the control or its
     *     parent is hidden or disabled
     */
    public static native boolean Control_ForceFocus(int control);

    /**
     * Sounds the system's beep.
     *
     * @param display the display
     */
    public static native void Display_Beep(int display);

    /**
     * What the system's own bars take from the screen's edges.
     *
     * @param display the display
     * @return left, top, right, bottom
     */
    public static native int[] Display_GetInsets(int display);

    /**
     * Presses or releases a key, as if on the keyboard.
     *
     * @param display the display
     * @param type 1 presses, any other releases
     * @param key the toolkit's key code, or a character
     * @param character not looked at
     * @return true
     */
    public static native boolean Display_PostKeyEvent(
            int display, int type, int key, char character);

    /**
     * Presses or releases a pointer button where the pointer is.
     *
     * @param display the display
     * @param type 1 presses, any other releases
     * @param button 8 left, 16 middle, 32 right
     * @return false for another button, or when the system refuses
     */
    public static native boolean Display_PostPointerEvent(int display, int type, int button);

    /**
     * Moves the pointer.
     *
     * @param display the display
     * @param x on the screen
     * @param y on the screen
     * @return false when the system refuses
     */
    public static native boolean Display_PostPointerMoveEvent(int display, int x, int y);

    /**
     * Leaves no control with the focus.
     *
     * @param display the display
     */
    public static native void Display_ClearFocus(int display);

    /**
     * Does nothing on this platform.
     *
     * @param display the display
     * @param shell the shell
     */
    public static native void Display_SetFullScreenShell(int display, int shell);

    /**
     * What the platform can do.
     *
     * @param id the capability
     * @return 1 for id 2, 4158 for id 4, else 0
     */
    public static native int Platform_GetCapability(int id);
}
