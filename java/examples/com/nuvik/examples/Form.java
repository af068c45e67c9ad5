package com.nuvik.examples;

import static com.nuvik.wyx.k4tr.OS.Color_Dispose;
import static com.nuvik.wyx.k4tr.OS.Color_New;
import static com.nuvik.wyx.k4tr.OS.Control_GetBounds;
import static com.nuvik.wyx.k4tr.OS.Font_Dispose;

import com.nuvik.program.Listener;
import com.nuvik.program.Program;
import com.nuvik.wyx.FontFamily;
import com.nuvik.wyx.FontStyle;
import com.nuvik.wyx.Style;
import com.nuvik.wyx.WindowEvent;
import com.nuvik.wyx.dovr.OS;
import java.io.IOException;

/**
 * An inspection form: a person fills it in with pointer and keyboard, saves it to a file and opens it
 * again. It tells on standard output what the person does.
 */
public final class Form {
    private static final int STATUS_HEIGHT = 20;

    private final Program program = new Program();
    private final Window window = new Window();
    private final int shell = program.newMainShell("Inspection", window);
    private final int font =
            OS.Font_NewLogical(program.display, FontFamily.SANS_SERIF, 10, FontStyle.PLAIN);
    private final int yellow =
            Color_New(program.display, 255, 240, 150);
    private final FormFields fields = new FormFields(program, shell, font, yellow);
    private final FormMenus menus = new FormMenus(program, shell);
    private final int status = OS.Label_New(shell, Style.CENTERED_LINE);
    private Report kept; // as it was opened, saved or begun
    private String keptPath; // null before the form has a file

    /** The listener of the shell. */
    private final class Window extends Listener {
        @Override
        public void window(int event) {
            if (event == WindowEvent.CLOSE_REQUESTED) unlessLosing(program::leave);
        }

        @Override
        public void resized(int width, int height) {
            placeParts();
        }
    }

    /** Tells on standard output, for who plays the person. */
    static void say(String what) {
        System.out.println(what);
    }

    /** Tells the person too. */
    private void tell(String what) {
        OS.Label_SetText(status, what);
        say(what);
    }

    // The report

    private void showKept(Report report, String path) {
        fields.show(report);
        kept = fields.read();
        keptPath = path;
    }

    private void startNew() {
        showKept(new Report(), null);
        tell("New form");
    }

    /** Does what takes the form away, unless the person wants to keep what is not saved. */
    private void unlessLosing(Runnable action) {
        boolean mayGo = fields.read().isSameAs(kept);
        if (!mayGo) {
            int answer = askPerson("Save the form first?", "Save", "Discard", "Go back");
            mayGo = answer == 0 ? save() : answer == 1;
        }
        if (mayGo) action.run();
    }

    private int askPerson(String text, String... answers) {
        int answer = Question.ask(program, shell, font, "Question", text, answers);
        program.awaitActive(window);
        return answer;
    }

    private String askForFile(int style, String title, String name) {
        say(title);
        String path = FileQuestion.ask(shell, style, title, name);
        program.awaitActive(window);
        return path;
    }

    /** Tells whether the form is in a file now. */
    private boolean save() {
        Report report = fields.read();
        if (report.site.isEmpty()) {
            fields.askForSite();
            tell("The site is missing");
            return false;
        }
        fields.siteIsThere();
        String path = askForFile(Style.SAVE, "Save the form", report.fileName());
        if (path == null) return false;
        path = Report.withExtension(path);
        boolean isOther = Report.exists(path) && !path.equalsIgnoreCase(keptPath);
        if (isOther && askPerson("Replace the other form?", "Replace", "Go back") != 0) {
            tell("Not saved");
            return false;
        }
        try {
            report.save(path);
        } catch (IOException error) {
            tell("Not saved: " + error.getMessage());
            return false;
        }
        kept = report;
        keptPath = path;
        tell("Saved " + path);
        return true;
    }

    private void open() {
        String path = askForFile(0, "Open a form", null);
        if (path == null) return;
        try {
            showKept(Report.open(path, FormFields.KINDS.length, FormFields.CONDITIONS.length), path);
            tell("Opened " + path);
        } catch (IOException error) {
            tell("Not opened: " + error.getMessage());
        }
    }

    // The menus

    /** What is selected, or else the whole text. */
    private void copy() {
        int text = fields.currentText();
        String selected = OS.AbstractTextComponent_GetSelectionText(text);
        OS.Clipboard_SetText(
                selected.isEmpty() ? OS.AbstractTextComponent_GetText(text) : selected);
        tell("Copied");
    }

    private void paste() {
        String pasted = OS.Clipboard_GetText();
        if (pasted == null) {
            tell("The clipboard holds no text");
            return;
        }
        int text = fields.currentText();
        int[] range = OS.AbstractTextComponent_GetSelection(text);
        OS.AbstractTextComponent_Replace(text, pasted, range[0], range[1]);
        tell("Pasted");
    }

    private void makeMenus() {
        int file = menus.addMenu("File");
        menus.addItem(file, "New", 'N', () -> unlessLosing(this::startNew));
        menus.addItem(file, "Open...", 'O', () -> unlessLosing(this::open));
        menus.addItem(file, "Save...", 'S', this::save);
        menus.addSeparator(file);
        menus.addItem(file, "Exit", 'Q', () -> unlessLosing(program::leave));
        int edit = menus.addMenu("Edit");
        menus.addItem(edit, "Copy", 'C', this::copy);
        menus.addItem(edit, "Paste", 'V', this::paste);
        menus.show();
    }

    // The window

    /** The shell loses height while the device's input panel shows. */
    private void placeParts() {
        int[] area = Control_GetBounds(shell);
        int top = program.screen.unscaled(area[3]) - STATUS_HEIGHT;
        fields.place(top);
        program.screen.place(status, 0, top, program.screen.unscaled(area[2]), STATUS_HEIGHT);
    }

    private void run() {
        OS.Control_SetFont(status, font);
        OS.Control_SetBackground(status, yellow);
        makeMenus();
        placeParts();
        program.showMainShell();
        startNew();
        say("ready");
        program.run();
        dispose();
        say("closed");
    }

    private void dispose() {
        menus.dispose();
        fields.dispose();
        program.dispose(status);
        program.dispose(shell);
        Color_Dispose(yellow);
        Font_Dispose(font);
        program.end();
    }

    public static void main(String[] arguments) {
        new Form().run();
    }
}
