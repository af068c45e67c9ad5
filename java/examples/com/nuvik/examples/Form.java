package com.nuvik.examples;

import com.nuvik.wyx.dovr.OS;
import java.io.IOException;
import java.util.ArrayDeque;
import java.util.ArrayList;
import java.util.Deque;
import java.util.List;

/**
 * An inspection form: a person fills it in with pointer and keyboard, saves it to a file and opens it
 * again. It tells on standard output what the person does.
 */
public final class Form {
    private static final int PRESSED = 1;
    private static final int ENTER = 1002;
    private static final int CONTROL = 4 << 16;
    private static final int BORDER = 0x800;
    private static final int VERTICAL_SCROLL = 0x20000;
    private static final int MULTIPLE = 0x800000;
    private static final int WRAP = 0x100;
    private static final int CENTERED = 2;
    private static final int SAVES = 0x2000;
    private static final int SANS_SERIF = 2;
    private static final int BOLD = 2;

    private static final int MARGIN = 6;
    private static final int FIELDS = 70; // where the fields stand, right of their labels
    private static final int LINE = 20;
    private static final int BUTTON_WIDTH = 62;
    private static final int STATUS_HEIGHT = 20;

    private static final String[] KINDS = {"Workshop", "Warehouse", "Office", "Kitchen"};
    private static final String[] CONDITIONS = {"Good", "Fair", "Poor"};
    private static final String DOCUMENTS = "\\My Documents";
    private static final String EXTENSION = ".txt";

    private final Program program = new Program();
    private final int shell = program.newMainShell("Inspection");
    private final int font = OS.Font_NewLogical(program.display, SANS_SERIF, 10, 0);
    private final int boldFont = OS.Font_NewLogical(program.display, SANS_SERIF, 10, BOLD);
    private final int blue = com.nuvik.wyx.k4tr.OS.Color_New(program.display, 0, 0, 128);
    private final int red = com.nuvik.wyx.k4tr.OS.Color_New(program.display, 192, 0, 0);
    private final int yellow = com.nuvik.wyx.k4tr.OS.Color_New(program.display, 255, 240, 150);
    private final Deque<Integer> menus = new ArrayDeque<>();
    private final Page page = new Page(program, shell);
    private final int status = OS.Label_New(shell, CENTERED);

    private int site;
    private int inspector;
    private int kind;
    private final int[] conditions = new int[CONDITIONS.length];
    private int condition;
    private int urgentBox;
    private boolean urgent;
    private int finding;
    private int findings;
    private final List<String> findingTexts = new ArrayList<>();
    private int removeButton;
    private int notes;
    private Report kept; // as it was opened, saved or begun
    private String keptPath; // null before the form has a file

    /** Tells on standard output, for who plays the person. */
    private static void say(String what) {
        System.out.println(what);
    }

    /** Tells the person too. */
    private void tell(String what) {
        OS.Label_SetText(status, what);
        say(what);
    }

    // The fields

    /** A text that tells what was written when it is left. */
    private class TextField extends Page.Field {
        private final String name;
        private String told = "";

        TextField(String name) {
            page.super();
            this.name = name;
        }

        @Override
        void left() {
            String text = OS.AbstractTextComponent_GetText(control).replace("\r\n", " / ");
            if (!text.equals(told)) say(name + ": " + text);
            told = text;
        }
    }

    /** A button of any kind. */
    private class ButtonField extends Page.Field {
        private final Runnable action;

        ButtonField(Runnable action) {
            page.super();
            this.action = action;
        }

        @Override
        void selected() {
            action.run();
        }
    }

    private void addLabel(String text, int y) {
        int label = OS.Label_New(page.sheet, CENTERED);
        OS.Label_SetText(label, text);
        page.add(label, font, MARGIN, y, FIELDS - MARGIN, LINE);
    }

    private void addHeading(String text, int y) {
        int label = OS.Label_New(page.sheet, CENTERED);
        OS.Label_SetText(label, text);
        OS.Control_SetForeground(label, blue);
        page.add(label, boldFont, MARGIN, y, page.width() - 2 * MARGIN, LINE);
    }

    private int addTextField(String name, int y) {
        int field = OS.TextField_New(page.sheet, BORDER);
        addLabel(name, y);
        page.add(new TextField(name), field, font, FIELDS, y, fieldWidth(), LINE);
        return field;
    }

    private int addButton(String text, int x, int y, Runnable action) {
        int button = OS.PushButton_New(page.sheet, 0);
        OS.Button_SetLabel(button, text);
        page.add(new ButtonField(action), button, font, x, y, BUTTON_WIDTH, LINE);
        return button;
    }

    private int fieldWidth() {
        return page.width() - FIELDS - MARGIN;
    }

    private void addKind(int y) {
        addLabel("Kind", y);
        kind = OS.Choice_New(page.sheet);
        for (String item : KINDS) OS.Choice_AddItem(kind, item, -1);
        Page.Field field =
                page.new Field() {
                    @Override
                    void choiceSelected(int index) {
                        say("Kind: " + KINDS[index]);
                    }
                };
        page.add(field, kind, font, FIELDS, y, fieldWidth(), LINE);
    }

    private void addConditions(int y) {
        addLabel("Condition", y);
        int width = fieldWidth() / CONDITIONS.length;
        for (int i = 0; i < CONDITIONS.length; i++) {
            int number = i;
            conditions[i] = OS.RadioButton_New(page.sheet, 0);
            OS.Button_SetLabel(conditions[i], CONDITIONS[i]);
            ButtonField field =
                    new ButtonField(
                            () -> {
                                setCondition(number);
                                say("Condition: " + CONDITIONS[number]);
                            });
            page.add(field, conditions[i], font, FIELDS + i * width, y, width, LINE);
        }
    }

    /** A radio button turns itself over and knows nothing of the others. */
    private void setCondition(int number) {
        condition = number;
        for (int i = 0; i < CONDITIONS.length; i++) OS.Button_SetSelection(conditions[i], i == number);
    }

    private void addUrgent(int y) {
        urgentBox = OS.Checkbox_New(page.sheet, 0);
        OS.Button_SetLabel(urgentBox, "Needs work at once");
        ButtonField field =
                new ButtonField(
                        () -> {
                            setUrgent(!urgent);
                            say("Urgent: " + (urgent ? "yes" : "no"));
                        });
        page.add(field, urgentBox, font, FIELDS, y, fieldWidth(), LINE);
    }

    private void setUrgent(boolean isUrgent) {
        urgent = isUrgent;
        OS.Button_SetSelection(urgentBox, urgent);
        OS.Control_SetForeground(urgentBox, urgent ? red : 0);
    }

    private void addFindings(int y) {
        addHeading("Findings", y);
        int right = page.width() - MARGIN - BUTTON_WIDTH;
        int width = right - 2 * MARGIN;
        finding = OS.TextField_New(page.sheet, BORDER);
        Page.Field field =
                page.new Field() {
                    @Override
                    boolean key(int action, char character, int keyCode, int modifiers) {
                        boolean isEnter = action == PRESSED && keyCode == ENTER;
                        if (isEnter) addFinding();
                        return isEnter || super.key(action, character, keyCode, modifiers);
                    }
                };
        page.add(field, finding, font, MARGIN, y + LINE, width, LINE);
        addButton("Add", right, y + LINE, this::addFinding);

        findings = OS.List_New(page.sheet, BORDER | VERTICAL_SCROLL | MULTIPLE);
        Page.Field list =
                page.new Field() {
                    @Override
                    void listSelected(int index, int event) {
                        int count = OS.List_GetSelectionCount(findings);
                        OS.Control_SetEnabled(removeButton, count > 0);
                        say("selected " + count);
                    }
                };
        int top = y + 2 * LINE + MARGIN;
        page.add(list, findings, font, MARGIN, top, width, 3 * LINE);
        removeButton = addButton("Remove", right, top, this::removeFindings);
        OS.Control_SetEnabled(removeButton, false);
    }

    private void addFinding() {
        String text = OS.AbstractTextComponent_GetText(finding).trim();
        OS.Control_ForceFocus(finding);
        if (text.isEmpty()) return;
        listFinding(text);
        OS.AbstractTextComponent_SetText(finding, "");
        say("added " + text);
    }

    private void listFinding(String text) {
        OS.List_Add(findings, text, -1);
        findingTexts.add(text);
    }

    /** From the last to the first, so that the indices of those still to go stay what they are. */
    private void removeFindings() {
        int[] selected = OS.List_GetSelectionIndices(findings);
        for (int i = selected.length - 1; i >= 0; i--) {
            OS.List_Remove(findings, selected[i]);
            findingTexts.remove(selected[i]);
        }
        OS.Control_ForceFocus(findings); // before the button loses it
        OS.Control_SetEnabled(removeButton, false);
        say("removed " + selected.length);
    }

    private void addNotes(int y) {
        addHeading("Notes", y);
        notes = OS.TextArea_New(page.sheet, BORDER | VERTICAL_SCROLL | WRAP);
        int width = page.width() - 2 * MARGIN;
        page.add(new TextField("Notes"), notes, font, MARGIN, y + LINE, width, 5 * LINE);
    }

    private void makeFields() {
        site = addTextField("Site", 6);
        inspector = addTextField("Inspector", 32);
        addKind(58);
        addConditions(86);
        addUrgent(108);
        addFindings(134);
        addNotes(250);
    }

    // The report

    private Report read() {
        Report report = new Report();
        report.site = OS.AbstractTextComponent_GetText(site);
        report.inspector = OS.AbstractTextComponent_GetText(inspector);
        report.kind = OS.Choice_GetSelectedItemIndex(kind);
        report.condition = condition;
        report.urgent = urgent;
        report.findings.addAll(findingTexts);
        report.notes = OS.AbstractTextComponent_GetText(notes);
        return report;
    }

    private void show(Report report) {
        OS.AbstractTextComponent_SetText(site, report.site);
        OS.AbstractTextComponent_SetText(inspector, report.inspector);
        OS.Choice_SelectItem(kind, report.kind);
        setCondition(report.condition);
        setUrgent(report.urgent);
        OS.AbstractTextComponent_SetText(finding, "");
        OS.List_RemoveAll(findings);
        findingTexts.clear();
        for (String text : report.findings) listFinding(text);
        OS.Control_SetEnabled(removeButton, false);
        OS.AbstractTextComponent_SetText(notes, report.notes);
        OS.Control_SetBackground(site, 0);
        OS.Control_ForceFocus(site);
        page.scrollTo(0);
    }

    private void showKept(Report report, String path) {
        show(report);
        kept = read();
        keptPath = path;
    }

    private void startNew() {
        showKept(new Report(), null);
        tell("New form");
    }

    /** Does what takes the form away, unless the person wants to keep what is not saved. */
    private void unlessLosing(Runnable action) {
        boolean mayGo = read().isSameAs(kept);
        if (!mayGo) {
            int answer = askPerson("Save the form first?", "Save", "Discard", "Go back");
            mayGo = answer == 0 ? save() : answer == 1;
        }
        if (mayGo) action.run();
    }

    private int askPerson(String text, String... answers) {
        return Question.ask(program, shell, font, "Question", text, answers);
    }

    /** Asks for a file; null when the person does not want one after all. */
    private static String ask(int owner, int style, String title, String name) {
        int dialog = OS.FileDialog_New(owner, style);
        OS.FileDialog_SetTitle(dialog, title);
        OS.FileDialog_SetFilterPath(dialog, DOCUMENTS);
        OS.FileDialog_SetFileName(dialog, name);
        say(title);
        boolean chosen = OS.FileDialog_Open(dialog);
        String folder = OS.FileDialog_GetFilterPath(dialog);
        String[] names = OS.FileDialog_GetFileNames(dialog);
        com.nuvik.wyx.k4tr.OS.Widget_Dispose(dialog);
        return chosen ? folder + names[0] : null;
    }

    /** Tells whether the form is in a file now. */
    private boolean save() {
        Report report = read();
        if (report.site.isEmpty()) {
            OS.Control_SetBackground(site, yellow);
            OS.Control_ForceFocus(site);
            tell("The site is missing");
            return false;
        }
        OS.Control_SetBackground(site, 0);
        String path = ask(shell, SAVES, "Save the form", report.site.replaceAll("\\W+", " ").trim());
        if (path == null) return false;
        if (path.indexOf('.', path.lastIndexOf('\\')) < 0) path += EXTENSION;
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
        String path = ask(shell, 0, "Open a form", null);
        if (path == null) return;
        try {
            showKept(Report.open(path, KINDS.length, CONDITIONS.length), path);
            tell("Opened " + path);
        } catch (IOException error) {
            tell("Not opened: " + error.getMessage());
        }
    }

    // The menus

    /** The text that the person is at; the notes when it is none. */
    private int currentText() {
        int current = page.currentControl();
        return current == site || current == inspector || current == finding ? current : notes;
    }

    /** What is selected, or else the whole text. */
    private void copy() {
        int text = currentText();
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
        int[] range = OS.AbstractTextComponent_GetSelection(currentText());
        OS.AbstractTextComponent_Replace(currentText(), pasted, range[0], range[1]);
        tell("Pasted");
    }

    private int keep(int menuOrItem) {
        menus.push(menuOrItem);
        return menuOrItem;
    }

    private void addItem(int menu, int index, String text, char key, Runnable action) {
        int item = keep(OS.PushMenuItem_New(menu, index));
        OS.LabeledMenuItem_SetText(item, text, "Ctrl+" + key);
        OS.LabeledMenuItem_SetAccelerator(item, CONTROL | Character.toLowerCase(key));
        com.nuvik.wyx.k4tr.OS.Widget_SetData(
                item,
                new Program.Listener() {
                    @Override
                    void menu(int code) {
                        action.run();
                    }
                });
    }

    private int addMenu(int bar, int index, String text) {
        int menu = keep(OS.DropDownMenu_New(shell));
        int item = keep(OS.CascadeMenuItem_New(bar, index));
        OS.LabeledMenuItem_SetText(item, text, null);
        OS.CascadeMenuItem_SetMenu(item, menu);
        return menu;
    }

    private void makeMenuBar() {
        int bar = keep(OS.MenuBar_New(shell));
        int file = addMenu(bar, 0, "File");
        addItem(file, 0, "New", 'N', () -> unlessLosing(this::startNew));
        addItem(file, 1, "Open...", 'O', () -> unlessLosing(this::open));
        addItem(file, 2, "Save...", 'S', this::save);
        keep(OS.SeparatorItem_New(file, 3));
        addItem(file, 4, "Exit", 'Q', () -> unlessLosing(program::leave));
        int edit = addMenu(bar, 1, "Edit");
        addItem(edit, 0, "Copy", 'C', this::copy);
        addItem(edit, 1, "Paste", 'V', this::paste);
        OS.Shell_SetMenuBar(shell, bar);
    }

    // The window

    /** The shell loses height while the device's input panel shows. */
    private void placeParts() {
        int[] area = com.nuvik.wyx.k4tr.OS.Control_GetBounds(shell);
        int top = Program.unscaled(area[3]) - STATUS_HEIGHT;
        page.show(top);
        Program.place(status, 0, top, Program.unscaled(area[2]), STATUS_HEIGHT);
    }

    private void run() {
        makeFields();
        OS.Control_SetFont(status, font);
        OS.Control_SetBackground(status, yellow);
        makeMenuBar();
        placeParts();
        com.nuvik.wyx.k4tr.OS.Widget_SetData(
                shell,
                new Program.Listener() {
                    @Override
                    void window(int event) {
                        if (event == Program.CLOSE_REQUESTED) unlessLosing(program::leave);
                    }

                    @Override
                    void resized(int width, int height) {
                        placeParts();
                    }
                });
        com.nuvik.wyx.k4tr.OS.Control_SetVisible(shell, true);
        startNew();
        say("ready");
        program.run();
        dispose();
        say("closed");
    }

    private void dispose() {
        OS.Shell_SetMenuBar(shell, 0);
        while (!menus.isEmpty()) program.dispose(menus.pop());
        page.dispose();
        program.dispose(status);
        program.dispose(shell);
        for (int color : new int[] {blue, red, yellow}) com.nuvik.wyx.k4tr.OS.Color_Dispose(color);
        for (int each : new int[] {font, boldFont}) com.nuvik.wyx.k4tr.OS.Font_Dispose(each);
        program.end();
    }

    public static void main(String[] arguments) {
        new Form().run();
    }
}
