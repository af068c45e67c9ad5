package com.nuvik.testing.tests;

import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertNotEquals;
import static org.junit.Assert.assertThrows;

import com.nuvik.examples.Drawing;
import com.nuvik.testing.Control;
import com.nuvik.testing.Device;
import com.nuvik.testing.DeviceRule;
import com.nuvik.testing.Kind;
import com.nuvik.testing.Picture;
import com.nuvik.testing.TestFailure;
import java.util.ArrayList;
import java.util.List;
import org.junit.Rule;
import org.junit.Test;

/** A clock that stands still and is moved on. */
public class ClockTest {
    @Rule public final DeviceRule rule = new DeviceRule(Later.class).withStoppedClock();
    private final Device device = rule.device;

    private String said() {
        return device.find(Kind.LABEL, 1).text();
    }

    @Test
    public void what_comes_in_ten_minutes_comes_then_and_not_before() {
        device.button("minutes").tap();
        device.passTime(599_999);
        assertEquals("waiting", said());
        device.passTime(1);
        assertEquals("done", said());
    }

    @Test
    public void what_is_repeated_is_done_at_each_of_its_times() {
        device.button("again").tap();
        device.passTime(30_500);
        List<Long> expected = new ArrayList<>();
        for (long second = 0; second <= 30; second++) expected.add(second * 1000);
        assertEquals(expected, Later.TIMES);
    }

    @Test
    public void a_tap_is_held_by_its_time() {
        for (int pad = 1; pad <= 2; pad++) {
            device.find(Kind.COMPOSITE, pad).tap();
            assertNotEquals("held", said());
            device.passTime(1000);
            device.find(Kind.COMPOSITE, pad).tapAndHold();
            assertEquals("held", said());
            device.button("seconds").tap();
            device.passTime(1000);
        }
    }

    @Test
    public void two_taps_are_a_double_tap_until_time_has_passed() {
        Control pad = device.find(Kind.COMPOSITE, 1);
        pad.tap();
        device.passTime(1000);
        pad.tap();
        assertEquals("ready", said());
        pad.tap();
        assertEquals("tapped twice", said());
        device.passTime(1000);
        device.find(Kind.COMPOSITE, 2).tap();
        device.passTime(1000);
        device.button("seconds").tap();
        pad.doubleTap();
        assertEquals("tapped twice", said());
    }

    @Test
    public void a_control_is_dragged_as_far_as_it_says() {
        device.find(Kind.COMPOSITE, 1).drag(30, 5);
        assertEquals("dragged 30,5", said());
        device.find(Kind.COMPOSITE, 2).drag(-12, 40);
        assertEquals("dragged -12,40", said());
    }

    @Test
    public void waiting_passes_the_time_to_what_is_due() {
        device.button("seconds").tap();
        device.await(Kind.LABEL, "done");
        device.button("minutes").tap();
        assertEquals(
                "it is not so, and within 20.0 seconds nothing more is due by then: label \"done\" is shown",
                assertThrows(TestFailure.class, () -> device.await(Kind.LABEL, "done")).getMessage());
        device.passTime(600_000);
        assertEquals("done", said());
        assertEquals(
                "it is not so, and within 20.0 seconds nothing is due any more: label \"never\" is shown",
                assertThrows(TestFailure.class, () -> device.await(Kind.LABEL, "never")).getMessage());
    }

    @Test
    public void a_thread_that_works_is_waited_for() {
        device.button("work").tap();
        device.await(Kind.LABEL, "done");
    }

    @Test
    public void a_clock_that_runs_again_brings_what_is_due() {
        device.button("seconds").tap();
        device.passTime(4950);
        device.runClock();
        device.await(Kind.LABEL, "done");
        String failure = "the clock runs: stopClock comes first";
        assertEquals(failure, assertThrows(TestFailure.class, () -> device.passTime(1)).getMessage());
        assertEquals(failure, assertThrows(TestFailure.class, device::runClock).getMessage());
    }

    @Test
    public void the_next_application_has_a_clock_that_runs() {
        device.passTime(3_600_000);
        device.stop();
        device.start(Later.class);
        device.button("again").tap();
        device.waitUntil("it is repeated", () -> Later.TIMES.size() > 1);
    }

    @Test
    public void a_moving_picture_is_the_same_each_time() {
        Picture first = null;
        for (int run = 0; run < 2; run++) {
            device.stop();
            device.stopClock();
            device.start(Drawing.class);
            device.passTime(500);
            Picture now = device.screenshot();
            device.passTime(500);
            assertNotEquals(now, device.screenshot());
            if (first != null) assertEquals(first, now);
            first = now;
        }
    }
}
