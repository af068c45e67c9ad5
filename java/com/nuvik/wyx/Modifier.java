package com.nuvik.wyx;

/**
 * What is held during a key or pointer event, added up. Accelerators have the first three in their
 * high 16 bits.
 */
public final class Modifier {
    private Modifier() {}

    /** The Alt key. */
    public static final int ALT = 1;

    /** The Shift key. */
    public static final int SHIFT = 2;

    /** The Control key. */
    public static final int CONTROL = 4;

    /** The pointer's left button, or the pen. Not of the event's own button, and not of keys. */
    public static final int LEFT_BUTTON = 8;

    /** The pointer's middle button. */
    public static final int MIDDLE_BUTTON = 16;

    /** The pointer's right button. */
    public static final int RIGHT_BUTTON = 32;

    /**
     * The event asks for a context menu: tap and hold was recognised, or the right button released.
     */
    public static final int CONTEXT_GESTURE = 64;
}
