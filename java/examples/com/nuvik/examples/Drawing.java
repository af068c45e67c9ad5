package com.nuvik.examples;

import static com.nuvik.wyx.k4tr.OS.Color_Dispose;
import static com.nuvik.wyx.k4tr.OS.Color_New;
import static com.nuvik.wyx.k4tr.OS.Control_GetBounds;
import static com.nuvik.wyx.k4tr.OS.Control_NewGraphics;
import static com.nuvik.wyx.k4tr.OS.Font_Dispose;
import static com.nuvik.wyx.k4tr.OS.Graphics_Dispose;
import static com.nuvik.wyx.k4tr.OS.Graphics_DrawImage;
import static com.nuvik.wyx.k4tr.OS.Graphics_DrawOval;
import static com.nuvik.wyx.k4tr.OS.Graphics_DrawPolyline;
import static com.nuvik.wyx.k4tr.OS.Graphics_DrawString;
import static com.nuvik.wyx.k4tr.OS.Graphics_FillArc;
import static com.nuvik.wyx.k4tr.OS.Graphics_FillOval;
import static com.nuvik.wyx.k4tr.OS.Graphics_FillRectangle;
import static com.nuvik.wyx.k4tr.OS.Graphics_FillRoundRectangle;
import static com.nuvik.wyx.k4tr.OS.Graphics_SetBackground;
import static com.nuvik.wyx.k4tr.OS.Graphics_SetFont;
import static com.nuvik.wyx.k4tr.OS.Graphics_SetForeground;
import static com.nuvik.wyx.k4tr.OS.Graphics_SetLineWidth;
import static com.nuvik.wyx.k4tr.OS.Image_Dispose;
import static com.nuvik.wyx.k4tr.OS.Image_NewFromByteData;
import static com.nuvik.wyx.k4tr.OS.Image_NewFromIntData;
import static com.nuvik.wyx.k4tr.OS.Image_NewFromSize;
import static com.nuvik.wyx.k4tr.OS.Image_NewGraphics;

import com.nuvik.program.Listener;
import com.nuvik.program.Program;
import com.nuvik.wyx.FontFamily;
import com.nuvik.wyx.FontStyle;
import com.nuvik.wyx.PointerType;
import com.nuvik.wyx.TextFlag;
import com.nuvik.wyx.WindowEvent;
import com.nuvik.wyx.dovr.OS;
import java.io.IOException;
import java.io.InputStream;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.StandardCopyOption;

/**
 * Draws in a shell: shapes, text, a picture from a file with a transparent and a half-transparent
 * image on it, and a ball that moves. A tap stops the ball and lets it go on.
 */
public final class Drawing {
    private static final int LIGHT_BLUE = 0x9AC0F0;
    private static final int STRIP_TOP = 232;
    private static final int STRIP_HEIGHT = 40;
    private static final int BALL = 24;
    private static final int FRAME_MILLISECONDS = 40;

    private final Program program = new Program();
    private final int shell = program.newMainShell("Drawing", new Canvas());
    private final int width = Control_GetBounds(shell)[2];
    private final int strip =
            Image_NewFromSize(program.display, width, STRIP_HEIGHT, LIGHT_BLUE);
    private final int title =
            OS.Font_NewLogical(
                    program.display,
                    FontFamily.SANS_SERIF,
                    program.screen.unscaled(14),
                    FontStyle.BOLD);
    private final int picture = loadPicture();
    private final int star = newStar();
    private final int glass = newGlass();
    private boolean moving = true;
    private int frame;

    /** The shell, on which all is drawn. */
    private final class Canvas extends Listener {
        @Override
        public void window(int event) {
            if (event == WindowEvent.CLOSE_REQUESTED) program.leave();
        }

        @Override
        public void paint(int x, int y, int paintWidth, int paintHeight) {
            Drawing.this.paint();
        }

        @Override
        public void pointer(int type, int x, int y, int button, int modifiers) {
            if (type != PointerType.RELEASE) return;
            moving = !moving;
            System.out.println(moving ? "moving" : "stopped");
        }
    }

    /** Does something in a colour that lives as long as it takes. */
    private void inColor(int graphics, int red, int green, int blue, Runnable drawing) {
        int color = Color_New(program.display, red, green, blue);
        Graphics_SetForeground(graphics, color);
        Graphics_SetBackground(graphics, color);
        drawing.run();
        Color_Dispose(color);
    }

    /** A picture that lies on the device as a file. */
    private int loadPicture() {
        try (InputStream packed = Drawing.class.getResourceAsStream("landscape.png")) {
            Path file = Files.createTempFile("landscape", ".png");
            Files.copy(packed, file, StandardCopyOption.REPLACE_EXISTING);
            int loaded = OS.Image_NewFromFile(program.display, file.toString());
            Files.delete(file);
            return loaded;
        } catch (IOException error) {
            throw new IllegalStateException(error);
        }
    }

    /** Two colours, one of them transparent. */
    private int newStar() {
        byte[] rows = {
            0x01, (byte) 0x80, 0x01, (byte) 0x80, 0x03, (byte) 0xC0, 0x03, (byte) 0xC0,
            (byte) 0xFF, (byte) 0xFF, 0x7F, (byte) 0xFE, 0x3F, (byte) 0xFC, 0x1F, (byte) 0xF8,
            0x0F, (byte) 0xF0, 0x1F, (byte) 0xF8, 0x1F, (byte) 0xF8, 0x3E, 0x7C,
            0x38, 0x1C, 0x70, 0x0E, 0x60, 0x06, 0x40, 0x02
        };
        byte[] reds = {0, (byte) 0xFF};
        byte[] greens = {0, (byte) 0xF0};
        byte[] blues = {0, 0x40};
        return Image_NewFromByteData(
                program.display, 16, 16, rows, 2, 1, reds, greens, blues, 2, 0);
    }

    /** A disc that gets clearer towards its edge. */
    private int newGlass() {
        int size = 48;
        int[] pixels = new int[size * size];
        byte[] alpha = new byte[size * size];
        for (int y = 0; y < size; y++) {
            for (int x = 0; x < size; x++) {
                double distance = Math.hypot(x - size / 2.0, y - size / 2.0) / (size / 2.0);
                pixels[y * size + x] = 0xFFFFFF;
                alpha[y * size + x] = (byte) (Math.max(0, 1 - distance) * 255);
            }
        }
        return Image_NewFromIntData(program.display, size, size, pixels, 24, -1, -1, alpha);
    }

    private void drawShapes(int graphics) {
        inColor(
                graphics,
                200,
                60,
                40,
                () -> Graphics_FillArc(graphics, 10, 40, 50, 50, 30, 300));
        inColor(
                graphics,
                40,
                120,
                60,
                () -> Graphics_FillRoundRectangle(graphics, 70, 40, 60, 50, 20, 20));
        inColor(
                graphics,
                60,
                60,
                160,
                () -> {
                    Graphics_SetLineWidth(graphics, 3);
                    Graphics_DrawOval(graphics, 142, 42, 36, 46);
                    Graphics_SetLineWidth(graphics, 1);
                    int[] corners = {190, 90, 210, 40, 230, 90, 186, 58, 234, 58, 190, 90};
                    Graphics_DrawPolyline(graphics, corners, corners.length);
                });
    }

    private void drawTexts(int graphics) {
        inColor(
                graphics,
                0,
                0,
                0,
                () -> {
                    Graphics_SetFont(graphics, title);
                    Graphics_DrawString(
                            graphics, "Drawn in Java", 10, 8, TextFlag.LEAVE_BACKGROUND);
                    Graphics_SetFont(graphics, 0);
                    Graphics_DrawString(
                            graphics,
                            "a picture,\nstars,\na glass",
                            165,
                            124,
                            TextFlag.LEAVE_BACKGROUND | TextFlag.BREAK_LINES);
                });
    }

    private void drawPictures(int graphics) {
        OS.Graphics_DrawImageRegion(graphics, picture, 0, 0, 96, 64, 10, 108, 144, 96);
        for (int i = 0; i < 5; i++)
            Graphics_DrawImage(graphics, star, 20 + 24 * i, 116 + 6 * (i % 2));
        Graphics_DrawImage(graphics, glass, 90, 140);
    }

    private void paint() {
        int graphics = Control_NewGraphics(shell);
        drawShapes(graphics);
        drawTexts(graphics);
        drawPictures(graphics);
        Graphics_DrawImage(graphics, strip, 0, STRIP_TOP);
        Graphics_Dispose(graphics);
    }

    /** The ball goes to and fro, drawn beside the screen so that nothing flickers. */
    private void drawFrame() {
        int way = width - BALL;
        int step = frame++ * 4 % (2 * way);
        int x = step < way ? step : 2 * way - step;
        int inside = Image_NewGraphics(strip);
        inColor(
                inside,
                0x9A,
                0xC0,
                0xF0,
                () -> Graphics_FillRectangle(inside, 0, 0, width, STRIP_HEIGHT));
        inColor(
                inside,
                220,
                90,
                20,
                () -> Graphics_FillOval(inside, x, (STRIP_HEIGHT - BALL) / 2, BALL, BALL));
        Graphics_Dispose(inside);
        int graphics = Control_NewGraphics(shell);
        Graphics_DrawImage(graphics, strip, 0, STRIP_TOP);
        Graphics_Dispose(graphics);
        if (frame == 20) System.out.println("frame 20");
    }

    private void run() {
        program.showMainShell();
        System.out.println("ready");
        program.every(
                FRAME_MILLISECONDS,
                () -> {
                    if (moving) drawFrame();
                });
        program.run();
        program.dispose(shell);
        for (int image : new int[] {strip, picture, star, glass})
            Image_Dispose(image);
        Font_Dispose(title);
        program.end();
        System.out.println("closed");
    }

    public static void main(String[] arguments) {
        new Drawing().run();
    }
}
