package com.nuvik.testing;

import java.io.IOException;
import java.io.UncheckedIOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Arrays;

/** A picture of the device's screen, or of a part of it. It does not change. */
public final class Picture {
    private static final int OPAQUE = 0xFF000000;

    private final int width;
    private final int height;
    private final int[] pixels; // alpha, red, green, blue

    /** @param pixels row by row from the top, red, green and blue; the picture's from now on */
    Picture(int width, int height, int[] pixels) {
        this(width, height, pixels, OPAQUE);
    }

    private Picture(int width, int height, int[] pixels, int alpha) {
        this.width = width;
        this.height = height;
        this.pixels = pixels;
        for (int i = 0; alpha != 0 && i < pixels.length; i++) pixels[i] |= alpha;
    }

    static Picture withAlpha(int width, int height, int[] pixels) {
        return new Picture(width, height, pixels, 0);
    }

    /**
     * Its width.
     *
     * @return pixels
     */
    public int width() {
        return width;
    }

    /**
     * Its height.
     *
     * @return pixels
     */
    public int height() {
        return height;
    }

    /**
     * One pixel.
     *
     * @param x from the left edge
     * @param y from the top edge
     * @return alpha, red, green and blue from the highest byte
     */
    public int pixel(int x, int y) {
        if (x < 0 || y < 0 || x >= width || y >= height) {
            throw new IllegalArgumentException(
                    x + "," + y + " is not in a picture of " + width + "x" + height);
        }
        return pixels[y * width + x];
    }

    int[] pixels() {
        return pixels;
    }

    /**
     * A part of it; what lies outside it is left away.
     *
     * @param x from the left edge
     * @param y from the top edge
     * @param partWidth pixels
     * @param partHeight pixels
     * @return the part
     */
    public Picture part(int x, int y, int partWidth, int partHeight) {
        int left = Math.max(x, 0);
        int top = Math.max(y, 0);
        int right = Math.max(left, Math.min(x + partWidth, width));
        int bottom = Math.max(top, Math.min(y + partHeight, height));
        int[] part = new int[(right - left) * (bottom - top)];
        for (int row = top; row < bottom; row++) {
            System.arraycopy(pixels, row * width + left, part, (row - top) * (right - left), right - left);
        }
        return withAlpha(right - left, bottom - top, part);
    }

    /**
     * Writes it as a PNG file.
     *
     * @param file the file, which is replaced; its folder is made
     */
    public void save(Path file) {
        try {
            if (file.toAbsolutePath().getParent() != null) {
                Files.createDirectories(file.toAbsolutePath().getParent());
            }
            Files.write(file, Png.encode(this));
        } catch (IOException failed) {
            throw new UncheckedIOException(file + " cannot be written", failed);
        }
    }

    /**
     * Reads a PNG file with 8 bits for each colour or index.
     *
     * @param file the file
     * @return its picture
     */
    public static Picture read(Path file) {
        try {
            return Png.decode(Files.readAllBytes(file));
        } catch (IOException failed) {
            throw new UncheckedIOException(file + " cannot be read: " + failed.getMessage(), failed);
        }
    }

    @Override
    public boolean equals(Object other) {
        if (!(other instanceof Picture)) return false;
        Picture picture = (Picture) other;
        return width == picture.width && Arrays.equals(pixels, picture.pixels);
    }

    @Override
    public int hashCode() {
        return Arrays.hashCode(pixels);
    }

    /** Its size, such as {@code 240x320}. */
    @Override
    public String toString() {
        return width + "x" + height;
    }
}
