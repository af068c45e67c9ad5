package com.nuvik.testing.tests;

import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertThrows;
import static org.junit.Assert.assertTrue;

import com.nuvik.examples.Form;
import com.nuvik.examples.Menus;
import com.nuvik.testing.Device;
import com.nuvik.testing.DeviceRule;
import com.nuvik.testing.Script;
import com.nuvik.testing.TestFailure;
import java.io.IOException;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.LinkedHashMap;
import java.util.List;
import java.util.Map;
import java.util.TreeSet;
import org.junit.Before;
import org.junit.Rule;
import org.junit.Test;
import org.junit.rules.TemporaryFolder;

/** Each word of scripts: what it does, and what is told when that cannot be. */
public class ScriptTest {
    @Rule public final TemporaryFolder folder = new TemporaryFolder();
    @Rule public final DeviceRule rule = new DeviceRule();
    private final Device device = rule.device;
    private final Map<String, Row> rows = new LinkedHashMap<>();

    /** Lines that are played one after the other, and one after them that cannot be. */
    private static final class Row {
        final Class<?> application;
        final String[] lines;
        String wrong;
        String failure;

        Row(Class<?> application, String... lines) {
            this.application = application;
            this.lines = lines;
        }

        void fails(String line, String told) {
            wrong = line;
            failure = told;
        }
    }

    private Row row(String word, Class<?> application, String... lines) {
        Row row = new Row(application, lines);
        rows.put(word, row);
        return row;
    }

    private static final String NEVER = "it is not so, and within 20.0 seconds nothing is due any more: ";

    @Before
    public void make_the_table() throws IOException {
        Path kept = folder.getRoot().toPath().resolve("kept.png");
        row("tap", Parts.class, "tap check box \"Box\"", "expect check box \"Box\" checked", "tap 115,70",
                        "expect check box \"Box\" not checked", "pass 5 s", "tap check box \"Box\" at 5%,50%",
                        "expect check box \"Box\" checked")
                .fails("tap button \"off\"", "the button \"off\" cannot be tapped: it is disabled");
        row("tap and hold", Later.class, "tap and hold composite 1", "expect label \"held\"", "tap button \"seconds\"",
                        "tap and hold 20,150", "expect label \"held\"", "tap button \"seconds\"",
                        "tap and hold composite 1 at 5,5", "expect label \"held\"")
                .fails("tap and hold 999,1", "999,1 is not on the screen of ");
        row("double tap", Later.class, "double tap composite 1", "expect label \"tapped twice\"")
                .fails("double tap button \"none\"", "there is no button \"none\"");
        row("drag", Later.class, "drag 20,130 to 50,135", "expect label \"dragged 30,5\"")
                .fails("drag 20,130 50,135", "\"to\" is missing at 50,135");
        row("type", Parts.class, "enter \"\" into text 1", "type \"one\"", "type \" two\" into text 1",
                        "expect text 1 shows \"one two\"")
                .fails("type \"x\" into button \"off\"", "the button \"off\" takes no text");
        row("enter", Parts.class, "enter \"one\" into text labelled \"Name\"", "expect text 1 shows \"one\"")
                .fails("enter \"x\" in text 1", "\"into\" is missing at in");
        row("press", Parts.class, "enter \"one\" into text 1", "press shift+home", "press delete",
                        "expect text 1 shows \"\"")
                .fails("press ctrl+entr", "there is no key \"ctrl+entr\"; keys are ");
        row("choose", Parts.class, "choose \"green\" in choice", "expect choice 1 shows \"green\"",
                        "choose \"row 29\" in list", "expect item \"row 29\" selected")
                .fails("choose \"pink\" in choice", "the choice \"green\" has no item \"pink\"; it has: red, green, blue");
        row("menu", Menus.class, "menu \"View\" \"Text size\" \"Large\"", "menu \"View\" \"Text size\"",
                        "expect menu item \"Large\" checked")
                .fails("menu \"Nothing\"", "there is no menu item \"Nothing\"");
        row("file", Form.class, "enter \"Mill\" into text labelled \"Site\"", "press ctrl+s", "file \"words\"",
                        "wait for label \"Saved \\\\My Documents\\\\words.txt\"")
                .fails("file \"words\"", NEVER + "file dialog is shown");
        row("cancel file", Form.class, "press ctrl+o", "cancel file", "expect no file dialog")
                .fails("cancel file", NEVER + "file dialog is shown");
        row("wait for", Later.class, "tap button \"seconds\"", "wait for label \"done\"")
                .fails("wait for label \"more\"", NEVER + "label \"more\" is shown");
        row("wait for end", Exits.class, "tap button \"well\"", "wait for end")
                .fails("wait for end now", "nothing more is expected at now");
        row("wait until said", Menus.class, "press f1", "wait until said \"coloured\"")
                .fails("wait until said \"coloured\" 2", "\"times\" is missing at the line's end");
        row("wait until idle", Parts.class, "wait until idle")
                .fails("wait until idle now", "nothing more is expected at now");
        row("wait until gone", Menus.class, "menu \"File\" \"About...\"", "wait for shell \"About\"", "close",
                        "wait until gone shell \"About\"")
                .fails("wait until gone shell \"Menus\"", NEVER + "shell \"Menus\" is gone");
        row("stop clock", Later.class, "run clock", "stop clock", "pass 1 s")
                .fails("stop clock now", "nothing more is expected at now");
        row("run clock", Later.class, "tap button \"seconds\"", "pass 4 s", "run clock", "wait for label \"done\"")
                .fails("run clock", "the clock runs: stopClock comes first");
        row("pass", Later.class, "tap button \"minutes\"", "pass 9 min", "pass 59 s", "pass 999 ms",
                        "expect label \"waiting\"", "pass 1 ms", "expect label \"done\"")
                .fails("pass 10 hours", "ms, s or min is missing at hours");
        row("expect", Parts.class, "expect button \"off\"", "expect \"Name\"", "expect button 2")
                .fails("expect button \"hidden\"", "the button \"hidden\" is not as expected: shown");
        row("expect no", Parts.class, "expect no button \"none\"")
                .fails("expect no button \"off\"", "there is a button \"off\"");
        row("expect exit code", Exits.class, "tap button \"badly\"", "expect exit code 3")
                .fails("expect exit code 4", "the exit code is 3 and not 4");
        row("expect shows", Parts.class, "expect text 1 shows \"first\"")
                .fails("expect text 1 shows \"second\"", "the text \"first\" shows \"first\" and not \"second\"");
        row("expect checked", Parts.class, "expect check box \"Box\" not checked")
                .fails("expect check box \"Box\" checked", "the check box \"Box\" is not as expected: checked");
        row("expect enabled", Parts.class, "expect button \"off\" not enabled", "expect button \"ask\" enabled")
                .fails("expect button \"off\" enabled", "the button \"off\" is not as expected: enabled");
        row("expect focused", Parts.class, "tap text 1", "expect text 1 focused", "expect button \"ask\" not focused")
                .fails("expect text 1 not focused", "the text \"first\" is not as expected: not focused");
        row("expect selected", Parts.class, "tap item \"row 2\"", "expect item \"row 2\" selected",
                        "expect item \"row 1\" not selected")
                .fails("expect item \"row 1\" selected", "the item \"row 1\" is not as expected: selected");
        row("screenshot", Parts.class, "screenshot \"" + kept + "\"", "compare \"" + kept + "\"")
                .fails("screenshot \"a\" \"b\"", "nothing more is expected at b");
        row("compare", Parts.class, "screenshot \"" + kept + "\"", "compare \"" + kept + "\"",
                        "tap check box \"Box\"")
                .fails("compare \"" + kept + "\"", "the picture is not like " + kept + ": ");
        row("close", Exits.class, "close", "expect exit code 0")
                .fails("close now", "nothing more is expected at now");
        row("tree", Parts.class, "tree", "wait until said \"  button \\\"away\\\", outside the screen\"")
                .fails("tree now", "nothing more is expected at now");
    }

    @Test
    public void each_word_is_in_the_table() {
        assertEquals(new TreeSet<>(Script.words()), new TreeSet<>(rows.keySet()));
    }

    @Test
    public void each_word_does_what_it_says_or_tells_why_not() {
        List<String> wrong = new ArrayList<>();
        for (Map.Entry<String, Row> entry : rows.entrySet()) {
            try {
                play(entry.getValue());
            } catch (Throwable failed) {
                wrong.add(entry.getKey() + ": " + failed.getMessage() + "\n" + device.treeText());
            }
            try {
                device.stop();
            } catch (TestFailure notWell) {
                wrong.add(entry.getKey() + ": " + notWell.getMessage());
            }
        }
        assertEquals("", String.join("\n", wrong));
    }

    private void play(Row row) {
        device.stopClock();
        device.start(row.application);
        Script script = new Script(device);
        for (String line : row.lines) script.play(line);
        String told = assertThrows(row.wrong, Throwable.class, () -> script.play(row.wrong)).getMessage();
        assertTrue(row.wrong + ": " + told, told.startsWith(row.failure));
    }
}
