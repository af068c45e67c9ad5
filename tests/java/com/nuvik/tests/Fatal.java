package com.nuvik.tests;

import static com.nuvik.wyx.dovr.OS.Composite_New;
import static com.nuvik.wyx.dovr.OS.Sound_New;
import static com.nuvik.wyx.dovr.OS.Sound_Play;

import com.nuvik.wyx.k4tr.OS;

/** Each of these ends the Java VM; the argument names one. */
public final class Fatal {
    private static final String[] HEARING = {
        "selected", "listSelected", "window", "", "choiceSelected", "key", "modified", "pointer", "menu",
        "focus"
    };

    private Fatal() {}

    public static void main(String[] arguments) {
        switch (arguments[0]) {
            case "no-handler":
                Composite_New(0, 0);
                break;
            case "no-registry":
                OS.Display_RegisterCallback(OS.Display_New(), 0, "a/B", "c");
                break;
            case "twice":
                int display = OS.Display_New();
                OS.Display_InitCallbacks(display, "target");
                OS.Display_RegisterCallback(display, 0, "a/B", "c");
                OS.Display_RegisterCallback(display, 0, "a/B", "c");
                break;
            case "crash":
                OS.Control_GetBounds(1);
                break;
            case "crash-in":
                Faults.during(arguments[1], () -> OS.Control_GetBounds(1));
                break;
            case "raise":
                Faults.during(
                        arguments[1], () -> Faults.raise(Long.decode(arguments[2]).intValue()));
                break;
            case "exit":
                OS.Display_New();
                System.exit(7);
                break;
            case "exit-sounding":
                byte[] file = SoundTest.wave(new byte[80]);
                Sound_Play(Sound_New(), file, file.length, -1);
                System.exit(9);
                break;
            case "exit-slowly":
                System.load(arguments[1]);
                System.exit(7);
                break;
            case "throw":
                throw new IllegalStateException("uncaught");
            case "threads":
                new Thread(
                                () -> {
                                    System.out.println("other thread ran");
                                    System.exit(5);
                                })
                        .start();
                break;
            case "arguments":
                System.out.println(String.join("|", arguments));
                break;
            case "store":
                OS.Display_New();
                store(new java.io.File(System.getProperty("zemvolt.storage"), "My Documents"));
                break;
            case "left":
                for (int i = 0; i < 2; i++) OS.Image_NewFromSize(0, 1, 1, 0);
                OS.Image_Dispose(OS.Image_NewFromSize(0, 1, 1, 0));
                break;
            case "unheard":
                int deaf = OS.Display_New();
                OS.Display_InitCallbacks(deaf, "target");
                for (int event = OS.CB_SELECTION; event < OS.CB_PAINT; event++)
                    if (event != OS.CB_SCROLL)
                        OS.Display_RegisterCallback(
                                deaf, event, "com/nuvik/tests/Device$Recorder", HEARING[event]);
                if (arguments.length > 1) OS.Widget_SetData(OS.Shell_New(deaf, 0), new Device.Recorder());
                break;
            case "misuse":
                System.out.println("red " + com.nuvik.wyx.dovr.OS.Color_GetRed(5));
                break;
            case "wait":
                Runtime.getRuntime().addShutdownHook(new Thread(() -> System.out.println("hook")));
                System.out.println("waiting");
                OS.Display_Sleep(OS.Display_New());
                break;
            default:
                throw new IllegalArgumentException(arguments[0]);
        }
        System.out.println("main ended");
    }

    private static void store(java.io.File documents) {
        java.io.File file = new java.io.File(documents, "stored");
        System.out.println(file.exists() ? "found" : "not found");
        try {
            new java.io.FileOutputStream(file).close();
        } catch (java.io.IOException problem) {
            throw new IllegalStateException(problem);
        }
    }
}
