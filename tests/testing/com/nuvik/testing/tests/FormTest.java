package com.nuvik.testing.tests;

import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertFalse;
import static org.junit.Assert.assertThrows;
import static org.junit.Assert.assertTrue;

import com.nuvik.examples.Form;
import com.nuvik.testing.Control;
import com.nuvik.testing.Device;
import com.nuvik.testing.DeviceRule;
import com.nuvik.testing.FileDialog;
import com.nuvik.testing.Kind;
import com.nuvik.testing.TestFailure;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.util.Arrays;
import org.junit.Rule;
import org.junit.Test;

/** The inspection form, as a person fills it in. */
public class FormTest {
    @Rule public final DeviceRule rule = new DeviceRule(Form.class);
    private final Device device = rule.device;

    private void shows(String status) {
        device.await(Kind.LABEL, status);
    }

    @Test
    public void a_form_is_filled_in_saved_and_opened_again() {
        device.findLabelled(Kind.TEXT, "Site").enter("Mill Lane 4");
        device.findLabelled(Kind.TEXT, "Inspector").enter("R. Moss");
        device.findLabelled(Kind.CHOICE, "Kind").choose("Office");
        device.find(Kind.RADIO_BUTTON, "Poor").tap();
        device.find(Kind.CHECK_BOX, "Needs work at once").tap();
        Control entry = device.findLabelled(Kind.TEXT, "Findings");
        entry.enter("Dust");
        device.button("Add").tap();
        entry.type("Loose cable\n");
        Control findings = device.find(Kind.LIST, 1);
        assertEquals(Arrays.asList("Dust", "Loose cable"), findings.items());
        findings.choose("Dust");
        device.button("Remove").tap();
        assertEquals(Arrays.asList("Loose cable"), findings.items());
        assertFalse(device.button("Remove").isEnabled());

        device.chooseMenu("File", "Save...");
        FileDialog save = device.fileDialog();
        assertEquals("Save As", save.title());
        save.choose("mill lane");
        shows("Saved \\My Documents\\mill lane.txt");

        device.press("ctrl+n");
        shows("New form");
        assertEquals("", device.findLabelled(Kind.TEXT, "Site").text());

        device.chooseMenu("File", "Open...");
        FileDialog open = device.fileDialog();
        assertEquals("\\My Documents", open.folder());
        assertTrue(open.files().contains("mill lane.txt"));
        open.choose("mill lane.txt");
        shows("Opened \\My Documents\\mill lane.txt");
        assertEquals("Mill Lane 4", device.findLabelled(Kind.TEXT, "Site").text());
        assertEquals("Office", device.findLabelled(Kind.CHOICE, "Kind").text());
        assertTrue(device.find(Kind.RADIO_BUTTON, "Poor").isChecked());
        assertTrue(device.find(Kind.CHECK_BOX, "Needs work at once").isChecked());
    }

    @Test
    public void a_question_is_answered_and_a_dialog_cancelled() {
        device.findLabelled(Kind.TEXT, "Site").enter("Mill Lane 5");
        device.press("ctrl+n");
        device.await(Kind.SHELL, "Question");
        device.button("Go back").tap();
        assertEquals("Mill Lane 5", device.findLabelled(Kind.TEXT, "Site").text());
        device.press("ctrl+s");
        device.fileDialog().cancel();
        assertFalse(device.shows(Kind.FILE_DIALOG, null));
    }

    @Test
    public void a_dialog_is_led_into_a_folder() throws IOException {
        Path folder = Paths.get(System.getProperty("zemvolt.storage"), "My Documents", "letters");
        Files.createDirectories(folder);
        Files.writeString(folder.resolve("ada.txt"), "");
        device.press("ctrl+o");
        FileDialog open = device.fileDialog();
        assertFalse(open.files().contains("ada.txt"));
        open.enterFolder("letters");
        assertEquals("\\My Documents\\letters", open.folder());
        assertEquals(Arrays.asList("ada.txt"), open.files());
        open.cancel();
        assertThrows(TestFailure.class, open::folder);
    }
}
