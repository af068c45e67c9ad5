package com.nuvik.selftest;

import com.nuvik.wyx.dovr.OS;

/** Which formats of sound the device takes. What is played is silence. */
final class SoundChecks extends Checks {
    private static final int PCM = 1;
    private static final int A_LAW = 6;
    private static final int MU_LAW = 7;
    private static final int[] RATES = {8000, 11025, 22050, 44100};
    private static final int FRAMES = 200;

    String title() {
        return "sound";
    }

    void run() {
        for (int i = 0; i < RATES.length; i++) {
            for (int channels = 1; channels <= 2; channels++) {
                plays(PCM, channels, RATES[i], 8);
                plays(PCM, channels, RATES[i], 16);
            }
        }
        plays(PCM, 1, 22050, 24);
        plays(PCM, 1, 22050, 32);
        plays(PCM, 6, 22050, 16);
        plays(PCM, 1, 96000, 16);
        plays(MU_LAW, 1, 8000, 8);
        plays(A_LAW, 1, 8000, 8);
        play("no sound", new byte[100]);
        int sound = OS.Sound_New();
        at("preferred chunk");
        came(OS.Sound_GetPreferredChunkSize(sound));
        OS.Sound_Dispose(sound);
    }

    private void plays(int format, int channels, int rate, int bits) {
        String name = (format == PCM ? "PCM" : format == MU_LAW ? "mu-law" : "A-law") + " " + rate + " Hz, "
                + bits + " bits, " + channels + (channels == 1 ? " channel" : " channels");
        play(name, wave(format, channels, rate, bits));
    }

    private void play(String name, byte[] file) {
        at(name);
        int sound = OS.Sound_New();
        OS.Sound_Play(sound, file, file.length, 0);
        OS.Sound_Stop(sound);
        OS.Sound_Dispose(sound);
        done();
    }

    private static byte[] wave(int format, int channels, int rate, int bits) {
        int frame = channels * bits / 8;
        int size = FRAMES * frame;
        byte[] file = new byte[44 + size];
        name(file, 0, "RIFF");
        number(file, 4, 36 + size);
        name(file, 8, "WAVEfmt ");
        number(file, 16, 16);
        number(file, 20, channels << 16 | format);
        number(file, 24, rate);
        number(file, 28, rate * frame);
        number(file, 32, bits << 16 | frame);
        name(file, 36, "data");
        number(file, 40, size);
        int silence = format == MU_LAW ? 255 : format == A_LAW ? 0xD5 : bits == 8 ? 128 : 0;
        for (int i = 44; i < file.length; i++) file[i] = (byte) silence;
        return file;
    }

    private static void name(byte[] file, int offset, String name) {
        for (int i = 0; i < name.length(); i++) file[offset + i] = (byte) name.charAt(i);
    }

    private static void number(byte[] file, int offset, int value) {
        for (int i = 0; i < 4; i++) file[offset + i] = (byte) (value >> 8 * i);
    }
}
