package com.nuvik.wyx;

/** The button of a pointer event. */
public final class PointerButton {
    private PointerButton() {}

    /** None: the pointer moves. */
    public static final int NONE = 0;

    /** The left button, or the pen. */
    public static final int LEFT = 8;

    /** The middle button. */
    public static final int MIDDLE = 16;

    /** The right button. */
    public static final int RIGHT = 32;
}
