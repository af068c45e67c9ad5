package com.nuvik.selftest;

import com.nuvik.wyx.Key;
import com.nuvik.wyx.ListSelection;
import com.nuvik.wyx.Style;
import com.nuvik.wyx.dovr.OS;

/** Lists and choices. */
final class ListChecks extends Checks {
    String title() {
        return "list";
    }

    void run() {
        int list = OS.List_New(stage.room, Style.BORDER | Style.VERTICAL_SCROLL);
        Stage.place(list, 10, 10, 100, 60);
        items(list);
        selection(list);
        taps(list);
        stage.dispose(list);
        choice(Stage.place(OS.Choice_New(stage.room), 10, 10, 100, 24));
    }

    private void items(int list) {
        at("room of an empty list");
        came(OS.List_GetMinimumSize(list, 4));
        for (int i = 0; i < 8; i++) OS.List_Add(list, "Item " + i, -1);
        at("room of a list");
        came(OS.List_GetMinimumSize(list, 4));
        at("item beyond the end");
        OS.List_Add(list, "none", 99);
        done();
        at("item taken out beyond the end");
        OS.List_Remove(list, 99);
        done();
        at("wider item");
        OS.List_SetItem(list, 3, "A good deal wider than the others");
        came(OS.List_GetMinimumSize(list, 4));
        OS.List_SetItem(list, 3, "Item 3");
    }

    private void selection(int list) {
        at("none selected");
        came(OS.List_GetSelectionIndex(list));
        at("one selected");
        OS.List_Select(list, 2);
        came(OS.List_GetSelectionIndices(list));
        at("one more in single mode");
        OS.List_SelectIndices(list, new int[] {4, 5}, 2);
        came(OS.List_GetSelectionIndices(list));
        at("several in multiple mode");
        OS.List_SetMultipleMode(list, true);
        OS.List_SelectIndices(list, new int[] {4, 5}, 2);
        came(OS.List_GetSelectionIndices(list));
        at("selected in multiple mode");
        came(OS.List_GetSelectionCount(list));
        at("one less");
        OS.List_Deselect(list, 4);
        came(OS.List_IsSelected(list, 4) + " " + OS.List_IsSelected(list, 5));
        at("back to single mode");
        OS.List_SetMultipleMode(list, false);
        came(OS.List_GetSelectionIndices(list));
        at("top beyond the end");
        OS.List_SetTopItemIndex(list, 99);
        done();
    }

    private void taps(int list) {
        OS.List_SetTopItemIndex(list, 0);
        Recorder recorder = stage.listen(list);
        at("tap on the first item");
        stage.tap(30, 18);
        stage.await(recorder, "list 0 " + ListSelection.CHANGED);
        came(recorder.take("list"));
        at("arrow to the second item");
        stage.key(Key.DOWN);
        stage.await(recorder, "list 1 " + ListSelection.CHANGED);
        came(recorder.take("list"));
    }

    private void choice(int choice) {
        Recorder recorder = stage.listen(choice);
        at("none chosen");
        came(OS.Choice_GetSelectedItemIndex(choice));
        for (int i = 0; i < 4; i++) OS.Choice_AddItem(choice, "Choice " + i, -1);
        at("smallest choice");
        came(OS.Control_GetMinimumSize(choice));
        at("chosen");
        OS.Choice_SelectItem(choice, 1);
        came(OS.Choice_GetSelectedItemIndex(choice));
        at("chosen beyond the end");
        OS.Choice_SelectItem(choice, 9);
        came(OS.Choice_GetSelectedItemIndex(choice));
        at("taken out beyond the end");
        OS.Choice_RemoveItem(choice, 9);
        done();
        at("arrow in a choice");
        OS.Choice_SelectItem(choice, 1);
        OS.Control_ForceFocus(choice);
        stage.key(Key.DOWN);
        stage.await(recorder, "choice 2");
        came(recorder.take("choice"));
        at("emptied");
        OS.Choice_RemoveAllItems(choice);
        came(OS.Choice_GetSelectedItemIndex(choice));
        stage.dispose(choice);
    }
}
