package com.nuvik.examples;

import com.nuvik.program.Listener;
import com.nuvik.program.Program;
import com.nuvik.wyx.k4tr.OS;

/**
 * A shell with one button that counts its taps. It tells on standard output where the button is, and
 * each new label.
 */
public final class Tap {
    private static final int WIDTH = 140;
    private static final int HEIGHT = 48;

    private int taps;

    private void run() {
        Program program = new Program();
        int shell = program.newMainShell("Tap");
        final int button = com.nuvik.wyx.dovr.OS.PushButton_New(shell, 0);
        com.nuvik.wyx.dovr.OS.Button_SetLabel(button, "Tap me");
        OS.Widget_SetData(
                button,
                new Listener() {
                    public void selected() {
                        String label = ++taps == 1 ? "Tapped once" : "Tapped " + taps + " times";
                        com.nuvik.wyx.dovr.OS.Button_SetLabel(button, label);
                        System.out.println(label);
                    }
                });

        int[] area = OS.Control_GetBounds(shell);
        int width = program.screen.scaled(WIDTH);
        int height = program.screen.scaled(HEIGHT);
        int x = (area[2] - width) / 2;
        int y = (area[3] - height) / 2;
        OS.Control_SetBounds(button, x, y, width, height);
        OS.Control_SetVisible(button, true);
        program.showMainShell();
        System.out.println("button at " + (area[0] + x + width / 2) + " " + (area[1] + y + height / 2));

        program.run();
        program.dispose(button);
        program.dispose(shell);
        program.end();
        System.out.println("closed");
    }

    public static void main(String[] arguments) {
        new Tap().run();
    }
}
