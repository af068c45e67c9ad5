package com.nuvik.wyx;

/**
 * The codes of keys that stand for no character. The code of a key of letters or digits is its
 * upper-case character. Accelerators and posted keys may be such a character in any case.
 */
public final class Key {
    private Key() {}

    /** Backspace. */
    public static final int BACKSPACE = 1000;

    /** Tab. */
    public static final int TAB = 1001;

    /** Enter. */
    public static final int ENTER = 1002;

    /** Escape. */
    public static final int ESCAPE = 1003;

    /** Print Screen. */
    public static final int PRINT_SCREEN = 1005;

    /** Pause. */
    public static final int PAUSE = 1006;

    /** Home. */
    public static final int HOME = 1007;

    /** End. The Cancel key is told as this too. */
    public static final int END = 1008;

    /** Page Up. */
    public static final int PAGE_UP = 1009;

    /** Page Down. */
    public static final int PAGE_DOWN = 1010;

    /** Insert. */
    public static final int INSERT = 1011;

    /** Delete. */
    public static final int DELETE = 1012;

    /** Arrow to the left. */
    public static final int LEFT = 1013;

    /** Arrow to the right. */
    public static final int RIGHT = 1014;

    /** Arrow up. */
    public static final int UP = 1015;

    /** Arrow down. */
    public static final int DOWN = 1016;

    /** Shift. */
    public static final int SHIFT = 1017;

    /** Alt. */
    public static final int ALT = 1018;

    /** Control. */
    public static final int CONTROL = 1019;

    /** Caps Lock. */
    public static final int CAPS_LOCK = 1020;

    /** Num Lock. */
    public static final int NUM_LOCK = 1021;

    /** Scroll Lock. */
    public static final int SCROLL_LOCK = 1022;

    /** F1. */
    public static final int F1 = 1023;

    /** F2. */
    public static final int F2 = 1024;

    /** F3. */
    public static final int F3 = 1025;

    /** F4. */
    public static final int F4 = 1026;

    /** F5. */
    public static final int F5 = 1027;

    /** F6. */
    public static final int F6 = 1028;

    /** F7. */
    public static final int F7 = 1029;

    /** F8. */
    public static final int F8 = 1030;

    /** F9. */
    public static final int F9 = 1031;

    /** F10. */
    public static final int F10 = 1032;

    /** F11. */
    public static final int F11 = 1033;

    /** F12. */
    public static final int F12 = 1034;

    /** F13. */
    public static final int F13 = 1035;

    /** F14. */
    public static final int F14 = 1036;

    /** F15. */
    public static final int F15 = 1037;

    /** The number pad's asterisk. */
    public static final int NUMPAD_MULTIPLY = 1067;

    /** The number pad's plus. */
    public static final int NUMPAD_ADD = 1068;

    /** The number pad's minus. */
    public static final int NUMPAD_SUBTRACT = 1069;

    /** The number pad's point. */
    public static final int NUMPAD_DECIMAL = 1070;

    /** The number pad's slash. */
    public static final int NUMPAD_DIVIDE = 1071;

    /** The number pad's 0. */
    public static final int NUMPAD0 = 1072;

    /** The number pad's 1. */
    public static final int NUMPAD1 = 1073;

    /** The number pad's 2. */
    public static final int NUMPAD2 = 1074;

    /** The number pad's 3. */
    public static final int NUMPAD3 = 1075;

    /** The number pad's 4. */
    public static final int NUMPAD4 = 1076;

    /** The number pad's 5. */
    public static final int NUMPAD5 = 1077;

    /** The number pad's 6. */
    public static final int NUMPAD6 = 1078;

    /** The number pad's 7. */
    public static final int NUMPAD7 = 1079;

    /** The number pad's 8. */
    public static final int NUMPAD8 = 1080;

    /** The number pad's 9. */
    public static final int NUMPAD9 = 1081;

    /** The number pad's Enter. No event has it: that key is told as {@link #ENTER}. */
    public static final int NUMPAD_ENTER = 1082;
}
