package com.nuvik.examples;

import com.nuvik.wyx.Key;
import com.nuvik.wyx.KeyKind;
import com.nuvik.wyx.Style;
import com.nuvik.wyx.dovr.OS;
import java.util.ArrayList;
import java.util.List;

/** A list of texts with a field to add one and a button to remove those that are selected. */
final class Findings {
    private static final int MARGIN = 6;
    private static final int LINE = 20;
    private static final int BUTTON_WIDTH = 62;

    private final Page page;
    private final int font;
    private final int entry;
    private final int list;
    private final int removeButton;
    private final List<String> texts = new ArrayList<>();

    Findings(Page page, int font, int y) {
        this.page = page;
        this.font = font;
        int right = page.width() - MARGIN - BUTTON_WIDTH;
        int width = right - 2 * MARGIN;
        entry = OS.TextField_New(page.sheet, Style.BORDER);
        page.add(newEntryField(), entry, font, MARGIN, y, width, LINE);
        addButton("Add", right, y, this::addEntry);
        list = OS.List_New(page.sheet, Style.BORDER | Style.VERTICAL_SCROLL | Style.MULTIPLE);
        int top = y + LINE + MARGIN;
        page.add(newListField(), list, font, MARGIN, top, width, 3 * LINE);
        removeButton = addButton("Remove", right, top, this::removeSelected);
        OS.Control_SetEnabled(removeButton, false);
    }

    private int addButton(String text, int x, int y, Runnable action) {
        int button = OS.PushButton_New(page.sheet, 0);
        OS.Button_SetLabel(button, text);
        page.add(page.new ButtonField(action), button, font, x, y, BUTTON_WIDTH, LINE);
        return button;
    }

    private Page.Field newEntryField() {
        return page.new Field() {
            @Override
            public boolean key(int action, char character, int keyCode, int modifiers) {
                boolean isEnter = action == KeyKind.PRESSED && keyCode == Key.ENTER;
                if (isEnter) addEntry();
                return isEnter || super.key(action, character, keyCode, modifiers);
            }
        };
    }

    private Page.Field newListField() {
        return page.new Field() {
            @Override
            public void listSelected(int index, int event) {
                int count = OS.List_GetSelectionCount(list);
                OS.Control_SetEnabled(removeButton, count > 0);
                Form.say("selected " + count);
            }
        };
    }

    private void addEntry() {
        String text = OS.AbstractTextComponent_GetText(entry).trim();
        OS.Control_ForceFocus(entry);
        if (text.isEmpty()) return;
        add(text);
        OS.AbstractTextComponent_SetText(entry, "");
        Form.say("added " + text);
    }

    private void add(String text) {
        OS.List_Add(list, text, -1);
        texts.add(text);
    }

    /** From the last to the first, so that the indices of those still to go stay what they are. */
    private void removeSelected() {
        int[] selected = OS.List_GetSelectionIndices(list);
        for (int i = selected.length - 1; i >= 0; i--) {
            OS.List_Remove(list, selected[i]);
            texts.remove(selected[i]);
        }
        OS.Control_ForceFocus(list); // before the button loses it
        OS.Control_SetEnabled(removeButton, false);
        Form.say("removed " + selected.length);
    }

    List<String> texts() {
        return texts;
    }

    void show(List<String> shown) {
        OS.AbstractTextComponent_SetText(entry, "");
        OS.List_RemoveAll(list);
        texts.clear();
        for (String text : shown) add(text);
        OS.Control_SetEnabled(removeButton, false);
    }

    boolean isEntry(int control) {
        return control == entry;
    }
}
