package com.nuvik.tests;

import static com.nuvik.wyx.k4tr.OS.Control_GetBounds;
import static com.nuvik.wyx.k4tr.OS.Font_GetAscent;
import static com.nuvik.wyx.k4tr.OS.Font_GetDescent;
import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertTrue;

import com.nuvik.wyx.Key;
import com.nuvik.wyx.dovr.OS;
import java.util.Arrays;
import java.util.Collections;
import org.junit.Before;
import org.junit.Rule;
import org.junit.Test;

/** Choices from Java. */
public final class ChoiceTest {
    @Rule public final ShownShell shown = new ShownShell();

    private int choice;

    @Before
    public void fill() {
        choice = shown.device.show(OS.Choice_New(shown.shell), 40, 50, 100, 24);
        OS.Choice_AddItem(choice, "pear", -1);
        OS.Choice_AddItem(choice, "apple", 0);
        OS.Choice_AddItem(choice, "plum \ud83d\ude00", 2);
    }

    /** Where an item of the dropped list is on the screen. */
    private int topOf(int item) {
        int[] bounds = Control_GetBounds(choice);
        int font = OS.Control_GetDefaultFont(choice);
        int line =
                Font_GetAscent(font)
                        + Font_GetDescent(font);
        return bounds[1] + bounds[3] + item * line;
    }

    @Test
    public void anItemIsChosenFromTheDroppedList() {
        Device.Recorder recorder = shown.device.listen(choice);
        shown.device.tap(60, 60);
        assertEquals(Collections.singletonList("focus 1"), recorder.takeOwn());
        shown.device.tap(60, topOf(1) + 8);
        assertEquals(Collections.singletonList("choice 1"), recorder.takeOwn());
        assertEquals(1, OS.Choice_GetSelectedItemIndex(choice));
    }

    @Test
    public void keysChooseToo() {
        OS.Control_ForceFocus(choice);
        Device.Recorder recorder = shown.device.listen(choice);
        shown.device.pressKey(Key.DOWN);
        shown.device.pressKey(Key.DOWN);
        assertEquals(
                Arrays.asList(
                        "key 1 65535 1016 0", "choice 0", "key 2 40 1016 0",
                        "key 1 65535 1016 0", "choice 1", "key 2 40 1016 0"),
                recorder.takeOwn());
    }

    @Test
    public void aProgramsSelectionIsNoEvent() {
        Device.Recorder recorder = shown.device.listen(choice);
        OS.Choice_SelectItem(choice, 2);
        assertEquals(2, OS.Choice_GetSelectedItemIndex(choice));
        OS.Choice_RemoveItem(choice, 2);
        assertEquals(-1, OS.Choice_GetSelectedItemIndex(choice));
        OS.Choice_RemoveAllItems(choice);
        assertEquals(Collections.emptyList(), recorder.takeOwn());
        assertEquals(2, OS.Control_GetMinimumSize(choice).length);
    }

    @Test
    public void whatIsNotThereIsReported() {
        OS.Choice_SelectItem(choice, -1);
        assertTrue(
                shown.device
                        .onlyError()
                        .startsWith("Choice_SelectItem -3 Unable to select item in combo::"));
        OS.Choice_AddItem(choice, null, 9);
        assertTrue(
                shown.device
                        .onlyError()
                        .startsWith("Choice_AddItem -3 Index is out of valid range for combo::"));
        OS.Choice_RemoveItem(choice, 4);
        assertEquals(
                "Choice_RemoveItem -3 Invalid range of item to remove from combo",
                shown.device.onlyError());
    }
}
