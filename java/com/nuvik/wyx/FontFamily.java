package com.nuvik.wyx;

/**
 * The look of a font that is made without the name of a face. Any other number leaves it to the
 * system.
 */
public final class FontFamily {
    private FontFamily() {}

    /** Without serifs. */
    public static final int SANS_SERIF = 2;

    /** With serifs. */
    public static final int SERIF = 3;

    /** All characters equally wide. */
    public static final int FIXED_PITCH = 4;
}
