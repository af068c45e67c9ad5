package com.nuvik.tests;

import static com.nuvik.wyx.dovr.OS.Button_SetLabel;
import static com.nuvik.wyx.dovr.OS.Composite_New;
import static com.nuvik.wyx.dovr.OS.Control_GetDefaultFont;
import static com.nuvik.wyx.dovr.OS.Font_GetStyle;
import static com.nuvik.wyx.dovr.OS.List_Add;
import static com.nuvik.wyx.dovr.OS.List_New;
import static com.nuvik.wyx.dovr.OS.List_SelectIndices;
import static com.nuvik.wyx.dovr.OS.PushButton_New;
import static com.nuvik.wyx.dovr.OS.Scrollable_GetHorizontalBar;
import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertNotNull;
import static org.junit.Assert.assertNull;
import static org.junit.Assert.assertThrows;
import static org.junit.Assert.assertTrue;

import com.nuvik.checking.Misuse;
import com.nuvik.wyx.Style;
import com.nuvik.wyx.k4tr.OS;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.concurrent.FutureTask;
import org.junit.Rule;
import org.junit.Test;
import org.junit.function.ThrowingRunnable;

/** What the checked mode says to a program that misuses natives. */
public final class MisuseTest {
    @Rule public final ShownShell shown = new ShownShell();

    /** The misuse, in which handles are named by their words. */
    private static Misuse misuse(String sentence, ThrowingRunnable call, int... handles) {
        Misuse misuse = assertThrows(Misuse.class, call);
        String message = misuse.getMessage();
        for (int handle : handles) message = message.replace(" " + handle, " #");
        assertEquals(sentence, message);
        return misuse;
    }

    private static void tells(Throwable place, String what, String method) {
        assertNotNull(place);
        assertEquals(what, place.getMessage());
        for (StackTraceElement frame : place.getStackTrace())
            if (frame.getMethodName().equals(method)) return;
        throw new AssertionError(method + " is not in " + Arrays.toString(place.getStackTrace()));
    }

    private static void disposeOf(int widget) {
        OS.Widget_Dispose(widget);
    }

    @Test
    public void noHandle() {
        Misuse misuse = misuse("List_Add: list is 0; a list is wanted", () -> List_Add(0, "item", 0));
        assertNull(misuse.getCause());
        assertEquals("List_Add", misuse.getStackTrace()[0].getMethodName());
    }

    @Test
    public void aNumberThatIsNoHandle() {
        misuse("List_Add: list # was never a handle; a list is wanted", () -> List_Add(5, "", 0), 5);
    }

    @Test
    public void anotherKindTellsWhereItWasMade() {
        int button = PushButton_New(shown.shell, 0);
        Misuse misuse =
                misuse(
                        "List_Add: list # is a button; a list is wanted",
                        () -> List_Add(button, "", 0),
                        button);
        tells(misuse.getCause(), "made here", "anotherKindTellsWhereItWasMade");
        OS.Widget_Dispose(button);
    }

    @Test
    public void whatWasDisposedOfTellsWhere() {
        int button = PushButton_New(shown.shell, 0);
        disposeOf(button);
        Misuse misuse =
                misuse(
                        "Button_SetLabel: button #, a button, was disposed of",
                        () -> Button_SetLabel(button, "label"),
                        button);
        tells(misuse.getCause(), "disposed of here", "disposeOf");
    }

    @Test
    public void aWidgetThatIsDisposedOfTwice() {
        int list = List_New(shown.shell, 0);
        disposeOf(list);
        misuse("Widget_Dispose: widget #, a list, was disposed of", () -> disposeOf(list), list);
    }

    @Test
    public void aNewObjectAtTheAddressOfAnOldOneIsAsGoodAsAny() {
        List<Integer> made = new ArrayList<>();
        boolean again = false;
        for (int i = 0; i < 1000 && !again; i++) {
            int list = List_New(shown.shell, 0);
            List_Add(list, "item", 0);
            disposeOf(list);
            again = made.contains(list);
            made.add(list);
        }
        assertTrue(again);
    }

    @Test
    public void aControlWhoseWindowWentWithItsParentIsStillItsOwners() {
        int composite = Composite_New(shown.shell, 0);
        int button = PushButton_New(composite, 0);
        disposeOf(composite);
        Button_SetLabel(button, "label");
        disposeOf(button);
    }

    @Test
    public void aListenerMayDisposeOfWhatFires() {
        int button = shown.device.show(PushButton_New(shown.shell, 0), 40, 50, 100, 40);
        OS.Widget_SetData(
                button,
                new Device.Recorder() {
                    @Override
                    void selected() {
                        shown.device.dispose(button);
                    }
                });
        shown.device.tap(90, 70);
        misuse("Control_GetBounds: control #, a button, was disposed of",
                () -> OS.Control_GetBounds(button), button);
    }

    @Test
    public void whatAControlLendsGoesWithIt() {
        int composite = Composite_New(shown.shell, Style.HORIZONTAL_SCROLL);
        int bar = Scrollable_GetHorizontalBar(composite);
        assertEquals(bar, Scrollable_GetHorizontalBar(composite));
        misuse("Widget_Dispose: widget #, a scrollable's bar, goes with what it belongs to and cannot be"
                + " disposed of", () -> disposeOf(bar), bar);
        int font = Control_GetDefaultFont(composite);
        disposeOf(composite);
        misuse("Control_GetBounds: control #, a scrollable's bar, was disposed of",
                () -> OS.Control_GetBounds(bar), bar);
        Font_GetStyle(font);
    }

    @Test
    public void drawingOnAnImageThatWasDisposedOf() {
        int image = OS.Image_NewFromSize(0, 8, 8, 0);
        int graphics = OS.Image_NewGraphics(image);
        OS.Image_Dispose(image);
        Misuse misuse =
                misuse(
                        "Graphics_DrawLine: graphics # draws on an image that was disposed of",
                        () -> OS.Graphics_DrawLine(graphics, 0, 0, 1, 1),
                        graphics);
        tells(misuse.getCause(), "disposed of here", "drawingOnAnImageThatWasDisposedOf");
        OS.Graphics_Dispose(graphics);
    }

    @Test
    public void aCountBeyondItsArray() {
        int list = List_New(shown.shell, 0);
        misuse("List_SelectIndices: indices has a length of 2; 3 is wanted (count 3)",
                () -> List_SelectIndices(list, new int[2], 3));
        List_SelectIndices(list, null, 3);
        disposeOf(list);
    }

    @Test
    public void anArrayThatIsTooShortForAnImage() {
        misuse("Image_NewFromIntData: pixels has a length of 5; 6 is wanted (width 3, height 2)",
                () -> OS.Image_NewFromIntData(0, 3, 2, new int[5], 24, -1, -1, null));
        int image = OS.Image_NewFromIntData(0, 3, 2, new int[6], 24, -1, -1, null);
        misuse("Image_GetRGB: out has a length of 5; 6 is wanted (width 3, height 2, offset 0,"
                + " scanSize 3)", () -> OS.Image_GetRGB(image, 0, 0, 3, 2, 0, 3, new int[5]));
        OS.Image_GetRGB(image, 0, 0, 3, 2, 0, 3, new int[6]);
        OS.Image_Dispose(image);
        byte[] two = new byte[2];
        byte[] one = new byte[1];
        misuse("Image_NewFromByteData: data has a length of 1; 2 is wanted (width 8, height 2,"
                + " bytesPerLine 1, depth 1)",
                () -> OS.Image_NewFromByteData(0, 8, 2, one, 1, 1, two, two, two, 2, -1));
        misuse("Image_NewFromByteData: green has a length of 1; 2 is wanted (paletteSize 2)",
                () -> OS.Image_NewFromByteData(0, 8, 2, two, 1, 1, two, one, two, 2, -1));
        OS.Image_Dispose(OS.Image_NewFromByteData(0, 8, 2, two, 1, 1, two, two, two, 2, -1));
    }

    @Test
    public void theEventLoopOfAnotherThread() throws InterruptedException {
        int display = shown.device.display;
        Misuse[] told = new Misuse[1];
        Thread other =
                new Thread(
                        () ->
                                told[0] =
                                        assertThrows(
                                                Misuse.class,
                                                () -> OS.Display_ReadAndDispatch(display)));
        other.start();
        other.join();
        assertEquals(
                "Display_ReadAndDispatch: display " + display
                        + " belongs to the thread that made it, which alone may call",
                told[0].getMessage());
    }

    /** Makes, uses, misuses and disposes of things of its own, round after round. */
    private Object workAndErr() {
        for (int round = 0; round < 20; round++) {
            int image = OS.Image_NewFromSize(0, 8, 8, 0);
            int graphics = OS.Image_NewGraphics(image);
            misuse("Graphics_DrawImage: image # is a graphics context; an image is wanted",
                    () -> OS.Graphics_DrawImage(graphics, graphics, 0, 0), graphics);
            OS.Graphics_Dispose(graphics);
            OS.Image_Dispose(image);
            int list = List_New(shown.shell, 0);
            List_Add(list, "item", 0);
            misuse("List_SelectIndices: indices has a length of 1; 2 is wanted (count 2)",
                    () -> List_SelectIndices(list, new int[1], 2));
            disposeOf(list);
            int display = OS.Display_New();
            misuse("Control_MoveAbove: other # is a display; a control is wanted",
                    () -> com.nuvik.wyx.dovr.OS.Control_MoveAbove(shown.shell, display), display);
            OS.Device_Dispose(display);
        }
        return null;
    }

    @Test
    public void severalThreadsAreToldOfTheirOwnMisuseAlone() throws Exception {
        List<FutureTask<Object>> works = new ArrayList<>();
        for (int thread = 0; thread < 4; thread++) works.add(new FutureTask<>(this::workAndErr));
        for (FutureTask<Object> work : works) new Thread(work).start();
        shown.device.onOtherThread(
                () -> {
                    for (FutureTask<Object> work : works) work.get();
                    return null;
                });
        int control = PushButton_New(shown.shell, 0);
        OS.Control_GetBounds(control);
        disposeOf(control);
    }

    @Test
    public void whatADisplayLeavesBehindIsToldWithTheDisplaysEnd() {
        int display = OS.Display_New();
        int shell = OS.Shell_New(display, 0);
        OS.Device_Dispose(display);
        Misuse misuse =
                misuse(
                        "Shell_SetText: shell #, a shell, belongs to a display that was disposed of",
                        () -> OS.Shell_SetText(shell, ""),
                        shell);
        tells(misuse.getCause(), "disposed of here", "whatADisplayLeavesBehindIsToldWithTheDisplaysEnd");
        disposeOf(shell);
    }

    @Test
    public void whatIsWrongWithRegisteredMethods() {
        int display = OS.Display_New();
        misuse("Display_RegisterCallback: the display has no registry; Display_InitCallbacks makes it",
                () -> OS.Display_RegisterCallback(display, 0, "a/B", "c"));
        OS.Display_InitCallbacks(display, "target");
        misuse("Display_InitCallbacks: the display has its registry already",
                () -> OS.Display_InitCallbacks(display, "target"));
        misuse("Display_RegisterCallback: there is no class a/B",
                () -> OS.Display_RegisterCallback(display, 0, "a/B", "c"));
        misuse("Display_RegisterCallback: com.nuvik.tests.MisuseTest has no instance method c()V",
                () -> OS.Display_RegisterCallback(display, 0, "com/nuvik/tests/MisuseTest", "c"));
        OS.Display_RegisterCallback(display, 0, "com/nuvik/tests/MisuseTest", "noHandle");
        misuse("Display_RegisterCallback: the event 0 is registered already",
                () -> OS.Display_RegisterCallback(display, 0, "com/nuvik/tests/MisuseTest", "noHandle"));
        int shell = OS.Shell_New(display, 0);
        misuse("Widget_SetData: java.lang.String is none of the classes whose methods are registered:"
                + " [class com.nuvik.tests.MisuseTest]", () -> OS.Widget_SetData(shell, "listener"));
        OS.Widget_SetData(shell, this);
        OS.Widget_SetData(shell, null);
        disposeOf(shell);
        OS.Device_Dispose(display);
        misuse("Shell_New: display #, a display, was disposed of",
                () -> OS.Shell_New(display, 0), display);
    }

    @Test
    public void whatBelongsToAnotherDisplay() {
        int display = OS.Display_New();
        int shell = OS.Shell_New(display, 0);
        misuse("Control_MoveAbove: other # belongs to another display than what stands before it",
                () -> com.nuvik.wyx.dovr.OS.Control_MoveAbove(shown.shell, shell), shell);
        disposeOf(shell);
        OS.Device_Dispose(display);
    }
}
