package com.nuvik.testing.tests;

import static org.junit.Assert.assertArrayEquals;
import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertFalse;
import static org.junit.Assert.assertThrows;
import static org.junit.Assert.assertTrue;

import com.nuvik.examples.Sound;
import com.nuvik.testing.Device;
import com.nuvik.testing.DeviceRule;
import com.nuvik.testing.Failure;
import com.nuvik.testing.Kind;
import com.nuvik.testing.TestFailure;
import java.util.Arrays;
import java.util.List;
import org.junit.Rule;
import org.junit.Test;
import org.junit.function.ThrowingRunnable;

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

    @Test
    public void plays_the_tune_once_and_three_times() {
        device.recordSounds();
        device.button("Play").tap();
        assertTrue(device.isPlaying());
        device.playOn(999);
        assertTrue(device.isPlaying());
        device.playOn(1);
        assertFalse(device.isPlaying());
        device.button("Three times").tap();
        device.playOn(3000);
        List<com.nuvik.testing.Sound> sounds = device.sounds();
        assertEquals(2, sounds.size());
        com.nuvik.testing.Sound once = sounds.get(0);
        assertEquals(22050, once.rate());
        assertEquals(1, once.channels());
        assertEquals(16, once.bits());
        assertEquals(1, once.coding());
        assertEquals(999, once.milliseconds(), 1);
        byte[] thrice = sounds.get(1).bytes();
        int length = once.bytes().length;
        assertEquals(3 * length, thrice.length);
        assertArrayEquals(once.bytes(), Arrays.copyOfRange(thrice, 2 * length, 3 * length));
    }

    @Test
    public void a_refused_sound_is_not_played() {
        device.recordSounds();
        device.fail(Failure.SOUND, 1);
        ThrowingRunnable deed =
                () -> {
                    device.button("Play").tap();
                    device.awaitEnd();
                };
        String failure = assertThrows(TestFailure.class, deed).getMessage();
        assertTrue(failure, failure.startsWith("Sound has ended by com.nuvik.program.NativeFailure: Sound_Play: "));
    }
}
