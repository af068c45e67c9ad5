package com.nuvik.testing;

import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Locale;
import java.util.Map;

/** The names of keys. */
final class Keys {
    private static final int FUNCTION_KEYS = 12;
    private static final int FIRST_FUNCTION_KEY = 0x70;
    private static final Map<String, Integer> NAMED = new LinkedHashMap<>();
    private static final Map<String, Integer> MODIFIERS = new LinkedHashMap<>();

    static {
        MODIFIERS.put("shift", 0x10);
        MODIFIERS.put("ctrl", 0x11);
        MODIFIERS.put("alt", 0x12);
        NAMED.put("backspace", 0x08);
        NAMED.put("tab", 0x09);
        NAMED.put("return", 0x0D);
        NAMED.put("escape", 0x1B);
        NAMED.put("space", 0x20);
        NAMED.put("page up", 0x21);
        NAMED.put("page down", 0x22);
        NAMED.put("end", 0x23);
        NAMED.put("home", 0x24);
        NAMED.put("left", 0x25);
        NAMED.put("up", 0x26);
        NAMED.put("right", 0x27);
        NAMED.put("down", 0x28);
        NAMED.put("insert", 0x2D);
        NAMED.put("delete", 0x2E);
        for (int i = 1; i <= FUNCTION_KEYS; i++) NAMED.put("f" + i, FIRST_FUNCTION_KEY + i - 1);
    }

    private Keys() {}

    /** The system's numbers of the keys of such as {@code ctrl+shift+x}, in the order of pressing. */
    static List<Integer> parse(String keys) {
        List<Integer> numbers = new ArrayList<>();
        String rest = keys.toLowerCase(Locale.ROOT);
        for (int plus = rest.indexOf('+'); plus > 0; plus = rest.indexOf('+')) {
            Integer modifier = MODIFIERS.get(rest.substring(0, plus));
            if (modifier == null) throw unknown(keys);
            numbers.add(modifier);
            rest = rest.substring(plus + 1);
        }
        numbers.add(numberOf(rest, keys));
        return numbers;
    }

    private static int numberOf(String key, String keys) {
        if (key.matches("[a-z0-9]")) return key.toUpperCase(Locale.ROOT).charAt(0);
        Integer number = NAMED.get(key);
        if (number == null) throw unknown(keys);
        return number;
    }

    private static IllegalArgumentException unknown(String keys) {
        return new IllegalArgumentException(
                "there is no key \"" + keys + "\"; keys are letters, digits, "
                        + String.join(", ", NAMED.keySet())
                        + ", with shift+, ctrl+ and alt+ before them");
    }
}
