package com.nuvik.bench;

import static com.nuvik.wyx.dovr.OS.List_New;
import static com.nuvik.wyx.dovr.OS.PushButton_New;

import com.nuvik.wyx.Style;
import com.nuvik.wyx.k4tr.OS;
import java.io.ByteArrayOutputStream;
import java.io.DataOutputStream;
import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.util.ArrayList;
import java.util.Comparator;
import java.util.List;
import java.util.Random;
import java.util.zip.CRC32;
import java.util.zip.DeflaterOutputStream;

/**
 * Prints what the library adds to the plain way of doing the same, side by side from one run. What
 * takes more than its limit is named, and is a failure.
 */
public final class Bench {
    private static final int ROUNDS = 41;
    private static final int CALLS = 5000;

    private Bench() {}

    /** Receives the measured callback. */
    public static final class Receiver {
        int calls;

        void selected() {
            ++calls;
        }
    }

    interface Call {
        int run(int argument);
    }

    private static final List<String> overLimit = new ArrayList<>();

    private static double timeOf(Call call) {
        int sum = 0;
        long start = System.nanoTime();
        for (int i = 0; i < CALLS; i++) sum += call.run(i);
        double once = (double) (System.nanoTime() - start) / CALLS;
        if (sum == 42) System.out.println(); // the calls must not be optimised away
        return once;
    }

    /** The round of the median ratio: ours, plain, in tenths of nanoseconds. */
    static int[] compare(Call ours, Call plain) {
        List<int[]> rounds = new ArrayList<>();
        for (int round = 0; round < ROUNDS; round++)
            rounds.add(new int[] {(int) (timeOf(ours) * 10), (int) (timeOf(plain) * 10)});
        rounds.sort(Comparator.comparingDouble(round -> (double) round[0] / round[1]));
        return rounds.get(ROUNDS / 2);
    }

    static void row(String what, int[] tenths, double limit) {
        double ratio = (double) tenths[0] / tenths[1];
        System.out.printf(
                "| %-46s | %10.1f | %10.1f | %5.2f | %5.2f |%n",
                what, tenths[0] / 10.0, tenths[1] / 10.0, ratio, limit);
        if (ratio > limit)
            overLimit.add(String.format("%s: %.2f is more than %.2f", what, ratio, limit));
    }

    private static final String[] PRIMITIVES = {
        "line",
        "rectangle",
        "oval",
        "round rectangle",
        "arc of 90 degrees",
        "polygon",
        "polyline",
        "filled rectangle",
        "filled oval",
        "filled round rectangle",
        "filled arc of 90 degrees",
        "filled polygon",
        "text",
        "copy of an area"
    };

    private static void drawing(int display) {
        int width = 240;
        int height = 320;
        int target = OS.Image_NewFromSize(display, width, height, 0x808080);
        int graphics = OS.Image_NewGraphics(target);
        OS.Graphics_FillRectangle(graphics, 0, 0, 1, 1); // takes the image's bitmap
        for (int i = 0; i < PRIMITIVES.length; i++)
            row(PRIMITIVES[i] + " / the system's calls", Natives.primitive(graphics, i), 1.10);
        int[] pixels = new int[width * height];
        byte[] alpha = new byte[width * height];
        for (int i = 0; i < pixels.length; i++) {
            pixels[i] = i * 31;
            alpha[i] = (byte) (i % 254 + 1);
        }
        int image =
                OS.Image_NewFromIntData(display, width, height, pixels, 24, -1, -1, alpha);
        row("full-screen alpha image / alpha blit", Natives.alphaImage(graphics, image), 0.80);
        row("its blending alone / alpha blit", Natives.blending(image), 0.50);
        OS.Graphics_Dispose(graphics);
        OS.Image_Dispose(image);
        OS.Image_Dispose(target);
    }

    private static final double LIMIT_OF_CONVERSIONS = 2.0;
    private static final double LIMIT_OF_24_BITS = 2.5;

    private static final String[] CONVERSIONS = {
        "5-6-5 to a section of 16 bits",
        "colours to a section of 24 bits",
        "colours with one alpha to 32 bits",
        "colours with an alpha each to 32 bits",
        "5-6-5 with an alpha each to 32 bits",
        "5-6-5 with one alpha to 32 bits",
        "indices of 2 bits to a section of 4",
        "a section of 16 bits to 5-6-5",
        "a section of 24 bits to colours"
    };

    /** A PNG file's contents: slopes with noise, as photographs have. */
    private static byte[] png(int width, int height, boolean hasAlpha) throws IOException {
        int bytes = hasAlpha ? 4 : 3;
        ByteArrayOutputStream header = new ByteArrayOutputStream();
        DataOutputStream fields = new DataOutputStream(header);
        fields.writeInt(width);
        fields.writeInt(height);
        fields.write(new byte[] {8, (byte) (hasAlpha ? 6 : 2), 0, 0, 0});
        Random random = new Random(5);
        ByteArrayOutputStream packed = new ByteArrayOutputStream();
        try (DeflaterOutputStream rows = new DeflaterOutputStream(packed)) {
            for (int y = 0; y < height; y++) {
                rows.write(0);
                for (int x = 0; x < width * bytes; x++)
                    rows.write((x >> 4) + (y >> 2) + random.nextInt(3));
            }
        }
        ByteArrayOutputStream file = new ByteArrayOutputStream();
        DataOutputStream out = new DataOutputStream(file);
        out.write(new byte[] {(byte) 0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'});
        chunk(out, "IHDR", header.toByteArray());
        chunk(out, "IDAT", packed.toByteArray());
        chunk(out, "IEND", new byte[0]);
        return file.toByteArray();
    }

    private static void chunk(DataOutputStream out, String type, byte[] data) throws IOException {
        CRC32 sum = new CRC32();
        byte[] name = type.getBytes(StandardCharsets.US_ASCII);
        sum.update(name);
        sum.update(data);
        out.writeInt(data.length);
        out.write(name);
        out.write(data);
        out.writeInt((int) sum.getValue());
    }

    private static void images(int display) throws IOException {
        for (int i = 0; i < CONVERSIONS.length; i++)
            row(CONVERSIONS[i] + " / copy", Natives.conversion(i),
                    CONVERSIONS[i].contains("24 bits") ? LIMIT_OF_24_BITS : LIMIT_OF_CONVERSIONS);
        int image = OS.Image_NewFromSize(display, 240, 320, 0x123456);
        row("pixels read into Java's array / copy", Natives.read(image, new int[240 * 320]),
                LIMIT_OF_24_BITS);
        OS.Image_Dispose(image);
        row("640x480 of 24 bits / the system's decoder",
                Natives.decoding(png(640, 480, false), false), 1.15);
        row("640x480 of 32 bits / the system's decoder",
                Natives.decoding(png(640, 480, true), true), 1.15);
        row("32x32 of 32 bits / the system's decoder",
                Natives.decoding(png(32, 32, true), true), 1.25);
    }

    public static void main(String[] arguments) throws IOException {
        OS.wyxErrorHandler = (function, code, message) -> System.out.println(function + message);
        int display = OS.Display_New();
        OS.Display_InitCallbacks(display, "bench");
        OS.Display_RegisterCallback(
                display, OS.CB_SELECTION, "com/nuvik/bench/Bench$Receiver", "selected");
        int shell = OS.Shell_New(display, 0);
        int control = PushButton_New(shell, 0);
        OS.Widget_SetData(control, new Receiver());

        head();
        row("native call / empty native",
                compare(com.nuvik.wyx.dovr.OS::Platform_GetCapability, Natives::empty), 1.10);
        row("fired callback / GetEnv + CallVoidMethod", Natives.callback(control), 1.15);
        row("message through the chain / bare subclass", Natives.message(control), 1.30);
        int bothBars = Style.HORIZONTAL_SCROLL | Style.VERTICAL_SCROLL;
        int list = List_New(shell, bothBars);
        for (int items : new int[] {1000, 10000})
            row("one of " + items + " list items / list box + measuring",
                    Natives.listItem(list, items), 1.30);
        drawing(display);
        images(display);
        OS.Widget_Dispose(shell);
        OS.Device_Dispose(display);
        end();
    }

    static void head() {
        System.out.printf(
                "| %-46s | %10s | %10s | %5s | %5s |%n",
                "nanoseconds, the median of interleaved rounds", "ours", "plain", "ratio", "limit");
        System.out.println("|---|---|---|---|---|");
    }

    /** Ends the program, as a failure when a row was over its limit. */
    static void end() {
        for (String row : overLimit) System.err.println("bench: " + row);
        System.exit(overLimit.isEmpty() ? 0 : 1);
    }
}
