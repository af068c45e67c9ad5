package com.nuvik.examples;

import static com.nuvik.wyx.dovr.OS.Control_SetForeground;

import com.nuvik.program.Listener;
import com.nuvik.program.Program;
import com.nuvik.wyx.k4tr.OS;

/**
 * Two gauges, which are not the toolkit's: a companion library ({@code companion/gauge.cpp}) adds
 * them. A tap fills one of them so far, and the other follows.
 */
public final class Gauge {
    private static final int BLUE = 0x2050C0;

    /**
     * Makes a gauge: it shows how full something is, and a tap in it sets that and fires {@code
     * CB_SELECTION}. Errors as for other controls.
     *
     * @param parent the shell or composite that it lies in
     * @param style 0
     * @return the gauge, which {@code Widget_Dispose} ends; 0 when it cannot be made
     */
    public static native int Gauge_New(int parent, int style);

    /**
     * Fills a gauge.
     *
     * @param gauge the gauge
     * @param level 0 empty to 100 full; beyond them it is the nearest of the two
     */
    public static native void Gauge_SetLevel(int gauge, int level);

    /**
     * How full a gauge is.
     *
     * @param gauge the gauge
     * @return 0 to 100
     */
    public static native int Gauge_GetLevel(int gauge);

    private static void follow(int leader, int follower) {
        OS.Widget_SetData(
                leader,
                new Listener() {
                    @Override
                    public void selected() {
                        int level = Gauge_GetLevel(leader);
                        Gauge_SetLevel(follower, level);
                        System.out.println("level " + level);
                    }
                });
    }

    public static void main(String[] arguments) {
        Program program = new Program();
        int shell = program.newMainShell("Gauges");
        int upper = Gauge_New(shell, 0);
        int lower = Gauge_New(shell, 0);
        int blue = OS.Color_New(program.display, BLUE >> 16, BLUE >> 8 & 0xFF, BLUE & 0xFF);
        Control_SetForeground(lower, blue);
        program.screen.place(upper, 20, 60, 200, 30);
        program.screen.place(lower, 20, 110, 200, 30);
        follow(upper, lower);
        follow(lower, upper);
        program.showMainShell();
        System.out.println("ready");
        program.run();
        program.dispose(upper);
        program.dispose(lower);
        program.dispose(shell);
        OS.Color_Dispose(blue);
        program.end();
        System.out.println("closed");
    }
}
