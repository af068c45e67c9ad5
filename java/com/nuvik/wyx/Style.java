package com.nuvik.wyx;

/**
 * How a widget is made: bits that are added up. The method that makes a widget says which of them
 * count for it; the others do nothing. Buttons take those of {@link Alignment} too.
 */
public final class Style {
    private Style() {}

    /**
     * A top shell has a close box, a child shell an OK button in its caption. Either only fires
     * {@link WindowEvent#CLOSE_REQUESTED}.
     */
    public static final int CLOSE_BOX = 0x1;

    /** A label shows its text as one line, centred vertically. */
    public static final int CENTERED_LINE = 0x2;

    /** A state item of a menu is one of a choice. */
    public static final int RADIO_ITEM = 0x10;

    /** A child shell has a caption. */
    public static final int TITLE = 0x20;

    /** A shell disables the others while it shows. */
    public static final int MODAL = 0x40;

    /** The text of a label or a text area wraps. */
    public static final int WRAP = 0x100;

    /** A frame. */
    public static final int BORDER = 0x800;

    /** A file dialog asks for a file to save, not for one to open. */
    public static final int SAVE = 0x2000;

    /** A horizontal scroll bar. */
    public static final int HORIZONTAL_SCROLL = 0x10000;

    /** A vertical scroll bar. */
    public static final int VERTICAL_SCROLL = 0x20000;

    /** A list lets several items be selected, a file dialog several files be chosen. */
    public static final int MULTIPLE = 0x800000;
}
