package com.nuvik.testing;

import java.util.ArrayList;
import java.util.List;

/** One part of the screen as it was when the tree was read. */
final class Part {
    private static final int VISIBLE = 1;
    private static final int ENABLED = 2;
    private static final int CHECKED = 4;
    private static final int FOCUSED = 8;
    private static final int SELECTED = 16;
    private static final int ACTIVE = 32;
    private static final int SEPARATOR = 64;
    private static final int OPENS_MENU = 128;
    private static final int ON_SCREEN = 256;
    private static final char LINE_FEED = '\u001E';

    final int depth;
    final String part;
    final long handle;
    final String className;
    final String rawText;
    final Kind kind;
    final int style;
    final int x;
    final int y;
    final int width;
    final int height;
    final int tapX;
    final int tapY;
    final long coverer;
    final String value;
    final List<Part> children = new ArrayList<>();
    Part parent;
    private final int flags;

    Part(String[] fields) {
        depth = Integer.parseInt(fields[0]);
        part = fields[1];
        handle = Long.parseLong(fields[2]);
        className = fields[3];
        rawText = fields[4].replace(LINE_FEED, '\n');
        style = (int) Long.parseLong(fields[5]);
        x = Integer.parseInt(fields[6]);
        y = Integer.parseInt(fields[7]);
        width = Integer.parseInt(fields[8]);
        height = Integer.parseInt(fields[9]);
        tapX = Integer.parseInt(fields[10]);
        tapY = Integer.parseInt(fields[11]);
        coverer = Long.parseLong(fields[12]);
        flags = Integer.parseInt(fields[13]);
        value = fields.length > 14 ? fields[14] : "";
        kind = Kind.of(part, className, style);
    }

    boolean isVisible() {
        return (flags & VISIBLE) != 0;
    }

    boolean isEnabled() {
        return (flags & ENABLED) != 0;
    }

    boolean isChecked() {
        return (flags & CHECKED) != 0;
    }

    boolean isFocused() {
        return (flags & FOCUSED) != 0;
    }

    boolean isSelected() {
        return (flags & SELECTED) != 0;
    }

    boolean isActive() {
        return (flags & ACTIVE) != 0;
    }

    boolean isSeparator() {
        return (flags & SEPARATOR) != 0;
    }

    boolean opensMenu() {
        return (flags & OPENS_MENU) != 0;
    }

    boolean isOnScreen() {
        return (flags & ON_SCREEN) != 0;
    }

    boolean canBeReached() {
        return tapX >= 0;
    }

    /** Whether a person reads it now: the names of a choice that is shut are told and not shown. */
    boolean isShown() {
        return isVisible() && isOnScreen();
    }

    /** The text as it is read: without what marks a key, and without a menu item's accelerator. */
    String text() {
        switch (kind) {
            case MENU_ITEM:
                int tab = rawText.indexOf('\t');
                return withoutMarks(tab < 0 ? rawText : rawText.substring(0, tab));
            case BUTTON:
            case CHECK_BOX:
            case RADIO_BUTTON:
                return withoutMarks(rawText);
            default:
                return rawText;
        }
    }

    private static String withoutMarks(String text) {
        return text.replace("&&", "\0").replace("&", "").replace('\0', '&');
    }

    boolean isSameAs(Part other) {
        return handle == other.handle
                && part.equals(other.part)
                && (part.equals("window") || value.equals(other.value));
    }

    /** How a sentence calls it: {@code the button "Tap me"}. */
    String named() {
        String called = kind == Kind.OTHER ? "control " + className : kind.toString();
        return text().isEmpty() ? "the " + called : "the " + called + " \"" + text() + "\"";
    }

    /** The line of it in the tree. */
    String line() {
        StringBuilder line = new StringBuilder();
        for (int i = 0; i < depth; i++) line.append("  ");
        line.append(kind == Kind.OTHER ? className : kind.toString());
        if (isSeparator()) return line.append(" ----").toString();
        if (!text().isEmpty()) {
            line.append(" \"").append(text().replace("\n", "\\n")).append('"');
        }
        if (isOnScreen()) line.append(String.format(" %d,%d %dx%d", x, y, width, height));
        tell(line, isActive(), "active");
        tell(line, isFocused(), "focused");
        tell(line, !isEnabled(), "disabled");
        tell(line, isChecked(), "checked");
        tell(line, isSelected(), "selected");
        tell(line, !isShown() && kind != Kind.ITEM, isVisible() ? "outside the screen" : "hidden");
        return line.toString();
    }

    private static void tell(StringBuilder line, boolean is, String what) {
        if (is) line.append(", ").append(what);
    }
}
