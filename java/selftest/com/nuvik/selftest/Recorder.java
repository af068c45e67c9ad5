package com.nuvik.selftest;

import java.util.Vector;

/** Keeps the events of one widget in the order of their firing. */
class Recorder {
    private final Vector events = new Vector();

    private void record(String event) {
        events.addElement(event);
    }

    boolean has(String event) {
        return events.contains(event);
    }

    /** The events since the last look that begin so. */
    String take(String beginning) {
        StringBuffer taken = new StringBuffer();
        for (int i = 0; i < events.size(); i++) {
            String event = (String) events.elementAt(i);
            if (!event.startsWith(beginning)) continue;
            if (taken.length() > 0) taken.append(", ");
            taken.append(event);
        }
        events.removeAllElements();
        return taken.toString();
    }

    void selected() {
        record("selected");
    }

    void listSelected(int index, int kind) {
        record("list " + index + " " + kind);
    }

    void choiceSelected(int index) {
        record("choice " + index);
    }

    void modified() {
        record("modified");
    }

    void menu(int code) {
        record("menu " + code);
    }

    void scrolled(int value, int kind) {
        record("scrolled " + value + " " + kind);
    }

    void window(int event) {
        record("window " + event);
    }

    boolean key(int kind, char character, int keyCode, int modifiers) {
        record("key " + kind + " " + (int) character + " " + keyCode + " " + modifiers);
        return false;
    }

    void pointer(int type, int x, int y, int button, int modifiers) {
        record("pointer " + type + " " + x + " " + y + " " + button + " " + modifiers);
    }

    int pointerDown(int x, int y) {
        return 0;
    }

    void focus(int change) {
        record("focus " + change);
    }

    void resize(int width, int height) {
        record("resize " + width + " " + height);
    }

    void move(int x, int y) {
        record("move " + x + " " + y);
    }
}
