package com.nuvik.testing;

/** What the device can be asked to refuse. */
public enum Failure {
    /** A block of memory, as if there were none left. */
    MEMORY,
    /** A file that is to be opened, as if the device's storage had gone. */
    FILE,
    /** A sound that is to be played, as if another program had the output. */
    SOUND
}
