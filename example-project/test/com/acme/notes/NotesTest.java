package com.acme.notes;

import static org.junit.Assert.assertEquals;

import com.nuvik.testing.Device;
import com.nuvik.testing.DeviceRule;
import com.nuvik.testing.Kind;
import java.util.Arrays;
import org.junit.Rule;
import org.junit.Test;

public class NotesTest {
    @Rule public final DeviceRule rule = new DeviceRule(Notes.class);
    private final Device device = rule.device;

    @Test
    public void a_note_is_added() {
        device.findLabelled(Kind.TEXT, "Note").enter("Call Ada");
        device.button("Add").tap();
        assertEquals(Arrays.asList("Call Ada"), device.find(Kind.LIST, 1).items());
        device.find(Kind.LABEL, "1 note");
    }

    @Test
    public void an_empty_note_is_refused() {
        device.button("Add").tap();
        device.find(Kind.LABEL, "There is nothing to add");
    }
}
