package com.nuvik.wyx;

/** What moved a scroll bar, as {@code CB_SCROLL} tells it. */
public final class ScrollKind {
    private ScrollKind() {}

    /** The upper or left arrow. */
    public static final int LINE_UP = 0;

    /** The lower or right arrow. */
    public static final int LINE_DOWN = 1;

    /** The bar above or left of the thumb. */
    public static final int PAGE_UP = 2;

    /** The bar below or right of the thumb. */
    public static final int PAGE_DOWN = 3;

    /** The thumb. */
    public static final int THUMB_DRAG = 4;

    /** To the least value. */
    public static final int TOP = 5;

    /** To the greatest value. */
    public static final int BOTTOM = 6;
}
