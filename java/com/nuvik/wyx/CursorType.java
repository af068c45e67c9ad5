package com.nuvik.wyx;

/** The system's cursors. The device has one for both directions of a line. */
public final class CursorType {
    private CursorType() {}

    /** An arrow. */
    public static final int ARROW = 1;

    /** A cross. */
    public static final int CROSS = 2;

    /** A text's insertion mark. */
    public static final int TEXT = 3;

    /** That of waiting. */
    public static final int WAIT = 4;

    /** Up and down. */
    public static final int RESIZE_NORTH = 5;

    /** Left and right. */
    public static final int RESIZE_EAST = 6;

    /** Up and down. */
    public static final int RESIZE_SOUTH = 7;

    /** Left and right. */
    public static final int RESIZE_WEST = 8;

    /** Along the rising diagonal. */
    public static final int RESIZE_NORTHEAST = 9;

    /** Along the falling diagonal. */
    public static final int RESIZE_NORTHWEST = 10;

    /** Along the rising diagonal. */
    public static final int RESIZE_SOUTHWEST = 11;

    /** Along the falling diagonal. */
    public static final int RESIZE_SOUTHEAST = 12;

    /** A hand; not every device has one. */
    public static final int HAND = 13;
}
