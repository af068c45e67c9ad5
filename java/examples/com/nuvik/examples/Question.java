package com.nuvik.examples;

import static com.nuvik.wyx.k4tr.OS.Control_SetVisible;
import static com.nuvik.wyx.k4tr.OS.Shell_SetText;
import static com.nuvik.wyx.k4tr.OS.Widget_SetData;

import com.nuvik.program.Listener;
import com.nuvik.program.Program;
import com.nuvik.wyx.Key;
import com.nuvik.wyx.KeyKind;
import com.nuvik.wyx.Style;
import com.nuvik.wyx.WindowEvent;
import com.nuvik.wyx.dovr.OS;
import java.util.ArrayList;
import java.util.List;

/** A window in front of another one, with a question and a button for each answer. */
final class Question {
    /** The person has closed the window. */
    static final int UNANSWERED = -1;

    private static final int STYLE =
            Style.CLOSE_BOX | Style.TITLE | Style.MODAL | Style.BORDER;
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
    private final List<AnswerButton> buttons = new ArrayList<>();
    private int answer = UNANSWERED;
    private boolean isOpen = true;

    private Question(Program program, int owner, int font, String title) {
        this.program = program;
        this.font = font;
        shell = OS.Shell_NewChild(owner, STYLE);
        label = OS.Label_New(shell, Style.CENTERED_LINE);
        Shell_SetText(shell, title);
    }

    /**
     * Asks and waits for the answer. Tells the question on standard output when it can be answered.
     *
     * @return the number of the answer, from 0, or {@link #UNANSWERED}
     */
    static int ask(
            Program program, int owner, int font, String title, String text, String... answers) {
        Question question = new Question(program, owner, font, title);
        question.addText(text);
        for (String each : answers) question.addButton(each, answers.length);
        question.open();
        System.out.println(text);
        question.run();
        return question.answer;
    }

    private void addText(String text) {
        OS.Label_SetText(label, text);
        place(label, MARGIN, MARGIN, WIDTH - 4 * MARGIN);
    }

    /** The listener of a button, which is an answer. */
    private final class AnswerButton extends Listener {
        final int control = OS.PushButton_New(shell, 0);
        private final int number = buttons.size();

        @Override
        public void selected() {
            answer = number;
            isOpen = false;
        }

        @Override
        public boolean key(int kind, char character, int keyCode, int modifiers) {
            if (kind != KeyKind.PRESSED || keyCode != Key.TAB) return false;
            int next = (number + 1) % buttons.size();
            return OS.Control_ForceFocus(buttons.get(next).control);
        }
    }

    private void addButton(String text, int count) {
        AnswerButton button = new AnswerButton();
        OS.Button_SetLabel(button.control, text);
        Widget_SetData(button.control, button);
        int step = (WIDTH - 3 * MARGIN) / count;
        place(button.control, MARGIN + button.number * step, 2 * MARGIN + LINE, step - MARGIN);
        buttons.add(button);
    }

    private void place(int control, int x, int y, int width) {
        OS.Control_SetFont(control, font);
        program.screen.place(control, x, y, width, LINE);
    }

    private void open() {
        Listener listener =
                new Listener() {
                    @Override
                    public void window(int event) {
                        if (event == WindowEvent.CLOSE_REQUESTED) isOpen = false;
                    }
                };
        Widget_SetData(shell, listener);
        program.screen.move(shell, LEFT, TOP, WIDTH, HEIGHT);
        program.show(shell, listener);
        program.focus(buttons.get(0).control, buttons.get(0));
    }

    private void run() {
        while (isOpen) program.dispatch();
        Control_SetVisible(shell, false);
        for (AnswerButton button : buttons) program.dispose(button.control);
        program.dispose(label);
        program.dispose(shell);
    }
}
