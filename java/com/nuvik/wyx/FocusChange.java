package com.nuvik.wyx;

/** What becomes of the focus, as {@code CB_FOCUS} tells it. */
public final class FocusChange {
    private FocusChange() {}

    /** The control has it now. */
    public static final int GAINED = 1;

    /** The control has it no longer. */
    public static final int LOST = 2;
}
