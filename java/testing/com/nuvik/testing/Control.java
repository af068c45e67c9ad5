package com.nuvik.testing;

import java.util.ArrayList;
import java.util.List;

/**
 * Something on the device's screen: a control, a shell, an item of a list or a menu. What is read is
 * what it shows now, once the device is idle; what is done is done as a person does it, and what a
 * person cannot do fails with the reason. Every method fails with {@link TestFailure} when the control
 * is not there any more.
 */
public final class Control {
    private static final int SCROLL_ARROW = 7; // from the bar's end to the middle of its arrow

    private final Device device;
    private final Part found;

    Control(Device device, Part found) {
        this.device = device;
        this.found = found;
    }

    private Part now() {
        return in(device.tree());
    }

    private Part in(Tree tree) {
        Part part = tree.sameAs(found);
        if (part == null) throw new TestFailure(found.named() + " is not there any more");
        return part;
    }

    /**
     * What kind of control it is.
     *
     * @return the kind
     */
    public Kind kind() {
        return found.kind;
    }

    /**
     * The text that it shows: a label, a title, what stands in a field.
     *
     * @return the text, lines ending with a line feed; empty for none
     */
    public String text() {
        return now().text();
    }

    /**
     * Tells whether it takes part in anything: itself and all that it lies in are enabled.
     *
     * @return false for one that is disabled, or lies in something disabled
     */
    public boolean isEnabled() {
        return Tree.disabledAround(now()) == null;
    }

    /**
     * Tells whether a part of it is on the screen, covered or not.
     *
     * @return false for one that is hidden or scrolled away
     */
    public boolean isShown() {
        return now().isShown();
    }

    /**
     * Tells whether it is checked, as check boxes, radio buttons and menu items are.
     *
     * @return whether it is
     */
    public boolean isChecked() {
        return now().isChecked();
    }

    /**
     * Tells whether it has the focus, so that keys go to it.
     *
     * @return whether it has
     */
    public boolean isFocused() {
        return now().isFocused();
    }

    /**
     * Tells whether it is the active window, or a selected item.
     *
     * @return whether it is
     */
    public boolean isSelected() {
        Part part = now();
        return part.isSelected() || part.isActive();
    }

    /**
     * Where it is on the screen.
     *
     * @return x, y, width and height in pixels
     */
    public int[] bounds() {
        Part part = now();
        return new int[] {part.x, part.y, part.width, part.height};
    }

    /**
     * The selected characters of a text.
     *
     * @return the first one, and the one behind the last
     */
    public int[] selection() {
        Part part = now();
        if (part.kind != Kind.TEXT) throw new TestFailure(part.named() + " has no selected characters");
        String[] range = part.value.split("-");
        return new int[] {Integer.parseInt(range[0]), Integer.parseInt(range[1])};
    }

    /**
     * Where a scroll bar stands, a control's own or one in the control.
     *
     * @return its value
     */
    public int scrollPosition() {
        Part part = now();
        if (part.kind == Kind.TEXT || part.value.isEmpty() || !part.part.equals("window")) {
            throw new TestFailure(part.named() + " has no scroll bar that tells a value");
        }
        return Integer.parseInt(part.value);
    }

    /**
     * The items of a list, choice or open menu, from the first.
     *
     * @return their texts
     */
    public List<String> items() {
        return textsOfItems(false);
    }

    /**
     * The selected items of a list or choice.
     *
     * @return their texts, from the first
     */
    public List<String> selectedItems() {
        return textsOfItems(true);
    }

    private List<String> textsOfItems(boolean selectedOnly) {
        List<String> texts = new ArrayList<>();
        for (Part child : now().children) {
            boolean isItem = child.kind == Kind.ITEM || child.kind == Kind.MENU_ITEM;
            if (isItem && !child.isSeparator() && (!selectedOnly || child.isSelected())) {
                texts.add(child.text());
            }
        }
        return texts;
    }

    /**
     * What lies in it, without what lies in that.
     *
     * @return the controls, in the order of the tree
     */
    public List<Control> children() {
        List<Control> children = new ArrayList<>();
        for (Part child : now().children) children.add(new Control(device, child));
        return children;
    }

    /**
     * Finds what lies in it, at any depth.
     *
     * @param kind what kind it is
     * @param text what it shows; null for any
     * @return the only such control
     */
    public Control find(Kind kind, String text) {
        return device.findIn(now(), kind, text);
    }

    /** Taps it where it can be reached. */
    public void tap() {
        Part part = reachable("tapped");
        device.tap(part.tapX, part.tapY);
    }

    /** Taps it twice, as fast as it takes to be one double tap. */
    public void doubleTap() {
        Part part = reachable("tapped");
        device.doubleTap(part.tapX, part.tapY);
    }

    /** Taps it and holds, until that is more than a tap. */
    public void tapAndHold() {
        Part part = reachable("tapped");
        device.tapAndHold(part.tapX, part.tapY);
    }

    /**
     * Taps a place of it.
     *
     * @param x pixels from its left edge
     * @param y pixels from its top edge
     */
    public void tapAt(int x, int y) {
        Part part = reachable("tapped");
        device.tap(part.x + x, part.y + y);
    }

    /**
     * Taps a place of it and holds, until that is more than a tap.
     *
     * @param x pixels from its left edge
     * @param y pixels from its top edge
     */
    public void tapAndHoldAt(int x, int y) {
        Part part = reachable("tapped");
        device.tapAndHold(part.x + x, part.y + y);
    }

    /**
     * Presses it, moves the pointer and lets go.
     *
     * @param dx pixels to the right
     * @param dy pixels down
     */
    public void drag(int dx, int dy) {
        Part part = reachable("dragged");
        device.drag(part.tapX, part.tapY, part.tapX + dx, part.tapY + dy);
    }

    /**
     * Types where the cursor is in it, after a tap on it when it has not the focus.
     *
     * @param text what to type; a line feed is the Return key
     */
    public void type(String text) {
        focus();
        device.type(text);
    }

    /**
     * Types a text in the place of all that stands in it.
     *
     * @param text what it shows then
     */
    public void enter(String text) {
        focus();
        device.press("ctrl+home");
        device.press("ctrl+shift+end");
        if (text.isEmpty()) device.press("delete");
        device.type(text);
    }

    private void focus() {
        Part part = now();
        if (part.kind != Kind.TEXT && part.kind != Kind.CHOICE) {
            throw new TestFailure(part.named() + " takes no text");
        }
        if (!part.isFocused()) tap();
    }

    /**
     * Chooses an item of a list or choice, which is scrolled to it before.
     *
     * @param item its text
     */
    public void choose(String item) {
        Part part = now();
        if (part.kind == Kind.CHOICE) {
            mustHave(part, item);
            tap();
            new Control(device, device.only(Kind.OPEN_LIST, null)).choose(item);
            return;
        }
        if (part.kind != Kind.LIST && part.kind != Kind.OPEN_LIST) {
            throw new TestFailure(part.named() + " has no items to choose of");
        }
        mustHave(part, item);
        scrollTo(item);
        find(Kind.ITEM, item).tap();
    }

    private void mustHave(Part part, String item) {
        if (items().contains(item)) return;
        throw new TestFailure(
                part.named() + " has no item \"" + item + "\"; it has: " + String.join(", ", items()));
    }

    private void scrollTo(String item) {
        Part list = now();
        for (Part part = itemOf(list, item); !part.canBeReached(); part = itemOf(list, item)) {
            int before = part.y;
            boolean isAbove = isBeforeShown(list, part);
            device.tap(
                    list.x + list.width - SCROLL_ARROW,
                    isAbove ? list.y + SCROLL_ARROW : list.y + list.height - SCROLL_ARROW);
            String position = list.value;
            list = now();
            if (itemOf(list, item).y == before && list.value.equals(position)) {
                throw new TestFailure(list.named() + " cannot be scrolled to \"" + item + "\"");
            }
        }
    }

    private static Part itemOf(Part list, String text) {
        for (Part child : list.children) if (child.text().equals(text)) return child;
        throw new TestFailure(list.named() + " has no item \"" + text + "\" any more");
    }

    private static boolean isBeforeShown(Part list, Part item) {
        for (Part child : list.children) {
            if (child == item) return true;
            if (child.isOnScreen()) return false;
        }
        return false;
    }

    /**
     * What it shows.
     *
     * @return the picture of its place on the screen, with what covers it
     */
    public Picture picture() {
        int[] bounds = bounds();
        return device.screenshot().part(bounds[0], bounds[1], bounds[2], bounds[3]);
    }

    private Part reachable(String done) {
        Tree tree = device.tree();
        Part part = in(tree);
        String reason = reasonAgainst(tree, part);
        if (reason == null) return part;
        throw new TestFailure(part.named() + " cannot be " + done + ": " + reason);
    }

    private static String reasonAgainst(Tree tree, Part part) {
        if (!part.isVisible()) return "it is hidden";
        if (!part.isEnabled()) return "it is disabled";
        Part disabled = Tree.disabledAround(part);
        if (disabled != null) return disabled.named() + " around it is disabled";
        if (!part.isOnScreen()) {
            return "it lies outside what is shown, at " + part.x + "," + part.y;
        }
        if (part.canBeReached()) return null;
        Part coverer = tree.withHandle(part.coverer);
        return (coverer == null ? "something" : coverer.named()) + " covers it";
    }

    /** How a sentence calls it, such as {@code the button "Tap me"}. */
    @Override
    public String toString() {
        return found.named();
    }
}
