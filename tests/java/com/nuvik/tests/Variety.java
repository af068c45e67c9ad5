package com.nuvik.tests;

/** Which of the devices the tests run on. */
final class Variety {
    private Variety() {}

    /** Width and height of its screen. */
    static native int[] screen();

    static native int dotsPerInch();

    /** Pixels at the top of the screen; 0 without a task bar. */
    static native int taskBarHeight();
}
