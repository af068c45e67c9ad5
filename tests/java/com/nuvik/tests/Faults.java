package com.nuvik.tests;

import static com.nuvik.wyx.dovr.OS.Control_ForceFocus;

import com.nuvik.wyx.k4tr.OS;

/** Faults of native code in callbacks that the system enters. */
final class Faults {
    private Faults() {}

    /** 0 divides by zero, 1 runs what is no instruction; else the exception with the code. */
    static native void raise(int kindOrCode);

    /** Runs the work in a callback of a button or its shell: paint, focus or resize. */
    static void during(String callback, Runnable work) {
        Device device = new Device();
        int shell = device.newShell();
        int button = device.newButton(shell);
        Device.Recorder recorder =
                new Device.Recorder() {
                    @Override
                    void paint(int x, int y, int width, int height) {
                        run("paint");
                    }

                    @Override
                    void focus(int change) {
                        run("focus");
                    }

                    @Override
                    void resize(int width, int height) {
                        run("resize");
                    }

                    private void run(String name) {
                        if (name.equals(callback)) work.run();
                    }
                };
        OS.Widget_SetData(button, recorder);
        OS.Widget_SetData(shell, recorder);
        OS.Control_SetBounds(shell, 10, 40, 200, 200);
        OS.Control_SetVisible(button, false);
        OS.Control_SetVisible(button, true);
        Control_ForceFocus(button);
        device.dispatchAll();
        System.out.println("went on after " + callback);
    }
}
