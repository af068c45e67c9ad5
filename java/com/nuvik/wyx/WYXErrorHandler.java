package com.nuvik.wyx;

/** Receives the errors of native methods; held in {@code com.nuvik.wyx.k4tr.OS.wyxErrorHandler}. */
public interface WYXErrorHandler {
    /**
     * Called on the failing native's thread before the native returns zero, false or null. What it
     * throws surfaces from the native.
     *
     * @param function the native's name, such as "Shell_New"
     * @param code -1 not supported, -3 failed, -4 out of memory, -6 no image decoder, -8 decoding
     *     failed
     * @param message what failed, with the system's own text behind "::" where there is one; may be
     *     null
     */
    void respond(String function, int code, String message);
}
