package com.nuvik.testing.tests;

import static org.junit.Assert.assertTrue;

import com.nuvik.examples.Gauge;
import com.nuvik.testing.Control;
import com.nuvik.testing.Device;
import com.nuvik.testing.DeviceRule;
import com.nuvik.testing.Kind;
import com.nuvik.testing.Picture;
import org.junit.Rule;
import org.junit.Test;

/** A widget of a companion library, which has no kind of its own. */
public class GaugeTest {
    @Rule public final DeviceRule rule = new DeviceRule(Gauge.class);
    private final Device device = rule.device;

    @Test
    public void a_tap_sets_its_level() {
        assertTrue(device.treeText(), device.treeText().contains("  Gauge "));
        Control gauge = device.find(Kind.OTHER, 1);
        Picture before = gauge.picture();
        gauge.tap();
        device.waitUntil("the gauge shows another level", () -> !gauge.picture().equals(before));
    }
}
