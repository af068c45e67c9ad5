package com.nuvik.testing;

/** What the kit asks and tells the emulated device. Any thread. */
final class Emulated {
    static {
        if (System.getProperty("zemvolt.storage") == null) {
            throw new IllegalStateException(
                    "this is not the emulated device; start the tests by ./zemvolt run");
        }
        // The natives come with the toolkit's.
        try {
            Class.forName("com.nuvik.wyx.k4tr.OS");
        } catch (ClassNotFoundException missing) {
            throw new IllegalStateException("the toolkit is not on the class path", missing);
        }
    }

    private Emulated() {}

    static native boolean hasDisplay();

    /** False when the display's thread has been busy all the time, or there is no display. */
    static native boolean awaitIdle(int milliseconds);

    /** What {@link Tree} reads; null as above. */
    static native String tree(int milliseconds);

    static native void movePointer(int x, int y);

    static native void pressPointer(int x, int y, boolean down);

    static native void pressKey(int key, boolean down);

    static native void typeCharacter(char character);

    /** Width, height, dots per inch. */
    static native int[] screenSize();

    /** False when the screen has another size by now. */
    static native boolean copyScreen(int[] pixels);

    /** The number of the {@link Failure}; which call of it fails, 1 the next, 0 none. */
    static native void failCall(int failure, int number);

    /** Where sounds are written from now on, as the device names files; null for nowhere. */
    static native void recordSounds(String file);

    static native void setSoundSpeed(int factor);

    static native void passSoundTime(int milliseconds);

    /** How many sounds the device has open. */
    static native int countSounds();

    static native void stopClock();

    static native void runClock();

    /** Of a clock that stands. */
    static native void passTime(int milliseconds);

    /** Milliseconds of the device's clock. */
    static native long time();

    /** When the device does the next thing by itself; Long.MAX_VALUE: never. */
    static native long nextDue();

    static native void quit();

    /** As {@code System.setSecurityManager}, which warns of itself on standard error. */
    @SuppressWarnings("removal")
    static native void setSecurityManager(SecurityManager manager);
}
