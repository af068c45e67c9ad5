package com.nuvik.tests;

import static com.nuvik.wyx.k4tr.OS.Control_GetBounds;
import static com.nuvik.wyx.k4tr.OS.Device_GetBounds;
import static com.nuvik.wyx.k4tr.OS.Shell_New;
import static com.nuvik.wyx.k4tr.OS.Shell_SetText;
import static com.nuvik.wyx.k4tr.OS.Widget_SetData;
import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertNotEquals;
import static org.junit.Assert.assertSame;
import static org.junit.Assert.assertTrue;

import com.nuvik.wyx.KeyKind;
import com.nuvik.wyx.dovr.OS;
import java.util.Collections;
import org.junit.After;
import org.junit.Before;
import org.junit.Test;

/** Java, the library and the emulated device together. */
public final class TapTest {
    private Device device;
    private int shell;
    private int button;

    @Before
    public void open() {
        open(new Device());
    }

    private void open(Device opened) {
        device = opened;
        shell = device.newShell();
        button = device.newButton(shell);
    }

    @After
    public void close() {
        device.dispose(shell);
        device.end();
        assertEquals(Collections.emptyList(), device.errors);
    }

    private static long count(Device.Recorder recorder, String event) {
        return recorder.events.stream().filter(event::equals).count();
    }

    @Test
    public void aTapOnAButtonReachesItsListenerOnceOnTheDisplaysThread() {
        Device.Recorder recorder = device.listen(button);
        device.tap(90, 70);
        assertEquals(1, count(recorder, "selected"));
        assertSame(Thread.currentThread(), recorder.thread);
    }

    @Test
    public void aTapIsReportedInTheOrderInWhichItHappens() {
        Device.Recorder recorder = device.listen(button);
        device.tap(90, 70);
        recorder.events.removeIf(event -> event.equals("paint"));
        int first = recorder.events.indexOf("down 50 20");
        assertEquals(
                "[down 50 20, pointer 1 50 20 8 0, focus 1, pointer 2 50 20 8 0, selected]",
                recorder.events.subList(first, first + 5).toString());
    }

    @Test
    public void aTapBesideTheButtonIsNoSelection() {
        Device.Recorder recorder = device.listen(button);
        device.tap(20, 20);
        assertEquals(0, count(recorder, "selected"));
    }

    @Test
    public void aListenerMayDisposeOfItsOwnButton() {
        int[] taps = new int[1];
        Device.Recorder shellEvents = device.listen(shell);
        Widget_SetData(button, device.disposing(() -> taps[0]++, button));
        device.tap(90, 70);
        device.tap(90, 70);
        assertEquals(1, taps[0]);
        assertTrue(shellEvents.events.stream().anyMatch(event -> event.startsWith("pointer 1")));
    }

    @Test
    public void whatAListenerThrowsSurfacesFromTheDispatch() {
        Widget_SetData(
                button,
                device.disposing(
                        () -> {
                            throw new IllegalStateException("from the listener");
                        },
                        0));
        String message = "";
        try {
            device.tap(90, 70);
        } catch (IllegalStateException thrown) {
            message = thrown.getMessage();
        }
        assertEquals("from the listener", message);
    }

    @Test
    public void keysReachTheControlWithTheFocus() {
        Device.Recorder recorder = device.listen(button);
        assertTrue(OS.Control_ForceFocus(button));
        OS.Display_PostKeyEvent(device.display, KeyKind.PRESSED, 'a', 'a');
        OS.Display_PostKeyEvent(device.display, KeyKind.RELEASED, 'a', 'a');
        device.dispatchAll();
        assertEquals(1, count(recorder, "key 1 97 65 0"));
        assertEquals(1, count(recorder, "key 2 97 65 0"));
    }

    @Test
    public void controlsAreMadeAndDisposedOfOnOtherThreads() throws Exception {
        int made = device.onOtherThread(() -> OS.PushButton_New(shell, 0));
        assertNotEquals(0, made);
        device.onOtherThread(
                () -> {
                    Widget_SetData(made, device.disposing(() -> {}, 0));
                    device.dispose(made);
                    return null;
                });
    }

    @Test
    public void shellsAreMadeOnOtherThreads() throws Exception {
        int made =
                device.onOtherThread(() -> Shell_New(device.display, 0));
        assertNotEquals(0, made);
        device.dispose(made);
    }

    @Test
    public void aListenerSetOnAnotherThreadHearsTheNextTap() throws Exception {
        Device.Recorder recorder = device.onOtherThread(() -> device.listen(button));
        device.tap(90, 70);
        assertEquals(1, count(recorder, "selected"));
    }

    @Test
    public void anErrorReachesTheHandlerWithNameCodeAndMessage() {
        assertEquals(0, OS.Composite_New(0, 0));
        assertEquals(
                Collections.singletonList("Composite_New -3 Argument invalid, need parent"),
                device.errors);
        device.errors.clear();
    }

    @Test
    public void anErrorOnAnotherThreadReachesTheHandlerThere() throws Exception {
        device.onOtherThread(() -> OS.Composite_New(0, 0));
        assertEquals(1, device.errors.size());
        device.errors.clear();
    }

    @Test
    public void arraysAndStringsCross() {
        Shell_SetText(shell, "title \u00e4\ud83d\ude00");
        assertEquals(4, Control_GetBounds(button).length);
        assertEquals(100, Control_GetBounds(button)[2]);
        assertEquals(
                Variety.screen()[0], Device_GetBounds(device.display)[2]);
        assertEquals(2, OS.Control_GetMinimumSize(button).length);
    }

    @Test
    public void aMethodThatIsNotThereMakesItsEventVanish() {
        close();
        open(new Device("selected"));
        Device.Recorder recorder = device.listen(button);
        device.tap(90, 70);
        assertEquals(0, count(recorder, "selected"));
        assertEquals(1, count(recorder, "pointer 2 50 20 8 0"));
    }
}
