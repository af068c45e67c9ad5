package com.nuvik.wyx;

/** How far the wheel scrolls, as {@code CB_WHEEL} tells it. */
public final class WheelType {
    private WheelType() {}

    /** A page for each notch. */
    public static final int BY_PAGE = 8;

    /** Some lines for each notch. */
    public static final int BY_LINES = 9;
}
