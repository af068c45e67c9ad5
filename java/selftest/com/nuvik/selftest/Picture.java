package com.nuvik.selftest;

/** An image of 24 bits a pixel that is drawn on and then looked at. */
final class Picture {
    static final int SIZE = 32;
    static final int WHITE = 0xFFFFFF;

    final int image;
    final int graphics;
    private final int red;
    private final int blue;

    Picture(int display) {
        image = com.nuvik.wyx.k4tr.OS.Image_NewFromSize(display, SIZE, SIZE, WHITE);
        graphics = com.nuvik.wyx.k4tr.OS.Image_NewGraphics(image);
        red = com.nuvik.wyx.k4tr.OS.Color_New(display, 255, 0, 0);
        blue = com.nuvik.wyx.k4tr.OS.Color_New(display, 0, 0, 255);
        com.nuvik.wyx.k4tr.OS.Graphics_SetForeground(graphics, red);
        com.nuvik.wyx.k4tr.OS.Graphics_SetBackground(graphics, blue);
    }

    int background() {
        return blue;
    }

    void dispose() {
        com.nuvik.wyx.k4tr.OS.Graphics_Dispose(graphics);
        com.nuvik.wyx.k4tr.OS.Image_Dispose(image);
        com.nuvik.wyx.k4tr.OS.Color_Dispose(red);
        com.nuvik.wyx.k4tr.OS.Color_Dispose(blue);
    }

    /** What was drawn. */
    String look() {
        return look(image, WHITE);
    }

    static int[] pixels(int image) {
        int[] bounds = com.nuvik.wyx.k4tr.OS.Image_GetBounds(image);
        int[] pixels = new int[bounds[2] * bounds[3]];
        com.nuvik.wyx.k4tr.OS.Image_GetRGB(
                image, 0, 0, bounds[2], bounds[3], 0, bounds[2], pixels);
        return pixels;
    }

    /** How many pixels of an image are not the ground, the rectangle around them, and a sum of all. */
    static String look(int image, int ground) {
        int width = com.nuvik.wyx.k4tr.OS.Image_GetBounds(image)[2];
        int[] pixels = pixels(image);
        int count = 0;
        int left = width;
        int top = pixels.length;
        int right = 0;
        int bottom = 0;
        for (int i = 0; i < pixels.length; i++) {
            if ((pixels[i] & WHITE) == ground) continue;
            count++;
            left = Math.min(left, i % width);
            right = Math.max(right, i % width);
            top = Math.min(top, i / width);
            bottom = Math.max(bottom, i / width);
        }
        if (count == 0) return "nothing";
        return count + " pixels in " + left + " " + top + " " + right + " " + bottom + ", sum " + sum(pixels);
    }

    static String sum(int[] values) {
        int sum = 0;
        for (int i = 0; i < values.length; i++) sum = sum * 31 + values[i];
        return Integer.toHexString(sum);
    }

    static String sum(byte[] values) {
        int sum = 0;
        for (int i = 0; i < values.length; i++) sum = sum * 31 + values[i];
        return Integer.toHexString(sum);
    }
}
