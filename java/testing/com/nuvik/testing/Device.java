package com.nuvik.testing;

import java.io.IOException;
import java.io.UncheckedIOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.util.ArrayList;
import java.util.List;
import java.util.Locale;
import java.util.function.BooleanSupplier;

/**
 * The emulated device, and the person in front of it. An application runs on it in this process; a
 * test finds its controls and does with them what a person does. After each deed the device is waited
 * for until it is idle, so that what is read next is what came of it.
 *
 * <p>One application runs at a time. It ends with {@link #stop} or by itself; its classes stay loaded,
 * so that what it keeps in static fields is there when it is started again.
 *
 * <p>Methods are called on a test's thread, never on one of the application's. What the device does not
 * do fails with {@link TestFailure}.
 */
public final class Device {
    private static final int DEFAULT_PATIENCE = 20_000;
    private static final int STEPS_OF_DRAG = 8;
    private static final int HOLD_TIME = 700;

    private int patience = DEFAULT_PATIENCE;
    private Application application;
    private boolean wasAskedForCode; // why the application has ended
    private Recording recording; // null: none
    private Path sounds; // where they are kept; null: nowhere
    private DeviceClock clock; // while it is this one's; null: it is nobody's

    /** The device of this process; a second one is the same. */
    public Device() {}

    /**
     * Sets how long anything is waited for. Only a failure takes so long.
     *
     * @param milliseconds the time; 20,000 at first
     */
    public void setPatience(int milliseconds) {
        patience = milliseconds;
    }

    // The application

    /**
     * Starts an application and waits until it shows a window and is idle, or has ended.
     *
     * @param mainClass the class with its method main
     * @param arguments what main is given
     */
    public void start(Class<?> mainClass, String... arguments) {
        if (application != null && application.isExiting()) application.awaitEnd(patience);
        if (application != null && !application.hasEnded()) {
            throw new TestFailure(named() + " still runs: there is one application at a time");
        }
        Emulated.screenSize(); // fails first where there is no device
        wasAskedForCode = false;
        application = new Application(mainClass, arguments);
        long deadline = deadline();
        while (!application.hasEnded() && !showsWindow()) {
            if (isOver(deadline)) throw busyOr("has shown no window");
            application.awaitEnd(1); // nothing tells of the first window
        }
        mustNotHaveThrown();
    }

    private boolean showsWindow() {
        if (!Emulated.hasDisplay() || !Emulated.awaitIdle(patience)) return false;
        for (Part part : readTree().parts) if (part.kind == Kind.SHELL && part.isShown()) return true;
        return false;
    }

    /**
     * Ends the application, wherever it is. It is asked nothing, and saves nothing. One that has ended by
     * {@code System.exit} with another code than 0 fails, unless {@link #exitCode} was asked.
     */
    public void stop() {
        if (application != null) application.stop(patience);
        for (Failure failure : Failure.values()) fail(failure, 0);
        forgetSounds();
        if (clock != null) clock.leave();
        clock = null;
        boolean isUnexpected = application != null && application.isExiting() && !wasAskedForCode;
        wasAskedForCode = true;
        if (isUnexpected && application.exitCode() != 0) {
            throw new TestFailure(named() + " has called System.exit(" + application.exitCode() + ")");
        }
    }

    private String named() {
        return application == null ? "the application" : application.mainClass.getSimpleName();
    }

    /**
     * Tells whether the application has ended.
     *
     * @return true before the first one too
     */
    public boolean hasEnded() {
        return application == null || application.hasEnded();
    }

    /** Waits until the application has ended by itself, and fails when it threw something. */
    public void awaitEnd() {
        awaitEndOfAny();
        mustNotHaveThrown();
    }

    private void awaitEndOfAny() {
        if (application == null) throw new TestFailure("no application was started");
        application.awaitEnd(patience);
        if (!application.hasEnded()) throw busyOr("has not ended");
    }

    /**
     * The code that the application ends with, which is waited for: that of {@code System.exit}, 1 when main
     * has thrown something, and otherwise 0.
     *
     * @return the code
     */
    public int exitCode() {
        awaitEndOfAny();
        wasAskedForCode = true;
        return application.exitCode();
    }

    private void mustNotHaveThrown() {
        if (application == null || application.thrown() == null) return;
        throw new TestFailure(
                named() + " has ended by " + application.thrown(),
                application.thrown());
    }

    private TestFailure busyOr(String what) {
        String stack = application == null ? "" : "; its main thread is here:\n" + application.stack();
        return new TestFailure(named() + " " + what + " for " + patience / 1000.0 + " seconds" + stack);
    }

    // Waiting

    private long deadline() {
        return System.nanoTime() + patience * 1_000_000L;
    }

    private static boolean isOver(long deadline) {
        return System.nanoTime() - deadline > 0;
    }

    /**
     * Waits until the application has nothing to do: no event, nothing to paint, no task that is due.
     * Fails when it has ended by an exception.
     */
    public void awaitIdle() {
        boolean isThere = !hasEnded() && Emulated.hasDisplay();
        if (isThere && !Emulated.awaitIdle(patience) && !hasEnded() && Emulated.hasDisplay()) {
            throw busyOr("has been busy");
        }
        if (hasEnded()) mustNotHaveThrown();
    }

    /**
     * Waits until something is true; it is asked whenever the device is idle. A clock that stands is
     * passed on meanwhile, to what is due next, once nothing else is being done. Then nothing may be left
     * that could make it true, which fails at once.
     *
     * @param what what is waited for, as the failure tells it: "the report is there"
     * @param condition what must be true
     */
    public void waitUntil(String what, BooleanSupplier condition) {
        long deadline = deadline();
        long latest = standsClock() ? Emulated.time() + patience : 0;
        awaitIdle();
        while (true) {
            boolean hasEnded = hasEnded(); // before it is asked for what was done last
            if (condition.getAsBoolean()) return;
            mustNotHaveThrown();
            if (isOver(deadline)) {
                throw new TestFailure("it is not so after " + patience / 1000.0 + " seconds: " + what);
            }
            if (hasEnded) throw new TestFailure("the application has ended before this: " + what);
            if (standsClock() && Threads.areAtRest()) passToNext(latest, condition, what);
            awaitIdle();
        }
    }

    private void passToNext(long latest, BooleanSupplier condition, String what) {
        long next = clock.nextOfAll();
        if (next <= latest) {
            clock.passOneStep(next);
            return;
        }
        awaitIdle(); // a thread that rests by now may just have told the device something
        if (condition.getAsBoolean()) return;
        String when = next == Long.MAX_VALUE ? "nothing is due any more" : "nothing more is due by then";
        throw new TestFailure(
                "it is not so, and within " + patience / 1000.0 + " seconds " + when + ": " + what);
    }

    /**
     * Waits until there is a control on the screen.
     *
     * @param kind what kind it is
     * @param text what it shows; null for any
     * @return the first such control
     */
    public Control await(Kind kind, String text) {
        List<Part> found = new ArrayList<>();
        waitUntil(
                describe(kind, text) + " is shown",
                () -> {
                    found.clear();
                    found.addAll(matching(tree().parts, kind, text, true));
                    return !found.isEmpty();
                });
        return new Control(this, found.get(0));
    }

    // The clock

    /**
     * Lets the device's clock stand still until the application is stopped: timers, tap and hold, double
     * taps and the tasks of {@code com.nuvik.program} follow it. Stopped before the application is
     * started, it makes every picture the same. A caret does not blink meanwhile. The clock that Java
     * itself tells, and {@code Thread.sleep}, go on.
     */
    public void stopClock() {
        Emulated.screenSize(); // fails first where there is no device
        if (clock == null) clock = new DeviceClock();
        clock.stop();
    }

    /** Lets the clock run again, from where it stands. */
    public void runClock() {
        mustStand();
        clock.run();
    }

    /**
     * Lets the time of a clock that stands pass, in as little as it takes: each thing that becomes due is
     * done at its own time.
     *
     * @param milliseconds how long
     */
    public void passTime(int milliseconds) {
        mustStand();
        awaitIdle();
        passSteps(milliseconds);
        settle();
    }

    private void passSteps(int milliseconds) {
        long end = Emulated.time() + milliseconds;
        while (Emulated.time() < end) {
            clock.passOneStep(end);
            awaitIdle();
        }
    }

    private boolean standsClock() {
        return clock != null && clock.stands();
    }

    private void mustStand() {
        if (!standsClock()) throw new TestFailure("the clock runs: stopClock comes first");
    }

    // Finding

    Tree readTree() {
        if (!Emulated.hasDisplay()) return new Tree(null);
        String records = Emulated.tree(patience);
        if (records == null && Emulated.hasDisplay()) throw busyOr("has been busy");
        return new Tree(records);
    }

    Tree tree() {
        awaitIdle();
        return readTree();
    }

    /**
     * What is on the screen, for a person to read: one line for each control, what lies in it below it.
     *
     * @return the lines, the topmost window first
     */
    public String treeText() {
        return tree().toString();
    }

    /**
     * Finds a control.
     *
     * @param kind what kind it is
     * @param text what it shows, all of it; null for any
     * @return the only such control, hidden ones aside
     */
    public Control find(Kind kind, String text) {
        return new Control(this, only(kind, text));
    }

    /**
     * Finds a control of any kind by what it shows.
     *
     * @param text what it shows, all of it
     * @return the only such control, hidden ones aside
     */
    public Control find(String text) {
        return find(null, text);
    }

    /**
     * Finds one of several controls of a kind.
     *
     * @param kind what kind it is
     * @param number which of those on the screen, in the order of the tree; the first is 1
     * @return the control
     */
    public Control find(Kind kind, int number) {
        Tree tree = tree();
        List<Part> found = matching(tree.parts, kind, null, true);
        if (number >= 1 && number <= found.size()) return new Control(this, found.get(number - 1));
        throw new TestFailure(
                "there is no " + kind + " number " + number + "; there are " + found.size() + whenEnded());
    }

    /**
     * Finds what stands behind or below a label: the first control of the kind whose place is so.
     *
     * @param kind what kind it is
     * @param label what the label shows
     * @return the control
     */
    public Control findLabelled(Kind kind, String label) {
        Tree tree = tree();
        Part at = onlyOf(tree, tree.parts, Kind.LABEL, label);
        Part nearest = null;
        int least = Integer.MAX_VALUE;
        for (Part part : matching(tree.parts, kind, null, true)) {
            boolean isBehind = part.x >= at.x + at.width / 2 && overlaps(at.y, at.height, part.y, part.height);
            boolean isBelow = part.y >= at.y + at.height / 2 && overlaps(at.x, at.width, part.x, part.width);
            int distance = Math.abs(part.x - at.x) + 2 * Math.abs(part.y - at.y);
            if ((isBehind || isBelow) && distance < least) {
                nearest = part;
                least = distance;
            }
        }
        if (nearest != null) return new Control(this, nearest);
        throw new TestFailure("no " + kind + " stands behind or below the label \"" + label + "\"");
    }

    private static boolean overlaps(int from, int size, int otherFrom, int otherSize) {
        return from < otherFrom + otherSize && otherFrom < from + size;
    }

    /**
     * Tells whether a control is on the screen.
     *
     * @param kind what kind it is
     * @param text what it shows; null for any
     * @return whether there is at least one
     */
    public boolean shows(Kind kind, String text) {
        return !matching(tree().parts, kind, text, true).isEmpty();
    }

    Control findIn(Part around, Kind kind, String text) {
        List<Part> within = new ArrayList<>();
        collect(around, within);
        return new Control(this, onlyOf(null, within, kind, text));
    }

    private static void collect(Part around, List<Part> within) {
        for (Part child : around.children) {
            within.add(child);
            collect(child, within);
        }
    }

    Part only(Kind kind, String text) {
        Tree tree = tree();
        return onlyOf(tree, tree.parts, kind, text);
    }

    private Part onlyOf(Tree tree, List<Part> parts, Kind kind, String text) {
        List<Part> found = matching(parts, kind, text, false);
        List<Part> shown = matching(found, kind, text, true);
        if (shown.size() == 1) return shown.get(0);
        if (shown.size() > 1) {
            throw new TestFailure("there are " + shown.size() + " controls of this kind: "
                    + describe(kind, text) + "; find one by its number, or in what it lies in");
        }
        if (found.size() == 1) return found.get(0);
        throw new TestFailure("there is no " + describe(kind, text) + nearTo(parts, kind, text) + whenEnded());
    }

    private String whenEnded() {
        if (application == null || !hasEnded()) return "";
        return "; " + named() + " has ended, with exit code " + application.exitCode();
    }

    private static List<Part> matching(List<Part> parts, Kind kind, String text, boolean shownOnly) {
        List<Part> found = new ArrayList<>();
        for (Part part : parts) {
            boolean matches =
                    (kind == null || part.kind == kind)
                            && (text == null || part.text().equals(text) || part.rawText.equals(text));
            if (matches && !part.isSeparator() && (!shownOnly || part.isShown())) found.add(part);
        }
        return found;
    }

    static String describe(Kind kind, String text) {
        String called = kind == null ? "control" : kind.toString();
        return text == null ? called : called + " \"" + text + "\"";
    }

    /** What else there is of the kind, or of the text. */
    private static String nearTo(List<Part> parts, Kind kind, String text) {
        List<String> near = new ArrayList<>();
        for (Part part : parts) {
            if (!part.isShown() || part.isSeparator() || part.text().isEmpty()) continue;
            boolean sameText = text != null && part.text().equalsIgnoreCase(text);
            if (sameText || kind != null && part.kind == kind) near.add(part.named());
        }
        return near.isEmpty() ? "" : "; there is " + String.join(", ", near);
    }

    /**
     * The button with that label.
     *
     * @param label the label
     * @return the button
     */
    public Control button(String label) {
        return find(Kind.BUTTON, label);
    }

    /**
     * The device's dialog that asks for a file, waited for until it is open.
     *
     * @return the dialog
     */
    public FileDialog fileDialog() {
        return new FileDialog(await(Kind.FILE_DIALOG, null));
    }

    // The person

    private void mustBeOnScreen(int x, int y) {
        int[] screen = Emulated.screenSize();
        if (x >= 0 && y >= 0 && x < screen[0] && y < screen[1]) return;
        throw new TestFailure(
                x + "," + y + " is not on the screen of " + screen[0] + "x" + screen[1]);
    }

    private void pressAt(int x, int y) {
        mustBeOnScreen(x, y);
        Emulated.movePointer(x, y);
        awaitIdle(); // a display that shows the device tells of the move once more
        Emulated.pressPointer(x, y, true);
    }

    /**
     * Taps the screen.
     *
     * @param x pixels from the left edge
     * @param y pixels from the top edge
     */
    public void tap(int x, int y) {
        pressAt(x, y);
        Emulated.pressPointer(x, y, false);
        settle();
    }

    /**
     * Taps the screen twice, fast.
     *
     * @param x pixels from the left edge
     * @param y pixels from the top edge
     */
    public void doubleTap(int x, int y) {
        pressAt(x, y);
        Emulated.pressPointer(x, y, false);
        Emulated.pressPointer(x, y, true);
        Emulated.pressPointer(x, y, false);
        settle();
    }

    /**
     * Taps the screen and holds, until that is more than a tap.
     *
     * @param x pixels from the left edge
     * @param y pixels from the top edge
     */
    public void tapAndHold(int x, int y) {
        pressAt(x, y);
        hold();
        Emulated.pressPointer(x, y, false);
        settle();
    }

    /** The time itself is what is waited for: the application may ask Java for it while the clock runs. */
    private void hold() {
        if (standsClock()) {
            awaitIdle();
            passSteps(HOLD_TIME);
            return;
        }
        try {
            Thread.sleep(HOLD_TIME);
        } catch (InterruptedException interrupted) {
            throw new IllegalStateException(interrupted);
        }
    }

    /**
     * Presses at one place, moves to another and lets go.
     *
     * @param fromX pixels from the left edge
     * @param fromY pixels from the top edge
     * @param toX pixels from the left edge
     * @param toY pixels from the top edge
     */
    public void drag(int fromX, int fromY, int toX, int toY) {
        mustBeOnScreen(toX, toY);
        pressAt(fromX, fromY);
        for (int i = 1; i <= STEPS_OF_DRAG; i++) {
            Emulated.movePointer(
                    fromX + (toX - fromX) * i / STEPS_OF_DRAG,
                    fromY + (toY - fromY) * i / STEPS_OF_DRAG);
        }
        Emulated.pressPointer(toX, toY, false);
        settle();
    }

    /**
     * Types where the focus is.
     *
     * @param text what to type; a line feed is the Return key
     */
    public void type(String text) {
        for (char character : text.toCharArray()) {
            if (character == '\n') {
                pressKeys("return");
            } else {
                Emulated.typeCharacter(character);
            }
        }
        settle();
    }

    /**
     * Presses a key, with others held down.
     *
     * @param keys such as {@code return}, {@code f1}, {@code page down} or {@code ctrl+shift+x}
     */
    public void press(String keys) {
        pressKeys(keys);
        settle();
    }

    private static void pressKeys(String keys) {
        List<Integer> numbers = Keys.parse(keys);
        for (int number : numbers) Emulated.pressKey(number, true);
        for (int i = numbers.size(); i-- > 0; ) Emulated.pressKey(numbers.get(i), false);
    }

    /**
     * Chooses a menu item: the first from the menu bar or an open menu, each further one from the menu
     * that the one before has opened.
     *
     * @param path the items' texts, from the outermost
     */
    public void chooseMenu(String... path) {
        for (String item : path) find(Kind.MENU_ITEM, item).tap();
    }

    /** Closes the active window as a person does. What the application does then is its own. */
    public void close() {
        press("alt+f4");
    }

    // What the device refuses, and what it plays

    /**
     * Lets the device refuse something later.
     *
     * @param failure what
     * @param number which time from now on: 1 is the next; 0 takes it back
     */
    public void fail(Failure failure, int number) {
        Emulated.failCall(failure.ordinal(), number);
    }

    /**
     * Keeps what is played from now on, and lets the device's sound stand still: it plays as
     * {@link #playOn} says. That lasts until the application is stopped.
     */
    public void recordSounds() {
        try {
            sounds = Files.createTempDirectory("sounds");
        } catch (IOException failed) {
            throw new UncheckedIOException(failed);
        }
        Emulated.setSoundSpeed(0);
        Emulated.recordSounds("Z:" + sounds.resolve("sound.wav"));
    }

    /**
     * Lets the device play on, at once, and tell the application of what has ended.
     *
     * @param milliseconds how long
     */
    public void playOn(int milliseconds) {
        Emulated.passSoundTime(milliseconds);
        settle();
    }

    /**
     * Tells whether something is being played.
     *
     * @return false once all that was started has ended or was stopped
     */
    public boolean isPlaying() {
        awaitIdle();
        return Emulated.countSounds() > 0;
    }

    /**
     * What was played since {@link #recordSounds}: those sounds that have ended.
     *
     * @return the sounds, in the order of their start
     */
    public List<Sound> sounds() {
        waitUntil("the sounds have ended", () -> Emulated.countSounds() == 0);
        List<Sound> played = new ArrayList<>();
        for (int number = 1; ; number++) {
            Path file = sounds.resolve(number == 1 ? "sound.wav" : "sound-" + number + ".wav");
            if (!Files.exists(file)) return played;
            try {
                played.add(new Sound(Files.readAllBytes(file)));
            } catch (IOException failed) {
                throw new UncheckedIOException(failed);
            }
        }
    }

    private void forgetSounds() {
        if (sounds == null) return;
        Emulated.recordSounds(null);
        Emulated.setSoundSpeed(1);
        sounds = null;
    }

    // The screen

    /**
     * The width of the screen.
     *
     * @return pixels, as the screen is turned now
     */
    public int screenWidth() {
        return Emulated.screenSize()[0];
    }

    /**
     * The height of the screen.
     *
     * @return pixels, as the screen is turned now
     */
    public int screenHeight() {
        return Emulated.screenSize()[1];
    }

    /**
     * How fine the screen is.
     *
     * @return dots per inch
     */
    public int dotsPerInch() {
        return Emulated.screenSize()[2];
    }

    /**
     * Fails unless the device has a screen of that size.
     *
     * @param width pixels
     * @param height pixels
     */
    public void mustHaveScreen(int width, int height) {
        if (screenWidth() == width && screenHeight() == height) return;
        String wanted = width + "x" + height;
        throw new TestFailure(
                String.format(
                        Locale.ROOT,
                        "this wants a screen of %s, and the device has one of %dx%d: run it with --screen %s",
                        wanted,
                        screenWidth(),
                        screenHeight(),
                        wanted));
    }

    /**
     * What is on the screen once the device is idle.
     *
     * @return the picture of the whole screen
     */
    public Picture screenshot() {
        awaitIdle();
        return currentPicture();
    }

    /**
     * Fails unless the screen is like a kept picture, in every pixel.
     *
     * @param kept the picture's file; {@link Comparison} tells what becomes of one that is not there
     */
    public void mustLookLike(String kept) {
        mustLookLike(kept, new Comparison());
    }

    /**
     * Fails unless the screen is like a kept picture.
     *
     * @param kept the picture's file
     * @param comparison how alike it must be
     */
    public void mustLookLike(String kept, Comparison comparison) {
        comparison.mustBeLike(screenshot(), Paths.get(kept));
    }

    /**
     * Records the screen from now on, after each deed, until the next recording.
     *
     * @return the recording, which is to be saved
     */
    public Recording record() {
        recording = new Recording();
        recording.add(screenshot());
        return recording;
    }

    private void settle() {
        awaitIdle();
        if (recording != null) recording.add(currentPicture());
    }

    Picture currentPicture() {
        while (true) {
            int[] screen = Emulated.screenSize();
            int[] pixels = new int[screen[0] * screen[1]];
            if (Emulated.copyScreen(pixels)) return new Picture(screen[0], screen[1], pixels);
        }
    }
}
