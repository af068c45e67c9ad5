package com.nuvik.selftest;

import com.nuvik.wyx.FontFamily;
import com.nuvik.wyx.FontStyle;
import com.nuvik.wyx.dovr.OS;

/** The faces that the system chooses, and their sizes. */
final class FontChecks extends Checks {
    private static final int[] FAMILIES = {
        FontFamily.SANS_SERIF, FontFamily.SERIF, FontFamily.FIXED_PITCH
    };
    private static final String[] FAMILY_NAMES = {"sans serif", "serif", "fixed"};
    private static final int[] POINTS = {8, 10, 14};

    String title() {
        return "font";
    }

    void run() {
        for (int family = 0; family < FAMILIES.length; family++) {
            for (int i = 0; i < POINTS.length; i++) {
                logical(FAMILY_NAMES[family] + " " + POINTS[i], FAMILIES[family], POINTS[i], 0);
            }
            logical(FAMILY_NAMES[family] + " bold", FAMILIES[family], 10, FontStyle.BOLD);
            logical(FAMILY_NAMES[family] + " italic", FAMILIES[family], 10, FontStyle.ITALIC);
        }
        logical("sans serif of any size", FontFamily.SANS_SERIF, 0, 0);
        named("unknown face", "No such face");
        named("fixed by name", "Fixed");
        at("default font");
        int label = OS.Label_New(stage.room, 0);
        came(metrics(OS.Control_GetDefaultFont(label)));
        stage.dispose(label);
    }

    private void logical(String name, int family, int points, int style) {
        at(name);
        int font = OS.Font_NewLogical(stage.display, family, points, style);
        came(OS.Font_GetName(font) + ", style " + OS.Font_GetStyle(font));
        measure(name, font);
    }

    private void named(String name, String face) {
        at(name);
        int font = com.nuvik.wyx.k4tr.OS.Font_New(stage.display, face, 10, 0);
        came(OS.Font_GetName(font) + ", style " + OS.Font_GetStyle(font));
        measure(name, font);
    }

    private void measure(String name, int font) {
        at("size of " + name);
        came(metrics(font));
        com.nuvik.wyx.k4tr.OS.Font_Dispose(font);
    }

    private static String metrics(int font) {
        return com.nuvik.wyx.k4tr.OS.Font_GetSizeInPoints(font) + " points, up "
                + com.nuvik.wyx.k4tr.OS.Font_GetAscent(font) + ", down "
                + com.nuvik.wyx.k4tr.OS.Font_GetDescent(font) + ", leading "
                + com.nuvik.wyx.k4tr.OS.Font_GetLeading(font) + ", W "
                + com.nuvik.wyx.k4tr.OS.Font_GetAdvanceWidth(font, 'W') + ", i "
                + com.nuvik.wyx.k4tr.OS.Font_GetAdvanceWidth(font, 'i') + ", text "
                + OS.Font_StringAdvance(font, "The quick brown fox");
    }
}
