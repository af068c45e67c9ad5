package com.nuvik.tests;

import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertTrue;

import com.nuvik.wyx.dovr.OS;
import java.util.Arrays;
import java.util.Collections;
import org.junit.Rule;
import org.junit.Test;

/** Check boxes and radio buttons from Java; push buttons are in {@link TapTest}. */
public final class ButtonTest {
    @Rule public final ShownShell shown = new ShownShell();

    private int show(int button) {
        OS.Button_SetLabel(button, "label");
        return shown.device.show(button, 40, 50, 100, 40);
    }

    @Test
    public void everyTapOnABoxIsASelection() {
        int box = show(OS.Checkbox_New(shown.shell, 0));
        Device.Recorder recorder = shown.device.listen(box);
        shown.device.tap(90, 70);
        assertEquals(Arrays.asList("focus 1", "selected"), recorder.takeOwn());
        shown.device.tap(90, 70);
        assertEquals(Collections.singletonList("selected"), recorder.takeOwn());
    }

    @Test
    public void theSpaceKeySelectsABox() {
        int box = show(OS.Checkbox_New(shown.shell, 0));
        OS.Control_ForceFocus(box);
        Device.Recorder recorder = shown.device.listen(box);
        shown.device.type(" ");
        assertEquals(1, Collections.frequency(recorder.takeOwn(), "selected"));
    }

    @Test
    public void aRadioButtonThatIsGivenTheFocusIsNotSelected() {
        int radio = show(OS.RadioButton_New(shown.shell, 0));
        Device.Recorder recorder = shown.device.listen(radio);
        assertTrue(OS.Control_ForceFocus(radio));
        assertEquals(Collections.singletonList("focus 1"), recorder.takeOwn());
        shown.device.tap(90, 70);
        assertEquals(Collections.singletonList("selected"), recorder.takeOwn());
    }

    @Test
    public void aSelectionThatAProgramMakesIsNoEvent() {
        int box = show(OS.Checkbox_New(shown.shell, 0));
        Device.Recorder recorder = shown.device.listen(box);
        OS.Button_SetSelection(box, true);
        OS.Button_SetSelection(box, false);
        assertEquals(Collections.emptyList(), recorder.takeOwn());
    }
}
