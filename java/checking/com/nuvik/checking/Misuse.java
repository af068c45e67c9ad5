package com.nuvik.checking;

/**
 * A program has given a native what it must not be given. The cause, where there is one, has the stack
 * of what explains it: of the disposal, or of where the handle was made. It is an error of the program
 * and not meant to be caught.
 */
public final class Misuse extends Error {
    private static final long serialVersionUID = 1;

    Misuse(String sentence, Place place) {
        super(sentence, place);
    }

    /** The misuse in a line: what is wrong, who called, and where what explains it happened. */
    String line() {
        StringBuilder line = new StringBuilder(getMessage());
        line.append(" (").append(Place.callerIn(this)).append(")");
        Throwable place = getCause();
        if (place != null)
            line.append("; ").append(place.getMessage()).append(": ").append(Place.callerIn(place));
        return line.toString();
    }
}
