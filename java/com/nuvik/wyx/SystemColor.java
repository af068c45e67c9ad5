package com.nuvik.wyx;

/** The system's colours, as {@code Display_GetSystemColor} makes them. */
public final class SystemColor {
    private SystemColor() {}

    /** The desktop. */
    public static final int DESKTOP = 0;

    /** The active window's caption. */
    public static final int ACTIVE_CAPTION = 1;

    /** Its text. */
    public static final int ACTIVE_CAPTION_TEXT = 2;

    /** The active window's border. */
    public static final int ACTIVE_CAPTION_BORDER = 3;

    /** Another window's caption. */
    public static final int INACTIVE_CAPTION = 4;

    /** Its text. */
    public static final int INACTIVE_CAPTION_TEXT = 5;

    /** Another window's border. */
    public static final int INACTIVE_CAPTION_BORDER = 6;

    /** A window's background. */
    public static final int WINDOW = 7;

    /** A window's frame. */
    public static final int WINDOW_FRAME = 8;

    /** A window's text. */
    public static final int WINDOW_TEXT = 9;

    /** A menu's background. */
    public static final int MENU = 10;

    /** A menu's text. */
    public static final int MENU_TEXT = 11;

    /** A text field's background. */
    public static final int TEXT_FIELD = 12;

    /** A text field's text. */
    public static final int TEXT_FIELD_TEXT = 13;

    /** The background of what is selected. */
    public static final int HIGHLIGHT = 14;

    /** The text of what is selected. */
    public static final int HIGHLIGHT_TEXT = 15;

    /** A disabled text. */
    public static final int DISABLED_TEXT = 16;

    /** A control's background. */
    public static final int CONTROL = 17;

    /** A control's text. */
    public static final int CONTROL_TEXT = 18;

    /** A control's lighter edge. */
    public static final int CONTROL_LIGHT = 19;

    /** A control's lightest edge. */
    public static final int CONTROL_HIGHLIGHT = 20;

    /** A control's darker edge. */
    public static final int CONTROL_SHADOW = 21;

    /** A control's darkest edge. */
    public static final int CONTROL_DARK_SHADOW = 22;

    /** A scroll bar's background. */
    public static final int SCROLL_BAR = 23;

    /** A tool tip's background. */
    public static final int TOOL_TIP = 24;

    /** A tool tip's text. */
    public static final int TOOL_TIP_TEXT = 25;
}
