package com.nuvik.testing.tests;

import static org.junit.Assert.assertThrows;
import static org.junit.Assert.assertTrue;

import com.nuvik.examples.Drawing;
import com.nuvik.examples.Tap;
import com.nuvik.testing.Device;
import com.nuvik.testing.DeviceRule;
import com.nuvik.testing.Failure;
import com.nuvik.testing.Kind;
import com.nuvik.testing.TestFailure;
import org.junit.Rule;
import org.junit.Test;

/** What the device refuses when it is asked to. */
public class FailuresTest {
    @Rule public final DeviceRule rule = new DeviceRule();
    private final Device device = rule.device;

    private void endsBy(Class<?> application, String failure) {
        String told = assertThrows(TestFailure.class, () -> device.start(application)).getMessage();
        String start = " has ended by com.nuvik.program.NativeFailure: " + failure;
        assertTrue(told, told.startsWith(application.getSimpleName() + start));
    }

    @Test
    public void memory_is_refused_once() {
        device.fail(Failure.MEMORY, 1);
        endsBy(Tap.class, "Display_New: ");
        device.start(Tap.class);
        assertTrue(device.shows(Kind.BUTTON, "Tap me"));
    }

    @Test
    public void a_file_is_refused_once() {
        device.fail(Failure.FILE, 1);
        endsBy(Drawing.class, "Image_NewFromFile: ");
        device.stop();
        device.start(Drawing.class);
    }

    @Test
    public void what_is_taken_back_is_not_refused() {
        device.fail(Failure.MEMORY, 1);
        device.fail(Failure.MEMORY, 0);
        device.start(Tap.class);
    }
}
