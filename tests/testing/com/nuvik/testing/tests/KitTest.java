package com.nuvik.testing.tests;

import static org.junit.Assert.assertArrayEquals;
import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertFalse;
import static org.junit.Assert.assertThrows;
import static org.junit.Assert.assertTrue;

import com.nuvik.testing.Control;
import com.nuvik.testing.Device;
import com.nuvik.testing.DeviceRule;
import com.nuvik.testing.Kind;
import com.nuvik.testing.TestFailure;
import java.util.Arrays;
import org.junit.Rule;
import org.junit.Test;
import org.junit.function.ThrowingRunnable;

/** What the kit finds, does and refuses. */
public class KitTest {
    @Rule public final DeviceRule rule = new DeviceRule(Parts.class);
    private final Device device = rule.device;

    private static String failureOf(ThrowingRunnable deed) {
        return assertThrows(TestFailure.class, deed).getMessage();
    }

    @Test
    public void the_tree_tells_each_part_by_its_kind() {
        String tree = device.treeText();
        for (String line :
                new String[] {
                    "shell \"Parts\" 0,\\d+ \\d+x\\d+, active.*",
                    "  text \"first\" .*",
                    "  label \"Name\" .*",
                    "  list .*",
                    "    item \"row 2\" .*",
                    "  choice .*",
                    "  check box \"Box\" .*",
                    "  button \"off\" .*, disabled",
                    "  button \"hidden\".*, hidden",
                    "  button \"away\", outside the screen",
                    "  composite .*",
                    "menu bar .*"
                }) {
            assertTrue(line + "\n" + tree, tree.matches("(?s)(.*\n)?" + line.replace(".*", "[^\n]*") + "\n.*"));
        }
    }

    @Test
    public void what_a_person_cannot_reach_cannot_be_tapped() {
        assertEquals(
                "the button \"off\" cannot be tapped: it is disabled",
                failureOf(() -> device.button("off").tap()));
        assertEquals(
                "the button \"hidden\" cannot be tapped: it is hidden",
                failureOf(() -> device.button("hidden").tap()));
        assertEquals(
                "the button \"covered\" cannot be tapped: the composite covers it",
                failureOf(() -> device.button("covered").tap()));
        assertEquals(
                "the button \"covered\" cannot be tapped: the composite covers it",
                failureOf(() -> device.button("covered").tapAndHoldAt(5, 5)));
        String away = failureOf(() -> device.button("away").tap());
        assertTrue(
                away,
                away.startsWith("the button \"away\" cannot be tapped: it lies outside what is shown, at "));
    }

    @Test
    public void a_modal_shell_keeps_the_others_out_of_reach() {
        device.button("ask").tap();
        device.await(Kind.SHELL, "Question");
        assertEquals(
                "the button \"later\" cannot be tapped: the shell \"Parts\" around it is disabled",
                failureOf(() -> device.button("later").tap()));
        assertFalse(device.button("later").isEnabled());
    }

    @Test
    public void what_is_not_there_is_told_with_what_is() {
        assertEquals(
                "there is no check box \"box\"; there is the check box \"Box\"",
                failureOf(() -> device.find(Kind.CHECK_BOX, "box")));
        assertEquals("there is no control \"nothing\"", failureOf(() -> device.find("nothing")));
        assertEquals(
                "there are 2 controls of this kind: button \"twin\"; find one by its number, or in what it "
                        + "lies in",
                failureOf(() -> device.button("twin")));
        assertEquals(
                "there is no text number 2; there are 1", failureOf(() -> device.find(Kind.TEXT, 2)));
        assertEquals(
                "the choice has no item \"pink\"; it has: red, green, blue",
                failureOf(() -> device.find(Kind.CHOICE, 1).choose("pink")));
        assertEquals(
                "no scroll bar stands behind or below the label \"Name\"",
                failureOf(() -> device.findLabelled(Kind.SCROLL_BAR, "Name")));
    }

    @Test
    public void a_text_is_typed_into_and_replaced() {
        Control name = device.findLabelled(Kind.TEXT, "Name");
        assertEquals("first", name.text());
        name.enter("Ada");
        name.type(" L.");
        assertEquals("Ada L.", name.text());
        assertTrue(name.isFocused());
        device.press("home");
        device.press("shift+end");
        assertArrayEquals(new int[] {0, 6}, name.selection());
        name.enter("");
        assertEquals("", name.text());
        name.type("Zo\u00EB");
        assertEquals("Zo\u00EB", name.text());
        assertEquals("the button \"off\" takes no text", failureOf(() -> device.button("off").type("x")));
    }

    @Test
    public void an_item_is_chosen_wherever_it_is() {
        Control list = device.find(Kind.LIST, 1);
        list.choose("row 2");
        assertEquals(Arrays.asList("row 2"), list.selectedItems());
        list.choose("row 29");
        assertEquals(Arrays.asList("row 29"), list.selectedItems());
        list.choose("row 1");
        assertEquals(Arrays.asList("row 1"), list.selectedItems());
        Control choice = device.find(Kind.CHOICE, 1);
        choice.choose("green");
        assertEquals("green", choice.text());
        assertEquals(Arrays.asList("green"), choice.selectedItems());
        assertEquals(Arrays.asList("red", "green", "blue"), choice.items());
    }

    @Test
    public void a_check_box_is_checked() {
        Control box = device.find(Kind.CHECK_BOX, "Box");
        assertFalse(box.isChecked());
        box.tap();
        assertTrue(box.isChecked());
    }

    @Test
    public void what_comes_later_is_waited_for() {
        device.button("later").tap();
        device.await(Kind.BUTTON, "done").tap();
        device.setPatience(4000);
        assertEquals(
                "it is not so after 4.0 seconds: button \"never\" is shown",
                failureOf(() -> device.await(Kind.BUTTON, "never")));
    }

    @Test
    public void an_application_that_is_stuck_is_told_with_its_stack() {
        Parts.isBusy = true;
        device.setPatience(4000);
        String failure = failureOf(() -> device.button("busy").tap());
        Parts.isBusy = false;
        assertTrue(failure, failure.startsWith("Parts has been busy for 4.0 seconds; its main thread is here:\n"));
        assertTrue(failure, failure.contains("Parts.beBusy"));
        device.setPatience(20_000);
        device.awaitIdle();
    }

    @Test
    public void what_an_application_throws_fails_the_test() {
        ThrowingRunnable deed =
                () -> {
                    device.button("fail").tap();
                    device.awaitEnd();
                };
        TestFailure failure = assertThrows(TestFailure.class, deed);
        assertEquals(
                "Parts has ended by java.lang.IllegalStateException: as it was asked to", failure.getMessage());
        assertTrue(failure.getCause() instanceof IllegalStateException);
    }

    @Test
    public void one_application_runs_at_a_time() {
        assertEquals(
                "Parts still runs: there is one application at a time",
                failureOf(() -> device.start(Parts.class)));
    }

    @Test
    public void a_control_that_goes_is_told() {
        Control list = device.find(Kind.LIST, 1);
        device.stop();
        assertEquals("the list is not there any more", failureOf(list::text));
    }

    @Test
    public void keys_are_known_by_name() {
        String failure =
                assertThrows(IllegalArgumentException.class, () -> device.press("ctrl+entr")).getMessage();
        assertTrue(failure, failure.startsWith("there is no key \"ctrl+entr\"; keys are letters, digits, "));
    }

    @Test
    public void a_device_with_another_screen_is_told() {
        assertEquals(
                "this wants a screen of 999x1, and the device has one of "
                        + device.screenWidth() + "x" + device.screenHeight()
                        + ": run it with --screen 999x1",
                failureOf(() -> device.mustHaveScreen(999, 1)));
        assertEquals(
                "-1,5 is not on the screen of " + device.screenWidth() + "x" + device.screenHeight(),
                failureOf(() -> device.tap(-1, 5)));
    }
}
