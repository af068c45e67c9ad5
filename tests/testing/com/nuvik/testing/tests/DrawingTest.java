package com.nuvik.testing.tests;

import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertNotEquals;

import com.nuvik.examples.Drawing;
import com.nuvik.testing.Device;
import com.nuvik.testing.DeviceRule;
import com.nuvik.testing.Picture;
import org.junit.Rule;
import org.junit.Test;

/** The animated example, which stops at a tap. */
public class DrawingTest {
    @Rule public final DeviceRule rule = new DeviceRule(Drawing.class);
    private final Device device = rule.device;

    @Test
    public void a_tap_stops_the_animation_and_another_one_lets_it_go_on() {
        int x = device.screenWidth() / 2;
        int y = device.screenHeight() / 2;
        device.tap(x, y);
        Picture stopped = device.screenshot();
        for (int i = 0; i < 5; i++) device.awaitIdle();
        assertEquals(stopped, device.screenshot());
        device.tap(x, y);
        device.waitUntil("the picture moves", () -> !device.screenshot().equals(stopped));
        assertNotEquals(stopped, device.screenshot());
    }
}
