package com.nuvik.testing;

import java.util.ArrayList;
import java.util.List;

/** What was on the screen at one moment. */
final class Tree {
    private static final String FIELD = "\u001F";

    final List<Part> parts = new ArrayList<>();

    /** @param records as the device tells them; null for an empty screen */
    Tree(String records) {
        if (records == null || records.isEmpty()) return;
        List<Part> path = new ArrayList<>();
        for (String record : records.split("\n")) {
            Part part = new Part(record.split(FIELD));
            while (path.size() > part.depth) path.remove(path.size() - 1);
            if (!path.isEmpty()) {
                part.parent = path.get(path.size() - 1);
                part.parent.children.add(part);
            }
            path.add(part);
            parts.add(part);
        }
    }

    Part withHandle(long handle) {
        for (Part part : parts) if (part.handle == handle) return part;
        return null;
    }

    Part sameAs(Part other) {
        for (Part part : parts) if (part.isSameAs(other)) return part;
        return null;
    }

    /** The first of the parts around it, or itself, that is disabled; null for none. */
    static Part disabledAround(Part part) {
        for (Part at = part; at != null; at = at.parent) if (!at.isEnabled()) return at;
        return null;
    }

    @Override
    public String toString() {
        StringBuilder text = new StringBuilder();
        for (Part part : parts) text.append(part.line()).append('\n');
        return text.toString();
    }
}
