package com.nuvik.testing;

import java.nio.ByteBuffer;
import java.nio.ByteOrder;

/** What the device has played of one sound: samples in the format that they were given in. */
public final class Sound {
    private static final int FORMAT = 20;
    private static final int CHANNELS = 22;
    private static final int RATE = 24;
    private static final int BITS = 34;
    private static final int SAMPLES = 44;

    private final ByteBuffer file;

    /** @param wave a whole WAV file with the header that the device writes */
    Sound(byte[] wave) {
        file = ByteBuffer.wrap(wave).order(ByteOrder.LITTLE_ENDIAN);
    }

    /**
     * How many samples each channel has for a second.
     *
     * @return the rate, such as 22050
     */
    public int rate() {
        return file.getInt(RATE);
    }

    /**
     * How many channels it has.
     *
     * @return 1 or 2
     */
    public int channels() {
        return file.getShort(CHANNELS);
    }

    /**
     * How many bits each sample has.
     *
     * @return 8 or 16
     */
    public int bits() {
        return file.getShort(BITS);
    }

    /**
     * How its samples are coded.
     *
     * @return 1 for plain numbers; others as in WAV files
     */
    public int coding() {
        return file.getShort(FORMAT);
    }

    /**
     * The samples that were played.
     *
     * @return their bytes, as they were given
     */
    public byte[] bytes() {
        byte[] bytes = new byte[file.capacity() - SAMPLES];
        System.arraycopy(file.array(), SAMPLES, bytes, 0, bytes.length);
        return bytes;
    }

    /**
     * How long it was played.
     *
     * @return milliseconds
     */
    public int milliseconds() {
        long bytesPerSecond = (long) rate() * channels() * bits() / 8;
        return (int) ((file.capacity() - SAMPLES) * 1000L / bytesPerSecond);
    }
}
