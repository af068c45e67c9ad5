package com.nuvik.testing.tests;

import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertFalse;
import static org.junit.Assert.assertThrows;
import static org.junit.Assert.assertTrue;

import com.nuvik.examples.Menus;
import com.nuvik.testing.Control;
import com.nuvik.testing.Device;
import com.nuvik.testing.DeviceRule;
import com.nuvik.testing.Kind;
import com.nuvik.testing.TestFailure;
import java.util.Arrays;
import org.junit.Rule;
import org.junit.Test;

/** The example of a whole application window, as a person uses it. */
public class MenusTest {
    @Rule public final DeviceRule rule = new DeviceRule(Menus.class);
    private final Device device = rule.device;

    @Test
    public void a_menu_opens_the_child_shell_and_its_button_closes_it() {
        device.chooseMenu("File", "About...");
        Control about = device.await(Kind.SHELL, "About");
        Control box = about.find(Kind.CHECK_BOX, "Show this at start");
        box.tap();
        assertTrue(box.isChecked());
        device.close();
        device.waitUntil("the shell is gone", () -> !device.shows(Kind.SHELL, "About"));
    }

    @Test
    public void menu_items_are_read_and_chosen_through_a_menu_in_a_menu() {
        device.chooseMenu("View");
        assertEquals(Arrays.asList("Text size", "Colour"), device.find(Kind.MENU, null).items());
        device.chooseMenu("Text size", "Large");
        assertFalse(device.shows(Kind.MENU, null));
        device.chooseMenu("View", "Text size");
        assertTrue(device.find(Kind.MENU_ITEM, "Large").isChecked());
        assertFalse(device.find(Kind.MENU_ITEM, "Small").isChecked());
        device.press("escape");
        device.press("escape");
        assertFalse(device.shows(Kind.MENU, null));
    }

    @Test
    public void a_tap_that_is_held_opens_the_menu_of_the_list() {
        Control list = device.find(Kind.COMPOSITE, 1);
        int[] bounds = list.bounds();
        device.tapAndHold(bounds[0] + bounds[2] - 30, bounds[1] + bounds[3] / 2);
        device.chooseMenu("Mark all");
        assertTrue(device.find(Kind.CHECK_BOX, "Point 1").isChecked());
        assertTrue(device.find(Kind.CHECK_BOX, "Point 2").isChecked());
    }

    @Test
    public void it_is_stopped_while_its_menus_are_open() {
        device.chooseMenu("View", "Text size");
        device.stop();
        assertTrue(device.hasEnded());
    }

    @Test
    public void a_scroll_bar_tells_where_it_stands() {
        Control bar = device.find(Kind.SCROLL_BAR, 1);
        assertEquals(0, bar.scrollPosition());
        bar.tapAt(bar.bounds()[2] / 2, bar.bounds()[3] - 7);
        assertEquals(1, bar.scrollPosition());
        Control list = device.find(Kind.COMPOSITE, 1);
        assertEquals(0, list.scrollPosition());
        list.tapAt(list.bounds()[2] * 97 / 100, list.bounds()[3] * 98 / 100);
        assertEquals(30, list.scrollPosition());
        Control box = device.find(Kind.CHECK_BOX, "Point 2");
        assertEquals(
                "the check box \"Point 2\" has no scroll bar that tells a value",
                assertThrows(TestFailure.class, box::scrollPosition).getMessage());
    }

    @Test
    public void an_accelerator_ends_it() {
        device.press("ctrl+shift+x");
        device.awaitEnd();
    }
}
