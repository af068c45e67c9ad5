package com.nuvik.testing;

import java.io.ByteArrayOutputStream;
import java.io.DataOutputStream;
import java.io.IOException;
import java.io.UncheckedIOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.List;

/**
 * What was on the screen after each deed of a test, as an animated PNG file, which browsers show. A
 * picture that is the same as the one before it is left away.
 */
public final class Recording {
    private static final int SHOWN_MILLISECONDS = 700;

    private final List<Picture> pictures = new ArrayList<>();

    Recording() {}

    void add(Picture picture) {
        boolean isNew = pictures.isEmpty() || !picture.equals(pictures.get(pictures.size() - 1));
        boolean fits = pictures.isEmpty() || picture.width() == pictures.get(0).width();
        if (isNew && fits) pictures.add(picture);
    }

    /**
     * How many different pictures there are so far.
     *
     * @return the number
     */
    public int length() {
        return pictures.size();
    }

    /**
     * Writes what was recorded so far.
     *
     * @param file the file, which is replaced; its folder is made
     */
    public void save(Path file) {
        try {
            if (file.toAbsolutePath().getParent() != null) {
                Files.createDirectories(file.toAbsolutePath().getParent());
            }
            Files.write(file, encode());
        } catch (IOException failed) {
            throw new UncheckedIOException(file + " cannot be written", failed);
        }
    }

    private byte[] encode() throws IOException {
        ByteArrayOutputStream bytes = new ByteArrayOutputStream();
        DataOutputStream file = new DataOutputStream(bytes);
        Png.writeStart(file, pictures.get(0));
        Png.writeChunk(file, "acTL", words(pictures.size(), 0));
        int sequence = 0;
        for (Picture picture : pictures) {
            Png.writeChunk(file, "fcTL", control(sequence++, picture));
            byte[] pixels = Png.compressed(picture);
            if (picture == pictures.get(0)) {
                Png.writeChunk(file, "IDAT", pixels);
            } else {
                Png.writeChunk(file, "fdAT", joined(words(sequence++), pixels));
            }
        }
        Png.writeChunk(file, "IEND", new byte[0]);
        return bytes.toByteArray();
    }

    private static byte[] control(int sequence, Picture picture) throws IOException {
        ByteArrayOutputStream bytes = new ByteArrayOutputStream();
        DataOutputStream chunk = new DataOutputStream(bytes);
        chunk.write(words(sequence, picture.width(), picture.height(), 0, 0));
        chunk.writeShort(SHOWN_MILLISECONDS);
        chunk.writeShort(1000);
        chunk.writeShort(0); // nothing is cleared, and nothing blended
        return bytes.toByteArray();
    }

    private static byte[] words(int... words) throws IOException {
        ByteArrayOutputStream bytes = new ByteArrayOutputStream();
        DataOutputStream out = new DataOutputStream(bytes);
        for (int word : words) out.writeInt(word);
        return bytes.toByteArray();
    }

    private static byte[] joined(byte[] first, byte[] second) {
        byte[] all = new byte[first.length + second.length];
        System.arraycopy(first, 0, all, 0, first.length);
        System.arraycopy(second, 0, all, first.length, second.length);
        return all;
    }
}
