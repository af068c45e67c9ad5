package com.nuvik.testing.tests;

import com.nuvik.examples.Sound;
import com.nuvik.testing.Device;
import com.nuvik.testing.DeviceRule;
import com.nuvik.testing.Kind;
import org.junit.Rule;
import org.junit.Test;

/** The example that plays a tune. */
public class SoundTest {
    @Rule public final DeviceRule rule = new DeviceRule(Sound.class);
    private final Device device = rule.device;

    @Test
    public void tells_what_its_buttons_do() {
        device.button("Play").tap();
        device.await(Kind.LABEL, "Playing once");
        device.button("Loop").tap();
        device.await(Kind.LABEL, "Playing until it is stopped");
        device.button("Stop").tap();
        device.await(Kind.LABEL, "Stopped");
    }
}
