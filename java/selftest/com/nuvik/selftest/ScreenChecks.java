package com.nuvik.selftest;

import com.nuvik.wyx.CursorType;
import com.nuvik.wyx.dovr.OS;

/** The screen, what the system's bars leave of it, and what the system offers. */
final class ScreenChecks extends Checks {
    private static final int SYSTEM_COLORS = 26;
    private static final String NO_WORDS = "::FormatMessage failed";

    String title() {
        return "screen";
    }

    void run() {
        at("bounds");
        came(com.nuvik.wyx.k4tr.OS.Device_GetBounds(stage.display));
        at("depth");
        came(OS.Device_GetDepth(stage.display));
        at("resolution");
        came(OS.Device_GetDPI(stage.display));
        at("direct");
        came(OS.Device_IsDirect(stage.display));
        at("masks");
        came(hex(OS.Device_GetDirectPaletteMasks(stage.display)));
        at("insets");
        came(OS.Display_GetInsets(stage.display));
        at("work area");
        came(com.nuvik.wyx.k4tr.OS.Control_GetBounds(stage.shell));
        capabilities();
        typefaces();
        cursors();
        systemColors();
        systemText();
    }

    private static String hex(int[] values) {
        StringBuffer text = new StringBuffer();
        for (int i = 0; i < values.length; i++) text.append(Integer.toHexString(values[i])).append(' ');
        return text.toString().trim();
    }

    private void capabilities() {
        for (int id = 0; id < 6; id++) {
            at("capability " + id);
            came(OS.Platform_GetCapability(id));
        }
    }

    private void typefaces() {
        at("scalable typefaces");
        came(distinct(com.nuvik.wyx.k4tr.OS.Device_GetTypefaces(stage.display, true)));
        at("raster typefaces");
        came(distinct(com.nuvik.wyx.k4tr.OS.Device_GetTypefaces(stage.display, false)));
    }

    /** The names in their order in the alphabet, each once. */
    private static String distinct(String[] names) {
        java.util.Vector sorted = new java.util.Vector();
        for (int i = 0; i < names.length; i++) {
            int place = 0;
            while (place < sorted.size() && names[i].compareTo((String) sorted.elementAt(place)) > 0) place++;
            if (!sorted.contains(names[i])) sorted.insertElementAt(names[i], place);
        }
        StringBuffer text = new StringBuffer();
        for (int i = 0; i < sorted.size(); i++) text.append(i > 0 ? ", " : "").append(sorted.elementAt(i));
        return text.toString();
    }

    private void cursors() {
        at("cursors");
        StringBuffer made = new StringBuffer();
        for (int type = 1; type <= CursorType.HAND; type++) {
            made.append(OS.Cursor_New(stage.display, type) == 0 ? '-' : '+');
        }
        came(made.toString());
        at("cursor of another kind");
        came(made(OS.Cursor_New(stage.display, CursorType.HAND + 1)));
    }

    private void systemColors() {
        for (int id = 0; id < SYSTEM_COLORS; id++) {
            at("system color " + id);
            int color = OS.Display_GetSystemColor(stage.display, id);
            came(OS.Color_GetRed(color) + " " + OS.Color_GetGreen(color) + " " + OS.Color_GetBlue(color));
            com.nuvik.wyx.k4tr.OS.Color_Dispose(color);
        }
        at("system color beyond the last");
        came(made(OS.Display_GetSystemColor(stage.display, SYSTEM_COLORS)));
    }

    /** Whether the system has words for its errors. */
    private void systemText() {
        final boolean[] told = new boolean[1];
        final com.nuvik.wyx.WYXErrorHandler own = com.nuvik.wyx.k4tr.OS.wyxErrorHandler;
        at("words for errors");
        int list = OS.List_New(stage.room, 0);
        com.nuvik.wyx.k4tr.OS.wyxErrorHandler =
                new com.nuvik.wyx.WYXErrorHandler() {
                    public void respond(String function, int code, String message) {
                        int end = message.indexOf("::");
                        told[0] = end >= 0 && !message.endsWith(NO_WORDS);
                    }
                };
        OS.List_Add(list, "beyond the end", 7);
        com.nuvik.wyx.k4tr.OS.wyxErrorHandler = own;
        stage.dispose(list);
        came(told[0]);
    }
}
