package com.nuvik.tests;

import static com.nuvik.wyx.k4tr.OS.Control_GetBounds;
import static com.nuvik.wyx.k4tr.OS.Display_ReadAndDispatch;
import static com.nuvik.wyx.k4tr.OS.Display_Sleep;
import static com.nuvik.wyx.k4tr.OS.Font_Dispose;
import static com.nuvik.wyx.k4tr.OS.Font_New;
import static com.nuvik.wyx.k4tr.OS.Image_NewFromIntData;
import static com.nuvik.wyx.k4tr.OS.Shell_SetText;
import static com.nuvik.wyx.k4tr.OS.Widget_SetData;

import com.nuvik.wyx.KeyKind;
import com.nuvik.wyx.WindowEvent;
import com.nuvik.wyx.dovr.OS;
import java.util.Locale;

/**
 * A window that tells on standard output what happens to it, in which language the device speaks, and
 * how wide text is in a font that is asked for. It is closed by the person.
 */
public final class Watched {
    private static boolean isOpen = true;

    private static void watch(Device device, int shell) {
        Widget_SetData(
                shell,
                new Device.Recorder() {
                    @Override
                    void resize(int width, int height) {
                        tellSize(shell);
                    }

                    @Override
                    boolean key(int kind, char character, int keyCode, int modifiers) {
                        if (kind == KeyKind.PRESSED) System.out.println("key " + character);
                        return false;
                    }

                    @Override
                    void window(int event) {
                        if (event == WindowEvent.CLOSE_REQUESTED) isOpen = false;
                    }
                });
    }

    private static void tellSize(int shell) {
        int[] place = Control_GetBounds(shell);
        System.out.println("size " + place[2] + " " + place[3]);
    }

    private static void tellFont(Device device, String name) {
        int font = Font_New(device.display, name, 20, 0);
        System.out.println("width " + OS.Font_StringAdvance(font, "Illinois"));
        Font_Dispose(font);
    }

    private static void tellLanguage(Device device) {
        final int unknownDepth = 17;
        Image_NewFromIntData(device.display, 1, 1, new int[1], unknownDepth, -1, -1, null);
        System.out.println(device.errors);
        System.out.println("locale " + Locale.getDefault());
        device.errors.clear();
    }

    public static void main(String[] arguments) {
        Device device = new Device();
        int shell = device.newShell();
        Shell_SetText(shell, "Watched");
        tellLanguage(device);
        for (String font : arguments) tellFont(device, font);
        watch(device, shell);
        tellSize(shell);
        while (isOpen) {
            if (!Display_ReadAndDispatch(device.display))
                Display_Sleep(device.display);
        }
        device.dispose(shell);
        device.end();
    }
}
