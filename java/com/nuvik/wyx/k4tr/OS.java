package com.nuvik.wyx.k4tr;

import com.nuvik.wyx.WYXErrorHandler;

/**
 * The base layer of the toolkit's natives: display and event loop, controls and shells.
 *
 * <p>Every native object is held as an int, its handle; 0 is none. Handles are not checked: a wrong
 * one, or one that was disposed, is an error of the program. A native that fails calls {@link
 * #wyxErrorHandler} with its name and returns 0, false or null.
 *
 * <p>Windows belong to the thread that made the display. Unless a method says otherwise it may be
 * called on any thread; the work is then done on the display's thread, which must be reading
 * messages. Positions and sizes are in pixels.
 *
 * <p><b>Who ends what.</b> What a {@code New} made is the program's, which ends it once: a widget,
 * menu, menu item or file dialog by {@link #Widget_Dispose}, all else by the {@code Dispose} of its
 * own class. Nothing is ended by the end of something else but what is said here, and the order is the
 * program's choice where none is given.
 *
 * <ul>
 *   <li>Display and widgets: either may go first. Without its display a widget shows nothing and fires
 *       nothing, and still has to be disposed of.
 *   <li>Parent and control, shell and child shell: either may go first. With the parent's window go
 *       those in it; their handles stay until they are disposed of.
 *   <li>Scrollable and its own bars: these go with it and cannot be disposed of.
 *   <li>Shell and menu bar, and owner and menu: either may go first. A bar that is disposed of leaves
 *       the shell with its empty one, which is the shell's.
 *   <li>Menu and item: either may go first. An item without menu only waits to be disposed of.
 *   <li>Cascade item and the menu that it opens: either may go first; neither ends the other.
 *   <li>Control and colour, font: these may be disposed of while a control has them, which keeps
 *       them. A graphics context keeps a font too, and of a colour takes what it needs.
 *   <li>Control and cursor: cursors are the system's and end never.
 *   <li>Image and graphics context on it: either may go first.
 *   <li>Control and graphics context on it: the context first.
 *   <li>Sound and what it plays: {@code Sound_Dispose} stops that and is the last call of the sound.
 *   <li>Dialog and owner: either may go first, also while the dialog is open.
 *   <li>Widget and data: the program sets the data to null, then disposes of the widget. Data that is
 *       still set is held for good.
 * </ul>
 */
public final class OS {
    static {
        System.loadLibrary("zemvolt11");
    }

    private OS() {}

    /** Receives all errors. It must be set: an error without a handler ends the Java VM. */
    public static WYXErrorHandler wyxErrorHandler;

    /** A button was clicked: {@code void method()}. */
    public static final int CB_SELECTION = 0;

    /** A list's selection: {@code void method(int index, int kind)}; kind 1 changed, 2 double click. */
    public static final int CB_LIST_SELECTION = 1;

    /**
     * A window event: {@code void method(int code)}; 201 close requested, 203 minimised, 205
     * activated, 206 deactivated.
     */
    public static final int CB_WINDOW_EVENT = 2;

    /**
     * A scroll bar moved: {@code void method(int value, int kind)}; kind 0 line up, 1 line down, 2
     * page up, 3 page down, 4 thumb drag, 5 top, 6 bottom.
     */
    public static final int CB_SCROLL = 3;

    /** A choice's selection: {@code void method(int index)}. */
    public static final int CB_CHOICE_SELECTION = 4;

    /**
     * A key: {@code boolean method(int kind, char character, int keyCode, int modifiers)}; kind 1
     * pressed or typed, 2 released; true when the key is handled. Modifiers: 1 Alt, 2 Shift, 4
     * Control.
     */
    public static final int CB_KEY = 5;

    /** A text was changed: {@code void method()}. */
    public static final int CB_TEXT_MODIFIED = 6;

    /**
     * The pointer: {@code void method(int type, int x, int y, int button, int modifiers)}; type 1
     * press, 2 release, 3 move, 4 enter, 5 exit, 6 drag, 7 double click; button 0 none, 8 left, 16
     * middle, 32 right. Modifiers as for keys, with the buttons held and 64 for a context gesture.
     */
    public static final int CB_POINTER = 7;

    /** A menu item was chosen: {@code void method(int code)}; the code is 0. */
    public static final int CB_MENU_SELECTION = 8;

    /** The focus: {@code void method(int change)}; 1 gained, 2 lost. */
    public static final int CB_FOCUS = 9;

    /** A part must be painted: {@code void method(int x, int y, int width, int height)}. */
    public static final int CB_PAINT = 10;

    /** A shell was resized: {@code void method(int width, int height)}. */
    public static final int CB_RESIZE = 11;

    /** A shell was moved: {@code void method(int x, int y)}. */
    public static final int CB_MOVE = 12;

    /**
     * The wheel: {@code void method(int type, int x, int y, int modifiers, int amount, int
     * notches)}; type 8 by page, 9 by lines; x and y on the screen; one notch forward is -1.
     */
    public static final int CB_WHEEL = 17;

    /**
     * Asked at a press, before it is reported: {@code int method(int x, int y)}; 0 recognises a
     * tap-and-hold by time, 1 lets the device's shell recognise it, any other recognises none.
     */
    public static final int CB_POINTER_DOWN_QUERY = 1458260670;

    // Display

    /**
     * Makes a display. The calling thread becomes the display's thread.
     *
     * @return the display; 0 when it cannot be made. Errors: "Unable get "STATIC" class data",
     *     "Unable to create message/creation window", each with the system's text
     */
    public static native int Display_New();

    /**
     * Gives a display its callback registry. Called once, before {@link #Display_RegisterCallback}.
     *
     * @param display the display
     * @param target held for as long as the display lives; must not be null
     * @throws OutOfMemoryError when the registry cannot be allocated
     */
    public static native void Display_InitCallbacks(int display, Object target);

    /**
     * Registers the method that an event calls on a widget's object. An id that is registered
     * already, or a display without registry, ends the Java VM.
     *
     * @param display the display
     * @param id one of the CB_ constants
     * @param className the receivers' class, with slashes: "com/acme/Receiver"
     * @param methodName an instance method of that class with exactly the event's signature; when
     *     it does not exist, events of the id print that and vanish
     * @throws OutOfMemoryError when the entry cannot be allocated
     */
    public static native void Display_RegisterCallback(
            int display, int id, String className, String methodName);

    /**
     * Takes one message from the queue and dispatches it; its listeners run inside the call. The
     * display's thread only.
     *
     * @param display the display
     * @return false when the queue was empty; the call never waits
     */
    public static native boolean Display_ReadAndDispatch(int display);

    /**
     * Waits for the next message, also one that came before the call. The display's thread only.
     *
     * @param display the display
     * @return the system's wait result; 0 when there is a message
     */
    public static native int Display_Sleep(int display);

    /**
     * Ends a {@link #Display_Sleep}.
     *
     * @param display the display
     * @return not 0 when the wake-up was posted
     */
    public static native int Display_Wake(int display);

    // Devices: the screen

    /**
     * The screen.
     *
     * @param device not looked at
     * @return 0, 0, width, height
     */
    public static native int[] Device_GetBounds(int device);

    /**
     * The face names of the device's fonts, once for every font of a family.
     *
     * @param device the display
     * @param scalable whether the scalable faces are listed, else the raster ones
     * @return the names; empty when there is none. Error: "Not enough memory to list typefaces"
     *     (-4)
     */
    public static native String[] Device_GetTypefaces(int device, boolean scalable);

    /**
     * Ends a display or another device.
     *
     * @param device the display; its handle is invalid afterwards
     */
    public static native void Device_Dispose(int device);

    // Widgets: what all of them have

    /**
     * Sets the object that receives a widget's events.
     *
     * @param widget the widget
     * @param data of the class that the callbacks were registered with; null for none. An object
     *     set before is released
     * @throws OutOfMemoryError when the reference cannot be allocated
     */
    public static native void Widget_SetData(int widget, Object data);

    /**
     * Disposes of a widget: its window goes with the windows in it. The widget fires no event from
     * here on. Its data is not released: set it to null first. Errors: "Invalid disposal of a
     * scrollable's scrollbars" (-3), and of menu items "Unable to find menu item" and "Unable to
     * delete menu item", with the system's text but for those of menu bars (-3).
     *
     * @param widget the widget; its handle is invalid afterwards
     */
    public static native void Widget_Dispose(int widget);

    // Controls: all widgets with a window

    /**
     * Where a control is.
     *
     * @param control the control
     * @return x, y, width, height; relative to the parent's client area, of a shell to the screen
     */
    public static native int[] Control_GetBounds(int control);

    /**
     * Moves and sizes a control. A top shell stays where it is, but reports its size and place.
     *
     * @param control the control
     * @param x left edge, as in {@link #Control_GetBounds}
     * @param y top edge
     * @param width width
     * @param height height. Errors: "Could not change the size of the control", of child shells
     *     "Could not change the size of the shell", each with the system's text
     */
    public static native void Control_SetBounds(int control, int x, int y, int width, int height);

    /**
     * Shows or hides a control. Showing a modal shell disables all shells outside it.
     *
     * @param control the control
     * @param visible whether it shows
     */
    public static native void Control_SetVisible(int control, boolean visible);

    // Scrollables: controls that may have bars of their own

    /**
     * What a scrollable's frame and scroll bars take from its window.
     *
     * @param scrollable a composite or a shell
     * @return left, top, right, bottom
     */
    public static native int[] Scrollable_GetInsets(int scrollable);

    // Shells: top-level windows

    /**
     * Makes a top shell: a window that fills the work area above its menu bar. It is not shown yet.
     *
     * @param display the display
     * @param style 0x1 close box, 0x40 modal, 0x800 border, 0x10000 and 0x20000 horizontal and
     *     vertical scroll bar
     * @return the shell; 0 when it cannot be made. Errors: "Unable to create window" with the
     *     system's text, "Unable to create menu bar!" (-4), "Could not add control to control list"
     *     (-3)
     */
    public static native int Shell_New(int display, int style);

    /**
     * Lets a shell fill the work area.
     *
     * @param shell the shell
     * @param maximized false does nothing
     */
    public static native void Shell_SetMaximized(int shell, boolean maximized);

    /**
     * Sets a shell's title.
     *
     * @param shell the shell
     * @param text null is the empty text
     */
    public static native void Shell_SetText(int shell, String text);

    // Graphics contexts

    /**
     * Makes a graphics context on a control's client area.
     *
     * @param control the control
     * @return the context; 0 on an error: "Unable to create DC from control", "Unable to get
     *     clipping area" with the system's text, "Unable to allocate enough memory for device
     *     context" (-4)
     */
    public static native int Control_NewGraphics(int control);

    /**
     * Makes a graphics context on an image, one of any number.
     *
     * @param image the image, which may be disposed of before the context
     * @return the context; 0 on an error: "Unable to allocate enough memory for device context"
     *     (-4)
     */
    public static native int Image_NewGraphics(int image);

    /**
     * Sets the colour of lines, outlines and text. Error: "Unable to create new pen" with the
     * system's text; the text then has the new colour and lines keep the old.
     *
     * @param graphics the context
     * @param color the colour
     */
    public static native void Graphics_SetForeground(int graphics, int color);

    /**
     * Sets the colour of fills and behind text. Errors with the system's text: "Error in setting
     * background color", "Error creating new background brush".
     *
     * @param graphics the context
     * @param color the colour
     */
    public static native void Graphics_SetBackground(int graphics, int color);

    /**
     * Sets the width of lines and outlines. Error: "Unable to create new pen" with the system's
     * text.
     *
     * @param graphics the context
     * @param width in pixels
     */
    public static native void Graphics_SetLineWidth(int graphics, int width);

    /**
     * Sets the font of text. Error: "Unable to select new font into device context" with the
     * system's text.
     *
     * @param graphics the context
     * @param font the font; 0 for the system's
     */
    public static native void Graphics_SetFont(int graphics, int font);

    /**
     * Limits drawing to a rectangle, in place of an earlier one. Errors (-3): "Unable to create
     * clip region", "Unable to select clip region".
     *
     * @param graphics the context
     * @param x of the rectangle
     * @param y of the rectangle
     * @param width of the rectangle
     * @param height of the rectangle
     */
    public static native void Graphics_SetClipping(
            int graphics, int x, int y, int width, int height);

    /**
     * Draws a line with both its ends.
     *
     * @param graphics the context
     * @param x1 of the one end
     * @param y1 of the one end
     * @param x2 of the other end
     * @param y2 of the other end
     */
    public static native void Graphics_DrawLine(int graphics, int x1, int y1, int x2, int y2);

    /**
     * Outlines a rectangle.
     *
     * @param graphics the context
     * @param x of the rectangle
     * @param y of the rectangle
     * @param width of the rectangle
     * @param height of the rectangle
     */
    public static native void Graphics_DrawRectangle(
            int graphics, int x, int y, int width, int height);

    /**
     * Outlines a rectangle with round corners.
     *
     * @param graphics the context
     * @param x of the rectangle
     * @param y of the rectangle
     * @param width of the rectangle
     * @param height of the rectangle
     * @param arcWidth of the ellipse whose quarters round the corners
     * @param arcHeight of that ellipse
     */
    public static native void Graphics_DrawRoundRectangle(
            int graphics, int x, int y, int width, int height, int arcWidth, int arcHeight);

    /**
     * Outlines an ellipse.
     *
     * @param graphics the context
     * @param x of the rectangle around it
     * @param y of the rectangle around it
     * @param width of the rectangle around it
     * @param height of the rectangle around it
     */
    public static native void Graphics_DrawOval(int graphics, int x, int y, int width, int height);

    /**
     * Draws a part of an ellipse. Error: "Error getting clipping area" with the system's text.
     *
     * @param graphics the context
     * @param x of the rectangle around the ellipse
     * @param y of the rectangle around the ellipse
     * @param width of the rectangle around the ellipse
     * @param height of the rectangle around the ellipse
     * @param startAngle in degrees counter-clockwise from three o'clock
     * @param arcAngle how far it goes, clockwise when negative; nothing is drawn for 0
     */
    public static native void Graphics_DrawArc(
            int graphics, int x, int y, int width, int height, int startAngle, int arcAngle);

    /**
     * Outlines a polygon.
     *
     * @param graphics the context
     * @param points x and y in turn
     * @param count how many numbers of the array count
     */
    public static native void Graphics_DrawPolygon(int graphics, int[] points, int count);

    /**
     * Draws connected lines.
     *
     * @param graphics the context
     * @param points x and y in turn
     * @param count how many numbers of the array count
     */
    public static native void Graphics_DrawPolyline(int graphics, int[] points, int count);

    /**
     * Draws text.
     *
     * @param graphics the context
     * @param text null counts as empty
     * @param x of the text's left end
     * @param y of the text's top
     * @param flags 1 breaks lines, 2 expands tabs, 4 takes an ampersand as a mnemonic mark, 8
     *     leaves the background as it is
     */
    public static native void Graphics_DrawString(
            int graphics, String text, int x, int y, int flags);

    /**
     * Fills a rectangle. Error: "Unable to complete blitting operation" with the system's text.
     *
     * @param graphics the context
     * @param x of the rectangle
     * @param y of the rectangle
     * @param width of the rectangle
     * @param height of the rectangle
     */
    public static native void Graphics_FillRectangle(
            int graphics, int x, int y, int width, int height);

    /**
     * Fills a rectangle with round corners.
     *
     * @param graphics the context
     * @param x of the rectangle
     * @param y of the rectangle
     * @param width of the rectangle
     * @param height of the rectangle
     * @param arcWidth of the ellipse whose quarters round the corners
     * @param arcHeight of that ellipse
     */
    public static native void Graphics_FillRoundRectangle(
            int graphics, int x, int y, int width, int height, int arcWidth, int arcHeight);

    /**
     * Fills an ellipse.
     *
     * @param graphics the context
     * @param x of the rectangle around it
     * @param y of the rectangle around it
     * @param width of the rectangle around it
     * @param height of the rectangle around it
     */
    public static native void Graphics_FillOval(int graphics, int x, int y, int width, int height);

    /**
     * Fills a slice of an ellipse. Error: "Error getting clipping area" with the system's text.
     *
     * @param graphics the context
     * @param x of the rectangle around the ellipse
     * @param y of the rectangle around the ellipse
     * @param width of the rectangle around the ellipse
     * @param height of the rectangle around the ellipse
     * @param startAngle in degrees counter-clockwise from three o'clock
     * @param arcAngle how far it goes, clockwise when negative
     */
    public static native void Graphics_FillArc(
            int graphics, int x, int y, int width, int height, int startAngle, int arcAngle);

    /**
     * Fills a polygon.
     *
     * @param graphics the context
     * @param points x and y in turn
     * @param count how many numbers of the array count
     */
    public static native void Graphics_FillPolygon(int graphics, int[] points, int count);

    /**
     * Draws an image. Transparent pixels leave what is there, pixels with alpha are blended with
     * it. Errors with the system's text: "Error getting clipping area", "Unable to complete
     * blitting operation".
     *
     * @param graphics the context; an image that is drawn onto itself stays as it is
     * @param image the image
     * @param x of the image's left edge
     * @param y of the image's top edge
     */
    public static native void Graphics_DrawImage(int graphics, int image, int x, int y);

    /**
     * Ends a graphics context.
     *
     * @param graphics the context
     */
    public static native void Graphics_Dispose(int graphics);

    // Colours

    /**
     * Makes a colour.
     *
     * @param device the display
     * @param red 0 to 255
     * @param green 0 to 255
     * @param blue 0 to 255
     * @return the colour; 0 when it cannot be made. Errors: "Invalid color component range" (-3),
     *     "Not enough memory to allocate color" (-4)
     */
    public static native int Color_New(int device, int red, int green, int blue);

    /**
     * Ends a colour. Controls that have it keep it.
     *
     * @param color the colour
     */
    public static native void Color_Dispose(int color);

    // Fonts

    /**
     * Makes a font of a face.
     *
     * @param device the display
     * @param name the face; "fixed", in any case, for any fixed-pitch face; null or an unknown face
     *     leaves the choice to the system. What goes beyond 32 characters is cut off
     * @param points the height in points, internal leading included; 0 for the system's own choice
     * @param style 0 plain, 2 bold, 4 italic, 8 underlined, 16 struck out
     * @return the font; 0 when it cannot be made. Errors: "Unable to createfont" with the system's
     *     text, "Not enough memory to allocate font" (-4)
     */
    public static native int Font_New(int device, String name, int points, int style);

    /**
     * How far the font's characters rise above the base line, without the leading.
     *
     * @param font the font
     * @return pixels
     */
    public static native int Font_GetAscent(int font);

    /**
     * How far the font's characters reach below the base line.
     *
     * @param font the font
     * @return pixels
     */
    public static native int Font_GetDescent(int font);

    /**
     * The room that the font keeps free above its characters, for accents.
     *
     * @param font the font
     * @return pixels
     */
    public static native int Font_GetLeading(int font);

    /**
     * The height of the font, leading included.
     *
     * @param font the font
     * @return points; 0 on an error: "Unable to get screen dc" with the system's text
     */
    public static native int Font_GetSizeInPoints(int font);

    /**
     * The width of one character.
     *
     * @param font the font
     * @param character the character
     * @return pixels
     */
    public static native int Font_GetAdvanceWidth(int font, char character);

    /**
     * Ends a font. Controls and graphics contexts that have it keep it.
     *
     * @param font the font
     */
    public static native void Font_Dispose(int font);

    // Images

    /**
     * Makes an image of one colour, with 24 bits a pixel and no transparency. Images belong to no
     * device and may be used on any thread.
     *
     * @param device not looked at
     * @param width in pixels
     * @param height in pixels
     * @param color 0xRRGGBB
     * @return the image; 0 when it cannot be made. Errors: "Unable to create device-independent
     *     image handle" with the system's text, no message (-4) without memory
     */
    public static native int Image_NewFromSize(int device, int width, int height, int color);

    /**
     * Makes a direct image of colours. It has the bits per pixel of depth, or 32 when it has alpha.
     *
     * @param device not looked at
     * @param width in pixels
     * @param height in pixels
     * @param pixels row by row. Where the array is too short, or null, the pixels are 0
     * @param depth the bits of a pixel: 16 (5 red, 6 green, 5 blue), 24 or 32 (0xAARRGGBB)
     * @param transparentColor 0xBBGGRR; -1 for none
     * @param alpha of every pixel, 0 clear to 255 opaque; -1 for none. Pixels of 16 bits keep the
     *     values of their 5 bits then, and look dark
     * @param alphaData the alpha of each pixel, row by row, which counts before alpha; null for
     *     none. Where the array is too short the pixels are 0
     * @return the image; 0 when it cannot be made. Errors: "Unable to create device-independent
     *     image handle" with the system's text, no message (-4) without memory
     */
    public static native int Image_NewFromIntData(
            int device,
            int width,
            int height,
            int[] pixels,
            int depth,
            int transparentColor,
            int alpha,
            byte[] alphaData);

    /**
     * Makes an indexed image. Where an array is too short, or null, its values are 0.
     *
     * @param device not looked at
     * @param width in pixels
     * @param height in pixels
     * @param data palette indices row by row, the leftmost pixel in a byte's highest bits
     * @param bytesPerLine the bytes of a row
     * @param depth the bits of a pixel: 1, 2, 4 or 8; an image of 2 is stored with 4
     * @param red the palette's red, 0 to 255 each
     * @param green the palette's green
     * @param blue the palette's blue
     * @param paletteSize the number of colours; 0 for as many, black, as a pixel can count
     * @param transparentIndex the index whose pixels are not drawn; -1 for none
     * @return the image; 0 when it cannot be made. Errors: "Not enough memory to create image"
     *     (-4), "Unable to create device-independent image handle" (-3), no message (-4)
     *     without memory
     */
    public static native int Image_NewFromByteData(
            int device,
            int width,
            int height,
            byte[] data,
            int bytesPerLine,
            int depth,
            byte[] red,
            byte[] green,
            byte[] blue,
            int paletteSize,
            int transparentIndex);

    /**
     * Decodes the contents of an image file, of whatever formats the device knows. Palettes of up
     * to 256 colours and 24 bits without alpha stay as they are; all else becomes 32 bits with
     * alpha. The thread must not use COM in an apartment of its own.
     *
     * @param device not looked at
     * @param data the file's contents
     * @param length how many bytes of it count
     * @return the image; 0 when it cannot be decoded. Errors: "Failed to create an IStream from a
     *     memory location" (-3), "Failed to initialize COM" (-3), "Failed to create
     *     IImagingFactory" (-3), "Failed to create IImageDecoder from IStream" (-6): no known
     *     format, "Failed to begin decoding" (-8), "Failed to decode image" (-8), no message
     *     (-4) without memory
     */
    public static native int Image_NewFromFileData(int device, byte[] data, int length);

    /**
     * The size of an image.
     *
     * @param image the image
     * @return 0, 0, width, height
     */
    public static native int[] Image_GetBounds(int image);

    /**
     * The depth of an image.
     *
     * @param image the image
     * @return bits per pixel
     */
    public static native int Image_GetDepth(int image);

    /**
     * Reads colours of an image of 24 bits per pixel; the bytes of another depth are taken as if
     * they were such pixels. What lies outside the image or the array is left out.
     *
     * @param image the image
     * @param x of the rectangle
     * @param y of the rectangle
     * @param width of the rectangle
     * @param height of the rectangle
     * @param offset where the first pixel goes
     * @param scanSize how much further each next row begins
     * @param out receives 0xFFRRGGBB for each pixel
     */
    public static native void Image_GetRGB(
            int image, int x, int y, int width, int height, int offset, int scanSize, int[] out);

    /**
     * Ends an image. Graphics contexts on it may still draw, and end later.
     *
     * @param image the image
     */
    public static native void Image_Dispose(int image);
}
