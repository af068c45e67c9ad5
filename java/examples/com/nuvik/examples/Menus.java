package com.nuvik.examples;

import com.nuvik.program.Listener;
import com.nuvik.program.Program;
import com.nuvik.wyx.FontFamily;
import com.nuvik.wyx.FontStyle;
import com.nuvik.wyx.Key;
import com.nuvik.wyx.Modifier;
import com.nuvik.wyx.PointerType;
import com.nuvik.wyx.Style;
import com.nuvik.wyx.WindowEvent;
import com.nuvik.wyx.dovr.OS;
import java.util.Vector;

/**
 * A whole application window: a menu bar with drop-down menus, accelerators, a pop-up menu on tap and
 * hold, scroll bars, colours and fonts, and a modal child shell. It tells on standard output what the
 * person does.
 */
public final class Menus {
    private static final int CONTROL = Modifier.CONTROL << 16;
    private static final int SHIFT = Modifier.SHIFT << 16;
    private static final int ROW = 30;
    private static final String[] SIZES = {"Small", "Medium", "Large"};

    private final Program program = new Program();
    private final Vector widgets = new Vector();
    private final int shell = program.newMainShell("Menus");
    private final int[] fonts = new int[SIZES.length];
    private final int[] sizeItems = new int[SIZES.length];
    private final int[] rows = new int[12];
    private int rowColor;
    private int list;

    private int keep(int widget) {
        widgets.addElement(new Integer(widget));
        return widget;
    }

    private void onMenu(int item, final Runnable action) {
        com.nuvik.wyx.k4tr.OS.Widget_SetData(
                item,
                new Listener() {
                    public void menu(int code) {
                        action.run();
                    }
                });
    }

    private int push(int menu, int index, String text, String key, int accelerator, Runnable action) {
        int item = keep(OS.PushMenuItem_New(menu, index));
        OS.LabeledMenuItem_SetText(item, text, key);
        OS.LabeledMenuItem_SetAccelerator(item, accelerator);
        onMenu(item, action);
        return item;
    }

    private int cascade(int menu, int index, String text, int subMenu) {
        int item = keep(OS.CascadeMenuItem_New(menu, index));
        OS.LabeledMenuItem_SetText(item, text, null);
        OS.CascadeMenuItem_SetMenu(item, subMenu);
        return item;
    }

    private void say(String what) {
        System.out.println(what);
    }

    private void chooseSize(int size) {
        for (int i = 0; i < SIZES.length; i++) OS.StateMenuItem_SetSelection(sizeItems[i], i == size);
        for (int i = 0; i < rows.length; i++) OS.Control_SetFont(rows[i], fonts[size]);
        say(SIZES[size]);
    }

    private void makeMenuBar() {
        int bar = keep(OS.MenuBar_New(shell));
        int sizes = keep(OS.DropDownMenu_New(shell));
        for (int i = 0; i < SIZES.length; i++) {
            final int size = i;
            fonts[i] = OS.Font_NewLogical(
                            program.display,
                            FontFamily.SANS_SERIF,
                            7 + 3 * i,
                            i == 2 ? FontStyle.BOLD : FontStyle.PLAIN);
            sizeItems[i] = keep(OS.StateMenuItem_New(sizes, i, Style.RADIO_ITEM));
            OS.LabeledMenuItem_SetText(sizeItems[i], SIZES[i], "Ctrl+" + (i + 1));
            OS.LabeledMenuItem_SetAccelerator(sizeItems[i], CONTROL | ('1' + i));
            onMenu(
                    sizeItems[i],
                    new Runnable() {
                        public void run() {
                            chooseSize(size);
                        }
                    });
        }
        int view = keep(OS.DropDownMenu_New(shell));
        cascade(view, 0, "Text size", sizes);
        keep(OS.SeparatorItem_New(view, 1));
        int colored = keep(OS.StateMenuItem_New(view, 2, 0));
        OS.LabeledMenuItem_SetText(colored, "&Colour", "F1");
        OS.LabeledMenuItem_SetAccelerator(colored, Key.F1);
        onMenu(
                colored,
                new Runnable() {
                    public void run() {
                        toggleColor();
                    }
                });
        int file = keep(OS.DropDownMenu_New(shell));
        push(
                file, 0, "About...", "", 0,
                new Runnable() {
                    public void run() {
                        showAbout();
                    }
                });
        push(
                file, 1, "Exit", "Ctrl+Shift+X", CONTROL | SHIFT | 'x',
                new Runnable() {
                    public void run() {
                        program.leave();
                    }
                });
        cascade(bar, 0, "File", file);
        cascade(bar, 1, "View", view);
        push(
                bar, 2, "Top", "", 0,
                new Runnable() {
                    public void run() {
                        scrollTo(0);
                    }
                });
        OS.Shell_SetMenuBar(shell, bar);
    }

    private boolean isColored;

    private void colorRows() {
        for (int i = 0; i < rows.length; i++) {
            OS.Control_SetBackground(rows[i], isColored ? rowColor : 0);
        }
    }

    private void toggleColor() {
        isColored = !isColored;
        colorRows();
        say(isColored ? "coloured" : "plain");
    }

    private void showAbout() {
        int style = Style.CLOSE_BOX | Style.TITLE | Style.MODAL | Style.BORDER;
        final int about = OS.Shell_NewChild(shell, style);
        com.nuvik.wyx.k4tr.OS.Shell_SetText(about, "About");
        final int box = OS.Checkbox_New(about, 0);
        OS.Button_SetLabel(box, "Show this at start");
        program.screen.place(box, 20, 20, 150, 24);
        com.nuvik.wyx.k4tr.OS.Widget_SetData(
                about,
                new Listener() {
                    public void window(int event) {
                        if (event != WindowEvent.CLOSE_REQUESTED) return;
                        com.nuvik.wyx.k4tr.OS.Control_SetVisible(about, false);
                        program.dispose(box);
                        program.dispose(about);
                        say("about closed");
                    }
                });
        program.screen.place(about, 20, 80, 200, 100);
        say("about shown");
    }

    private int verticalBar;

    private void scrollTo(int value) {
        OS.Adjustable_SetValue(verticalBar, value);
        placeRows(value);
        say("scrolled to " + value);
    }

    private void placeRows(int top) {
        for (int i = 0; i < rows.length; i++) {
            program.screen.place(rows[i], 4, 4 + i * ROW - top, 150, ROW - 4);
        }
    }

    private void makeList(int height) {
        list = keep(OS.Composite_New(shell, Style.VERTICAL_SCROLL | Style.BORDER));
        rowColor = com.nuvik.wyx.k4tr.OS.Color_New(program.display, 255, 240, 170);
        for (int i = 0; i < rows.length; i++) {
            rows[i] = keep(OS.Checkbox_New(list, 0));
            OS.Button_SetLabel(rows[i], "Point " + (i + 1));
        }
        program.screen.place(list, 8, 8, 190, height);
        verticalBar = OS.Scrollable_GetVerticalBar(list);
        OS.Adjustable_SetMaximum(verticalBar, rows.length * ROW + 8);
        OS.Adjustable_SetVisibleAmount(verticalBar, height);
        OS.Adjustable_SetUnitIncrement(verticalBar, ROW);
        com.nuvik.wyx.k4tr.OS.Widget_SetData(
                verticalBar,
                new Listener() {
                    public void scrolled(int value, int kind) {
                        placeRows(value);
                        say("scrolled to " + value);
                    }
                });
        placeRows(0);
    }

    private void makeBar(int height) {
        int bar = keep(OS.Scrollbar_New(shell));
        OS.Adjustable_SetMaximum(bar, 255);
        program.screen.place(bar, 208, 8, 16, height);
        com.nuvik.wyx.k4tr.OS.Widget_SetData(
                bar,
                new Listener() {
                    public void scrolled(int value, int kind) {
                        int old = rowColor;
                        rowColor = com.nuvik.wyx.k4tr.OS.Color_New(program.display, 255, 255 - value, 170);
                        colorRows();
                        com.nuvik.wyx.k4tr.OS.Color_Dispose(old);
                        say("shade " + value);
                    }
                });
    }

    /** A menu where the person taps and holds. */
    private void makePopup() {
        final int popup = keep(OS.PopupMenu_New(list));
        push(
                popup, 0, "Mark all", "", 0,
                new Runnable() {
                    public void run() {
                        markAll(true);
                    }
                });
        push(
                popup, 1, "Mark none", "", 0,
                new Runnable() {
                    public void run() {
                        markAll(false);
                    }
                });
        com.nuvik.wyx.k4tr.OS.Widget_SetData(
                list,
                new Listener() {
                    public void pointer(int type, int x, int y, int button, int modifiers) {
                        boolean asks = (modifiers & Modifier.CONTEXT_GESTURE) != 0;
                        if (asks && type == PointerType.RELEASE) OS.PopupMenu_Show(popup, x, y);
                    }
                });
    }

    private void markAll(boolean marked) {
        for (int i = 0; i < rows.length; i++) OS.Button_SetSelection(rows[i], marked);
        say(marked ? "all marked" : "none marked");
    }

    private void run() {
        int height = program.screen.unscaled(com.nuvik.wyx.k4tr.OS.Control_GetBounds(shell)[3]);
        makeList(height - 44);
        makeBar(height - 44);
        makePopup();
        makeMenuBar();
        program.showMainShell();
        chooseSize(1);
        say("ready");
        program.run();
        OS.Shell_SetMenuBar(shell, 0);
        for (int i = widgets.size(); i-- > 0; ) {
            program.dispose(((Integer) widgets.elementAt(i)).intValue());
        }
        program.dispose(shell);
        com.nuvik.wyx.k4tr.OS.Color_Dispose(rowColor);
        for (int i = 0; i < fonts.length; i++) com.nuvik.wyx.k4tr.OS.Font_Dispose(fonts[i]);
        program.end();
        say("closed");
    }

    public static void main(String[] arguments) {
        new Menus().run();
    }
}
