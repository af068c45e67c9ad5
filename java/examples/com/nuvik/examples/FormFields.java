package com.nuvik.examples;

import static com.nuvik.wyx.k4tr.OS.Color_Dispose;
import static com.nuvik.wyx.k4tr.OS.Color_New;
import static com.nuvik.wyx.k4tr.OS.Font_Dispose;

import com.nuvik.program.Program;
import com.nuvik.wyx.FontFamily;
import com.nuvik.wyx.FontStyle;
import com.nuvik.wyx.Style;
import com.nuvik.wyx.dovr.OS;

/** The fields of the inspection form, one below the other on a page. */
final class FormFields {
    static final String[] KINDS = {"Workshop", "Warehouse", "Office", "Kitchen"};
    static final String[] CONDITIONS = {"Good", "Fair", "Poor"};

    private static final int MARGIN = 6;
    private static final int FIELDS = 70; // where the fields stand, right of their labels
    private static final int LINE = 20;

    private final int font;
    private final int boldFont;
    private final int blue;
    private final int red;
    private final int yellow;
    private final Page page;
    private final int site;
    private final int inspector;
    private final int[] conditions = new int[CONDITIONS.length];
    private final Findings findings;
    private int kind;
    private int condition;
    private int urgentBox;
    private boolean urgent;
    private int notes;

    /** A text that tells what was written when it is left. */
    private final class TextField extends Page.Field {
        private final String name;
        private String told = "";

        TextField(String name) {
            page.super();
            this.name = name;
        }

        @Override
        void left() {
            String text = OS.AbstractTextComponent_GetText(control).replace("\r\n", " / ");
            if (!text.equals(told)) Form.say(name + ": " + text);
            told = text;
        }
    }

    FormFields(Program program, int shell, int font, int yellow) {
        this.font = font;
        this.yellow = yellow;
        boldFont =
                OS.Font_NewLogical(program.display, FontFamily.SANS_SERIF, 10, FontStyle.BOLD);
        blue = Color_New(program.display, 0, 0, 128);
        red = Color_New(program.display, 192, 0, 0);
        page = new Page(program, shell);
        site = addTextField("Site", 6);
        inspector = addTextField("Inspector", 32);
        addKind(58);
        addConditions(86);
        addUrgent(108);
        addHeading("Findings", 134);
        findings = new Findings(page, font, 134 + LINE);
        addNotes(250);
    }

    private void addLabel(String text, int y) {
        int label = OS.Label_New(page.sheet, Style.CENTERED_LINE);
        OS.Label_SetText(label, text);
        page.add(label, font, MARGIN, y, FIELDS - MARGIN, LINE);
    }

    private void addHeading(String text, int y) {
        int label = OS.Label_New(page.sheet, Style.CENTERED_LINE);
        OS.Label_SetText(label, text);
        OS.Control_SetForeground(label, blue);
        page.add(label, boldFont, MARGIN, y, page.width() - 2 * MARGIN, LINE);
    }

    private int addTextField(String name, int y) {
        int field = OS.TextField_New(page.sheet, Style.BORDER);
        addLabel(name, y);
        page.add(new TextField(name), field, font, FIELDS, y, fieldWidth(), LINE);
        return field;
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
                    public void choiceSelected(int index) {
                        Form.say("Kind: " + KINDS[index]);
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
            Page.Field field =
                    page.new ButtonField(
                            () -> {
                                setCondition(number);
                                Form.say("Condition: " + CONDITIONS[number]);
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
        Page.Field field =
                page.new ButtonField(
                        () -> {
                            setUrgent(!urgent);
                            Form.say("Urgent: " + (urgent ? "yes" : "no"));
                        });
        page.add(field, urgentBox, font, FIELDS, y, fieldWidth(), LINE);
    }

    private void setUrgent(boolean isUrgent) {
        urgent = isUrgent;
        OS.Button_SetSelection(urgentBox, urgent);
        OS.Control_SetForeground(urgentBox, urgent ? red : 0);
    }

    private void addNotes(int y) {
        addHeading("Notes", y);
        notes = OS.TextArea_New(page.sheet, Style.BORDER | Style.VERTICAL_SCROLL | Style.WRAP);
        int width = page.width() - 2 * MARGIN;
        page.add(new TextField("Notes"), notes, font, MARGIN, y + LINE, width, 5 * LINE);
    }

    Report read() {
        Report report = new Report();
        report.site = OS.AbstractTextComponent_GetText(site);
        report.inspector = OS.AbstractTextComponent_GetText(inspector);
        report.kind = OS.Choice_GetSelectedItemIndex(kind);
        report.condition = condition;
        report.urgent = urgent;
        report.findings.addAll(findings.texts());
        report.notes = OS.AbstractTextComponent_GetText(notes);
        return report;
    }

    void show(Report report) {
        OS.AbstractTextComponent_SetText(site, report.site);
        OS.AbstractTextComponent_SetText(inspector, report.inspector);
        OS.Choice_SelectItem(kind, report.kind);
        setCondition(report.condition);
        setUrgent(report.urgent);
        findings.show(report.findings);
        OS.AbstractTextComponent_SetText(notes, report.notes);
        siteIsThere();
        OS.Control_ForceFocus(site);
        page.scrollTo(0);
    }

    /** Shows the person that the site is missing. */
    void askForSite() {
        OS.Control_SetBackground(site, yellow);
        OS.Control_ForceFocus(site);
    }

    void siteIsThere() {
        OS.Control_SetBackground(site, 0);
    }

    /** The text that the person is at; the notes when it is none. */
    int currentText() {
        int current = page.currentControl();
        return current == site || current == inspector || findings.isEntry(current) ? current : notes;
    }

    void place(int visibleHeight) {
        page.show(visibleHeight);
    }

    void dispose() {
        page.dispose();
        Color_Dispose(blue);
        Color_Dispose(red);
        Font_Dispose(boldFont);
    }
}
