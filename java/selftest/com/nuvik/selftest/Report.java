package com.nuvik.selftest;

import java.io.BufferedReader;
import java.io.FileOutputStream;
import java.io.IOException;
import java.io.InputStream;
import java.io.InputStreamReader;
import java.util.Hashtable;
import java.util.Vector;

/**
 * The file that tells what came of each check and, where it was another thing, what the desk gave. A
 * check's name is in the file before the check runs, so that one that ends the program is known.
 */
final class Report {
    private final FileOutputStream file;
    private final Hashtable desk = new Hashtable();
    private final Vector names = new Vector();
    private final Vector differing = new Vector();
    private final Vector errors = new Vector();
    private int checks;
    private String current;

    Report(String path, InputStream deskValues) throws IOException {
        file = new FileOutputStream(path);
        BufferedReader lines = new BufferedReader(new InputStreamReader(deskValues));
        for (String line = lines.readLine(); line != null; line = lines.readLine()) {
            int end = line.indexOf(" = ");
            names.addElement(line.substring(0, end));
            desk.put(line.substring(0, end), line.substring(end + 3));
        }
        lines.close();
    }

    /** How many checks the desk has made. */
    int expected() {
        return names.size();
    }

    int done() {
        return checks;
    }

    int differences() {
        return differing.size();
    }

    void line(String text) {
        write(text + "\r\n");
    }

    private void write(String text) {
        try {
            file.write(text.getBytes("8859_1"));
            file.flush();
        } catch (IOException unwritable) {
            throw new IllegalStateException("the report cannot be written: " + unwritable);
        }
    }

    /** What a native reports until the check's value is known. */
    void error(String function, int code, String message) {
        String own = message == null ? "" : " " + message;
        int end = own.indexOf("::");
        errors.addElement(function + " " + code + (end < 0 ? own : own.substring(0, end)));
    }

    void begin(String name) {
        current = name;
        errors.removeAllElements();
        write(name + " = ");
    }

    /** What came of the check that has begun. */
    void came(String value) {
        value = ascii((value.length() == 0 ? "nothing" : value) + errorsSaid());
        checks++;
        Object atDesk = desk.remove(current);
        if (value.equals(atDesk)) {
            line(value);
        } else {
            differing.addElement(current);
            line(value + "   <-- DIFFERS, desk: " + (atDesk == null ? "no such check" : atDesk));
        }
        current = null;
    }

    /** What varies from run to run and is compared with nothing. */
    void figure(String name, String value) {
        line(name + " : " + ascii(value));
    }

    /** A group of checks that could not go on. */
    void threw(Throwable reason) {
        if (current == null) begin("after the last check");
        came("threw " + reason);
    }

    void end() throws IOException {
        for (int i = 0; i < names.size(); i++) {
            if (!desk.containsKey(names.elementAt(i))) continue;
            differing.addElement(names.elementAt(i));
            line(names.elementAt(i) + " was not reached   <-- DIFFERS, desk: "
                    + desk.get(names.elementAt(i)));
        }
        line("");
        line(checks + " checks, " + differing.size() + " differ");
        for (int i = 0; i < differing.size(); i++) line("  " + differing.elementAt(i));
        file.close();
    }

    private String errorsSaid() {
        StringBuffer said = new StringBuffer();
        for (int i = 0; i < errors.size(); i++) said.append(" ! ").append(errors.elementAt(i));
        return said.toString();
    }

    private static String ascii(String text) {
        StringBuffer plain = new StringBuffer();
        for (int i = 0; i < text.length(); i++) {
            char letter = text.charAt(i);
            if (letter >= ' ' && letter <= '~') {
                plain.append(letter);
            } else {
                plain.append("<").append(Integer.toHexString(letter)).append(">");
            }
        }
        return plain.toString();
    }
}
