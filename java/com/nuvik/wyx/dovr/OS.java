package com.nuvik.wyx.dovr;

/**
 * The widget layer of the toolkit's natives. Handles, errors, threads and units are those of the
 * base layer, {@link com.nuvik.wyx.k4tr.OS}, which also says who ends what.
 */
public final class OS {
    static {
        System.loadLibrary("zemvolt11");
    }

    private OS() {}

    // Display

    /**
     * Sounds the system's beep.
     *
     * @param display the display
     */
    public static native void Display_Beep(int display);

    /**
     * What the system's own bars take from the screen's edges.
     *
     * @param display the display
     * @return left, top, right, bottom
     */
    public static native int[] Display_GetInsets(int display);

    /**
     * Presses or releases a key, as if on the keyboard.
     *
     * @param display the display
     * @param type 1 presses, any other releases
     * @param key the toolkit's key code, or a character
     * @param character not looked at
     * @return true
     */
    public static native boolean Display_PostKeyEvent(
            int display, int type, int key, char character);

    /**
     * Presses or releases a pointer button where the pointer is.
     *
     * @param display the display
     * @param type 1 presses, any other releases
     * @param button 8 left, 16 middle, 32 right
     * @return false for another button, or when the system refuses
     */
    public static native boolean Display_PostPointerEvent(int display, int type, int button);

    /**
     * Moves the pointer.
     *
     * @param display the display
     * @param x on the screen
     * @param y on the screen
     * @return false when the system refuses
     */
    public static native boolean Display_PostPointerMoveEvent(int display, int x, int y);

    /**
     * Leaves no control with the focus.
     *
     * @param display the display
     */
    public static native void Display_ClearFocus(int display);

    /**
     * Does nothing on this platform.
     *
     * @param display the display
     * @param shell the shell
     */
    public static native void Display_SetFullScreenShell(int display, int shell);

    /**
     * Makes a colour like one of the system's.
     *
     * @param device the display
     * @param id 0 to 25: desktop; active caption, its text and border; inactive caption, its text
     *     and border; window, its frame and text; menu, its text; text field, its text; highlight,
     *     its text; disabled text; control, its text; control's light, highlight, shadow and dark
     *     shadow; scroll bar; tool tip, its text
     * @return the colour, which is the caller's; 0 on an error: "Unrecognized color ID" (-3)
     */
    public static native int Display_GetSystemColor(int device, int id);

    // Devices: the screen

    /**
     * The resolution of the screen.
     *
     * @param device the display
     * @return pixels per inch across and down
     */
    public static native int[] Device_GetDPI(int device);

    /**
     * The depth of the screen.
     *
     * @param device the display
     * @return bits per pixel
     */
    public static native int Device_GetDepth(int device);

    /**
     * Whether the screen's pixels hold colours and not palette indices.
     *
     * @param device the display
     * @return true for a depth of more than 8
     */
    public static native boolean Device_IsDirect(int device);

    /**
     * Where the screen's pixels hold the components of a colour.
     *
     * @param device the display
     * @return the masks of red, green, blue and alpha; all 0 for a screen without them. Null on an
     *     error: "Cannot get DC for handle" with the system's text
     */
    public static native int[] Device_GetDirectPaletteMasks(int device);

    /**
     * Reads the system's palette. Errors: "Cannot get DC for handle" with the system's text,
     * "Unable to retrieve system palette entries" (-3) for a screen without a palette.
     *
     * @param device the display
     * @param reds receives the red components; as many entries are read as the shortest array holds
     * @param greens receives the green components
     * @param blues receives the blue components
     */
    public static native void Device_GetIndexedPalette(
            int device, byte[] reds, byte[] greens, byte[] blues);

    /**
     * Always an error without a message (-1): copying from the screen is not offered.
     *
     * @param device the display
     * @param graphics the target
     * @param x of the area
     * @param y of the area
     * @param width of the area
     * @param height of the area
     */
    public static native void Device_CopyArea(
            int device, int graphics, int x, int y, int width, int height);

    /**
     * The free memory for accelerated drawing, of which the device has none.
     *
     * @param device the display
     * @return always 0
     */
    public static native int Device_GetAvailableAcceleratedMemory(int device);

    // Platform

    /**
     * What the platform can do.
     *
     * @param id the capability
     * @return 1 for id 2, 4158 for id 4, else 0
     */
    public static native int Platform_GetCapability(int id);

    // Controls: all widgets with a window

    /**
     * Smallest useful size of a control.
     *
     * @param control the control
     * @return width, height; 0, 0 when its type asks for nothing
     */
    public static native int[] Control_GetMinimumSize(int control);

    /**
     * Lets a control take input, or not. A shell outside the current modal shell stays disabled
     * until that one goes.
     *
     * @param control the control
     * @param enabled whether it takes input
     */
    public static native void Control_SetEnabled(int control, boolean enabled);

    /**
     * Switches the drawing of a control and all in it off or on. What was not drawn meanwhile is
     * drawn then.
     *
     * @param control the control
     * @param redraw whether it draws
     */
    public static native void Control_SetRedraw(int control, boolean redraw);

    /**
     * Gives a control the focus.
     *
     * @param control the control
     * @return true when it has it already, or another window had it; false when the control or its
     *     parent is hidden or disabled
     */
    public static native boolean Control_ForceFocus(int control);

    /**
     * Sets the background colour of a control and redraws it.
     *
     * @param control the control
     * @param color the colour, which the control keeps; 0 for the default
     */
    public static native void Control_SetBackground(int control, int color);

    /**
     * Sets the text colour of a control and redraws it.
     *
     * @param control the control
     * @param color the colour, which the control keeps; 0 for the default
     */
    public static native void Control_SetForeground(int control, int color);

    /**
     * The background colour of a control, or the default one where none is set.
     *
     * @param control the control
     * @return 0xRRGGBB
     */
    public static native int Control_GetBackgroundRGB(int control);

    /**
     * The text colour of a control, or the default one where none is set.
     *
     * @param control the control
     * @return 0xRRGGBB
     */
    public static native int Control_GetForegroundRGB(int control);

    /**
     * Whether a control without a background colour shows its parent's.
     *
     * @param control the control
     * @return true for shells, composites and the like
     */
    public static native boolean Control_InheritsBackground(int control);

    /**
     * Sets the font of a control's text and redraws it.
     *
     * @param control the control
     * @param font the font, which the control keeps; 0 for the default
     */
    public static native void Control_SetFont(int control, int font);

    /**
     * The font of controls for which none is set.
     *
     * @param control any control of the display
     * @return the font, which stays the display's; 0 on an error: "Not enough memory to allocate
     *     font" (-4)
     */
    public static native int Control_GetDefaultFont(int control);

    /**
     * Sets the cursor over a control and shows it at once.
     *
     * @param control the control
     * @param cursor the cursor; 0 for the nearest parent's
     */
    public static native void Control_SetCursor(int control, int cursor);

    /**
     * Moves a control above another of the same parent; a control of another parent stays.
     *
     * @param control the control or shell
     * @param other the other control; 0 moves above all, and brings a shell to the foreground
     */
    public static native void Control_MoveAbove(int control, int other);

    /**
     * Moves a control below another of the same parent; a control of another parent stays.
     *
     * @param control the control or shell
     * @param other the other control; 0 moves below all
     */
    public static native void Control_MoveBelow(int control, int other);

    /**
     * Copies what a control shows to an image's corner. Errors: as for {@code Control_NewGraphics},
     * "Unable to bit blit from control to image" with the system's text.
     *
     * @param control the control
     * @param image the image
     * @param x of the rectangle in the control's client area
     * @param y of the rectangle in the control's client area
     * @param width of the rectangle
     * @param height of the rectangle
     */
    public static native void Control_CopyArea(
            int control, int image, int x, int y, int width, int height);

    // Scrollables: controls that may have bars of their own

    /**
     * The horizontal scroll bar of a shell or composite that was made with one.
     *
     * @param scrollable the shell or composite
     * @return the same bar on every call, which cannot be disposed; 0 on an error: "Unable to
     *     create scroll bar" (-4)
     */
    public static native int Scrollable_GetHorizontalBar(int scrollable);

    /**
     * The vertical scroll bar of a shell or composite that was made with one.
     *
     * @param scrollable the shell or composite
     * @return the same bar on every call, which cannot be disposed; 0 on an error: "Unable to
     *     create scroll bar" (-4)
     */
    public static native int Scrollable_GetVerticalBar(int scrollable);

    /**
     * The room that one of a scrollable's own bars takes.
     *
     * @param scrollable the shell or composite
     * @param bar its horizontal or vertical bar
     * @return x, y, width, height in pixels
     */
    public static native int[] Scrollable_GetAdjustableBounds(int scrollable, int bar);

    /**
     * Enables or disables one of a scrollable's own bars.
     *
     * @param scrollable the shell or composite
     * @param bar its horizontal or vertical bar
     * @param enabled whether it can be moved
     */
    public static native void Scrollable_SetAdjustableEnabled(
            int scrollable, int bar, boolean enabled);

    /**
     * Shows or hides one of a scrollable's own bars.
     *
     * @param scrollable the shell or composite
     * @param bar its horizontal or vertical bar
     * @param visible whether it is shown
     */
    public static native void Scrollable_SetAdjustableVisible(
            int scrollable, int bar, boolean visible);

    // Composites

    /**
     * Makes a composite: a control that holds other controls.
     *
     * @param parent the shell or composite that it lies in
     * @param style 0x800 border, 0x10000 and 0x20000 horizontal and vertical scroll bar
     * @return the composite; 0 when it cannot be made. Errors: "Argument invalid, need parent" (-3)
     *     for parent 0, "Unable to create handle for widget" with the system's text
     */
    public static native int Composite_New(int parent, int style);

    // Shells: top-level windows

    /**
     * Makes a child shell: a window of its own that belongs to another shell.
     *
     * @param parent the shell that it belongs to; must not be 0
     * @param style 0x1 OK button in the caption, 0x20 caption, 0x40 modal, 0x800 border, 0x10000 and
     *     0x20000 horizontal and vertical scroll bar
     * @return the shell; 0 when it cannot be made. Errors as for {@code Shell_New}
     */
    public static native int Shell_NewChild(int parent, int style);

    /**
     * Whether a shell is minimised, which cannot be told on this platform.
     *
     * @param shell the shell
     * @return always false
     */
    public static native boolean Shell_GetMinimized(int shell);

    /**
     * Does nothing on this platform.
     *
     * @param shell the shell
     * @param minimized whether it should be minimised
     */
    public static native void Shell_SetMinimized(int shell, boolean minimized);

    /**
     * Does nothing on this platform: shells show no image.
     *
     * @param shell the shell
     * @param image the image, or 0
     */
    public static native void Shell_SetImage(int shell, int image);

    /**
     * Lets the user size a child shell by its frame, or not. A top shell stays as it is.
     *
     * @param shell the shell
     * @param resizable whether it can be sized
     */
    public static native void Shell_SetResizable(int shell, boolean resizable);

    /**
     * Shows a menu bar in place of the one that the shell shows.
     *
     * @param shell the shell
     * @param bar a menu bar made for the shell; 0 for the empty default bar. It stays the caller's
     */
    public static native void Shell_SetMenuBar(int shell, int bar);

    // Buttons

    /**
     * Makes a push button. A click fires {@code CB_SELECTION}.
     *
     * @param parent the shell or composite that it lies in
     * @param style 1 left, 2 centred, 4 right, 0x800 border
     * @return the button; 0 when it cannot be made. Error: "Unable to create handle for widget" with
     *     the system's text
     */
    public static native int PushButton_New(int parent, int style);

    /**
     * Makes a check box. A click toggles it and fires {@code CB_SELECTION}.
     *
     * @param parent the shell or composite that it lies in
     * @param style 1 left, 2 centred, 4 right, 0x800 border
     * @return the check box; 0 when it cannot be made. Error: "Unable to create handle for widget"
     *     with the system's text
     */
    public static native int Checkbox_New(int parent, int style);

    /**
     * Makes a radio button. A click toggles it, also off, and fires {@code CB_SELECTION}; keeping
     * one of a group selected is the listener's task.
     *
     * @param parent the shell or composite that it lies in
     * @param style 1 left, 2 centred, 4 right, 0x800 border
     * @return the radio button; 0 when it cannot be made. Error: "Unable to create handle for
     *     widget" with the system's text
     */
    public static native int RadioButton_New(int parent, int style);

    /**
     * Sets the text of a button.
     *
     * @param button a push button, check box or radio button
     * @param label null is the empty text
     */
    public static native void Button_SetLabel(int button, String label);

    /**
     * Sets the check state of a check box or radio button without firing an event.
     *
     * @param button the button; a push button has no such state
     * @param selected whether it is checked
     */
    public static native void Button_SetSelection(int button, boolean selected);

    // Labels

    /**
     * Makes a label: text, or an image.
     *
     * @param parent the shell or composite that it lies in
     * @param style 0x2 one line, centred vertically, 0x100 the text wraps, 0x800 border
     * @return the label; 0 when it cannot be made. Error: "Unable to create handle for widget" with
     *     the system's text
     */
    public static native int Label_New(int parent, int style);

    /**
     * Sets where the text of a label stands. A label that shows an image keeps its place.
     *
     * @param label the label
     * @param alignment 1 left, 4 right, 2 centred, looked for in this order; none of them is left
     */
    public static native void Label_SetAlignment(int label, int alignment);

    /**
     * Sets the text of a label. A label that shows an image goes on showing it.
     *
     * @param label the label
     * @param text null is the empty text
     */
    public static native void Label_SetText(int label, String text);

    // Text fields, text areas and what both have

    /**
     * Makes a text field: one line of text that scrolls by itself. What a person types, and
     * {@code AbstractTextComponent_SetText}, fire {@code CB_TEXT_MODIFIED}.
     *
     * @param parent the shell or composite that it lies in
     * @param style 0x800 border
     * @return the field; 0 when it cannot be made. Error: "Unable to create handle for widget" with
     *     the system's text
     */
    public static native int TextField_New(int parent, int style);

    /**
     * The least size of a text field in its font.
     *
     * @param field the field
     * @param columns the number of characters that find room in it
     * @return width and height in pixels
     */
    public static native int[] TextField_GetMinimumSize(int field, int columns);

    /**
     * Makes a text area: many lines of text. Where it has no scroll bar it scrolls by itself. It
     * fires {@code CB_TEXT_MODIFIED} as a text field does.
     *
     * @param parent the shell or composite that it lies in
     * @param style 0x100 lines wrap, 0x800 border, 0x10000 and 0x20000 horizontal (not where lines
     *     wrap) and vertical scroll bar
     * @return the area; 0 when it cannot be made. Error: "Unable to create handle for widget" with
     *     the system's text
     */
    public static native int TextArea_New(int parent, int style);

    /**
     * The least size of a text area in its font.
     *
     * @param area the area
     * @param rows the number of lines that find room in it
     * @param columns the number of characters of a line that do
     * @return width and height in pixels
     */
    public static native int[] TextArea_GetMinimumSize(int area, int rows, int columns);

    /**
     * The length of a text.
     *
     * @param text the text field or text area
     * @return the number of chars; every line break counts two
     */
    public static native int AbstractTextComponent_GetCharCount(int text);

    /**
     * The selected range of a text. Without selection it is empty and tells where the caret is.
     *
     * @param text the text field or text area
     * @return start and end, in chars
     */
    public static native int[] AbstractTextComponent_GetSelection(int text);

    /**
     * The selected part of a text.
     *
     * @param text the text field or text area
     * @return the part; empty when nothing is selected, null on failure. Errors: "Unable to allocate
     *     memory for text" (-3), "Unable to allocate memory to substring selection text" (-3)
     */
    public static native String AbstractTextComponent_GetSelectionText(int text);

    /**
     * The whole text.
     *
     * @param text the text field or text area
     * @return the text, lines being broken by CR LF; null on failure. Error: "Unable to allocate
     *     memory for text" (-3)
     */
    public static native String AbstractTextComponent_GetText(int text);

    /**
     * Replaces a part of a text without firing {@code CB_TEXT_MODIFIED}. The caret comes to stand
     * behind the new part.
     *
     * @param text the text field or text area
     * @param characters the new part, its lines broken as in {@code AbstractTextComponent_SetText};
     *     null is the empty text
     * @param start the start of the old part, in chars
     * @param end its end; the same as its start to insert. Error: "Unable to allocate memory for
     *     text" (-3)
     */
    public static native void AbstractTextComponent_Replace(
            int text, String characters, int start, int end);

    /**
     * Selects the whole text. The view stays where it is.
     *
     * @param text the text field or text area
     */
    public static native void AbstractTextComponent_SelectAll(int text);

    /**
     * Moves the caret, and the view to it. Nothing is selected then.
     *
     * @param text the text field or text area
     * @param position in chars; beyond the end it is the end
     */
    public static native void AbstractTextComponent_SetCaretPosition(int text, int position);

    /**
     * Hides a text field's text behind a character. A text area shows its text all the same.
     *
     * @param text the text field or text area
     * @param echo the character that is shown for every other; 0 shows the text
     */
    public static native void AbstractTextComponent_SetEchoChar(int text, char echo);

    /**
     * Sets whether a person may change a text.
     *
     * @param text the text field or text area
     * @param editable false lets the text only be looked at and selected
     */
    public static native void AbstractTextComponent_SetEditable(int text, boolean editable);

    /**
     * Selects a part of a text and moves the view to the caret.
     *
     * @param text the text field or text area
     * @param start in chars; -1 selects nothing
     * @param end in chars; beyond the end, and -1, it is the end
     */
    public static native void AbstractTextComponent_SetSelection(int text, int start, int end);

    /**
     * Sets the whole text and fires {@code CB_TEXT_MODIFIED}.
     *
     * @param text the text field or text area
     * @param characters the text; null is the empty text. Lines may be broken by LF or by CR LF, but
     *     by the same throughout. Error: "Unable to allocate memory for text" (-3)
     */
    public static native void AbstractTextComponent_SetText(int text, String characters);

    // Choices

    /**
     * Makes a choice: a field that shows one of several items, and a list of seven of them that
     * drops from it. What a person selects fires {@code CB_CHOICE_SELECTION} with the item's index.
     * The room for the dropped list is added to the height that {@code Control_SetBounds} gives.
     *
     * @param parent the shell or composite that it lies in
     * @return the choice; 0 when it cannot be made. Error: "Unable to create handle for widget" with
     *     the system's text
     */
    public static native int Choice_New(int parent);

    /**
     * Adds an item to a choice.
     *
     * @param choice the choice
     * @param item the item's text; null is the empty text
     * @param index of the item that it comes to stand before; -1 appends. Errors, with the system's
     *     text: "Index is out of valid range for combo", "Unable to add item to combo"
     */
    public static native void Choice_AddItem(int choice, String item, int index);

    /**
     * Removes an item from a choice. A negative index, and that right behind the last item, do
     * nothing.
     *
     * @param choice the choice
     * @param index of the item. Error: "Invalid range of item to remove from combo" (-3)
     */
    public static native void Choice_RemoveItem(int choice, int index);

    /**
     * Removes all items from a choice.
     *
     * @param choice the choice
     */
    public static native void Choice_RemoveAllItems(int choice);

    /**
     * Selects an item of a choice without firing an event.
     *
     * @param choice the choice
     * @param index of the item; any other index selects none and is an error: "Unable to select item
     *     in combo" with the system's text
     */
    public static native void Choice_SelectItem(int choice, int index);

    /**
     * The selected item of a choice.
     *
     * @param choice the choice
     * @return its index; -1 when none is selected
     */
    public static native int Choice_GetSelectedItemIndex(int choice);

    // Lists

    /**
     * Makes a list: items of text of which one, or in multiple mode several, can be selected.
     *
     * @param parent the shell or composite that it lies in
     * @param style 0x800 border, 0x10000 horizontal and 0x20000 vertical scroll bar, 0x800000
     *     multiple mode
     * @return the list; 0 when it cannot be made. Error: "Unable to create handle for widget" with
     *     the system's text
     */
    public static native int List_New(int parent, int style);

    /**
     * Inserts an item into a list.
     *
     * @param list the list
     * @param item null is the empty text
     * @param index where it comes to stand, from 0; -1 appends it. Errors with the system's text:
     *     "Index is out of valid range for list" and "Unable to add item to list"
     */
    public static native void List_Add(int list, String item, int index);

    /**
     * Replaces an item of a list. It stays selected if it was, and the list where it is scrolled
     * to.
     *
     * @param list the list
     * @param index of the item, from 0. Errors with the system's text: "Invalid index of item to
     *     remove from list", "Unable to remove item from list" and those of {@link #List_Add}
     * @param item null is the empty text
     */
    public static native void List_SetItem(int list, int index, String item);

    /**
     * Removes an item of a list. The items in view stay there when it lay above them.
     *
     * @param list the list
     * @param index of the item, from 0. Errors with the system's text: "Invalid index of item to
     *     remove from list" and "Unable to remove item from list"
     */
    public static native void List_Remove(int list, int index);

    /**
     * Removes all items of a list.
     *
     * @param list the list
     */
    public static native void List_RemoveAll(int list);

    /**
     * Selects an item of a list; in multiple mode those selected before stay selected. Fires no
     * event.
     *
     * @param list the list
     * @param index of the item, from 0; without an item there nothing happens
     */
    public static native void List_Select(int list, int index);

    /**
     * Selects items of a list one after the other, as {@link #List_Select} does. More than one in
     * single mode is ignored.
     *
     * @param list the list
     * @param indices of the items; null is none
     * @param count how many of the indices count; below 1 nothing happens
     */
    public static native void List_SelectIndices(int list, int[] indices, int count);

    /**
     * Ends the selection of one item of a list. Fires no event.
     *
     * @param list the list
     * @param index of the item; nothing happens when it is not selected
     */
    public static native void List_Deselect(int list, int index);

    /**
     * Tells whether an item of a list is selected.
     *
     * @param list the list
     * @param index of the item, from 0
     * @return false also without an item there
     */
    public static native boolean List_IsSelected(int list, int index);

    /**
     * Tells how many items of a list are selected.
     *
     * @param list the list
     * @return their number. Error: "Unable to get selection count from multiple select listbox" with
     *     the system's text
     */
    public static native int List_GetSelectionCount(int list);

    /**
     * Tells which item of a list is selected.
     *
     * @param list the list
     * @return the first selected item, or -1. Errors with the system's text: "Unable to get selection
     *     count from multiple-select list box" and "Unable to get selection from multiple select
     *     listbox", with the result 0
     */
    public static native int List_GetSelectionIndex(int list);

    /**
     * Tells which items of a list are selected.
     *
     * @param list the list
     * @return their indices, ascending; empty without a selection. Errors: "Unable to get selection
     *     count from list", and "Unable to get selection from list" with the system's text or
     *     without memory for them, with the result null
     */
    public static native int[] List_GetSelectionIndices(int list);

    /**
     * Switches the selection mode of a list. It keeps its items, font, focus and how far it is
     * scrolled; in single mode the first of several selected items stays selected.
     *
     * @param list the list
     * @param multiple whether several items can be selected. Errors: "Unable to create handle for
     *     widget" with the system's text, "Unable to add item to list"
     */
    public static native void List_SetMultipleMode(int list, boolean multiple);

    /**
     * Scrolls an item of a list to the top, as far as the items behind it allow.
     *
     * @param list the list
     * @param index of the item; without an item there the list is scrolled to its end
     */
    public static native void List_SetTopItemIndex(int list, int index);

    /**
     * Tells the least room that a list wants.
     *
     * @param list the list
     * @param rows how many items are to be in view
     * @return width and height in pixels
     */
    public static native int[] List_GetMinimumSize(int list, int rows);

    // Scroll bars, and what those of scrollables have too

    /**
     * Makes a vertical scroll bar of 0 to 100 with a visible amount of 10. Moving it fires {@code
     * CB_SCROLL}.
     *
     * @param parent the shell or composite that it lies in
     * @return the bar; 0 when it cannot be made. Error: "Unable to create handle for widget" with
     *     the system's text
     */
    public static native int Scrollbar_New(int parent);

    /**
     * Turns a scroll bar, which keeps its place. Error: "Unable to create handle for widget" with
     * the system's text.
     *
     * @param bar a bar made with {@code Scrollbar_New}
     * @param orientation 8 vertical, 16 horizontal; any other changes nothing
     */
    public static native void Scrollbar_SetOrientation(int bar, int orientation);

    /**
     * The lower end of a scroll bar's range.
     *
     * @param bar the bar
     * @return the minimum
     */
    public static native int Adjustable_GetMinimum(int bar);

    /**
     * The upper end of a scroll bar's range.
     *
     * @param bar the bar
     * @return the maximum
     */
    public static native int Adjustable_GetMaximum(int bar);

    /**
     * The value of a scroll bar.
     *
     * @param bar the bar
     * @return the value; 0 when the system does not tell it
     */
    public static native int Adjustable_GetValue(int bar);

    /**
     * The part of the range that is visible at a time, which the thumb's size shows.
     *
     * @param bar the bar
     * @return the amount
     */
    public static native int Adjustable_GetVisibleAmount(int bar);

    /**
     * Sets the lower end of a scroll bar's range.
     *
     * @param bar the bar
     * @param value the minimum
     */
    public static native void Adjustable_SetMinimum(int bar, int value);

    /**
     * Sets the upper end of a scroll bar's range.
     *
     * @param bar the bar
     * @param value the maximum
     */
    public static native void Adjustable_SetMaximum(int bar, int value);

    /**
     * Sets the value of a scroll bar without firing an event. A visible bar keeps it within its
     * range.
     *
     * @param bar the bar
     * @param value the value
     */
    public static native void Adjustable_SetValue(int bar, int value);

    /**
     * Sets the part of the range that is visible at a time.
     *
     * @param bar the bar
     * @param amount the amount; 0 for a thumb of fixed size
     */
    public static native void Adjustable_SetVisibleAmount(int bar, int amount);

    /**
     * Sets the step of a scroll bar's arrows.
     *
     * @param bar the bar
     * @param value any number
     */
    public static native void Adjustable_SetUnitIncrement(int bar, int value);

    /**
     * Sets the step of a scroll bar's pages.
     *
     * @param bar the bar
     * @param value at least 1; anything less is ignored
     */
    public static native void Adjustable_SetBlockIncrement(int bar, int value);

    // File dialogs

    /**
     * Makes a dialog that asks for files. It shows nothing before it is opened, and is disposed of
     * like any widget.
     *
     * @param owner the shell or control that takes no input while the dialog is open
     * @param style 0x2000 asks for a file to save, 0x800000 lets several files be chosen
     * @return the dialog; 0 without memory for it. Error: "Not enough memory to allocate file dialog",
     *     as that of the other operations on dialogs
     */
    public static native int FileDialog_New(int owner, int style);

    /**
     * Sets what the caption of a dialog's owner shows while the dialog is open.
     *
     * @param dialog the dialog
     * @param title null or empty leaves the caption as it is
     */
    public static native void FileDialog_SetTitle(int dialog, String title);

    /**
     * Sets the name that a dialog starts with.
     *
     * @param dialog the dialog
     * @param name null is none
     */
    public static native void FileDialog_SetFileName(int dialog, String name);

    /**
     * Sets the folder that a dialog starts in.
     *
     * @param dialog the dialog
     * @param path null is the system's choice
     */
    public static native void FileDialog_SetFilterPath(int dialog, String path);

    /**
     * Opens a dialog and waits until it is closed. Called on a thread that is not the display's, it
     * runs on a thread of its own.
     *
     * @param dialog the dialog
     * @return whether a file was chosen. Error: "Unable to create thread for file dialog" with the
     *     system's text
     */
    public static native boolean FileDialog_Open(int dialog);

    /**
     * Tells the folder of what was chosen, or the one that was set.
     *
     * @param dialog the dialog
     * @return null for none; of one chosen file with the backslash at its end
     */
    public static native String FileDialog_GetFilterPath(int dialog);

    /**
     * Hands over the names of the files that were chosen last.
     *
     * @param dialog the dialog, which has them no longer then
     * @return the names without their folder; empty when none were chosen
     */
    public static native String[] FileDialog_GetFileNames(int dialog);

    // Clipboard

    /**
     * Tells the text of the clipboard.
     *
     * @return null when it holds no text. Errors with the system's text: "Unabled to open clipboard"
     *     (spelt so), "Unable to copy text from clipboard", "Unable to close the clipboard"; without
     *     memory for the text: "Cannot create copy of global string"
     */
    public static native String Clipboard_GetText();

    /**
     * Replaces all that the clipboard holds by a text.
     *
     * @param text null is the empty text. Errors with the system's text: "Unable to open the
     *     clipboard", "Unable to empty the clipboard", "Unable to set text in clipboard", "Unable to
     *     close the clipboard"; without memory for the text: "Unable to allocate global copy of text"
     */
    public static native void Clipboard_SetText(String text);

    // Menus

    /**
     * Makes a menu bar, which {@code Shell_SetMenuBar} shows.
     *
     * @param shell the shell that it belongs to
     * @return the bar; 0 on an error: "Unable to create menu bar!" (-4)
     */
    public static native int MenuBar_New(int shell);

    /**
     * Makes a menu for cascade items.
     *
     * @param owner the shell that it belongs to
     * @return the menu; 0 on an error: "Unable to create drop down menu handle!" with the system's
     *     text
     */
    public static native int DropDownMenu_New(int owner);

    /**
     * Makes a menu that {@code PopupMenu_Show} shows.
     *
     * @param owner the control that it belongs to
     * @return the menu; 0 on an error: "Unable to create popup menu handle!" with the system's text
     */
    public static native int PopupMenu_New(int owner);

    /**
     * Shows a pop-up menu until the user chooses an item or leaves it. Choosing fires the item's
     * {@code CB_MENU_SELECTION}.
     *
     * @param menu the menu
     * @param x of its corner, from the left of the owner's client area
     * @param y of its corner, from the top of the owner's client area
     */
    public static native void PopupMenu_Show(int menu, int x, int y);

    /**
     * Does nothing: the system draws menus in its own font.
     *
     * @param menu the menu
     * @param font the font, or 0
     */
    public static native void Menu_SetFont(int menu, int font);

    // Menu items

    /**
     * Adds an item that fires {@code CB_MENU_SELECTION} with 0 when it is chosen.
     *
     * @param menu a menu of any kind
     * @param index where it goes: 0 to the number of items
     * @return the item; 0 on an error: "Unable to create new menu item" (-3)
     */
    public static native int PushMenuItem_New(int menu, int index);

    /**
     * Adds a line between items.
     *
     * @param menu a menu of any kind
     * @param index where it goes: 0 to the number of items
     * @return the item; 0 on an error: "Unable to create new menu item" (-3)
     */
    public static native int SeparatorItem_New(int menu, int index);

    /**
     * Adds an item that opens a menu.
     *
     * @param menu a menu of any kind
     * @param index where it goes: 0 to the number of items
     * @return the item; 0 on an error: "Unable to create new menu item" (-3)
     */
    public static native int CascadeMenuItem_New(int menu, int index);

    /**
     * Sets the menu that a cascade item opens. An item that was disabled is enabled by it. Errors
     * with the system's text: "Unable to find the item", "Unable to get the menu item text",
     * "Unable to insert new cascade menu item", "Unable to delete old menu item".
     *
     * @param item the cascade item
     * @param menu a drop-down menu; 0 for none. It stays the caller's
     */
    public static native void CascadeMenuItem_SetMenu(int item, int menu);

    /**
     * Adds an item with a check mark. Choosing it turns the mark over, then fires {@code
     * CB_MENU_SELECTION} with 0.
     *
     * @param menu a drop-down or pop-up menu
     * @param index where it goes: 0 to the number of items
     * @param style 16 for an item that is one of a choice, else 0
     * @return the item; 0 on an error: "Unable to create new menu item" (-3)
     */
    public static native int StateMenuItem_New(int menu, int index, int style);

    /**
     * Sets the check mark of an item. Error: "Menu item doesn't exist" (-3).
     *
     * @param item the item
     * @param checked whether it has the mark
     */
    public static native void StateMenuItem_SetSelection(int item, boolean checked);

    /**
     * Sets the text of an item. Errors: "Unable to set menu item text" (-3) in a menu bar; "Unable
     * to find the item", "Unable to update the menu item's label" with the system's text in other
     * menus; an empty message (-4) without memory.
     *
     * @param item the item
     * @param text null is the empty text. Every ampersand is left out
     * @param acceleratorText the name of the accelerator, shown at the right but in menu bars; null
     *     or empty for none
     */
    public static native void LabeledMenuItem_SetText(
            int item, String text, String acceleratorText);

    /**
     * Sets the key that chooses an item while the item's shell is active. Errors: "Not enough space
     * to create accelerator table" (-4), "Not enough space to grow accelerator table" (-4).
     *
     * @param item the item
     * @param accelerator the key code in the low 16 bits and the modifiers above them: 1 Alt, 2
     *     Shift, 4 Control; 0 for none
     */
    public static native void LabeledMenuItem_SetAccelerator(int item, int accelerator);

    /**
     * Does nothing: the system draws menus in its own font.
     *
     * @param item the item
     * @param font the font, or 0
     */
    public static native void LabeledMenuItem_SetFont(int item, int font);

    /**
     * Lets an item be chosen or not. Errors: "Unable to set menu item enabled state" (-3) in a menu
     * bar; "The menu item does not exist" (-3), "Unable to find the item" with the system's text in
     * other menus.
     *
     * @param item the item
     * @param enabled whether it can be chosen
     */
    public static native void AbstractMenuItem_SetEnabled(int item, boolean enabled);

    // Graphics contexts

    /**
     * Lets drawing reach the whole control or image again. Errors (-3): "Unable to create clip
     * region", "Unable to select clip region".
     *
     * @param graphics the context
     */
    public static native void Graphics_ClearClipping(int graphics);

    /**
     * Lets drawing invert by its colour, so that drawing twice leaves nothing.
     *
     * @param graphics the context
     * @param on whether it inverts
     */
    public static native void Graphics_SetXORMode(int graphics, boolean on);

    /**
     * Does nothing: lines have one style on this platform.
     *
     * @param graphics the context
     * @param first ignored
     * @param second ignored
     * @param third ignored
     */
    public static native void Graphics_SetLineNodeStyle(
            int graphics, int first, int second, int third);

    /**
     * Fills a rectangle with a colour, whatever the context's own colours and mode.
     *
     * @param graphics the context
     * @param color the colour
     * @param x of the rectangle
     * @param y of the rectangle
     * @param width of the rectangle
     * @param height of the rectangle
     */
    public static native void Graphics_FillBackground(
            int graphics, int color, int x, int y, int width, int height);

    /**
     * Copies a rectangle of what the context has drawn on.
     *
     * @param graphics the context
     * @param sourceX of the rectangle
     * @param sourceY of the rectangle
     * @param width of the rectangle
     * @param height of the rectangle
     * @param targetX of the copy
     * @param targetY of the copy
     */
    public static native void Graphics_CopyArea(
            int graphics, int sourceX, int sourceY, int width, int height, int targetX, int
            targetY);

    /**
     * Draws a rectangle of an image, stretched when the sizes differ.
     *
     * @param graphics the context
     * @param image the image
     * @param sourceX of the rectangle of the image
     * @param sourceY of the rectangle of the image
     * @param sourceWidth of the rectangle of the image
     * @param sourceHeight of the rectangle of the image
     * @param targetX where it is drawn
     * @param targetY where it is drawn
     * @param targetWidth the size drawn
     * @param targetHeight the size drawn
     */
    public static native void Graphics_DrawImageRegion(
            int graphics, int image, int sourceX, int sourceY, int sourceWidth, int sourceHeight,
            int targetX, int targetY, int targetWidth, int targetHeight);

    // Colours

    /**
     * The red component of a colour.
     *
     * @param color the colour
     * @return 0 to 255
     */
    public static native int Color_GetRed(int color);

    /**
     * The green component of a colour.
     *
     * @param color the colour
     * @return 0 to 255
     */
    public static native int Color_GetGreen(int color);

    /**
     * The blue component of a colour.
     *
     * @param color the colour
     * @return 0 to 255
     */
    public static native int Color_GetBlue(int color);

    // Fonts

    /**
     * Makes a font of a family, in a face of the system's choice.
     *
     * @param device the display
     * @param family 2 sans serif, 3 serif, 4 fixed pitch, any other for no preference
     * @param points the height in points, internal leading included; 0 for the system's own choice
     * @param style 0 plain, 2 bold, 4 italic, 8 underlined, 16 struck out
     * @return the font; 0 when it cannot be made. Errors as for {@code Font_New}
     */
    public static native int Font_NewLogical(int device, int family, int points, int style);

    /**
     * The width of a text.
     *
     * @param font the font
     * @param text null counts as empty
     * @return pixels; 0 on an error: "Failed to get screen DC", "Failed to calculate text extent"
     *     with the system's text, "Failed to select font" (-3)
     */
    public static native int Font_StringAdvance(int font, String text);

    /**
     * The name of the face that the system chose for a font.
     *
     * @param font the font
     * @return the name; null on an error: "Unable to get screen dc", "Unable to get font face
     *     length", "Unable to copy font face name into buffer" with the system's text, "Not enough
     *     memory to store font face name" (-4)
     */
    public static native String Font_GetName(int font);

    /**
     * The style of the face that the system chose for a font.
     *
     * @param font the font
     * @return 2 bold, 4 italic, 8 underlined, 16 struck out, added up
     */
    public static native int Font_GetStyle(int font);

    // Cursors

    /**
     * A cursor of the system's.
     *
     * @param device the display
     * @param type 1 arrow, 2 cross, 3 text, 4 waiting, 5 and 7 up and down, 6 and 8 left and right,
     *     9 to 12 the diagonals, 13 hand
     * @return the cursor; 0 for another type. Error: "Unable to create cursor in WinCE" (-3) when
     *     the device has no hand
     */
    public static native int Cursor_New(int device, int type);

    /**
     * Does nothing: cursors are the system's.
     *
     * @param cursor the cursor
     */
    public static native void Cursor_Dispose(int cursor);

    // Images

    /**
     * Decodes an image file, as {@code Image_NewFromFileData} of the base layer does.
     *
     * @param device not looked at
     * @param path the file
     * @return the image; 0 when it cannot be decoded. Errors as there; for a file that cannot be
     *     opened "Failed to create an IStream from a memory location" (-3)
     */
    public static native int Image_NewFromFile(int device, String path);

    /**
     * Copies an image.
     *
     * @param device not looked at
     * @param image what is copied
     * @return the copy; 0 when it cannot be made. Errors: "Unable to create device-independent
     *     image handle" with the system's text, no message (-4) without memory
     */
    public static native int Image_NewFromHandle(int device, int image);

    /**
     * Copies a rectangle of an image, mirrored or not, into a direct image of 24 bits per pixel
     * with the transparent colour of the first. The first must not be drawn into meanwhile.
     *
     * @param image what is copied
     * @param horizontal whether left and right change places
     * @param vertical whether top and bottom change places
     * @param x of the rectangle
     * @param y of the rectangle
     * @param width of the rectangle and the new image
     * @param height of the rectangle and the new image
     * @return the new image; 0 when it cannot be made. Errors: "Unable to create
     *     device-independent image handle" with the system's text, no message (-4) without
     *     memory
     */
    public static native int Image_Flip(
            int image,
            boolean horizontal,
            boolean vertical,
            int x,
            int y,
            int width,
            int height);

    /**
     * Whether an image's pixels hold colours and not palette indices.
     *
     * @param image the image
     * @return true for colours
     */
    public static native boolean Image_IsDirect(int image);

    /**
     * What an image does not draw.
     *
     * @param image the image
     * @return the colour of a direct image, 0xBBGGRR; the index of an indexed one; -1 for none
     */
    public static native int Image_GetTransparentColor(int image);

    /**
     * Where the pixels of a direct image hold their components.
     *
     * @param image the image
     * @return the masks of red, green, blue and alpha; 0 for what there is not
     */
    public static native int[] Image_GetDirectPaletteMasks(int image);

    /**
     * The palette of an indexed image: as many entries as it has, or as the shortest array has room
     * for. Errors: "Indexed palette not available for direct color image" (-3), "Unable to get DIB
     * color table" (-3).
     *
     * @param image the image
     * @param red receives the red of each entry
     * @param green receives the green of each entry
     * @param blue receives the blue of each entry
     */
    public static native void Image_GetIndexedPalette(
            int image, byte[] red, byte[] green, byte[] blue);

    /**
     * The pixels of a direct image.
     *
     * @param image the image
     * @return row by row: of 16 bits 5 red, 6 green and 5 blue; of 24 bits 0xRRGGBB; of 32 bits
     *     0xAARRGGBB. Null on an error: "Pixels High color invalid on indexed color image" (-3), no
     *     message (-4) without memory
     */
    public static native int[] Image_GetPixelsHighColor(int image);

    /**
     * The pixels of an indexed image as they are stored.
     *
     * @param image the image
     * @return the rows, each padded to a multiple of 4 bytes, the leftmost pixel in a byte's highest
     *     bits. Null on an error: "Pixels Low color invalid on direct color image" (-3)
     */
    public static native byte[] Image_GetPixelsLowColor(int image);

    /**
     * Sets one pixel of an image of 24 bits per pixel. Outside the image nothing happens.
     *
     * @param image the image
     * @param x of the pixel
     * @param y of the pixel
     * @param rgb 0xRRGGBB
     */
    public static native void Image_SetRGB(int image, int x, int y, int rgb);

    // Sounds

    /**
     * Makes a sound, which plays sound files. Sounds may be used on any thread; operations on one
     * sound wait for each other.
     *
     * @return the sound; 0 when it cannot be made. Errors without a message: -4 without memory for
     *     it, -3 when the system refuses what playing needs
     */
    public static native int Sound_New();

    /**
     * Plays a whole sound file and returns when playing has begun. A sound that plays already goes
     * on playing, and the new one sounds on top of it: stop it first if that is not meant.
     *
     * <p>Files are RIFF WAVE (linear PCM, mu-law or A-law) and ".snd" (mu-law, or linear PCM of 8 to
     * 32 bits). They have to be exactly as long as their headers say. Samples go to the device as
     * they are. Error without a message: -3 for bytes that are no such file, for a format that the
     * device does not play, and when the system fails
     *
     * @param sound the sound
     * @param data the file; it is not needed any more after the call. Null is no file (-3)
     * @param length of the file in bytes; more than data has is an error (-3)
     * @param loops -1 plays until the sound is stopped, any other number plays the file that often
     *     and once more
     */
    public static native void Sound_Play(int sound, byte[] data, int length, int loops);

    /**
     * Ends all that a sound plays, and returns when it has ended. Of a sound that plays nothing it
     * returns at once.
     *
     * @param sound the sound, or 0, which does nothing
     */
    public static native void Sound_Stop(int sound);

    /**
     * How many bytes should be played at a time: sounds are played whole.
     *
     * @param sound the sound
     * @return -1: no preferred size
     */
    public static native int Sound_GetPreferredChunkSize(int sound);

    /**
     * Stops a sound and disposes of it. Nothing else may use the sound at the time or later.
     *
     * @param sound the sound, or 0, which does nothing
     */
    public static native void Sound_Dispose(int sound);
}
