package com.nuvik.examples;

import com.nuvik.wyx.dovr.OS;
import java.util.ArrayList;
import java.util.List;

/** A window in front of another one, with a question and a button for each answer. */
final class Question {
    /** The person has closed the window. */
    static final int UNANSWERED = -1;

    private static final int CLOSE_BOX_TITLE_MODAL_BORDER = 0x1 | 0x20 | 0x40 | 0x800;
    private static final int CENTERED = 2;
    private static final int PRESSED = 1;
    private static final int TAB = 1001;
    private static final int LEFT = 10;
    private static final int TOP = 100;
    private static final int WIDTH = 220;
    private static final int HEIGHT = 90;
    private static final int MARGIN = 6;
    private static final int LINE = 20;

    private final Program program;
    private final int font;
    private final int shell;
    private final int label;
    private final List<Integer> buttons = new ArrayList<>();
    private int answer = UNANSWERED;
    private boolean isOpen = true;

    private Question(Program program, int owner, int font, String title) {
        this.program = program;
        this.font = font;
        shell = OS.Shell_NewChild(owner, CLOSE_BOX_TITLE_MODAL_BORDER);
        label = OS.Label_New(shell, CENTERED);
        com.nuvik.wyx.k4tr.OS.Shell_SetText(shell, title);
        com.nuvik.wyx.k4tr.OS.Widget_SetData(
                shell,
                new Program.Listener() {
                    @Override
                    void window(int event) {
                        if (event == Program.CLOSE_REQUESTED) isOpen = false;
                    }
                });
    }

    /**
     * Asks and waits for the answer; tells the question on standard output.
     *
     * @return the number of the answer, from 0, or {@link #UNANSWERED}
     */
    static int ask(
            Program program, int owner, int font, String title, String text, String... answers) {
        Question question = new Question(program, owner, font, title);
        question.addText(text);
        for (int i = 0; i < answers.length; i++) question.addButton(answers[i], i, answers.length);
        System.out.println(text);
        question.run();
        return question.answer;
    }

    private void addText(String text) {
        OS.Label_SetText(label, text);
        place(label, MARGIN, MARGIN, WIDTH - 4 * MARGIN);
    }

    private void addButton(String text, int number, int count) {
        int button = OS.PushButton_New(shell, 0);
        OS.Button_SetLabel(button, text);
        com.nuvik.wyx.k4tr.OS.Widget_SetData(
                button,
                new Program.Listener() {
                    @Override
                    void selected() {
                        answer = number;
                        isOpen = false;
                    }

                    @Override
                    boolean key(int kind, char character, int keyCode, int modifiers) {
                        if (kind != PRESSED || keyCode != TAB) return false;
                        int next = buttons.get((number + 1) % buttons.size());
                        return OS.Control_ForceFocus(next);
                    }
                });
        int step = (WIDTH - 3 * MARGIN) / count;
        place(button, MARGIN + number * step, 2 * MARGIN + LINE, step - MARGIN);
        buttons.add(button);
    }

    private void place(int control, int x, int y, int width) {
        OS.Control_SetFont(control, font);
        Program.place(control, x, y, width, LINE);
    }

    private void run() {
        Program.place(shell, LEFT, TOP, WIDTH, HEIGHT);
        OS.Control_ForceFocus(buttons.get(0));
        while (isOpen) program.dispatch();
        com.nuvik.wyx.k4tr.OS.Control_SetVisible(shell, false);
        for (int button : buttons) program.dispose(button);
        program.dispose(label);
        program.dispose(shell);
    }
}
