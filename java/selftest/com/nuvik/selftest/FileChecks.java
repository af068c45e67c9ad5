package com.nuvik.selftest;

import com.nuvik.wyx.dovr.OS;
import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.io.InputStream;

/** Image files of each format, which the system's own decoders read. */
final class FileChecks extends Checks {
    private static final String[] FILES = {
        "bmp-1.bmp", "bmp-8.bmp", "bmp-24.bmp",
        "png-1.png", "png-2.png", "png-4.png", "png-8.png", "png-24.png", "png-32.png", "png-grey.png",
        "gif-8.gif", "gif-transparent.gif",
    };
    private static final String LOSSY = "jpeg.jpg";

    String title() {
        return "file";
    }

    void run() throws IOException {
        for (int i = 0; i < FILES.length; i++) {
            at(FILES[i]);
            came(describe(decode(read(FILES[i])), 0));
        }
        // Decoders differ in the last bits of a color.
        at(LOSSY);
        came(describe(decode(read(LOSSY)), 4));
        at("no image");
        came(made(decode(new byte[100])));
        at("end of a file missing");
        byte[] whole = read("bmp-24.bmp");
        came(made(com.nuvik.wyx.k4tr.OS.Image_NewFromFileData(stage.display, whole, 40)));
        at("file that is not there");
        came(made(OS.Image_NewFromFile(stage.display, "\\no such file.png")));
    }

    private byte[] read(String name) throws IOException {
        InputStream file = FileChecks.class.getResourceAsStream(name);
        ByteArrayOutputStream contents = new ByteArrayOutputStream();
        byte[] part = new byte[1024];
        for (int count = file.read(part, 0, part.length); count > 0;
                count = file.read(part, 0, part.length)) {
            contents.write(part, 0, count);
        }
        file.close();
        return contents.toByteArray();
    }

    private int decode(byte[] file) {
        return com.nuvik.wyx.k4tr.OS.Image_NewFromFileData(stage.display, file, file.length);
    }

    /** Of each colour's components that many last bits are left out. */
    private String describe(int image, int inexact) {
        if (image == 0) return "none";
        Picture picture = new Picture(stage.display);
        com.nuvik.wyx.k4tr.OS.Graphics_DrawImage(picture.graphics, image, 0, 0);
        int[] pixels = Picture.pixels(picture.image);
        int step = 1 << inexact;
        for (int i = 0; i < pixels.length; i++) {
            int color = 0;
            for (int shift = 0; shift < 24; shift += 8) {
                int component = pixels[i] >> shift & 255;
                color |= (component + step / 2) / step << shift;
            }
            pixels[i] = color;
        }
        String text = ImageChecks.describe(image) + ", sum " + Picture.sum(pixels);
        picture.dispose();
        com.nuvik.wyx.k4tr.OS.Image_Dispose(image);
        return text;
    }
}
