package com.nuvik.wyx;

/** What happens to a shell, as {@code CB_WINDOW_EVENT} tells it. */
public final class WindowEvent {
    private WindowEvent() {}

    /** The person wants it closed. It stays until the program disposes of it. */
    public static final int CLOSE_REQUESTED = 201;

    /** It was minimised. */
    public static final int MINIMIZED = 203;

    /** It is the active window now. */
    public static final int ACTIVATED = 205;

    /** Another window is active now. */
    public static final int DEACTIVATED = 206;
}
