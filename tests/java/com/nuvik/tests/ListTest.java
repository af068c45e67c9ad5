package com.nuvik.tests;

import static com.nuvik.wyx.k4tr.OS.Control_GetBounds;
import static org.junit.Assert.assertArrayEquals;
import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertFalse;
import static org.junit.Assert.assertTrue;

import com.nuvik.wyx.Key;
import com.nuvik.wyx.Style;
import com.nuvik.wyx.dovr.OS;
import java.util.Arrays;
import java.util.List;
import java.util.stream.Collectors;
import org.junit.Before;
import org.junit.Rule;
import org.junit.Test;

/** Lists from Java. */
public final class ListTest {
    @Rule public final ShownShell shown = new ShownShell();

    private static final int BOTH_BARS = Style.HORIZONTAL_SCROLL | Style.VERTICAL_SCROLL;

    private int list;

    @Before
    public void open() {
        list = shown.device.show(OS.List_New(shown.shell, BOTH_BARS), 40, 50, 100, 100);
        for (String item : new String[] {"pear", "apple", "plum \u00e4\ud83d\ude00"})
            OS.List_Add(list, item, -1);
        shown.device.dispatchAll();
    }

    private static List<String> selections(Device.Recorder recorder) {
        return recorder.events.stream()
                .filter(event -> event.startsWith("list"))
                .collect(Collectors.toList());
    }

    /** A person's tap on an item. */
    private void tapItem(int item) {
        int[] bounds = Control_GetBounds(list);
        int height = OS.List_GetMinimumSize(list, 2)[1] - OS.List_GetMinimumSize(list, 1)[1];
        shown.device.tap(bounds[0] + 10, bounds[1] + item * height + height / 2);
    }

    @Test
    public void tapsAndKeysSelectItems() {
        Device.Recorder recorder = shown.device.listen(list);
        tapItem(1);
        assertEquals(1, OS.List_GetSelectionIndex(list));
        shown.device.pressKey(Key.DOWN);
        assertEquals(Arrays.asList("list 1 1", "list 2 1"), selections(recorder));
        assertArrayEquals(new int[] {2}, OS.List_GetSelectionIndices(list));
    }

    @Test
    public void inMultipleModeTapsAddToTheSelection() {
        OS.List_SetMultipleMode(list, true);
        Device.Recorder recorder = shown.device.listen(list);
        tapItem(2);
        tapItem(0);
        assertEquals(Arrays.asList("list 2 1", "list 0 1"), selections(recorder));
        assertArrayEquals(new int[] {0, 2}, OS.List_GetSelectionIndices(list));
        assertEquals(2, OS.List_GetSelectionCount(list));
        OS.List_SelectIndices(list, new int[] {1}, 1);
        OS.List_Deselect(list, 0);
        assertTrue(OS.List_IsSelected(list, 1));
        assertFalse(OS.List_IsSelected(list, 0));
        OS.List_SetMultipleMode(list, false);
        assertArrayEquals(new int[] {1}, OS.List_GetSelectionIndices(list));
    }

    @Test
    public void itemsAreReplacedAndRemoved() {
        OS.List_Select(list, 2);
        OS.List_SetItem(list, 2, null);
        assertEquals(2, OS.List_GetSelectionIndex(list));
        OS.List_Remove(list, 2);
        assertEquals(-1, OS.List_GetSelectionIndex(list));
        assertArrayEquals(new int[0], OS.List_GetSelectionIndices(list));
        OS.List_SetTopItemIndex(list, 1);
        OS.List_RemoveAll(list);
        OS.List_Add(list, "only", 0);
    }

    @Test
    public void whatIsNotThereIsReported() {
        OS.List_Add(list, "item", 9);
        OS.List_Remove(list, 9);
        assertEquals(2, shown.device.errors.size());
        assertTrue(
                shown.device.errors.get(0).startsWith("List_Add -3 Index is out of valid range for list::"));
        assertTrue(
                shown.device.errors
                        .get(1)
                        .startsWith("List_Remove -3 Invalid index of item to remove from list::"));
        shown.device.errors.clear();
    }
}
