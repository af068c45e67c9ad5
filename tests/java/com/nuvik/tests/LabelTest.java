package com.nuvik.tests;

import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertTrue;

import com.nuvik.wyx.Alignment;
import com.nuvik.wyx.dovr.OS;
import java.util.Collections;
import org.junit.Rule;
import org.junit.Test;

/** Labels from Java. */
public final class LabelTest {
    @Rule public final ShownShell shown = new ShownShell();

    private int newLabel(int style) {
        return shown.device.show(OS.Label_New(shown.shell, style), 40, 50, 100, 40);
    }

    @Test
    public void aLabelIsAsLargeAsItsText() {
        int label = newLabel(0);
        int[] empty = OS.Control_GetMinimumSize(label);
        OS.Label_SetText(label, "a text \ud83d\ude00");
        int[] one = OS.Control_GetMinimumSize(label);
        OS.Label_SetText(label, "a text \ud83d\ude00\nin two lines");
        int[] two = OS.Control_GetMinimumSize(label);
        assertTrue(one[0] > empty[0]);
        assertEquals(empty[1], one[1]);
        assertEquals(2 * one[1], two[1]);
        OS.Label_SetText(label, null);
        assertEquals(empty[0], OS.Control_GetMinimumSize(label)[0]);
    }

    @Test
    public void aTapOnALabelIsThePointersAndNothingElse() {
        int label = newLabel(2);
        OS.Label_SetText(label, "text");
        OS.Label_SetAlignment(label, Alignment.RIGHT);
        Device.Recorder recorder = shown.device.listen(label);
        shown.device.tap(90, 70);
        assertEquals(1, Collections.frequency(recorder.events, "pointer 1 50 20 8 0"));
        assertEquals(1, Collections.frequency(recorder.events, "pointer 2 50 20 8 0"));
        assertEquals(Collections.emptyList(), recorder.takeOwn());
    }
}
