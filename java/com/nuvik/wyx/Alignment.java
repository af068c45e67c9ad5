package com.nuvik.wyx;

/**
 * Where the text of a label or a button stands. Of several a label takes left before right before
 * centre, a button left before centre before right.
 */
public final class Alignment {
    private Alignment() {}

    /** At the left. */
    public static final int LEFT = 1;

    /** In the middle. */
    public static final int CENTER = 2;

    /** At the right. */
    public static final int RIGHT = 4;
}
