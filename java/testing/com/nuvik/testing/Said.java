package com.nuvik.testing;

import java.io.ByteArrayOutputStream;
import java.io.OutputStream;
import java.io.PrintStream;
import java.nio.charset.StandardCharsets;
import java.util.ArrayList;
import java.util.List;

/** What the application says on standard output, which is passed on. */
final class Said extends OutputStream {
    private final PrintStream out = System.out;
    private final List<String> lines = new ArrayList<>();
    private final ByteArrayOutputStream line = new ByteArrayOutputStream();

    static Said listen() {
        Said said = new Said();
        System.setOut(new PrintStream(said, true));
        return said;
    }

    @Override
    public synchronized void write(int character) {
        out.write(character);
        if (character == '\n') {
            out.flush();
            lines.add(new String(line.toByteArray(), StandardCharsets.UTF_8));
            line.reset();
        } else if (character != '\r') {
            line.write(character);
        }
    }

    synchronized int count(String wanted) {
        int count = 0;
        for (String each : lines) if (each.equals(wanted)) count++;
        return count;
    }
}
