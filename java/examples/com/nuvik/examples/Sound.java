package com.nuvik.examples;

import static com.nuvik.wyx.dovr.OS.Button_SetLabel;
import static com.nuvik.wyx.dovr.OS.Composite_New;
import static com.nuvik.wyx.dovr.OS.Label_New;
import static com.nuvik.wyx.dovr.OS.Label_SetText;
import static com.nuvik.wyx.dovr.OS.PushButton_New;
import static com.nuvik.wyx.dovr.OS.Sound_Dispose;
import static com.nuvik.wyx.dovr.OS.Sound_New;
import static com.nuvik.wyx.dovr.OS.Sound_Play;
import static com.nuvik.wyx.dovr.OS.Sound_Stop;

import com.nuvik.program.Listener;
import com.nuvik.program.Program;
import com.nuvik.wyx.Style;
import com.nuvik.wyx.k4tr.OS;
import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import java.nio.charset.StandardCharsets;

/**
 * Buttons that play a tune once, three times and without end, and stop it. The tune is made here and
 * its wave is drawn above the buttons. It tells on standard output where the buttons are and what they
 * do.
 */
public final class Sound {
    private static final int RATE = 22050;
    private static final int BYTES_PER_SAMPLE = 2;
    private static final int HEADER = 44;
    private static final double[] NOTES = {523.25, 659.26, 783.99, 1046.5};
    private static final int SAMPLES_OF_A_NOTE = RATE / 4;
    private static final int MARGIN = 10;
    private static final int BUTTON_HEIGHT = 34;
    private static final int LABEL_HEIGHT = 20;
    private static final int WAVE_HEIGHT = 100;
    private static final int MENU_BAR = 26; // at the bottom of the screen, as high on every one

    private final Program program = new Program();
    private final int shell = program.newMainShell("Sound");
    private final int sound = Sound_New();
    private final short[] tune = makeTune();
    private final byte[] file = makeFile(tune);
    private final int[] buttons = new int[4];
    private int label;
    private int wave;
    private int width;
    private int waveHeight;

    /** Rising notes, each of which fades away. */
    private static short[] makeTune() {
        short[] samples = new short[NOTES.length * SAMPLES_OF_A_NOTE];
        for (int i = 0; i < samples.length; i++) {
            int at = i % SAMPLES_OF_A_NOTE;
            double phase = 2 * Math.PI * NOTES[i / SAMPLES_OF_A_NOTE] * at / RATE;
            double loudness = 14000 * Math.exp(-4.0 * at / SAMPLES_OF_A_NOTE);
            samples[i] = (short) (loudness * (Math.sin(phase) + Math.sin(2 * phase) / 3));
        }
        return samples;
    }

    /** A RIFF WAVE file of 16-bit samples on one channel. */
    private static byte[] makeFile(short[] samples) {
        int size = samples.length * BYTES_PER_SAMPLE;
        ByteBuffer file = ByteBuffer.allocate(HEADER + size).order(ByteOrder.LITTLE_ENDIAN);
        file.put(ascii("RIFF")).putInt(HEADER - 8 + size).put(ascii("WAVE"));
        file.put(ascii("fmt ")).putInt(16).putShort((short) 1).putShort((short) 1).putInt(RATE);
        file.putInt(RATE * BYTES_PER_SAMPLE).putShort((short) BYTES_PER_SAMPLE).putShort((short) 16);
        file.put(ascii("data")).putInt(size);
        for (short sample : samples) file.putShort(sample);
        return file.array();
    }

    private static byte[] ascii(String text) {
        return text.getBytes(StandardCharsets.US_ASCII);
    }

    private void say(String what) {
        Label_SetText(label, what);
        System.out.println(what);
    }

    private void play(int loops, String what) {
        Sound_Stop(sound);
        Sound_Play(sound, file, file.length, loops);
        say(what);
    }

    private void stop() {
        Sound_Stop(sound);
        say("Stopped");
    }

    /** A line from the lowest to the highest of the samples that fall on one pixel, and so on. */
    private int[] outline(int columns, int height) {
        int[] points = new int[4 * columns];
        for (int x = 0; x < columns; x++) {
            int lowest = 0;
            int highest = 0;
            for (int i = x * tune.length / columns; i < (x + 1) * tune.length / columns; i++) {
                lowest = Math.min(lowest, tune[i]);
                highest = Math.max(highest, tune[i]);
            }
            points[4 * x] = points[4 * x + 2] = x;
            points[4 * x + 1] = height / 2 - lowest * height / 40000;
            points[4 * x + 3] = height / 2 - highest * height / 40000;
        }
        return points;
    }

    private void drawWave() {
        int[] area = OS.Control_GetBounds(wave);
        int[] points = outline(area[2] - 2, area[3] - 2);
        int graphics = OS.Control_NewGraphics(wave);
        int blue = OS.Color_New(program.display, 0, 0, 160);
        OS.Graphics_SetForeground(graphics, blue);
        OS.Graphics_DrawPolyline(graphics, points, points.length);
        OS.Graphics_Dispose(graphics);
        OS.Color_Dispose(blue);
    }

    private void makeButton(int number, String text, Runnable action) {
        int button = PushButton_New(shell, 0);
        Button_SetLabel(button, text);
        OS.Widget_SetData(
                button,
                new Listener() {
                    @Override
                    public void selected() {
                        action.run();
                    }
                });
        int half = (width - MARGIN) / 2;
        int x = MARGIN + number % 2 * (half + MARGIN);
        int top = waveHeight + LABEL_HEIGHT + 3 * MARGIN;
        int y = top + number / 2 * (BUTTON_HEIGHT + MARGIN);
        program.screen.place(button, x, y, half, BUTTON_HEIGHT);
        buttons[number] = button;
        int[] area = OS.Control_GetBounds(shell);
        int middleX = area[0] + program.screen.scaled(x + half / 2);
        int middleY = area[1] + program.screen.scaled(y + BUTTON_HEIGHT / 2);
        System.out.println(text + " at " + middleX + " " + middleY);
    }

    private void run() {
        int[] area = OS.Control_GetBounds(shell);
        width = program.screen.unscaled(area[2]) - 2 * MARGIN;
        int others = LABEL_HEIGHT + 2 * BUTTON_HEIGHT + 5 * MARGIN + MENU_BAR;
        waveHeight = Math.min(WAVE_HEIGHT, program.screen.unscaled(area[3]) - others);
        wave = Composite_New(shell, Style.BORDER);
        OS.Widget_SetData(
                wave,
                new Listener() {
                    @Override
                    public void paint(int x, int y, int paintWidth, int paintHeight) {
                        drawWave();
                    }
                });
        program.screen.place(wave, MARGIN, MARGIN, width, waveHeight);
        label = Label_New(shell, 0);
        program.screen.place(label, MARGIN, waveHeight + 2 * MARGIN, width, LABEL_HEIGHT);
        program.showMainShell();
        makeButton(0, "Play", () -> play(0, "Playing once"));
        makeButton(1, "Three times", () -> play(2, "Playing three times"));
        makeButton(2, "Loop", () -> play(-1, "Playing until it is stopped"));
        makeButton(3, "Stop", this::stop);
        say("Ready");
        program.run();
        Sound_Dispose(sound);
        for (int button : buttons) program.dispose(button);
        program.dispose(label);
        program.dispose(wave);
        program.dispose(shell);
        program.end();
        System.out.println("closed");
    }

    public static void main(String[] arguments) {
        new Sound().run();
    }
}
