package com.nuvik.tests;

import static com.nuvik.wyx.k4tr.OS.Color_Dispose;
import static com.nuvik.wyx.k4tr.OS.Color_New;
import static com.nuvik.wyx.k4tr.OS.Control_GetBounds;
import static com.nuvik.wyx.k4tr.OS.Control_SetBounds;
import static com.nuvik.wyx.k4tr.OS.Control_SetVisible;
import static com.nuvik.wyx.k4tr.OS.Device_GetBounds;
import static com.nuvik.wyx.k4tr.OS.Font_Dispose;
import static com.nuvik.wyx.k4tr.OS.Font_GetAscent;
import static com.nuvik.wyx.k4tr.OS.Font_GetDescent;
import static com.nuvik.wyx.k4tr.OS.Font_GetLeading;
import static com.nuvik.wyx.k4tr.OS.Font_GetSizeInPoints;
import static com.nuvik.wyx.k4tr.OS.Font_New;
import static com.nuvik.wyx.k4tr.OS.Widget_SetData;
import static org.junit.Assert.assertArrayEquals;
import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertFalse;
import static org.junit.Assert.assertNotEquals;
import static org.junit.Assert.assertTrue;

import com.nuvik.wyx.Key;
import com.nuvik.wyx.Modifier;
import com.nuvik.wyx.ScrollKind;
import com.nuvik.wyx.Style;
import com.nuvik.wyx.WindowEvent;
import com.nuvik.wyx.dovr.OS;
import java.util.Arrays;
import java.util.Collections;
import java.util.List;
import java.util.stream.Collectors;
import org.junit.After;
import org.junit.Before;
import org.junit.Test;

/** Whole application windows: what a person does to their parts reaches Java. */
public final class WindowTest {
    private static final int CONTROL_SHIFT = (Modifier.CONTROL | Modifier.SHIFT) << 16;

    private Device device;
    private int shell;

    @Before
    public void open() {
        device = new Device();
        shell = device.newShell();
    }

    @After
    public void close() {
        device.dispose(shell);
        device.end();
        assertEquals(Collections.emptyList(), device.errors);
    }

    private static List<String> only(Device.Recorder recorder, String... kinds) {
        return recorder.events.stream()
                .filter(event -> Arrays.stream(kinds).anyMatch(event::startsWith))
                .collect(Collectors.toList());
    }

    private int place(int control, int x, int y, int width, int height) {
        Control_SetBounds(control, x, y, width, height);
        Control_SetVisible(control, true);
        device.dispatchAll();
        return control;
    }

    @Test
    public void theScreenIsTheDevicesAndBarsTakeItsEdges() {
        int[] screen = Variety.screen();
        assertArrayEquals(
                new int[] {0, 0, screen[0], screen[1]},
                Device_GetBounds(device.display));
        assertArrayEquals(
                new int[] {0, Variety.taskBarHeight(), 0, 0}, OS.Display_GetInsets(device.display));
        assertTrue(OS.Device_IsDirect(device.display));
        int dots = Variety.dotsPerInch();
        assertArrayEquals(new int[] {dots, dots}, OS.Device_GetDPI(device.display));
    }

    @Test
    public void aControlGetsItsColoursBackAndFollowsItsParentWithoutThem() {
        int button = device.newButton(shell);
        int color = Color_New(device.display, 10, 200, 30);
        OS.Control_SetBackground(button, color);
        assertEquals(10 << 16 | 200 << 8 | 30, OS.Control_GetBackgroundRGB(button) & 0xFFFFFF);
        OS.Control_SetBackground(button, 0);
        assertNotEquals(10 << 16 | 200 << 8 | 30, OS.Control_GetBackgroundRGB(button) & 0xFFFFFF);
        Color_Dispose(color);
        device.dispose(button);
    }

    @Test
    public void coloursKeepTheirComponents() {
        int color = Color_New(device.display, 1, 128, 255);
        assertEquals(1, OS.Color_GetRed(color));
        assertEquals(128, OS.Color_GetGreen(color));
        assertEquals(255, OS.Color_GetBlue(color));
        Color_Dispose(color);
    }

    @Test
    public void aDisabledControlHearsNoTap() {
        int button = device.newButton(shell);
        Device.Recorder recorder = device.listen(button);
        OS.Control_SetEnabled(button, false);
        device.tap(90, 70);
        assertEquals(Collections.emptyList(), only(recorder, "selected", "pointer"));
        OS.Control_SetEnabled(button, true);
        device.tap(90, 70);
        assertEquals(Collections.singletonList("selected"), only(recorder, "selected"));
        device.dispose(button);
    }

    @Test
    public void aBiggerFontMakesALabelledButtonBigger() {
        int button = device.newButton(shell);
        OS.Button_SetLabel(button, "Wide enough");
        int[] before = OS.Control_GetMinimumSize(button);
        int font = Font_New(device.display, "Tahoma", 24, 0);
        OS.Control_SetFont(button, font);
        int[] after = OS.Control_GetMinimumSize(button);
        assertTrue(after[0] > before[0] && after[1] > before[1]);
        int pixels =
                Font_GetAscent(font)
                        + Font_GetDescent(font)
                        + Font_GetLeading(font);
        assertEquals(
                pixels * 72 / Variety.dotsPerInch(),
                Font_GetSizeInPoints(font));
        assertTrue(OS.Font_StringAdvance(font, "WW") > OS.Font_StringAdvance(font, "ii"));
        device.dispose(button);
        Font_Dispose(font);
    }

    @Test
    public void aTapOnACompositesArrowScrollsByAUnit() {
        int list = place(OS.Composite_New(shell, Style.VERTICAL_SCROLL), 20, 30, 100, 120);
        int bar = OS.Scrollable_GetVerticalBar(list);
        OS.Adjustable_SetMaximum(bar, 300);
        OS.Adjustable_SetVisibleAmount(bar, 120);
        OS.Adjustable_SetUnitIncrement(bar, 25);
        Device.Recorder recorder = device.listen(bar);
        int[] window = Control_GetBounds(shell);
        device.tapScreen(window[0] + 20 + 100 - 5, window[1] + 30 + 120 - 5);
        assertEquals(
                Collections.singletonList("scrolled 25 " + ScrollKind.LINE_DOWN),
                only(recorder, "scrolled"));
        assertEquals(25, OS.Adjustable_GetValue(bar));
        Widget_SetData(bar, null);
        device.dispose(list);
    }

    @Test
    public void aKeyScrollsAFreeStandingBar() {
        int bar = place(OS.Scrollbar_New(shell), 200, 30, 13, 100);
        OS.Adjustable_SetUnitIncrement(bar, 7);
        Device.Recorder recorder = device.listen(bar);
        assertTrue(OS.Control_ForceFocus(bar));
        device.press(Key.DOWN);
        device.release(Key.DOWN);
        device.dispatchAll();
        assertEquals(
                Collections.singletonList("scrolled 7 " + ScrollKind.LINE_DOWN),
                only(recorder, "scrolled"));
        device.dispose(bar);
    }

    @Test
    public void aModalChildShellTakesTheActivationAndTheTapsUntilItHides() {
        int button = device.newButton(shell);
        Device.Recorder taps = device.listen(button);
        Device.Recorder activation = device.listen(shell);
        int child = OS.Shell_NewChild(shell, Style.MODAL);
        Device.Recorder childActivation = device.listen(child);
        place(child, 20, 200, 100, 60);
        assertEquals(
                Collections.singletonList("window " + WindowEvent.DEACTIVATED),
                only(activation, "window"));
        assertEquals(
                Collections.singletonList("window " + WindowEvent.ACTIVATED),
                only(childActivation, "window"));
        device.tap(90, 70);
        assertEquals(Collections.emptyList(), only(taps, "selected"));
        Control_SetVisible(child, false);
        device.dispatchAll();
        device.tap(90, 70);
        assertEquals(Collections.singletonList("selected"), only(taps, "selected"));
        device.dispose(child);
        device.dispose(button);
    }

    @Test
    public void aTappedOkButtonAsksToCloseAndClosesNothing() {
        int child = OS.Shell_NewChild(shell, Style.TITLE | Style.CLOSE_BOX);
        Device.Recorder recorder = device.listen(child);
        place(child, 20, 100, 160, 80);
        device.tapScreen(20 + 160 - 12, 100 + 12);
        assertTrue(recorder.events.contains("window " + WindowEvent.CLOSE_REQUESTED));
        assertEquals(160, Control_GetBounds(child)[2]);
        device.dispose(child);
    }

    @Test
    public void anAcceleratorChoosesItsItem() {
        int menu = OS.DropDownMenu_New(shell);
        int item = OS.StateMenuItem_New(menu, 0, 0);
        OS.LabeledMenuItem_SetText(item, "&Grid", "Ctrl+Shift+G");
        OS.LabeledMenuItem_SetAccelerator(item, CONTROL_SHIFT | 'g');
        Device.Recorder recorder = device.listen(item);
        OS.Control_ForceFocus(shell);
        int[] keys = {Key.CONTROL, Key.SHIFT, 'g'};
        for (int key : keys) device.press(key);
        for (int i = keys.length; i-- > 0; )
            device.release(keys[i]);
        device.dispatchAll();
        assertEquals(Collections.singletonList("menu 0"), recorder.events);
        device.dispose(item);
        device.dispose(menu);
    }

    @Test
    public void aTapOnAMenuBarsItemChoosesIt() {
        int bar = OS.MenuBar_New(shell);
        int item = OS.PushMenuItem_New(bar, 0);
        OS.LabeledMenuItem_SetText(item, "Done", null);
        Device.Recorder recorder = device.listen(item);
        OS.Shell_SetMenuBar(shell, bar);
        device.dispatchAll();
        device.tapScreen(12, Variety.screen()[1] - Variety.dotsPerInch() / 7);
        assertEquals(Collections.singletonList("menu 0"), recorder.events);
        OS.Shell_SetMenuBar(shell, 0);
        device.dispose(item);
        device.dispose(bar);
    }

    @Test
    public void aPopUpMenuRunsUntilAnItemIsChosen() {
        int menu = OS.PopupMenu_New(shell);
        int item = OS.PushMenuItem_New(menu, 0);
        OS.LabeledMenuItem_SetText(item, "Mark", null);
        Device.Recorder recorder = device.listen(item);
        for (int key : new int[] {Key.DOWN, '\r'}) {
            device.press(key);
            device.release(key);
        }
        OS.PopupMenu_Show(menu, 10, 10);
        device.dispatchAll();
        assertEquals(Collections.singletonList("menu 0"), recorder.events);
        device.dispose(item);
        device.dispose(menu);
    }

    @Test
    public void aShellIsResizedAndMovedByItsBounds() {
        int child = OS.Shell_NewChild(shell, 0);
        Device.Recorder recorder = device.listen(child);
        place(child, 30, 120, 100, 50);
        assertTrue(recorder.events.contains("resize 100 50"));
        assertTrue(recorder.events.contains("move 30 120"));
        assertFalse(OS.Shell_GetMinimized(child));
        device.dispose(child);
    }
}
