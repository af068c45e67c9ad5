package com.nuvik.tests;

/** What the emulated device plays. */
final class SoundOutput {
    private SoundOutput() {}

    /** How many times faster than real time; with 0 the time stands still. */
    static native void setSpeed(int factor);

    /** Lets the time pass, and returns when all that is due has been played. */
    static native void pass(int milliseconds);

    /** How many outputs are open. */
    static native int count();

    /** Whether what is played next is kept. */
    static native void record(boolean wanted);

    /** The WAV file of what was played since {@link #record}. */
    static native byte[] recorded();
}
