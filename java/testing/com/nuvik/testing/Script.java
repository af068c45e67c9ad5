package com.nuvik.testing;

import java.io.IOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.util.ArrayList;
import java.util.Collection;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.function.Consumer;
import java.util.function.Predicate;
import java.util.function.Supplier;

/**
 * Plays a script with an application: {@code Script FILE CLASS ARGUMENT...}; with {@code --check FILE}
 * only looks whether every line is understood. {@code docs/testing.md} tells the words. It ends with 0
 * when all was done, with 1 when a step failed, and with 2 for a wrong script, which it names with file
 * and line before anything starts.
 */
public final class Script {
    private static final int FAILED = 1;
    private static final int WRONG = 2;

    private final Device device;
    private final List<Step> steps = new ArrayList<>();
    private final List<Runnable> deeds = new ArrayList<>();
    private final Said said = Said.listen();

    /**
     * A script without lines.
     *
     * @param device the device that it plays on
     */
    public Script(Device device) {
        this.device = device;
    }

    /**
     * Does what a line says, with the application that runs.
     *
     * @param line the line
     * @throws IllegalArgumentException when it is wrong
     */
    public void play(String line) {
        Step step = new Step(1, line);
        Runnable deed = deedOf(step);
        step.mustBeAtEnd();
        deed.run();
    }

    /**
     * Plays or checks a script.
     *
     * @param words as above
     */
    public static void main(String[] words) {
        boolean checksOnly = words[0].equals("--check");
        String file = words[checksOnly ? 1 : 0];
        Script script = new Script(new Device());
        boolean isRight = script.read(file);
        if (!isRight) System.exit(WRONG);
        if (checksOnly) return;
        String[] arguments = new String[words.length - 2];
        System.arraycopy(words, 2, arguments, 0, arguments.length);
        System.exit(script.play(file, words[1], arguments) ? 0 : FAILED);
    }

    private boolean read(String file) {
        List<String> lines;
        try {
            lines = Files.readAllLines(Paths.get(file), StandardCharsets.UTF_8);
        } catch (IOException failed) {
            System.err.println("zemvolt: the script " + file + " cannot be read");
            return false;
        }
        boolean isRight = true;
        for (int i = 0; i < lines.size(); i++) {
            try {
                add(new Step(i + 1, lines.get(i).trim()));
            } catch (IllegalArgumentException wrong) {
                System.err.println("zemvolt: " + file + ":" + (i + 1) + ": " + wrong.getMessage());
                isRight = false;
            }
        }
        return isRight;
    }

    private void add(Step step) {
        if (step.isEmpty()) return;
        deeds.add(deedOf(step));
        step.mustBeAtEnd();
        steps.add(step);
    }

    private boolean play(String file, String mainClass, String[] arguments) {
        String at = file;
        try {
            Class<?> application = Class.forName(mainClass);
            if (beginsWithStoppedClock()) device.stopClock();
            device.start(application, arguments);
            for (int i = 0; i < steps.size(); i++) {
                at = file + ":" + steps.get(i).line + ": " + steps.get(i).text;
                deeds.get(i).run();
            }
            at = file;
            device.stop();
            return true;
        } catch (ClassNotFoundException missing) {
            System.err.println("zemvolt: class " + mainClass + " was not found on the class path");
        } catch (TestFailure | RuntimeException failed) {
            System.err.println("zemvolt: " + at + "\nzemvolt: " + failed.getMessage());
            Failures.tell(device, Paths.get(file).getFileName().toString());
        }
        return false;
    }

    /** What the application does when it starts is to find the clock so. */
    private boolean beginsWithStoppedClock() {
        return !steps.isEmpty() && steps.get(0).text.matches("stop +clock\\b.*");
    }

    // The words

    /** What reads the rest of a line and makes a deed of it. */
    private interface Word {
        Runnable read(Script script, Step step);
    }

    private static final Map<String, Word> WORDS = new LinkedHashMap<>();
    private static final Map<String, Predicate<Control>> STATES = new LinkedHashMap<>();

    static {
        WORDS.put("tap", Script::tap);
        WORDS.put("tap and hold", Script::tapAndHold);
        WORDS.put("double tap", (script, step) -> script.onControl(step, Control::doubleTap));
        WORDS.put("drag", Script::drag);
        WORDS.put("type", Script::type);
        WORDS.put("enter", Script::enter);
        WORDS.put("press", (script, step) -> script.press(step.rest("the name of a key")));
        WORDS.put("choose", Script::choose);
        WORDS.put("menu", Script::menu);
        WORDS.put("file", (script, step) -> script.file(step.text()));
        WORDS.put("cancel file", (script, step) -> () -> script.device.fileDialog().cancel());
        WORDS.put("wait for", Script::waitFor);
        WORDS.put("wait for end", (script, step) -> script.device::awaitEnd);
        WORDS.put("wait until said", Script::waitUntilSaid);
        WORDS.put("wait until idle", (script, step) -> script.device::awaitIdle);
        WORDS.put("wait until gone", Script::waitUntilGone);
        WORDS.put("stop clock", (script, step) -> script.device::stopClock);
        WORDS.put("run clock", (script, step) -> script.device::runClock);
        WORDS.put("pass", Script::pass);
        WORDS.put("expect", Script::expect);
        WORDS.put("expect no", Script::expectNo);
        WORDS.put("expect exit code", Script::expectExitCode);
        WORDS.put("screenshot", Script::screenshot);
        WORDS.put("compare", (script, step) -> script.compare(step.text()));
        WORDS.put("close", (script, step) -> script.device::close);
        WORDS.put("tree", (script, step) -> () -> System.out.print(script.device.treeText()));
        STATES.put("checked", Control::isChecked);
        STATES.put("enabled", Control::isEnabled);
        STATES.put("focused", Control::isFocused);
        STATES.put("selected", Control::isSelected);
    }

    /**
     * What a line may begin with, and what may be expected of a control.
     *
     * @return the words, such as {@code tap and hold} and {@code expect checked}
     */
    public static List<String> words() {
        List<String> words = new ArrayList<>(WORDS.keySet());
        words.add("expect shows");
        for (String state : STATES.keySet()) words.add("expect " + state);
        return words;
    }

    private Runnable deedOf(Step step) {
        String longest = longestOf(WORDS.keySet(), step);
        if (longest.isEmpty()) {
            throw new IllegalArgumentException("a line begins with one of: " + String.join(", ", WORDS.keySet()));
        }
        step.mustTake(longest);
        return WORDS.get(longest).read(this, step);
    }

    /** Which of several words comes next; empty: none. One may begin with another. */
    private static String longestOf(Collection<String> words, Step step) {
        String longest = "";
        for (String word : words) if (word.length() > longest.length() && step.comes(word)) longest = word;
        return longest;
    }

    private static List<String> kinds() {
        List<String> kinds = new ArrayList<>();
        for (Kind kind : Kind.values()) kinds.add(kind.toString());
        return kinds;
    }

    /** A control: {@code button "OK"}, {@code "OK"}, {@code text 2}, {@code text labelled "Name"}. */
    private Finder finder(Step step) {
        Kind kind = Kind.named(longestOf(kinds(), step));
        if (kind != null) step.mustTake(kind.toString());
        if (step.comesText()) return new Finder(kind, step.text(), false, 1);
        if (kind == null) throw new IllegalArgumentException("no control is told" + step.atNext());
        if (step.takes("labelled")) return new Finder(kind, step.text(), true, 1);
        return new Finder(kind, null, false, step.numberOr(1));
    }

    private final class Finder implements Supplier<Control> {
        final Kind kind;
        final String text;
        private final boolean isLabelled;
        private final int number;

        Finder(Kind kind, String text, boolean isLabelled, int number) {
            this.kind = kind;
            this.text = text;
            this.isLabelled = isLabelled;
            this.number = number;
        }

        @Override
        public Control get() {
            if (isLabelled) return device.findLabelled(kind, text);
            return text == null ? device.find(kind, number) : device.find(kind, text);
        }

        void mustBeByText() {
            if (isLabelled) throw new IllegalArgumentException("this is told by its own text only");
        }
    }

    private static Runnable onControl(Finder finder, Consumer<Control> deed) {
        return () -> deed.accept(finder.get());
    }

    private Runnable onControl(Step step, Consumer<Control> deed) {
        return onControl(finder(step), deed);
    }

    /** A place: {@code 120,80} in pixels, or {@code 50%,25%} of what it is in. */
    private static final class Place {
        private final int x;
        private final int y;
        private final boolean isShare;

        private Place(int x, int y, boolean isShare) {
            this.x = x;
            this.y = y;
            this.isShare = isShare;
        }

        static Place next(Step step) {
            String word = step.word("a place such as 120,80 or 50%,25%");
            boolean isShare = word.matches("\\d+%,\\d+%");
            if (!isShare && !word.matches("\\d+,\\d+")) {
                throw new IllegalArgumentException(word + " is no place such as 120,80 or 50%,25%");
            }
            String[] parts = word.replace("%", "").split(",");
            return new Place(Integer.parseInt(parts[0]), Integer.parseInt(parts[1]), isShare);
        }

        int x(int width) {
            return isShare ? Math.min(width - 1, x * width / 100) : x;
        }

        int y(int height) {
            return isShare ? Math.min(height - 1, y * height / 100) : y;
        }
    }

    private static boolean comesPlace(Step step) {
        return step.text.matches("tap( and hold)? +\\d.*");
    }

    private interface AtPoint {
        void act(int x, int y);
    }

    private interface AtPlaceOf {
        void act(Control control, int x, int y);
    }

    private Runnable tap(Step step) {
        return tap(step, device::tap, Control::tap, Control::tapAt);
    }

    private Runnable tapAndHold(Step step) {
        return tap(step, device::tapAndHold, Control::tapAndHold, Control::tapAndHoldAt);
    }

    /** A tap of some kind on the screen, on a control or at a place of it. */
    private Runnable tap(Step step, AtPoint onScreen, Consumer<Control> onControl, AtPlaceOf atPlace) {
        if (comesPlace(step)) {
            Place place = Place.next(step);
            return () -> onScreen.act(place.x(device.screenWidth()), place.y(device.screenHeight()));
        }
        Finder finder = finder(step);
        if (!step.takes("at")) return onControl(finder, onControl);
        Place place = Place.next(step);
        return () -> {
            Control control = finder.get();
            int[] bounds = control.bounds();
            atPlace.act(control, place.x(bounds[2]), place.y(bounds[3]));
        };
    }

    private Runnable drag(Step step) {
        Place from = Place.next(step);
        step.mustTake("to");
        Place to = Place.next(step);
        return () -> {
            int width = device.screenWidth();
            int height = device.screenHeight();
            device.drag(from.x(width), from.y(height), to.x(width), to.y(height));
        };
    }

    private Runnable type(Step step) {
        String text = step.text();
        if (!step.takes("into")) return () -> device.type(text);
        return onControl(step, control -> control.type(text));
    }

    private Runnable enter(Step step) {
        String text = step.text();
        step.mustTake("into");
        return onControl(step, control -> control.enter(text));
    }

    private Runnable press(String keys) {
        Keys.parse(keys);
        return () -> device.press(keys);
    }

    private Runnable choose(Step step) {
        String item = step.text();
        step.mustTake("in");
        return onControl(step, control -> control.choose(item));
    }

    private Runnable menu(Step step) {
        List<String> path = new ArrayList<>();
        path.add(step.text());
        while (step.comesText()) path.add(step.text());
        return () -> device.chooseMenu(path.toArray(new String[0]));
    }

    private Runnable file(String name) {
        return () -> device.fileDialog().choose(name);
    }

    private Runnable waitUntilSaid(Step step) {
        String line = step.text();
        int least = step.numberOr(1);
        if (least > 1) step.mustTake("times");
        return () ->
                device.waitUntil(
                        "\"" + line + "\" is said" + (least == 1 ? "" : " " + least + " times"),
                        () -> said.count(line) >= least);
    }

    private Runnable waitFor(Step step) {
        Finder finder = finder(step);
        finder.mustBeByText();
        return () -> device.await(finder.kind, finder.text);
    }

    private Runnable waitUntilGone(Step step) {
        Finder finder = finder(step);
        finder.mustBeByText();
        return () ->
                device.waitUntil(
                        Device.describe(finder.kind, finder.text) + " is gone",
                        () -> !device.shows(finder.kind, finder.text));
    }

    private Runnable pass(Step step) {
        int number = step.numberOr(0);
        if (number == 0) throw new IllegalArgumentException("a time such as 10 min is missing" + step.atNext());
        int milliseconds = number * unit(step);
        return () -> device.passTime(milliseconds);
    }

    private static int unit(Step step) {
        if (step.takes("ms")) return 1;
        if (step.takes("s")) return 1000;
        if (step.takes("min")) return 60_000;
        throw new IllegalArgumentException("ms, s or min is missing" + step.atNext());
    }

    private Runnable expectExitCode(Step step) {
        int wanted = step.numberOr(-1);
        if (wanted < 0) throw new IllegalArgumentException("a number is missing" + step.atNext());
        return () -> {
            int code = device.exitCode();
            if (code != wanted) throw new TestFailure("the exit code is " + code + " and not " + wanted);
        };
    }

    private Runnable expectNo(Step step) {
        Finder finder = finder(step);
        finder.mustBeByText();
        return () -> {
            if (!device.shows(finder.kind, finder.text)) return;
            throw new TestFailure("there is a " + Device.describe(finder.kind, finder.text));
        };
    }

    private Runnable expect(Step step) {
        Finder finder = finder(step);
        if (step.takes("shows")) {
            String text = step.text();
            return onControl(finder, control -> mustShow(control, text));
        }
        boolean wanted = !step.takes("not");
        String not = wanted ? "" : "not ";
        for (Map.Entry<String, Predicate<Control>> state : STATES.entrySet()) {
            if (!step.takes(state.getKey())) continue;
            return onControl(
                    finder,
                    control -> must(state.getValue().test(control) == wanted, control, not + state.getKey()));
        }
        if (!wanted) throw new IllegalArgumentException("\"not\" of what is missing" + step.atNext());
        return onControl(finder, control -> must(control.isShown(), control, "shown"));
    }

    private static void mustShow(Control control, String text) {
        if (control.text().equals(text)) return;
        throw new TestFailure(control + " shows \"" + control.text() + "\" and not \"" + text + "\"");
    }

    private static void must(boolean is, Control control, String what) {
        if (!is) throw new TestFailure(control + " is not as expected: " + what);
    }

    private Runnable screenshot(Step step) {
        String usual = System.getProperty("zemvolt.screenshot", "screenshot.png");
        Path file = Paths.get(step.isAtEnd() ? usual : step.text());
        return () -> device.screenshot().save(file);
    }

    private Runnable compare(String file) {
        return () -> device.mustLookLike(file);
    }
}
