package com.nuvik.testing;

import java.util.ArrayList;
import java.util.List;

/** The device's dialog that asks for a file to open or to save, while it is open. */
public final class FileDialog {
    private static final int NAME_LABEL_AND_FOLDER = 2;

    private final Control dialog;

    FileDialog(Control dialog) {
        this.dialog = dialog;
    }

    /**
     * Its title.
     *
     * @return the text
     */
    public String title() {
        return dialog.text();
    }

    /**
     * The folder that it shows.
     *
     * @return its whole name on the device, such as {@code \My Documents}
     */
    public String folder() {
        int labels = 0;
        for (Control child : dialog.children()) {
            if (child.kind() == Kind.LABEL && ++labels == NAME_LABEL_AND_FOLDER) return child.text();
        }
        throw new TestFailure(dialog + " shows no folder");
    }

    /**
     * The files that it offers.
     *
     * @return their names, folders left away
     */
    public List<String> files() {
        List<String> files = new ArrayList<>();
        for (String item : dialog.find(Kind.LIST, null).items()) {
            if (!item.startsWith("[")) files.add(item);
        }
        return files;
    }

    /**
     * The name that stands in it.
     *
     * @return the text
     */
    public String name() {
        return dialog.find(Kind.TEXT, null).text();
    }

    /**
     * Types a name and accepts it.
     *
     * @param name the file's name in the folder, or its whole name on the device
     */
    public void choose(String name) {
        dialog.find(Kind.TEXT, null).enter(name);
        dialog.find(Kind.BUTTON, "OK").tap();
    }

    /** Leaves it without a file. */
    public void cancel() {
        dialog.find(Kind.BUTTON, "Cancel").tap();
    }

    /**
     * Leads into a folder that it shows.
     *
     * @param folder the folder's name
     */
    public void enterFolder(String folder) {
        dialog.find(Kind.LIST, null).choose("[" + folder + "]");
        dialog.find(Kind.BUTTON, "OK").tap();
    }
}
