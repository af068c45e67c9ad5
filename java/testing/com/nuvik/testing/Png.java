package com.nuvik.testing;

import java.io.ByteArrayInputStream;
import java.io.ByteArrayOutputStream;
import java.io.DataInputStream;
import java.io.DataOutputStream;
import java.io.IOException;
import java.util.zip.CRC32;
import java.util.zip.DeflaterOutputStream;
import java.util.zip.InflaterInputStream;

/** PNG files of 8 bits without interlacing. */
final class Png {
    private static final byte[] SIGNATURE = {(byte) 0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    private static final int GRAY = 0;
    private static final int RGB = 2;
    private static final int INDEXED = 3;
    private static final int GRAY_ALPHA = 4;
    private static final int RGB_ALPHA = 6;

    private Png() {}

    static byte[] encode(Picture picture) throws IOException {
        ByteArrayOutputStream bytes = new ByteArrayOutputStream();
        DataOutputStream file = new DataOutputStream(bytes);
        writeStart(file, picture);
        writeChunk(file, "IDAT", compressed(picture));
        writeChunk(file, "IEND", new byte[0]);
        return bytes.toByteArray();
    }

    static void writeStart(DataOutputStream file, Picture picture) throws IOException {
        file.write(SIGNATURE);
        ByteArrayOutputStream bytes = new ByteArrayOutputStream();
        DataOutputStream header = new DataOutputStream(bytes);
        header.writeInt(picture.width());
        header.writeInt(picture.height());
        header.write(new byte[] {8, RGB_ALPHA, 0, 0, 0});
        writeChunk(file, "IHDR", bytes.toByteArray());
    }

    static void writeChunk(DataOutputStream file, String name, byte[] content) throws IOException {
        byte[] type = name.getBytes("US-ASCII");
        CRC32 sum = new CRC32();
        sum.update(type);
        sum.update(content);
        file.writeInt(content.length);
        file.write(type);
        file.write(content);
        file.writeInt((int) sum.getValue());
    }

    static byte[] compressed(Picture picture) throws IOException {
        ByteArrayOutputStream bytes = new ByteArrayOutputStream();
        byte[] row = new byte[1 + 4 * picture.width()];
        try (DeflaterOutputStream out = new DeflaterOutputStream(bytes)) {
            for (int y = 0; y < picture.height(); y++) {
                for (int x = 0; x < picture.width(); x++) {
                    int pixel = picture.pixel(x, y);
                    row[1 + 4 * x] = (byte) (pixel >> 16);
                    row[2 + 4 * x] = (byte) (pixel >> 8);
                    row[3 + 4 * x] = (byte) pixel;
                    row[4 + 4 * x] = (byte) (pixel >>> 24);
                }
                out.write(row);
            }
        }
        return bytes.toByteArray();
    }

    static Picture decode(byte[] bytes) throws IOException {
        return new Decoder(bytes).picture();
    }

    private static final class Decoder {
        private final DataInputStream file;
        private final ByteArrayOutputStream data = new ByteArrayOutputStream();
        private int width;
        private int height;
        private int kind;
        private byte[] palette = {};
        private byte[] alphas = {};

        Decoder(byte[] bytes) {
            file = new DataInputStream(new ByteArrayInputStream(bytes));
        }

        Picture picture() throws IOException {
            byte[] start = new byte[SIGNATURE.length];
            file.readFully(start);
            if (!java.util.Arrays.equals(start, SIGNATURE)) throw new IOException("it is no PNG file");
            for (String chunk = readChunk(); !chunk.equals("IEND"); ) chunk = readChunk();
            return Picture.withAlpha(width, height, pixels());
        }

        private String readChunk() throws IOException {
            int length = file.readInt();
            byte[] name = new byte[4];
            file.readFully(name);
            byte[] content = new byte[length];
            file.readFully(content);
            file.readInt(); // the sum
            String type = new String(name, "US-ASCII");
            if (type.equals("IHDR")) readHeader(content);
            if (type.equals("PLTE")) palette = content;
            if (type.equals("tRNS")) alphas = content;
            if (type.equals("IDAT")) data.write(content);
            return type;
        }

        private void readHeader(byte[] content) throws IOException {
            DataInputStream header = new DataInputStream(new ByteArrayInputStream(content));
            width = header.readInt();
            height = header.readInt();
            int bits = header.readByte();
            kind = header.readByte();
            header.readShort();
            boolean isInterlaced = header.readByte() != 0;
            if (bits != 8 || isInterlaced) {
                throw new IOException("it must have 8 bits for each colour and no interlacing");
            }
        }

        private int samples() throws IOException {
            switch (kind) {
                case GRAY:
                case INDEXED:
                    return 1;
                case GRAY_ALPHA:
                    return 2;
                case RGB:
                    return 3;
                case RGB_ALPHA:
                    return 4;
                default:
                    throw new IOException("its kind of colours is not known");
            }
        }

        private int[] pixels() throws IOException {
            int step = samples();
            int[] pixels = new int[width * height];
            byte[] before = new byte[width * step];
            try (DataInputStream rows =
                    new DataInputStream(
                            new InflaterInputStream(new ByteArrayInputStream(data.toByteArray())))) {
                for (int y = 0; y < height; y++) {
                    int filter = rows.readByte();
                    byte[] row = new byte[width * step];
                    rows.readFully(row);
                    unfilter(filter, row, before, step);
                    for (int x = 0; x < width; x++) pixels[y * width + x] = pixelOf(row, x * step);
                    before = row;
                }
            }
            return pixels;
        }

        private static void unfilter(int filter, byte[] row, byte[] above, int step) {
            for (int i = 0; i < row.length; i++) {
                int left = i < step ? 0 : row[i - step] & 0xFF;
                int up = above[i] & 0xFF;
                int corner = i < step ? 0 : above[i - step] & 0xFF;
                row[i] += (byte) predicted(filter, left, up, corner);
            }
        }

        private static int predicted(int filter, int left, int up, int corner) {
            switch (filter) {
                case 1:
                    return left;
                case 2:
                    return up;
                case 3:
                    return (left + up) / 2;
                case 4:
                    return nearest(left, up, corner);
                default:
                    return 0;
            }
        }

        private static int nearest(int left, int up, int corner) {
            int guess = left + up - corner;
            int toLeft = Math.abs(guess - left);
            int toUp = Math.abs(guess - up);
            int toCorner = Math.abs(guess - corner);
            if (toLeft <= toUp && toLeft <= toCorner) return left;
            return toUp <= toCorner ? up : corner;
        }

        private int pixelOf(byte[] row, int at) {
            switch (kind) {
                case GRAY:
                    return color(0xFF, row[at], row[at], row[at]);
                case GRAY_ALPHA:
                    return color(row[at + 1], row[at], row[at], row[at]);
                case INDEXED:
                    int index = row[at] & 0xFF;
                    int alpha = index < alphas.length ? alphas[index] : 0xFF;
                    return color(alpha, palette[3 * index], palette[3 * index + 1], palette[3 * index + 2]);
                case RGB:
                    return color(0xFF, row[at], row[at + 1], row[at + 2]);
                default:
                    return color(row[at + 3], row[at], row[at + 1], row[at + 2]);
            }
        }

        private static int color(int alpha, int red, int green, int blue) {
            return (alpha & 0xFF) << 24 | (red & 0xFF) << 16 | (green & 0xFF) << 8 | blue & 0xFF;
        }
    }
}
