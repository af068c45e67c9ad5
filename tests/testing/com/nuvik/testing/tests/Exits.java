package com.nuvik.testing.tests;

import com.nuvik.program.Program;
import com.nuvik.wyx.dovr.OS;

/** An application that ends the process in several ways, on a thread that is not main's. */
public final class Exits {
    private final Program program = new Program();
    private final int shell = program.newMainShell("Exits");
    private int count;

    private void button(String label, Runnable deed) {
        int button = OS.PushButton_New(shell, 0);
        OS.Button_SetLabel(button, label);
        program.screen.place(button, 4, 4 + 24 * count++, 100, 20);
        com.nuvik.wyx.k4tr.OS.Widget_SetData(button, new OnTap(deed));
    }

    private void run() {
        button("well", () -> System.exit(0));
        button("badly", () -> System.exit(3));
        button("at once", () -> Runtime.getRuntime().halt(4));
        button("elsewhere", () -> new Thread(() -> System.exit(5)).start());
        button("caught", Exits::catchAll);
        button("throw", Exits::fail);
        program.showMainShell();
        program.run();
    }

    @SuppressWarnings("removal")
    private static void catchAll() {
        try {
            System.exit(6);
        } catch (ThreadDeath death) {
            System.out.println("caught");
        }
    }

    private static void fail() {
        throw new IllegalStateException("as it was asked to");
    }

    public static void main(String[] arguments) {
        new Thread(() -> new Exits().run()).start();
    }
}
