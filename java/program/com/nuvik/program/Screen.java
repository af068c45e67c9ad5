package com.nuvik.program;

import com.nuvik.wyx.k4tr.OS;

/**
 * Places of controls that are as large to the eye on every screen: in pixels of the usual one, of 96 to
 * an inch.
 */
public final class Screen {
    private static final int USUAL_DOTS_PER_INCH = 96;

    private final int dotsPerInch;

    Screen(int display) {
        dotsPerInch = com.nuvik.wyx.dovr.OS.Device_GetDPI(display)[1];
    }

    /**
     * The pixels of this screen that are as large as so many of the usual one.
     *
     * @param usualPixels of the usual screen
     * @return of this one
     */
    public int scaled(int usualPixels) {
        return usualPixels * dotsPerInch / USUAL_DOTS_PER_INCH;
    }

    /**
     * How many pixels of the usual screen are as large as these.
     *
     * @param pixels of this screen
     * @return of the usual one
     */
    public int unscaled(int pixels) {
        return pixels * USUAL_DOTS_PER_INCH / dotsPerInch;
    }

    /**
     * Moves and sizes a control.
     *
     * @param control the control
     * @param x left edge, in pixels of the usual screen like the others
     * @param y top edge
     * @param width width
     * @param height height
     */
    public void move(int control, int x, int y, int width, int height) {
        OS.Control_SetBounds(control, scaled(x), scaled(y), scaled(width), scaled(height));
    }

    /**
     * Moves and sizes a control and shows it.
     *
     * @param control the control
     * @param x left edge, in pixels of the usual screen like the others
     * @param y top edge
     * @param width width
     * @param height height
     */
    public void place(int control, int x, int y, int width, int height) {
        move(control, x, y, width, height);
        OS.Control_SetVisible(control, true);
    }
}
