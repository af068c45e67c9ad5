package com.nuvik.tests;

import static org.junit.Assert.assertEquals;

import com.nuvik.wyx.dovr.OS;
import java.util.Collections;
import org.junit.After;
import org.junit.Before;
import org.junit.Test;

/** The clipboard from Java. */
public final class ClipboardTest {
    private Device device;

    @Before
    public void open() {
        device = new Device();
    }

    @After
    public void close() {
        device.end();
        assertEquals(Collections.emptyList(), device.errors);
    }

    @Test
    public void textComesBackAsItWasSet() throws Exception {
        for (String text : new String[] {"a text", "", "\u00e4\ud83d\ude00\r\n\tmore"}) {
            OS.Clipboard_SetText(text);
            assertEquals(text, OS.Clipboard_GetText());
            assertEquals(text, device.onOtherThread(OS::Clipboard_GetText));
        }
        OS.Clipboard_SetText(null);
        assertEquals("", OS.Clipboard_GetText());
    }
}
