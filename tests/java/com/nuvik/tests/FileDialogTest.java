package com.nuvik.tests;

import static com.nuvik.wyx.k4tr.OS.Widget_Dispose;
import static com.nuvik.wyx.k4tr.OS.Widget_SetData;
import static org.junit.Assert.assertArrayEquals;
import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertFalse;
import static org.junit.Assert.assertTrue;

import com.nuvik.wyx.Key;
import com.nuvik.wyx.Style;
import com.nuvik.wyx.WindowEvent;
import com.nuvik.wyx.dovr.OS;
import org.junit.After;
import org.junit.Before;
import org.junit.Rule;
import org.junit.Test;

/** File dialogs from Java. A person's keys come as soon as the dialog takes the activation. */
public final class FileDialogTest {
    @Rule public final ShownShell shown = new ShownShell();

    private int dialog;

    @Before
    public void open() {
        dialog = OS.FileDialog_New(shown.shell, Style.SAVE);
        OS.FileDialog_SetTitle(dialog, "Save it");
        OS.FileDialog_SetFilterPath(dialog, "\\My Documents");
    }

    @After
    public void close() {
        Widget_Dispose(dialog);
    }

    private void typeWhenItOpens(int... keys) {
        Widget_SetData(
                shown.shell,
                new Device.Recorder() {
                    private boolean typed;

                    @Override
                    void window(int event) {
                        if (event != WindowEvent.DEACTIVATED || typed) return;
                        typed = true;
                        for (int key : keys) {
                            shown.device.press(key);
                            shown.device.release(key);
                        }
                    }
                });
    }

    @Test
    public void aTypedNameIsChosen() {
        typeWhenItOpens('j', 'a', 'v', 'a', Key.ENTER);
        assertTrue(OS.FileDialog_Open(dialog));
        assertEquals("\\My Documents\\", OS.FileDialog_GetFilterPath(dialog));
        assertArrayEquals(new String[] {"java"}, OS.FileDialog_GetFileNames(dialog));
        assertArrayEquals(new String[0], OS.FileDialog_GetFileNames(dialog));
    }

    @Test
    public void aDialogOpensOnAnotherThread() throws Exception {
        typeWhenItOpens('j', Key.ENTER);
        assertTrue(shown.device.onOtherThread(() -> OS.FileDialog_Open(dialog)));
        assertArrayEquals(new String[] {"j"}, OS.FileDialog_GetFileNames(dialog));
    }

    @Test
    public void aCancelledDialogChoosesNothing() {
        OS.FileDialog_SetFileName(dialog, "a/b");
        typeWhenItOpens(Key.ESCAPE);
        assertFalse(OS.FileDialog_Open(dialog));
        assertEquals("\\My Documents", OS.FileDialog_GetFilterPath(dialog));
        assertArrayEquals(new String[0], OS.FileDialog_GetFileNames(dialog));
    }
}
