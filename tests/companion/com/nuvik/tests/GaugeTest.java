package com.nuvik.tests;

import static org.junit.Assert.assertArrayEquals;
import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertNotEquals;

import com.nuvik.examples.Gauge;
import com.nuvik.wyx.dovr.OS;
import java.util.Collections;
import org.junit.After;
import org.junit.Before;
import org.junit.Test;

/** A widget that a companion library adds is a widget like the toolkit's own. */
public final class GaugeTest {
    private Device device;
    private int shell;
    private int gauge;

    @Before
    public void open() {
        device = new Device();
        shell = device.newShell();
        gauge = Gauge.Gauge_New(shell, 0);
        device.show(gauge, 20, 60, 200, 30);
    }

    @After
    public void close() {
        device.dispose(gauge);
        device.dispose(shell);
        device.end();
        assertEquals(Collections.emptyList(), device.errors);
    }

    @Test
    public void aTapFillsItAndFiresOneSelection() {
        Device.Recorder recorder = device.listen(gauge);
        device.tap(20 + 150, 75);
        assertEquals(75, Gauge.Gauge_GetLevel(gauge));
        assertEquals(1, recorder.events.stream().filter("selected"::equals).count());
    }

    @Test
    public void aLevelBeyondItsEndsIsTheEnd() {
        Gauge.Gauge_SetLevel(gauge, 101);
        assertEquals(100, Gauge.Gauge_GetLevel(gauge));
        Gauge.Gauge_SetLevel(gauge, -1);
        assertEquals(0, Gauge.Gauge_GetLevel(gauge));
    }

    @Test
    public void itShowsItsLevelInItsColours() {
        int color = com.nuvik.wyx.k4tr.OS.Color_New(device.display, 0x20, 0x50, 0xC0);
        OS.Control_SetForeground(gauge, color);
        Gauge.Gauge_SetLevel(gauge, 50);
        device.dispatchAll();
        int picture = com.nuvik.wyx.k4tr.OS.Image_NewFromSize(device.display, 200, 30, 0);
        OS.Control_CopyArea(gauge, picture, 0, 0, 200, 30);
        int[] pixels = new int[200];
        com.nuvik.wyx.k4tr.OS.Image_GetRGB(picture, 0, 15, 200, 1, 0, 200, pixels);
        assertEquals(0xFF2050C0, pixels[98]);
        assertEquals(
                0xFF000000 | OS.Control_GetBackgroundRGB(gauge), pixels[99]);
        com.nuvik.wyx.k4tr.OS.Image_Dispose(picture);
        OS.Control_SetForeground(gauge, 0);
        com.nuvik.wyx.k4tr.OS.Color_Dispose(color);
    }

    @Test
    public void itTellsItsLeastSize() {
        assertArrayEquals(new int[] {50, 12}, OS.Control_GetMinimumSize(gauge));
    }

    @Test
    public void oneWithoutAParentIsAnErrorUnderItsOwnName() {
        assertEquals(0, Gauge.Gauge_New(0, 0));
        assertEquals("Gauge_New -3 A gauge needs a parent", device.onlyError());
    }

    @Test
    public void itIsMadeOnAnotherThread() throws Exception {
        int made = device.onOtherThread(() -> Gauge.Gauge_New(shell, 0));
        assertNotEquals(0, made);
        device.dispose(made);
    }
}
