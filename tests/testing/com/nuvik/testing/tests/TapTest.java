package com.nuvik.testing.tests;

import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertFalse;

import com.nuvik.examples.Tap;
import com.nuvik.testing.Control;
import com.nuvik.testing.Device;
import com.nuvik.testing.DeviceRule;
import org.junit.Rule;
import org.junit.Test;

/** The example with one button, as a person uses it. */
public class TapTest {
    @Rule public final DeviceRule rule = new DeviceRule(Tap.class);
    private final Device device = rule.device;

    @Test
    public void counts_taps() {
        Control button = device.button("Tap me");
        button.tap();
        assertEquals("Tapped once", button.text());
        button.tap();
        assertEquals("Tapped 2 times", button.text());
    }

    @Test
    public void ends_when_the_person_closes_it() {
        assertFalse(device.hasEnded());
        device.close();
        device.awaitEnd();
    }

    @Test
    public void is_pressed_by_the_keyboard_too() {
        Control button = device.button("Tap me");
        button.tap();
        device.press("space");
        assertEquals("Tapped 2 times", button.text());
    }
}
