package com.nuvik.selftest;

import com.nuvik.wyx.dovr.OS;

/** What goes into the clipboard comes out of it. The person's text is put back. */
final class ClipboardChecks extends Checks {
    String title() {
        return "clipboard";
    }

    void run() {
        String before = OS.Clipboard_GetText();
        crosses("text", "Some text");
        crosses("other letters", "\u00e4\u0416\u4e2d\ud83d\ude00");
        crosses("lines", "one\r\ntwo");
        crosses("empty text", "");
        at("long text");
        StringBuffer text = new StringBuffer();
        for (int i = 0; i < 5000; i++) text.append("0123456789");
        OS.Clipboard_SetText(text.toString());
        came(text.toString().equals(OS.Clipboard_GetText()));
        if (before != null) OS.Clipboard_SetText(before);
    }

    private void crosses(String name, String text) {
        at(name);
        OS.Clipboard_SetText(text);
        came(String.valueOf(OS.Clipboard_GetText()));
    }
}
