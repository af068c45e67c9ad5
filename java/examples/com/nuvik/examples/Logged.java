package com.nuvik.examples;

import java.io.FileOutputStream;
import java.io.PrintStream;
import java.lang.reflect.InvocationTargetException;

/**
 * Runs another program and writes to a file what it says, for devices that have no console: {@code
 * Logged FILE CLASS ARGUMENT...}. What the program threw stands at the file's end.
 */
public final class Logged {
    private Logged() {}

    public static void main(String[] arguments) throws Exception {
        PrintStream file = new PrintStream(new FileOutputStream(arguments[0]));
        System.setOut(file);
        System.setErr(file);
        String[] rest = new String[arguments.length - 2];
        System.arraycopy(arguments, 2, rest, 0, rest.length);
        try {
            Class.forName(arguments[1])
                    .getMethod("main", new Class[] {String[].class})
                    .invoke(null, new Object[] {rest});
        } catch (InvocationTargetException thrown) {
            thrown.getTargetException().printStackTrace();
        } catch (Exception notStarted) {
            notStarted.printStackTrace();
        } finally {
            file.close();
        }
    }
}
