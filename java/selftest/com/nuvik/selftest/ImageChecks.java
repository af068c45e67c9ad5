package com.nuvik.selftest;

import com.nuvik.wyx.dovr.OS;

/** Images made of numbers, and copies of them. */
final class ImageChecks extends Checks {
    private static final int[] DIRECT = {16, 24, 32};
    private static final int[] INDEXED = {1, 2, 4, 8};
    private static final int WIDTH = 6;
    private static final int HEIGHT = 5;

    String title() {
        return "image";
    }

    void run() {
        for (int i = 0; i < DIRECT.length; i++) direct(DIRECT[i]);
        for (int i = 0; i < INDEXED.length; i++) indexed(INDEXED[i]);
        copies();
        at("image without size");
        came(made(com.nuvik.wyx.k4tr.OS.Image_NewFromSize(stage.display, 0, 0, 0)));
    }

    private void direct(int depth) {
        int[] pixels = new int[WIDTH * HEIGHT];
        for (int i = 0; i < pixels.length; i++) pixels[i] = i * 0x080402;
        int image =
                com.nuvik.wyx.k4tr.OS.Image_NewFromIntData(
                        stage.display, WIDTH, HEIGHT, pixels, depth, -1, -1, null);
        describe("of " + depth + " bits", image);
        at("masks of " + depth + " bits");
        came(list(OS.Image_GetDirectPaletteMasks(image)));
        at("pixels of " + depth + " bits");
        came(Picture.sum(OS.Image_GetPixelsHighColor(image)));
        com.nuvik.wyx.k4tr.OS.Image_Dispose(image);
    }

    private void indexed(int depth) {
        int colors = 1 << depth;
        byte[] red = new byte[colors];
        byte[] green = new byte[colors];
        byte[] blue = new byte[colors];
        for (int i = 0; i < colors; i++) {
            red[i] = (byte) (i * 7);
            green[i] = (byte) (255 - i);
            blue[i] = (byte) (i * 255 / colors);
        }
        byte[] data = new byte[8 * HEIGHT];
        for (int i = 0; i < data.length; i++) data[i] = (byte) (i * 37);
        int image =
                com.nuvik.wyx.k4tr.OS.Image_NewFromByteData(
                        stage.display, WIDTH, HEIGHT, data, 8, depth, red, green, blue, colors, 1);
        describe("of " + depth + " bits and a palette", image);
        at("palette of " + depth + " bits");
        byte[] read = new byte[colors];
        OS.Image_GetIndexedPalette(image, new byte[colors], read, new byte[colors]);
        came(Picture.sum(read));
        at("drawn of " + depth + " bits");
        Picture picture = new Picture(stage.display);
        com.nuvik.wyx.k4tr.OS.Graphics_DrawImage(picture.graphics, image, 3, 3);
        came(picture.look());
        picture.dispose();
        com.nuvik.wyx.k4tr.OS.Image_Dispose(image);
    }

    private void describe(String name, int image) {
        at(name);
        came(describe(image));
    }

    static String describe(int image) {
        int[] bounds = com.nuvik.wyx.k4tr.OS.Image_GetBounds(image);
        return bounds[2] + " x " + bounds[3] + ", " + com.nuvik.wyx.k4tr.OS.Image_GetDepth(image)
                + " bits, " + (OS.Image_IsDirect(image) ? "colors" : "palette") + ", transparent "
                + OS.Image_GetTransparentColor(image);
    }

    private void copies() {
        Picture picture = new Picture(stage.display);
        com.nuvik.wyx.k4tr.OS.Graphics_FillRectangle(picture.graphics, 2, 3, 10, 4);
        OS.Image_SetRGB(picture.image, 30, 1, 0x123456);
        at("copy");
        int copy = OS.Image_NewFromHandle(stage.display, picture.image);
        came(Picture.look(copy, Picture.WHITE));
        com.nuvik.wyx.k4tr.OS.Image_Dispose(copy);
        for (int how = 1; how < 4; how++) {
            at("mirrored " + how);
            int flipped = OS.Image_Flip(picture.image, (how & 1) != 0, (how & 2) != 0, 0, 0, 32, 32);
            came(Picture.look(flipped, Picture.WHITE));
            com.nuvik.wyx.k4tr.OS.Image_Dispose(flipped);
        }
        picture.dispose();
    }
}
