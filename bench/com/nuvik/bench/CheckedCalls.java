package com.nuvik.bench;

import com.nuvik.wyx.k4tr.OS;

/** Prints what the checked mode, in which it runs, adds to a call with a handle. */
public final class CheckedCalls {
    private static final double LIMIT = 3.0;

    private CheckedCalls() {}

    public static void main(String[] arguments) {
        int color = OS.Color_New(0, 1, 2, 3);
        Bench.head();
        Bench.row(
                "checked native call / unchecked one",
                Bench.compare(
                        argument -> com.nuvik.wyx.dovr.OS.Color_GetRed(color),
                        argument -> Natives.red(color)),
                LIMIT);
        OS.Color_Dispose(color);
        Bench.end();
    }
}
