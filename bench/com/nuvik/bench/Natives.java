package com.nuvik.bench;

/** Measurements made in native code; each gives tenths of nanoseconds: ours, then the plain way. */
final class Natives {
    private Natives() {}

    static native int empty(int id);

    static native int[] callback(int widget);

    static native int[] message(int control);
}
