package com.nuvik.tests;

import static org.junit.Assert.assertArrayEquals;
import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertTrue;

import com.nuvik.wyx.Key;
import com.nuvik.wyx.Style;
import com.nuvik.wyx.dovr.OS;
import java.util.Arrays;
import java.util.Collections;
import org.junit.Rule;
import org.junit.Test;

/** Text fields and text areas from Java. */
public final class TextTest {
    @Rule public final ShownShell shown = new ShownShell();

    private int newField() {
        return shown.device.show(OS.TextField_New(shown.shell, Style.BORDER), 40, 50, 100, 20);
    }

    private int newArea() {
        int area = OS.TextArea_New(shown.shell, Style.BORDER | Style.VERTICAL_SCROLL);
        return shown.device.show(area, 40, 100, 150, 80);
    }

    @Test
    public void whatIsTypedIsToldInOrder() {
        int field = newField();
        shown.device.tap(50, 60);
        Device.Recorder recorder = shown.device.listen(field);
        shown.device.type("ab");
        assertEquals(
                Arrays.asList(
                        "key 1 97 65 0", "modified", "key 2 97 65 0",
                        "key 1 98 66 0", "modified", "key 2 98 66 0"),
                recorder.takeOwn());
        assertEquals("ab", OS.AbstractTextComponent_GetText(field));
    }

    @Test
    public void anAreaHasManyLines() {
        int area = newArea();
        shown.device.tap(50, 110);
        shown.device.type("a");
        shown.device.pressKey(Key.ENTER);
        shown.device.type("b");
        assertEquals("a\r\nb", OS.AbstractTextComponent_GetText(area));
        assertEquals(4, OS.AbstractTextComponent_GetCharCount(area));
    }

    @Test
    public void aTextThatIsSetIsToldAndAReplacedPartIsNot() {
        int area = newArea();
        Device.Recorder recorder = shown.device.listen(area);
        OS.AbstractTextComponent_SetText(area, "some\ntext \ud83d\ude00");
        assertEquals(Collections.singletonList("modified"), recorder.takeOwn());
        OS.AbstractTextComponent_Replace(area, "any\nother", 0, 4);
        assertEquals(Collections.emptyList(), recorder.takeOwn());
        assertEquals(
                "any\r\nother\r\ntext \ud83d\ude00", OS.AbstractTextComponent_GetText(area));
        OS.AbstractTextComponent_SetText(area, null);
        assertEquals("", OS.AbstractTextComponent_GetText(area));
    }

    @Test
    public void selectionsAreCountedInChars() {
        int field = newField();
        OS.AbstractTextComponent_SetText(field, "\ud83d\ude00 text");
        OS.AbstractTextComponent_SetSelection(field, 3, 7);
        assertArrayEquals(new int[] {3, 7}, OS.AbstractTextComponent_GetSelection(field));
        assertEquals("text", OS.AbstractTextComponent_GetSelectionText(field));
        OS.AbstractTextComponent_SelectAll(field);
        assertEquals("\ud83d\ude00 text", OS.AbstractTextComponent_GetSelectionText(field));
        OS.AbstractTextComponent_SetCaretPosition(field, 2);
        assertArrayEquals(new int[] {2, 2}, OS.AbstractTextComponent_GetSelection(field));
        assertEquals("", OS.AbstractTextComponent_GetSelectionText(field));
    }

    @Test
    public void longTextsCross() {
        char[] characters = new char[0x10000];
        Arrays.fill(characters, 'x');
        String text = new String(characters);
        int area = newArea();
        OS.AbstractTextComponent_SetText(area, text);
        assertEquals(text, OS.AbstractTextComponent_GetText(area));
    }

    @Test
    public void aTextThatIsNotEditableTakesNoKeys() {
        int field = newField();
        OS.AbstractTextComponent_SetEditable(field, false);
        OS.AbstractTextComponent_SetEchoChar(field, '*');
        shown.device.tap(50, 60);
        shown.device.type("a");
        assertEquals("", OS.AbstractTextComponent_GetText(field));
        OS.AbstractTextComponent_SetEditable(field, true);
        shown.device.type("a");
        assertEquals("a", OS.AbstractTextComponent_GetText(field));
    }

    @Test
    public void columnsAndRowsTakeRoom() {
        int field = newField();
        int area = newArea();
        assertTrue(
                OS.TextField_GetMinimumSize(field, 20)[0]
                        > OS.TextField_GetMinimumSize(field, 10)[0]);
        int[] small = OS.TextArea_GetMinimumSize(area, 1, 10);
        int[] large = OS.TextArea_GetMinimumSize(area, 3, 20);
        assertTrue(large[0] > small[0] && large[1] > small[1]);
        assertEquals(2, OS.Control_GetMinimumSize(area).length);
    }

    @Test
    public void aTextSetOnAnotherThreadIsToldOnTheDisplaysThread() throws Exception {
        int field = newField();
        Device.Recorder recorder = shown.device.listen(field);
        String text =
                shown.device.onOtherThread(
                        () -> {
                            OS.AbstractTextComponent_SetText(field, "text");
                            return OS.AbstractTextComponent_GetText(field);
                        });
        assertEquals("text", text);
        assertEquals(Thread.currentThread(), recorder.thread);
        assertEquals(Collections.singletonList("modified"), recorder.takeOwn());
    }
}
