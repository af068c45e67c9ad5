package com.nuvik.wyx;

/** What a key does, as {@code CB_KEY} tells it. */
public final class KeyKind {
    private KeyKind() {}

    /** It is pressed, or was typed. */
    public static final int PRESSED = 1;

    /** It is released. */
    public static final int RELEASED = 2;
}
