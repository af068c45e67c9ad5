package com.nuvik.tests;

import static org.junit.Assert.assertEquals;

import java.util.Collections;
import org.junit.rules.ExternalResource;

/** A shell on the emulated device for the length of one test, which leaves no error unlooked at. */
final class ShownShell extends ExternalResource {
    Device device;
    int shell;

    @Override
    protected void before() {
        device = new Device();
        shell = device.newShell();
    }

    @Override
    protected void after() {
        device.dispose(shell);
        device.end();
        assertEquals(Collections.emptyList(), device.errors);
    }
}
