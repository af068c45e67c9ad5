package com.nuvik.testing.tests;

import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertFalse;
import static org.junit.Assert.assertThrows;
import static org.junit.Assert.assertTrue;

import com.nuvik.examples.Tap;
import com.nuvik.testing.Device;
import com.nuvik.testing.DeviceRule;
import com.nuvik.testing.Kind;
import com.nuvik.testing.TestFailure;
import java.util.concurrent.ExecutorService;
import java.util.concurrent.Executors;
import org.junit.Rule;
import org.junit.Test;
import org.junit.function.ThrowingRunnable;

/** Applications that end the process end alone, and tell with which code. */
public class ExitTest {
    @Rule public final DeviceRule rule = new DeviceRule(Exits.class);
    private final Device device = rule.device;

    /** Calls it on the thread of main. */
    public static final class AtOnce {
        private AtOnce() {}

        public static void main(String[] arguments) {
            System.exit(7);
        }
    }

    /** Has a thread that its executor puts another one in place of when it dies. */
    public static final class Pooled {
        private static ExecutorService executor;

        private Pooled() {}

        public static void main(String[] arguments) {
            executor = Executors.newSingleThreadExecutor();
            executor.submit(() -> System.out.println("pooled"));
        }
    }

    private int codeAfter(String label) {
        device.button(label).tap();
        return device.exitCode();
    }

    @Test
    public void it_runs_as_long_as_one_of_its_threads() {
        assertFalse(device.hasEnded());
        assertEquals(0, codeAfter("well"));
        assertTrue(device.hasEnded());
    }

    @Test
    public void its_code_is_told() {
        assertEquals(3, codeAfter("badly"));
    }

    @Test
    public void it_is_told_by_a_halt_too() {
        assertEquals(4, codeAfter("at once"));
    }

    @Test
    public void each_of_its_threads_may_end_it() {
        assertEquals(5, codeAfter("elsewhere"));
    }

    @Test
    public void main_itself_may_end_it() {
        device.stop();
        for (int times = 0; times < 20; times++) {
            device.start(AtOnce.class);
            assertEquals(7, device.exitCode());
        }
    }

    @Test
    public void it_is_stopped_with_the_threads_that_replace_others() {
        device.stop();
        device.setPatience(1000);
        assertThrows(TestFailure.class, () -> device.start(Pooled.class)); // it shows no window
        assertFalse(device.hasEnded());
        device.stop();
        assertTrue(device.hasEnded());
    }

    @Test
    public void it_ends_although_it_catches_everything() {
        assertEquals(6, codeAfter("caught"));
    }

    @Test
    public void an_exception_ends_it_too() {
        ThrowingRunnable deed =
                () -> {
                    device.button("throw").tap();
                    device.awaitEnd();
                };
        assertEquals(
                "Exits has ended by java.lang.IllegalStateException: as it was asked to",
                assertThrows(TestFailure.class, deed).getMessage());
    }

    @Test
    public void a_code_that_nobody_asks_for_fails() {
        device.button("badly").tap();
        assertEquals(
                "Exits has called System.exit(3)", assertThrows(TestFailure.class, device::stop).getMessage());
    }

    @Test
    public void who_looks_for_a_control_is_told_of_the_end() {
        device.button("badly").tap();
        device.waitUntil("it has ended", device::hasEnded);
        assertEquals(
                "there is no button \"well\"; Exits has ended, with exit code 3",
                assertThrows(TestFailure.class, () -> device.button("well")).getMessage());
        assertEquals(3, device.exitCode());
    }

    @Test
    public void the_next_one_is_started_at_once() {
        device.button("well").tap();
        device.start(Tap.class);
        device.find(Kind.BUTTON, "Tap me");
    }
}
