package com.nuvik.wyx;

/** Which way a scroll bar runs. */
public final class Orientation {
    private Orientation() {}

    /** Up and down. */
    public static final int VERTICAL = 8;

    /** From left to right. */
    public static final int HORIZONTAL = 16;
}
