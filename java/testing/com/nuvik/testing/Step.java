package com.nuvik.testing;

import java.util.ArrayList;
import java.util.List;

/** One line of a script, split into words. */
final class Step {
    final int line;
    final String text;
    private final List<String> words = new ArrayList<>();
    private final List<Boolean> quoted = new ArrayList<>();
    private int next;

    /** @throws IllegalArgumentException with a sentence for a line that has no end */
    Step(int line, String text) {
        this.line = line;
        this.text = text;
        split();
    }

    private void split() {
        int at = 0;
        while (at < text.length()) {
            char character = text.charAt(at);
            if (character == ' ' || character == '\t') {
                at++;
            } else if (character == '#') {
                return;
            } else if (character == '"') {
                at = readQuoted(at + 1);
            } else {
                int end = at;
                while (end < text.length() && " \t".indexOf(text.charAt(end)) < 0) end++;
                add(text.substring(at, end), false);
                at = end;
            }
        }
    }

    /** Within quotes a backslash makes a quote, a backslash or (with n) a line feed. */
    private int readQuoted(int start) {
        StringBuilder word = new StringBuilder();
        for (int at = start; at < text.length(); at++) {
            char character = text.charAt(at);
            if (character == '"') {
                add(word.toString(), true);
                return at + 1;
            }
            if (character == '\\' && at + 1 < text.length()) {
                character = text.charAt(++at);
                if (character == 'n') character = '\n';
            }
            word.append(character);
        }
        throw new IllegalArgumentException("a text has no closing quote");
    }

    private void add(String word, boolean isQuoted) {
        words.add(word);
        quoted.add(isQuoted);
    }

    boolean isEmpty() {
        return words.isEmpty();
    }

    boolean isAtEnd() {
        return next == words.size();
    }

    /** Takes these words when they come next. */
    boolean takes(String phrase) {
        if (!comes(phrase)) return false;
        next += phrase.split(" ").length;
        return true;
    }

    boolean comes(String phrase) {
        String[] wanted = phrase.split(" ");
        if (next + wanted.length > words.size()) return false;
        for (int i = 0; i < wanted.length; i++) {
            if (quoted.get(next + i) || !words.get(next + i).equals(wanted[i])) return false;
        }
        return true;
    }

    /** Takes this word, which must come next. */
    void mustTake(String word) {
        if (!takes(word)) throw new IllegalArgumentException('"' + word + "\" is missing" + atNext());
    }

    boolean comesText() {
        return !isAtEnd() && quoted.get(next);
    }

    /** The next text, which stands in quotes. */
    String text() {
        if (!comesText()) throw new IllegalArgumentException("a text in quotes is missing" + atNext());
        return words.get(next++);
    }

    /** The next word. */
    String word(String what) {
        if (isAtEnd() || quoted.get(next)) {
            throw new IllegalArgumentException(what + " is missing" + atNext());
        }
        return words.get(next++);
    }

    /** The next word when it is a number. */
    int numberOr(int otherwise) {
        boolean isNumber = !isAtEnd() && !quoted.get(next) && words.get(next).matches("\\d{1,4}");
        return isNumber ? Integer.parseInt(words.get(next++)) : otherwise;
    }

    /** All words that are left. */
    String rest(String what) {
        StringBuilder rest = new StringBuilder(word(what));
        while (!isAtEnd()) rest.append(' ').append(word(what));
        return rest.toString();
    }

    String atNext() {
        return isAtEnd() ? " at the line's end" : " at " + words.get(next);
    }

    void mustBeAtEnd() {
        if (!isAtEnd()) throw new IllegalArgumentException("nothing more is expected" + atNext());
    }
}
