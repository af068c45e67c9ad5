package com.nuvik.examples;

import static com.nuvik.wyx.k4tr.OS.Widget_Dispose;

import com.nuvik.wyx.dovr.OS;

/** A dialog that asks for one of the documents on the device. */
final class FileQuestion {
    private static final String DOCUMENTS = "\\My Documents";

    private FileQuestion() {}

    /**
     * Asks for a file and waits for the answer.
     *
     * @return its whole name; null when the person does not want one after all
     */
    static String ask(int owner, int style, String title, String name) {
        int dialog = OS.FileDialog_New(owner, style);
        OS.FileDialog_SetTitle(dialog, title);
        OS.FileDialog_SetFilterPath(dialog, DOCUMENTS);
        OS.FileDialog_SetFileName(dialog, name);
        boolean chosen = OS.FileDialog_Open(dialog);
        String folder = OS.FileDialog_GetFilterPath(dialog);
        String[] names = OS.FileDialog_GetFileNames(dialog);
        Widget_Dispose(dialog);
        return chosen ? folder + names[0] : null;
    }
}
