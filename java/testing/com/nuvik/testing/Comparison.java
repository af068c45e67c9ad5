package com.nuvik.testing;

import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;

/**
 * Compares pictures with kept ones. A kept picture is a PNG file; where it is transparent, nothing is
 * compared. A kept picture that is not there is made, and the comparison fails once; with the property
 * {@code zemvolt.pictures=update} all are made anew, and none fails.
 *
 * <p>When a picture is not alike, two files are left in {@code test-failures}: the picture as it is, and
 * the difference, where what differs is red on what is kept, faded.
 */
public final class Comparison {
    private static final int RED = 0xFFFF0000;

    private final List<int[]> ignored = new ArrayList<>();
    private int tolerance;
    private int allowedPixels;

    /** A comparison in which all must be the same. */
    public Comparison() {}

    /**
     * Lets colours differ.
     *
     * @param most how far each of red, green and blue may be off, of 255
     * @return this comparison
     */
    public Comparison tolerance(int most) {
        tolerance = most;
        return this;
    }

    /**
     * Lets some pixels differ more than that.
     *
     * @param most how many
     * @return this comparison
     */
    public Comparison allowing(int most) {
        allowedPixels = most;
        return this;
    }

    /**
     * Leaves a part out.
     *
     * @param x pixels from the left edge
     * @param y pixels from the top edge
     * @param width pixels
     * @param height pixels
     * @return this comparison
     */
    public Comparison ignoring(int x, int y, int width, int height) {
        ignored.add(new int[] {x, y, x + width, y + height});
        return this;
    }

    /**
     * Leaves out where a control is now, for pictures of the whole screen.
     *
     * @param control the control
     * @return this comparison
     */
    public Comparison ignoring(Control control) {
        int[] bounds = control.bounds();
        return ignoring(bounds[0], bounds[1], bounds[2], bounds[3]);
    }

    /**
     * Fails unless a picture is like a kept one.
     *
     * @param picture the picture
     * @param kept the file of the kept one
     */
    public void mustBeLike(Picture picture, Path kept) {
        boolean updates = "update".equals(System.getProperty("zemvolt.pictures"));
        if (!Files.exists(kept) || updates) {
            picture.save(kept);
            if (updates) return;
            throw new TestFailure(
                    "there was no picture " + kept + " yet; it is made now: look at it and keep it");
        }
        compare(picture, Picture.read(kept), kept);
    }

    private void compare(Picture picture, Picture kept, Path file) {
        if (picture.width() != kept.width() || picture.height() != kept.height()) {
            throw new TestFailure(file + " is of " + kept + ", and the picture now of " + picture);
        }
        int[] difference = new int[picture.width() * picture.height()];
        int count = 0;
        String first = "";
        for (int i = 0; i < difference.length; i++) {
            int x = i % picture.width();
            int y = i / picture.width();
            boolean differs = !isIgnored(x, y) && !isAlike(picture.pixel(x, y), kept.pixel(x, y));
            difference[i] = differs ? RED : faded(kept.pixel(x, y));
            if (differs && count++ == 0) first = x + "," + y;
        }
        if (count <= allowedPixels) return;
        throw new TestFailure(
                "the picture is not like " + file + ": " + count
                        + (count == 1 ? " pixel differs" : " pixels differ") + ", the first at " + first
                        + leave(picture, Picture.withAlpha(picture.width(), picture.height(), difference), file));
    }

    private static String leave(Picture picture, Picture difference, Path file) {
        String name = file.getFileName().toString().replaceAll("[.]png$", "");
        Path now = Failures.folder().resolve(name + "-now.png");
        Path differing = Failures.folder().resolve(name + "-difference.png");
        picture.save(now);
        difference.save(differing);
        return "; see " + differing + " and " + now;
    }

    private boolean isIgnored(int x, int y) {
        for (int[] part : ignored) {
            if (x >= part[0] && y >= part[1] && x < part[2] && y < part[3]) return true;
        }
        return false;
    }

    private boolean isAlike(int pixel, int kept) {
        boolean isTransparent = kept >>> 24 == 0;
        return isTransparent
                || isNear(pixel >> 16, kept >> 16) && isNear(pixel >> 8, kept >> 8) && isNear(pixel, kept);
    }

    private boolean isNear(int color, int kept) {
        return Math.abs((color & 0xFF) - (kept & 0xFF)) <= tolerance;
    }

    private static int faded(int pixel) {
        int gray = ((pixel >> 16 & 0xFF) + (pixel >> 8 & 0xFF) + (pixel & 0xFF)) / 3;
        int light = 0xC0 + gray / 4;
        return 0xFF000000 | light << 16 | light << 8 | light;
    }
}
