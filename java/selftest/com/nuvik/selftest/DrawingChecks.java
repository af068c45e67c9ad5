package com.nuvik.selftest;

import com.nuvik.wyx.TextFlag;
import com.nuvik.wyx.dovr.OS;

/** Every way to draw, read back. */
final class DrawingChecks extends Checks {
    private static final int[] CORNERS = {4, 4, 28, 10, 16, 28};
    private Picture picture;

    String title() {
        return "drawing";
    }

    void run() {
        outlines();
        fills();
        text();
        modes();
        images();
        again();
        fromScreen();
    }

    private int begin(String name) {
        at(name);
        picture = new Picture(stage.display);
        return picture.graphics;
    }

    private void end() {
        came(picture.look());
        picture.dispose();
    }

    private void outlines() {
        com.nuvik.wyx.k4tr.OS.Graphics_DrawLine(begin("line"), 3, 4, 28, 20);
        end();
        com.nuvik.wyx.k4tr.OS.Graphics_DrawLine(begin("line backwards"), 28, 20, 3, 4);
        end();
        int wide = begin("wide line");
        com.nuvik.wyx.k4tr.OS.Graphics_SetLineWidth(wide, 3);
        com.nuvik.wyx.k4tr.OS.Graphics_DrawLine(wide, 3, 4, 28, 20);
        end();
        com.nuvik.wyx.k4tr.OS.Graphics_DrawRectangle(begin("rectangle"), 3, 4, 20, 10);
        end();
        com.nuvik.wyx.k4tr.OS.Graphics_DrawRoundRectangle(begin("round rectangle"), 3, 4, 20, 16, 8, 8);
        end();
        com.nuvik.wyx.k4tr.OS.Graphics_DrawOval(begin("oval"), 3, 4, 20, 16);
        end();
        com.nuvik.wyx.k4tr.OS.Graphics_DrawArc(begin("arc"), 3, 4, 20, 16, 30, 200);
        end();
        com.nuvik.wyx.k4tr.OS.Graphics_DrawArc(begin("arc backwards"), 3, 4, 20, 16, 30, -100);
        end();
        com.nuvik.wyx.k4tr.OS.Graphics_DrawPolygon(begin("polygon"), CORNERS, CORNERS.length);
        end();
        com.nuvik.wyx.k4tr.OS.Graphics_DrawPolyline(begin("polyline"), CORNERS, CORNERS.length);
        end();
    }

    private void fills() {
        com.nuvik.wyx.k4tr.OS.Graphics_FillRectangle(begin("filled rectangle"), 3, 4, 20, 10);
        end();
        com.nuvik.wyx.k4tr.OS.Graphics_FillRoundRectangle(
                begin("filled round rectangle"), 3, 4, 20, 16, 8, 8);
        end();
        com.nuvik.wyx.k4tr.OS.Graphics_FillOval(begin("filled oval"), 3, 4, 20, 16);
        end();
        com.nuvik.wyx.k4tr.OS.Graphics_FillArc(begin("filled arc"), 3, 4, 20, 16, 30, 200);
        end();
        com.nuvik.wyx.k4tr.OS.Graphics_FillPolygon(begin("filled polygon"), CORNERS, CORNERS.length);
        end();
        int graphics = begin("filled background");
        OS.Graphics_FillBackground(graphics, picture.background(), 3, 4, 20, 10);
        end();
    }

    private void text() {
        com.nuvik.wyx.k4tr.OS.Graphics_DrawString(begin("text"), "Ag", 2, 2, 0);
        end();
        com.nuvik.wyx.k4tr.OS.Graphics_DrawString(
                begin("transparent text"), "Ag", 2, 2, TextFlag.LEAVE_BACKGROUND);
        end();
        com.nuvik.wyx.k4tr.OS.Graphics_DrawString(begin("empty text"), "", 2, 2, 0);
        end();
        com.nuvik.wyx.k4tr.OS.Graphics_DrawString(
                begin("marked text"), "&A", 2, 2, TextFlag.MNEMONICS);
        end();
    }

    private void modes() {
        int graphics = begin("drawn twice in XOR mode");
        OS.Graphics_SetXORMode(graphics, true);
        com.nuvik.wyx.k4tr.OS.Graphics_FillRectangle(graphics, 3, 4, 20, 10);
        com.nuvik.wyx.k4tr.OS.Graphics_FillRectangle(graphics, 3, 4, 20, 10);
        end();
        graphics = begin("XOR mode");
        OS.Graphics_SetXORMode(graphics, true);
        com.nuvik.wyx.k4tr.OS.Graphics_FillRectangle(graphics, 3, 4, 20, 10);
        end();
        graphics = begin("clipped");
        com.nuvik.wyx.k4tr.OS.Graphics_SetClipping(graphics, 8, 8, 6, 6);
        com.nuvik.wyx.k4tr.OS.Graphics_FillOval(graphics, 3, 4, 20, 16);
        end();
        graphics = begin("clipped no more");
        com.nuvik.wyx.k4tr.OS.Graphics_SetClipping(graphics, 8, 8, 6, 6);
        OS.Graphics_ClearClipping(graphics);
        com.nuvik.wyx.k4tr.OS.Graphics_FillOval(graphics, 3, 4, 20, 16);
        end();
        graphics = begin("copied area");
        com.nuvik.wyx.k4tr.OS.Graphics_FillRectangle(graphics, 2, 2, 8, 8);
        OS.Graphics_CopyArea(graphics, 2, 2, 8, 8, 6, 15);
        end();
    }

    private static int[] gradient(int top) {
        int[] pixels = new int[8 * 8];
        for (int i = 0; i < pixels.length; i++) pixels[i] = top << 24 | (i * 4) << 16 | 0x8000 | (i % 8) * 32;
        return pixels;
    }

    private static byte[] alphas() {
        byte[] alphas = new byte[8 * 8];
        for (int i = 0; i < alphas.length; i++) alphas[i] = (byte) (i * 4);
        return alphas;
    }

    private void drawn(String name, int image) {
        com.nuvik.wyx.k4tr.OS.Graphics_DrawImage(begin(name), image, 5, 6);
        end();
        OS.Graphics_DrawImageRegion(begin(name + ", stretched"), image, 1, 1, 6, 6, 2, 3, 24, 18);
        end();
        com.nuvik.wyx.k4tr.OS.Image_Dispose(image);
    }

    private int image(int[] pixels, int depth, int transparent, int alpha, byte[] alphas) {
        return com.nuvik.wyx.k4tr.OS.Image_NewFromIntData(
                stage.display, 8, 8, pixels, depth, transparent, alpha, alphas);
    }

    private void images() {
        drawn("image of 24 bits", image(gradient(0), 24, -1, -1, null));
        drawn("image of 32 bits", image(gradient(0), 32, -1, -1, null));
        drawn("half transparent image", image(gradient(0), 24, -1, 128, null));
        drawn("image with alpha", image(gradient(0), 24, -1, -1, alphas()));
        int[] twoColors = gradient(0);
        for (int i = 0; i < twoColors.length; i += 2) twoColors[i] = 0x102030;
        final int keyColor = 0x302010;
        drawn("image with a key color", image(twoColors, 24, keyColor, -1, null));
        drawn("image of 32 bits with a key color", image(twoColors, 32, keyColor, -1, null));
        for (int i = 0; i < twoColors.length; i++) twoColors[i] |= 0xFF000000;
        drawn("key color and a fourth byte", image(twoColors, 32, keyColor, -1, null));
    }

    /** A context leaves the image as it found it, so that the next can have it. */
    private void again() {
        at("a hundred contexts in turn");
        Picture drawn = new Picture(stage.display);
        com.nuvik.wyx.k4tr.OS.Graphics_FillRectangle(drawn.graphics, 2, 2, 4, 4);
        for (int i = 0; i < 100; i++) {
            int other = com.nuvik.wyx.k4tr.OS.Image_NewGraphics(drawn.image);
            com.nuvik.wyx.k4tr.OS.Graphics_DrawLine(other, 0, 31, 31, 31);
            com.nuvik.wyx.k4tr.OS.Graphics_Dispose(other);
        }
        com.nuvik.wyx.k4tr.OS.Graphics_FillRectangle(drawn.graphics, 10, 2, 4, 4);
        came(drawn.look());
        drawn.dispose();
        at("image drawn into another, both with contexts");
        Picture one = new Picture(stage.display);
        Picture two = new Picture(stage.display);
        com.nuvik.wyx.k4tr.OS.Graphics_FillRectangle(one.graphics, 2, 2, 4, 4);
        com.nuvik.wyx.k4tr.OS.Graphics_DrawImage(two.graphics, one.image, 8, 8);
        came(two.look());
        one.dispose();
        two.dispose();
    }

    private void fromScreen() {
        at("copied from the screen");
        int composite = Stage.place(OS.Composite_New(stage.room, 0), 10, 10, 32, 32);
        Picture target = new Picture(stage.display);
        OS.Control_SetBackground(composite, target.background());
        stage.settle();
        int graphics = com.nuvik.wyx.k4tr.OS.Control_NewGraphics(composite);
        com.nuvik.wyx.k4tr.OS.Graphics_SetBackground(graphics, target.background());
        com.nuvik.wyx.k4tr.OS.Graphics_FillRectangle(graphics, 0, 0, 32, 32);
        com.nuvik.wyx.k4tr.OS.Graphics_Dispose(graphics);
        OS.Control_CopyArea(composite, target.image, 0, 0, 20, 20);
        came(Picture.look(target.image, Picture.WHITE));
        stage.dispose(composite);
        target.dispose();
    }
}
