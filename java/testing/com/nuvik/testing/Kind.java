package com.nuvik.testing;

import java.util.Locale;

/** What a control is, as the author of an application calls it. */
public enum Kind {
    /** A window of the application's. */
    SHELL("shell"),
    /** A button that is pushed. */
    BUTTON("button"),
    /** A box that is checked or not. */
    CHECK_BOX("check box"),
    /** One of several buttons of which one is selected. */
    RADIO_BUTTON("radio button"),
    /** A text or picture that only shows. */
    LABEL("label"),
    /** A list of items. */
    LIST("list"),
    /** A field with a list that drops down. */
    CHOICE("choice"),
    /** An item of a list, or of the open list of a choice. */
    ITEM("item"),
    /** A field or area for text. */
    TEXT("text"),
    /** A scroll bar of its own. */
    SCROLL_BAR("scroll bar"),
    /** A control that holds others, or that the application paints. */
    COMPOSITE("composite"),
    /** The bar of menus at the screen's bottom. */
    MENU_BAR("menu bar"),
    /** An open menu. */
    MENU("menu"),
    /** An item of a menu bar or of an open menu. */
    MENU_ITEM("menu item"),
    /** The device's dialog that asks for a file. */
    FILE_DIALOG("file dialog"),
    /** The bar with the title at the screen's top. */
    TASK_BAR("task bar"),
    /** The keyboard on the screen. */
    INPUT_PANEL("input panel"),
    /** The open list of a choice. */
    OPEN_LIST("open list"),
    /** A control of a companion library's, or what belongs to the device. */
    OTHER("control");

    private static final int BUTTON_TYPE = 0xF;
    private static final int BUTTON_CHECK_BOX = 2;
    private static final int BUTTON_RADIO = 4;

    private final String called;

    Kind(String called) {
        this.called = called;
    }

    /** The kind as an author calls it, such as "check box". */
    @Override
    public String toString() {
        return called;
    }

    /**
     * The kind that is called so.
     *
     * @param called as {@link #toString} tells it
     * @return the kind; null when there is none
     */
    public static Kind named(String called) {
        for (Kind kind : values()) if (kind.called.equals(called)) return kind;
        return null;
    }

    static Kind of(String part, String className, int style) {
        if (part.equals("item")) return ITEM;
        if (part.equals("menu")) return MENU_ITEM;
        switch (className.toLowerCase(Locale.ROOT)) {
            case "dialog":
                return SHELL;
            case "devicebutton":
            case "button":
                return ofButton(style & BUTTON_TYPE);
            case "static":
                return LABEL;
            case "devicelistbox":
            case "listbox":
                return LIST;
            case "combolbox":
                return OPEN_LIST;
            case "devicecombobox":
            case "combobox":
                return CHOICE;
            case "deviceedit":
            case "edit":
                return TEXT;
            case "scrollbar":
                return SCROLL_BAR;
            case "window class name":
                return COMPOSITE;
            case "menubar":
                return MENU_BAR;
            case "#32768":
                return MENU;
            case "#32770":
                return FILE_DIALOG;
            case "hhtaskbar":
                return TASK_BAR;
            case "sipwndclass":
                return INPUT_PANEL;
            default:
                return OTHER;
        }
    }

    private static Kind ofButton(int type) {
        if (type == BUTTON_CHECK_BOX) return CHECK_BOX;
        return type == BUTTON_RADIO ? RADIO_BUTTON : BUTTON;
    }
}
