package com.nuvik.wyx;

/**
 * How a tap and hold is recognised: what a method of {@code CB_POINTER_DOWN_QUERY} answers. Any
 * other number is as good as {@link #NONE}.
 */
public final class GestureAnswer {
    private GestureAnswer() {}

    /** By the time for which the pen is held. */
    public static final int BY_TIME = 0;

    /** By the device's shell, with its animation. */
    public static final int BY_SHELL = 1;

    /** Not at all. */
    public static final int NONE = 2;
}
