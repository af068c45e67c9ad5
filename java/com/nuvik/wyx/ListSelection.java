package com.nuvik.wyx;

/** What was done to a list's item, as {@code CB_LIST_SELECTION} tells it. */
public final class ListSelection {
    private ListSelection() {}

    /** The selection changed. */
    public static final int CHANGED = 1;

    /** The item was clicked twice. */
    public static final int DOUBLE_CLICKED = 2;
}
