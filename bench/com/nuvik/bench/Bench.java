package com.nuvik.bench;

import com.nuvik.wyx.Style;
import com.nuvik.wyx.k4tr.OS;
import java.io.ByteArrayOutputStream;
import java.io.DataOutputStream;
import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.util.Random;
import java.util.zip.CRC32;
import java.util.zip.DeflaterOutputStream;

/** Prints what the library adds to the plain way of doing the same, side by side from one run. */
public final class Bench {
    private static final int ROUNDS = 15;
    private static final int CALLS = 20000;

    private Bench() {}

    /** Receives the measured callback. */
    public static final class Receiver {
        int calls;

        void selected() {
            ++calls;
        }
    }

    private interface Call {
        int run(int argument);
    }

    private static double best(Call call, double soFar) {
        int sum = 0;
        long start = System.nanoTime();
        for (int i = 0; i < CALLS; i++) sum += call.run(i);
        double once = (double) (System.nanoTime() - start) / CALLS;
        if (sum == 42) System.out.println(); // the calls must not be optimised away
        return Math.min(once, soFar);
    }

    private static void row(String what, double ours, double plain, String limit) {
        System.out.printf(
                "| %-44s | %8.1f | %8.1f | %5.2f | %-5s |%n", what, ours, plain, ours / plain, limit);
    }

    private static void row(String what, int[] tenths, String limit) {
        row(what, tenths[0] / 10.0, tenths[1] / 10.0, limit);
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
            row(PRIMITIVES[i] + " / the system's calls", Natives.primitive(graphics, i), "1.10");
        int[] pixels = new int[width * height];
        byte[] alpha = new byte[width * height];
        for (int i = 0; i < pixels.length; i++) {
            pixels[i] = i * 31;
            alpha[i] = (byte) (i % 254 + 1);
        }
        int image =
                OS.Image_NewFromIntData(display, width, height, pixels, 24, -1, -1, alpha);
        row("full-screen alpha image / alpha blit", Natives.alphaImage(graphics, image), "");
        row("its blending alone / alpha blit", Natives.blending(image), "1.00");
        OS.Graphics_Dispose(graphics);
        OS.Image_Dispose(image);
        OS.Image_Dispose(target);
    }

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
            row(CONVERSIONS[i] + " / copy", Natives.conversion(i), "3.00");
        int image = OS.Image_NewFromSize(display, 240, 320, 0x123456);
        row("pixels read into Java's array / copy", Natives.read(image, new int[240 * 320]), "3.00");
        OS.Image_Dispose(image);
        row("640x480 of 24 bits / the system's decoder",
                Natives.decoding(png(640, 480, false), false), "1.15");
        row("640x480 of 32 bits / the system's decoder",
                Natives.decoding(png(640, 480, true), true), "1.15");
        row("32x32 of 32 bits / the system's decoder",
                Natives.decoding(png(32, 32, true), true), "");
    }

    public static void main(String[] arguments) throws IOException {
        OS.wyxErrorHandler = (function, code, message) -> System.out.println(function + message);
        int display = OS.Display_New();
        OS.Display_InitCallbacks(display, "bench");
        OS.Display_RegisterCallback(
                display, OS.CB_SELECTION, "com/nuvik/bench/Bench$Receiver", "selected");
        int shell = OS.Shell_New(display, 0);
        int control = com.nuvik.wyx.dovr.OS.PushButton_New(shell, 0);
        OS.Widget_SetData(control, new Receiver());

        System.out.println("| measured (nanoseconds, best of 15 rounds)    |     ours |    plain | ratio | limit |");
        System.out.println("|---|---|---|---|---|");
        double ours = Double.MAX_VALUE;
        double plain = Double.MAX_VALUE;
        for (int round = 0; round < ROUNDS; round++) {
            ours = best(com.nuvik.wyx.dovr.OS::Platform_GetCapability, ours);
            plain = best(Natives::empty, plain);
        }
        row("native call / empty native", ours, plain, "");
        row("fired callback / GetEnv + CallVoidMethod", Natives.callback(control), "1.30");
        row("message through the chain / bare subclass", Natives.message(control), "");
        int bothBars = Style.HORIZONTAL_SCROLL | Style.VERTICAL_SCROLL;
        int list = com.nuvik.wyx.dovr.OS.List_New(shell, bothBars);
        for (int items : new int[] {1000, 10000})
            row("one of " + items + " list items / list box + measuring", Natives.listItem(list, items), "");
        drawing(display);
        images(display);
        OS.Widget_Dispose(shell);
        OS.Device_Dispose(display);
    }
}
