package com.nuvik.wyx;

/** What the pointer does, as {@code CB_POINTER} tells it. */
public final class PointerType {
    private PointerType() {}

    /** A button goes down, or the pen touches. */
    public static final int PRESS = 1;

    /** A button goes up, or the pen is lifted. */
    public static final int RELEASE = 2;

    /** It moves without a press in the control. */
    public static final int MOVE = 3;

    /** It comes into the control. */
    public static final int ENTER = 4;

    /** It leaves the control. */
    public static final int EXIT = 5;

    /** It moves while what was pressed in the control is held. */
    public static final int DRAG = 6;

    /** The second press of a double click. */
    public static final int DOUBLE_CLICK = 7;
}
