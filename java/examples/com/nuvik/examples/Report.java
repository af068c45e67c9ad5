package com.nuvik.examples;

import com.nuvik.program.DeviceFiles;
import java.io.File;
import java.io.FileInputStream;
import java.io.FileOutputStream;
import java.io.IOException;
import java.io.InputStream;
import java.io.OutputStream;
import java.util.ArrayList;
import java.util.List;
import java.util.Properties;

/** What a person writes on an inspection form, and the file that it is kept in. */
final class Report {
    String site = "";
    String inspector = "";
    int kind;
    int condition;
    boolean urgent;
    final List<String> findings = new ArrayList<>();
    String notes = "";

    static boolean exists(String path) {
        return fileAt(path).exists();
    }

    /** What the person may want to call its file. */
    String fileName() {
        return site.replaceAll("\\W+", " ").trim();
    }

    static String withExtension(String path) {
        boolean hasOne = path.indexOf('.', path.lastIndexOf('\\')) >= 0;
        return hasOne ? path : path + ".txt";
    }

    void save(String path) throws IOException {
        try (OutputStream file = new FileOutputStream(fileAt(path))) {
            lines().store(file, "Inspection");
        }
    }

    /** Whether it would be kept as the other one is. */
    boolean isSameAs(Report other) {
        return lines().equals(other.lines());
    }

    private Properties lines() {
        Properties lines = new Properties();
        lines.setProperty("site", site);
        lines.setProperty("inspector", inspector);
        lines.setProperty("kind", String.valueOf(kind));
        lines.setProperty("condition", String.valueOf(condition));
        lines.setProperty("urgent", String.valueOf(urgent));
        for (int i = 0; i < findings.size(); i++) lines.setProperty("finding." + i, findings.get(i));
        lines.setProperty("notes", notes);
        return lines;
    }

    /** Reads a report. A file that something else wrote is an error too, as is a number too high. */
    static Report open(String path, int kinds, int conditions) throws IOException {
        Properties lines = new Properties();
        try (InputStream file = new FileInputStream(fileAt(path))) {
            lines.load(file);
        } catch (IllegalArgumentException malformed) {
            throw new IOException("no report", malformed);
        }
        Report report = new Report();
        report.site = line(lines, "site");
        report.inspector = line(lines, "inspector");
        report.kind = number(lines, "kind", kinds);
        report.condition = number(lines, "condition", conditions);
        report.urgent = Boolean.parseBoolean(line(lines, "urgent"));
        for (int i = 0; lines.containsKey("finding." + i); i++)
            report.findings.add(lines.getProperty("finding." + i));
        report.notes = line(lines, "notes");
        return report;
    }

    private static String line(Properties lines, String name) throws IOException {
        String value = lines.getProperty(name);
        if (value == null) throw new IOException("no report: there is no " + name);
        return value;
    }

    private static int number(Properties lines, String name, int end) throws IOException {
        for (int i = 0; i < end; i++) if (line(lines, name).equals(String.valueOf(i))) return i;
        throw new IOException("no report: " + name + " is " + line(lines, name));
    }

    private static File fileAt(String name) {
        return new File(DeviceFiles.pathOf(name));
    }
}
