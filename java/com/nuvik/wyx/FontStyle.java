package com.nuvik.wyx;

/** The style of a font: bits that are added up. */
public final class FontStyle {
    private FontStyle() {}

    /** None of the others. */
    public static final int PLAIN = 0;

    /** Bold. */
    public static final int BOLD = 2;

    /** Italic. */
    public static final int ITALIC = 4;

    /** Underlined. */
    public static final int UNDERLINE = 8;

    /** Struck out. */
    public static final int STRIKE_OUT = 16;
}
