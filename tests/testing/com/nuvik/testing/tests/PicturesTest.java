package com.nuvik.testing.tests;

import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertThrows;
import static org.junit.Assert.assertTrue;

import com.nuvik.examples.Tap;
import com.nuvik.testing.Comparison;
import com.nuvik.testing.Control;
import com.nuvik.testing.Device;
import com.nuvik.testing.DeviceRule;
import com.nuvik.testing.Picture;
import com.nuvik.testing.Recording;
import com.nuvik.testing.TestFailure;
import java.io.IOException;
import java.nio.file.Files;
import java.nio.file.Path;
import org.junit.Before;
import org.junit.Rule;
import org.junit.Test;
import org.junit.rules.TemporaryFolder;

/** Screenshots, kept pictures and recordings. */
public class PicturesTest {
    @Rule public final TemporaryFolder folder = new TemporaryFolder();
    @Rule public final DeviceRule rule = new DeviceRule(Tap.class);
    private final Device device = rule.device;
    private Path kept;

    @Before
    public void name_a_picture() throws IOException {
        kept = folder.newFolder().toPath().resolve("kept.png");
    }

    private String failure(Comparison comparison) {
        return assertThrows(TestFailure.class, () -> device.mustLookLike(kept.toString(), comparison)).getMessage();
    }

    private void keep() {
        failure(new Comparison());
    }

    @Test
    public void a_picture_that_is_missing_is_made_and_told_once() {
        assertEquals(
                "there was no picture " + kept + " yet; it is made now: look at it and keep it",
                failure(new Comparison()));
        assertEquals(device.screenshot(), Picture.read(kept));
        device.mustLookLike(kept.toString());
    }

    @Test
    public void a_difference_is_told_and_left_as_a_picture() {
        keep();
        Control button = device.button("Tap me");
        int[] bounds = button.bounds();
        button.tap();
        String failure = failure(new Comparison());
        assertTrue(
                failure,
                failure.matches("the picture is not like .*kept.png: \\d+ pixels differ, the first at \\d+,\\d+; "
                        + "see .*kept-difference.png and .*kept-now.png"));
        Path left = java.nio.file.Paths.get(failure.replaceAll(".*; see (.*) and .*", "$1"));
        Picture difference = Picture.read(left);
        int red = 0;
        for (int y = 0; y < difference.height(); y++) {
            for (int x = 0; x < difference.width(); x++) {
                boolean isRed = difference.pixel(x, y) == 0xFFFF0000;
                boolean isInButton =
                        x >= bounds[0] && x < bounds[0] + bounds[2] && y >= bounds[1] && y < bounds[1] + bounds[3];
                if (isRed) assertTrue(x + "," + y, isInButton);
                if (isRed) red++;
            }
        }
        assertTrue(red > 0);
        device.mustLookLike(kept.toString(), new Comparison().ignoring(button));
        device.mustLookLike(kept.toString(), new Comparison().allowing(red));
        failure(new Comparison().allowing(red - 1));
        device.mustLookLike(kept.toString(), new Comparison().tolerance(255));
        failure(new Comparison().tolerance(10));
    }

    @Test
    public void a_picture_of_another_size_is_told() {
        device.button("Tap me").picture().save(kept);
        assertTrue(failure(new Comparison()).matches(".*kept.png is of \\d+x\\d+, and the picture now of .*"));
    }

    @Test
    public void a_file_that_is_no_picture_is_told() throws IOException {
        Files.writeString(kept, "a text, and no picture");
        assertTrue(
                assertThrows(java.io.UncheckedIOException.class, () -> Picture.read(kept))
                        .getMessage()
                        .endsWith("kept.png cannot be read: it is no PNG file"));
    }

    @Test
    public void a_recording_has_each_picture_once() throws IOException {
        Recording recording = device.record();
        Control button = device.button("Tap me");
        button.tap();
        device.press("f5");
        button.tap();
        assertEquals(3, recording.length());
        recording.save(kept);
        assertEquals(Picture.read(kept).width(), device.screenWidth());
        String file = new String(Files.readAllBytes(kept), "ISO-8859-1");
        assertEquals(3, file.split("fcTL", -1).length - 1);
        assertEquals(2, file.split("fdAT", -1).length - 1);
    }
}
