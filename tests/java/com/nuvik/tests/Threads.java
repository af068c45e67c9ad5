package com.nuvik.tests;

import static com.nuvik.wyx.dovr.OS.AbstractTextComponent_GetText;
import static com.nuvik.wyx.dovr.OS.AbstractTextComponent_SetText;
import static com.nuvik.wyx.dovr.OS.Image_Flip;
import static com.nuvik.wyx.dovr.OS.Label_New;
import static com.nuvik.wyx.dovr.OS.List_Add;
import static com.nuvik.wyx.dovr.OS.List_GetSelectionIndex;
import static com.nuvik.wyx.dovr.OS.List_New;
import static com.nuvik.wyx.dovr.OS.List_RemoveAll;
import static com.nuvik.wyx.dovr.OS.List_Select;
import static com.nuvik.wyx.dovr.OS.PushButton_New;
import static com.nuvik.wyx.dovr.OS.Shell_NewChild;
import static com.nuvik.wyx.dovr.OS.Sound_Dispose;
import static com.nuvik.wyx.dovr.OS.Sound_New;
import static com.nuvik.wyx.dovr.OS.Sound_Play;
import static com.nuvik.wyx.dovr.OS.Sound_Stop;
import static com.nuvik.wyx.dovr.OS.TextArea_New;

import com.nuvik.wyx.k4tr.OS;
import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import java.nio.charset.StandardCharsets;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.Random;
import java.util.concurrent.TimeUnit;

/**
 * Eight threads use the toolkit for as many seconds as the argument says, or if it is "long" for ten
 * minutes or as many as ZEMVOLT_SECONDS says, while the main thread dispatches messages. What each of them sees is right, no error is reported, none stands still, and
 * all of them end.
 */
public final class Threads {
    private static final int SIDE = 8;
    private static final int LONGEST_STEP = 60; // seconds

    private static volatile boolean over;

    /** A thread that repeats its step; what it finds wrong ends all. */
    private abstract static class Worker extends Thread {
        final Random random;
        volatile int steps;
        volatile Throwable wrong;

        Worker(String name) {
            super(name);
            random = new Random(name.hashCode());
        }

        abstract void step();

        void close() {}

        @Override
        public void run() {
            try {
                for (; !over; steps++) step();
                close();
            } catch (Throwable thrown) {
                wrong = thrown;
                over = true;
            }
        }
    }

    private static void expect(boolean right, String what) {
        if (!right) throw new AssertionError(what);
    }

    private static int newColor(int device, int color) {
        return OS.Color_New(device, color >> 16, color >> 8 & 0xFF, color & 0xFF);
    }

    private static void expectColor(int image, int left, int color) {
        int[] pixels = new int[SIDE * SIDE];
        OS.Image_GetRGB(image, left, 0, SIDE, SIDE, 0, SIDE, pixels);
        expect(Arrays.stream(pixels).allMatch(pixel -> (pixel & 0xFFFFFF) == color), "pixels");
    }

    /** Draws on images of its own, flips and reads them. */
    private static final class OwnImages extends Worker {
        private final int device;
        private final int font;

        OwnImages(String name, int device) {
            super(name);
            this.device = device;
            font = OS.Font_New(device, "Tahoma", 9, 0);
        }

        @Override
        void step() {
            int color = random.nextInt(0x1000000);
            int image = OS.Image_NewFromSize(device, SIDE, SIDE, color);
            expectColor(image, 0, color);
            int graphics = OS.Image_NewGraphics(image);
            int next = random.nextInt(0x1000000);
            int both = newColor(device, next);
            OS.Graphics_SetForeground(graphics, both);
            OS.Graphics_SetBackground(graphics, both);
            OS.Graphics_SetFont(graphics, font);
            OS.Graphics_DrawString(graphics, "x", 0, 0, 0);
            OS.Graphics_DrawOval(graphics, 0, 0, SIDE - 1, SIDE - 1);
            OS.Graphics_FillRectangle(graphics, 0, 0, SIDE, SIDE);
            OS.Graphics_Dispose(graphics);
            OS.Color_Dispose(both);
            int flipped = Image_Flip(image, true, true, 0, 0, SIDE, SIDE);
            OS.Image_Dispose(image);
            expectColor(flipped, 0, next);
            OS.Image_Dispose(flipped);
        }

        @Override
        void close() {
            OS.Font_Dispose(font);
        }
    }

    /** Draws on a part of an image on whose other parts others draw, and finds it as it left it. */
    private static final class SharedImage extends Worker {
        private final int device;
        private final int image;
        private final int left;

        SharedImage(String name, int device, int image, int left) {
            super(name);
            this.device = device;
            this.image = image;
            this.left = left;
        }

        @Override
        void step() {
            int color = random.nextInt(0x1000000);
            int graphics = OS.Image_NewGraphics(image);
            int both = newColor(device, color);
            OS.Graphics_SetForeground(graphics, both);
            OS.Graphics_SetBackground(graphics, both);
            OS.Color_Dispose(both);
            OS.Graphics_FillRectangle(graphics, left, 0, SIDE, SIDE);
            OS.Graphics_DrawLine(graphics, left, 0, left + SIDE - 1, SIDE - 1);
            OS.Graphics_Dispose(graphics);
            expectColor(image, left, color);
        }
    }

    private static final class Sounds extends Worker {
        private final byte[] file = wave(200);

        Sounds(String name) {
            super(name);
        }

        private static byte[] wave(int samples) {
            ByteBuffer file = ByteBuffer.allocate(44 + samples).order(ByteOrder.LITTLE_ENDIAN);
            file.put("RIFF".getBytes(StandardCharsets.US_ASCII)).putInt(36 + samples);
            file.put("WAVEfmt ".getBytes(StandardCharsets.US_ASCII)).putInt(16);
            file.putShort((short) 1).putShort((short) 1).putInt(8000).putInt(8000);
            file.putShort((short) 1).putShort((short) 8);
            file.put("data".getBytes(StandardCharsets.US_ASCII)).putInt(samples);
            return file.array();
        }

        @Override
        void step() {
            int sound = Sound_New();
            for (int i = 0; i < 3; i++) Sound_Play(sound, file, file.length, random.nextInt(3) - 1);
            if (random.nextBoolean()) Sound_Stop(sound);
            Sound_Dispose(sound);
        }
    }

    /** Works with widgets of a display that the main thread made. */
    private static final class Widgets extends Worker {
        private final Device device;
        private final int shell;
        private final int area;
        private final int list;

        Widgets(String name, Device device, int shell) {
            super(name);
            this.device = device;
            this.shell = shell;
            area = TextArea_New(shell, 0);
            list = List_New(shell, 0);
        }

        @Override
        void step() {
            switch (random.nextInt(5)) {
                case 0:
                    int button = PushButton_New(shell, 0);
                    device.listen(button);
                    OS.Control_SetBounds(button, random.nextInt(100), 5, 40, 20);
                    OS.Control_SetVisible(button, true);
                    expect(OS.Control_GetBounds(button)[2] == 40, "bounds");
                    device.dispose(button);
                    break;
                case 1:
                    String text = getName() + random.nextInt(1000);
                    AbstractTextComponent_SetText(area, text);
                    expect(text.equals(AbstractTextComponent_GetText(area)), "text");
                    break;
                case 2:
                    List_RemoveAll(list);
                    for (int i = 0; i < 4; i++) List_Add(list, "item " + i, i);
                    List_Select(list, 2);
                    expect(List_GetSelectionIndex(list) == 2, "selection");
                    break;
                case 3:
                    int graphics = OS.Control_NewGraphics(shell);
                    OS.Graphics_DrawLine(graphics, 0, 0, 50, 50);
                    OS.Graphics_Dispose(graphics);
                    break;
                default:
                    int child = Shell_NewChild(shell, 0);
                    int label = Label_New(child, 0);
                    OS.Control_SetVisible(child, true);
                    device.dispose(label);
                    device.dispose(child);
            }
        }

        @Override
        void close() {
            device.dispose(area);
            device.dispose(list);
        }
    }

    /** Has a display of its own, from the first window to the last. */
    private static final class OwnDisplay extends Worker {
        OwnDisplay(String name) {
            super(name);
        }

        @Override
        void step() {
            int display = OS.Display_New();
            int shell = OS.Shell_New(display, 0);
            int button = PushButton_New(shell, 0);
            for (int i = 0; i < 30; i++) {
                OS.Control_SetBounds(button, i, i, 50, 30);
                while (OS.Display_ReadAndDispatch(display)) {}
            }
            OS.Widget_Dispose(button);
            OS.Widget_Dispose(shell);
            OS.Device_Dispose(display);
        }
    }

    private static void tellStacks() {
        Thread.getAllStackTraces()
                .forEach(
                        (thread, stack) ->
                                System.out.println(thread + " " + Arrays.toString(stack)));
    }

    /** Ends the VM when a worker stays in one step for so long, after telling where all threads are. */
    private static void watch(List<Worker> workers) {
        int[] before = new int[workers.size()];
        try {
            while (true) {
                TimeUnit.SECONDS.sleep(LONGEST_STEP);
                for (int i = 0; i < before.length; i++) {
                    Worker worker = workers.get(i);
                    if (worker.isAlive() && worker.steps == before[i]) {
                        System.out.println(worker.getName() + " stands still");
                        tellStacks();
                        Runtime.getRuntime().halt(3);
                    }
                    before[i] = worker.steps;
                }
            }
        } catch (InterruptedException done) {
            Thread.currentThread().interrupt();
        }
    }

    public static void main(String[] arguments) throws Exception {
        String asked = System.getenv().getOrDefault("ZEMVOLT_SECONDS", "600");
        String seconds = arguments[0].equals("long") ? asked : arguments[0];
        long end = System.nanoTime() + TimeUnit.SECONDS.toNanos(Long.parseLong(seconds));
        Device device = new Device();
        SoundOutput.setSpeed(2000);
        int shell = device.newShell();
        int shared = OS.Image_NewFromSize(device.display, 2 * SIDE, SIDE, 0);
        List<Worker> workers =
                Arrays.asList(
                        new OwnImages("own images", device.display),
                        new OwnImages("more own images", device.display),
                        new SharedImage("a shared image", device.display, shared, 0),
                        new SharedImage("the same image", device.display, shared, SIDE),
                        new Sounds("sounds"),
                        new Widgets("widgets", device, shell),
                        new Widgets("more widgets", device, shell),
                        new OwnDisplay("a display"));
        for (Worker worker : workers) worker.start();
        Thread watch = new Thread(() -> watch(workers), "watch");
        watch.setDaemon(true);
        watch.start();
        List<Worker> alive = new ArrayList<>(workers);
        while (!alive.isEmpty()) {
            device.dispatchAll();
            if (System.nanoTime() > end) over = true;
            alive.removeIf(worker -> !worker.isAlive());
        }
        watch.interrupt();
        OS.Image_Dispose(shared);
        device.dispose(shell);
        device.end();
        boolean right = device.errors.isEmpty();
        for (String error : device.errors) System.out.println(error);
        for (Worker worker : workers) {
            System.out.println(worker.getName() + ": " + worker.steps + " steps");
            if (worker.wrong != null) worker.wrong.printStackTrace(System.out);
            right &= worker.wrong == null && worker.steps > 0;
        }
        System.exit(right ? 0 : 1);
    }
}
