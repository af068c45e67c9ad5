package com.nuvik.bench;

/** Measurements made in native code; each gives tenths of nanoseconds: ours, then the plain way. */
final class Natives {
    private Natives() {}

    static native int empty(int id);

    /** What the toolkit's native of that name answers, called past the checked mode. */
    static native int red(int color);

    static native int[] callback(int widget);

    static native int[] message(int control);

    /** For one item of a list that is filled with so many. */
    static native int[] listItem(int list, int items);

    /** Ours and plain, in tenths of a nanosecond; which: see {@link Bench}. */
    static native int[] primitive(int graphics, int which);

    /** A full-screen image with alpha: the whole drawing, and the system's alpha blit. */
    static native int[] alphaImage(int graphics, int image);

    /** Its blending alone, and the system's alpha blit. */
    static native int[] blending(int image);

    /** Converting an image of the screen's size, and copying as many bytes; which: see Bench. */
    static native int[] conversion(int which);

    /** Reading a 24-bit image of the screen's size into Java's array, and copying into it. */
    static native int[] read(int image, int[] out);

    /** Decoding a file's contents, and the system's decoder alone, to 32 bits a pixel or 24. */
    static native int[] decoding(byte[] data, boolean toBgra);
}
