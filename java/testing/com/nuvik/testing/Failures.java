package com.nuvik.testing;

import java.nio.file.Path;
import java.nio.file.Paths;

/** What is left for a person to look at when a test or a script fails. */
final class Failures {
    private Failures() {}

    /** Where pictures are left: {@code test-failures}, or what the property zemvolt.failures names. */
    static Path folder() {
        return Paths.get(System.getProperty("zemvolt.failures", "test-failures"));
    }

    /** Prints the tree and leaves a picture. A device that is stuck has no tree, and still a screen. */
    static void tell(Device device, String name) {
        System.err.println();
        System.err.println("On the screen when " + name + " failed:");
        try {
            System.err.print(device.readTree());
        } catch (TestFailure busy) {
            System.err.println(busy.getMessage());
        } catch (LinkageError noDevice) {
            System.err.println("nothing: there is no device");
            return;
        }
        Path file = folder().resolve(name.replaceAll("[^A-Za-z0-9._-]", "_") + ".png");
        device.currentPicture().save(file);
        System.err.println("screenshot: " + file);
    }
}
