package com.nuvik.tests;

import static com.nuvik.wyx.dovr.OS.Image_GetIndexedPalette;
import static com.nuvik.wyx.dovr.OS.Image_GetPixelsLowColor;
import static com.nuvik.wyx.dovr.OS.Image_GetTransparentColor;
import static com.nuvik.wyx.dovr.OS.Image_IsDirect;
import static com.nuvik.wyx.dovr.OS.Image_NewFromFile;
import static com.nuvik.wyx.dovr.OS.Image_NewFromHandle;
import static org.junit.Assert.assertArrayEquals;
import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertFalse;
import static org.junit.Assert.assertNotEquals;
import static org.junit.Assert.assertNull;
import static org.junit.Assert.assertTrue;

import com.nuvik.wyx.k4tr.OS;
import java.io.ByteArrayOutputStream;
import java.io.DataOutputStream;
import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Collections;
import java.util.zip.CRC32;
import java.util.zip.DeflaterOutputStream;
import org.junit.After;
import org.junit.Before;
import org.junit.Test;

/** Images on their way from files through the device's decoders and drawing back into Java. */
public final class ImageTest {
    private static final int OPAQUE = 0xFF000000;
    private static final int WIDTH = 4;
    private static final int HEIGHT = 3;

    private Device device;

    @Before
    public void open() {
        device = new Device();
    }

    @After
    public void close() {
        device.end();
        assertEquals(Collections.emptyList(), device.errors);
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

    /** The contents of a PNG file. Type 2: three bytes a pixel; 3: one, with a palette. */
    private static byte[] png(int type, byte[] pixels, byte[] palette, byte[] alpha)
            throws IOException {
        ByteArrayOutputStream header = new ByteArrayOutputStream();
        DataOutputStream fields = new DataOutputStream(header);
        fields.writeInt(WIDTH);
        fields.writeInt(HEIGHT);
        fields.write(new byte[] {8, (byte) type, 0, 0, 0});
        ByteArrayOutputStream packed = new ByteArrayOutputStream();
        int length = pixels.length / HEIGHT;
        try (DeflaterOutputStream rows = new DeflaterOutputStream(packed)) {
            for (int row = 0; row < HEIGHT; row++) {
                rows.write(0);
                rows.write(pixels, row * length, length);
            }
        }
        ByteArrayOutputStream file = new ByteArrayOutputStream();
        DataOutputStream out = new DataOutputStream(file);
        out.write(new byte[] {(byte) 0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'});
        chunk(out, "IHDR", header.toByteArray());
        if (palette != null) chunk(out, "PLTE", palette);
        if (alpha != null) chunk(out, "tRNS", alpha);
        chunk(out, "IDAT", packed.toByteArray());
        chunk(out, "IEND", new byte[0]);
        return file.toByteArray();
    }

    /** Pixels that count: red, green and blue are 3 * i, 3 * i + 1 and 3 * i + 2. */
    private static byte[] countingPng() throws IOException {
        byte[] pixels = new byte[WIDTH * HEIGHT * 3];
        for (int i = 0; i < pixels.length; i++) pixels[i] = (byte) i;
        return png(2, pixels, null, null);
    }

    private static int[] countingColors() {
        int[] colors = new int[WIDTH * HEIGHT];
        for (int i = 0; i < colors.length; i++)
            colors[i] = OPAQUE | 3 * i << 16 | (3 * i + 1) << 8 | (3 * i + 2);
        return colors;
    }

    /** Stripes of index 1 and the transparent index 2. */
    private static byte[] stripedPng() throws IOException {
        byte[] pixels = new byte[WIDTH * HEIGHT];
        for (int i = 0; i < pixels.length; i++) pixels[i] = (byte) (1 + i % 2);
        byte[] palette = {10, 20, 30, 40, 50, 60, 70, 80, 90};
        return png(3, pixels, palette, new byte[] {-1, -1, 0});
    }

    private static int[] colorsOf(int image) {
        int[] colors = new int[WIDTH * HEIGHT];
        OS.Image_GetRGB(image, 0, 0, WIDTH, HEIGHT, 0, WIDTH, colors);
        return colors;
    }

    private static int decode(byte[] data) {
        return OS.Image_NewFromFileData(0, data, data.length);
    }

    @Test
    public void pixelsOfDataAreDrawnOverAndReadBack() throws IOException {
        int image = decode(countingPng());
        assertNotEquals(0, image);
        assertArrayEquals(new int[] {0, 0, WIDTH, HEIGHT}, OS.Image_GetBounds(image));
        assertEquals(24, OS.Image_GetDepth(image));
        assertArrayEquals(countingColors(), colorsOf(image));

        int color = OS.Color_New(0, 0x80, 0x90, 0xA0);
        int graphics = OS.Image_NewGraphics(image);
        OS.Graphics_SetBackground(graphics, color);
        OS.Graphics_FillRectangle(graphics, 1, 1, 2, 1);
        OS.Graphics_Dispose(graphics);
        OS.Color_Dispose(color);

        int[] expected = countingColors();
        expected[WIDTH + 1] = expected[WIDTH + 2] = OPAQUE | 0x8090A0;
        assertArrayEquals(expected, colorsOf(image));
        OS.Image_Dispose(image);
    }

    @Test
    public void imageOfAFileIsDrawnWithItsTransparency() throws IOException {
        Path file = Files.createTempFile("stripes", ".png");
        Files.write(file, stripedPng());
        // The device sees the machine's files on drive Z.
        int image = Image_NewFromFile(0, "Z:" + file);
        assertNotEquals(0, image);
        assertFalse(Image_IsDirect(image));
        assertEquals(2, Image_GetTransparentColor(image));
        byte[] red = new byte[3];
        byte[] green = new byte[3];
        byte[] blue = new byte[3];
        Image_GetIndexedPalette(image, red, green, blue);
        assertArrayEquals(new byte[] {10, 40, 70}, red);
        assertArrayEquals(new byte[] {20, 50, 80}, green);
        assertArrayEquals(new byte[] {30, 60, 90}, blue);
        assertArrayEquals(
                new byte[] {1, 2, 1, 2, 1, 2, 1, 2, 1, 2, 1, 2},
                Image_GetPixelsLowColor(image));

        int target = OS.Image_NewFromSize(0, WIDTH, HEIGHT, 0x123456);
        int graphics = OS.Image_NewGraphics(target);
        OS.Graphics_DrawImage(graphics, image, 0, 0);
        OS.Graphics_Dispose(graphics);
        int[] expected = new int[WIDTH * HEIGHT];
        for (int i = 0; i < expected.length; i++)
            expected[i] = OPAQUE | (i % 2 == 0 ? 0x28323C : 0x123456);
        assertArrayEquals(expected, colorsOf(target));
        OS.Image_Dispose(target);
        OS.Image_Dispose(image);
        Files.delete(file);
    }

    @Test
    public void threadsDecodeAndDisposeOnTheirOwn() throws Exception {
        byte[] data = countingPng();
        int[] colors =
                device.onOtherThread(
                        () -> {
                            int image = decode(data);
                            int[] read = colorsOf(image);
                            OS.Image_Dispose(image);
                            return read;
                        });
        assertArrayEquals(countingColors(), colors);
    }

    @Test
    public void thousandsOfImagesComeAndGo() throws IOException {
        byte[] data = stripedPng();
        for (int i = 0; i < 2000; i++) {
            int image = decode(data);
            int copy = Image_NewFromHandle(0, image);
            assertEquals(12, Image_GetPixelsLowColor(copy).length);
            OS.Image_Dispose(copy);
            OS.Image_Dispose(image);
        }
    }

    @Test
    public void failuresReachTheHandlerAndGiveNothing() throws IOException {
        assertEquals(0, decode(new byte[] {1, 2, 3}));
        assertEquals(0, Image_NewFromFile(0, "Z:/no such file.png"));
        byte[] damaged = countingPng();
        damaged[damaged.length - 20] ^= 0x55;
        assertEquals(0, decode(damaged));
        int image = decode(countingPng());
        assertNull(Image_GetPixelsLowColor(image));
        OS.Image_Dispose(image);
        assertEquals(
                "[Image_NewFromFileData -6 Failed to create IImageDecoder from IStream, "
                        + "Image_NewFromFile -3 Failed to create an IStream from a memory location",
                device.errors.subList(0, 2).toString().replaceAll("\\]$", ""));
        assertTrue(device.errors.get(2).startsWith("Image_NewFromFileData -"));
        assertEquals(
                "Image_GetPixelsLowColor -3 Pixels Low color invalid on direct color image",
                device.errors.get(3));
        assertEquals(4, device.errors.size());
        device.errors.clear();
    }
}
