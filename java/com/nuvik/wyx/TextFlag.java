package com.nuvik.wyx;

/** How a text is drawn: bits that are added up. */
public final class TextFlag {
    private TextFlag() {}

    /** Lines are broken; without it the text is one line. */
    public static final int BREAK_LINES = 1;

    /** Tabs are expanded. */
    public static final int EXPAND_TABS = 2;

    /** An ampersand marks a mnemonic; without it it is drawn. */
    public static final int MNEMONICS = 4;

    /** What is behind the characters stays as it is. */
    public static final int LEAVE_BACKGROUND = 8;
}
