// Who has the focus, and which shell is active: nothing changes it but what is named here.

#include "desk.h"
#include "properties.h"

// A step and what it made of the desk.
struct Change {
    const Step& step;
    ControlRecord* first; // null: no control, or one that is gone
    uint32_t handle;      // of the first object
    jint result;
    const Desk& before;
    const Desk& after;

    bool isAsked() const { return step.arguments[1].value != 0; }
};

static ControlRecord* recordOf(uint32_t control) {
    return reinterpret_cast<ControlRecord*>(control);
}

static HWND windowOf(uint32_t control) { return control ? recordOf(control)->hwnd : nullptr; }

static bool isChild(HWND window) { return GetWindowLongW(window, GWL_STYLE) & WS_CHILD; }

static bool isWithin(HWND outer, uint32_t control) {
    HWND window = windowOf(control);
    return window && (window == outer || IsChild(outer, window));
}

static bool areAllEnabled(HWND window) {
    for (; window; window = isChild(window) ? GetParent(window) : nullptr)
        if (!IsWindowEnabled(window)) return false;
    return true;
}

static void expectSameFocus(const Change& change) {
    EXPECT_EQ(change.before.focus, change.after.focus) << "the focus moves";
}

static void expectSameShell(const Change& change) {
    EXPECT_EQ(change.before.active, change.after.active) << "another shell is active";
}

static void expectNothing(const Change& change) {
    expectSameFocus(change);
    expectSameShell(change);
}

static void expectAnything(const Change&) {}

static bool isOffered(HWND window) {
    HWND parent = GetParent(window);
    return IsWindowEnabled(window) && IsWindowVisible(window) &&
           (!parent || (IsWindowEnabled(parent) && IsWindowVisible(parent)));
}

static bool isReachable(HWND window) { return isOffered(window) && areAllEnabled(window); }

// What lies in something disabled may have it from before.
static void checkForced(const Change& change) {
    HWND window = change.first->hwnd;
    bool hasIt = change.before.focus == change.handle && isOffered(window);
    if (hasIt || !isReachable(window)) {
        EXPECT_EQ(change.result & 0xFF, hasIt);
        return expectNothing(change);
    }
    EXPECT_EQ(change.after.focus, change.handle) << "it has not got the focus";
    bool isSameShell = change.before.active == change.after.active;
    if (isSameShell) {
        EXPECT_EQ(change.result & 0xFF, change.before.hasFocus) << "whether another had it";
    }
    EXPECT_TRUE(isWithin(windowOf(change.after.active), change.handle))
        << "its shell is not active";
}

static void checkCleared(const Change& change) {
    EXPECT_FALSE(change.after.hasFocus);
    expectSameShell(change);
}

static void checkShown(const Change& change) {
    HWND window = change.first->hwnd;
    if (isChild(window)) return expectNothing(change);
    bool wasShown = change.before.shown.count(change.handle);
    if (wasShown || !IsWindowEnabled(window)) return;
    EXPECT_EQ(change.after.active, change.handle) << "a shell that is shown is not active";
    if (change.before.active == change.handle) return expectSameFocus(change);
    EXPECT_TRUE(isWithin(window, change.after.focus)) << "a shell that is shown has no focus";
}

// What lies in a control that is hidden keeps the focus.
static void checkHidden(const Change& change) {
    const Desk& before = change.before;
    bool isActive = before.active == change.handle && before.shown.count(change.handle);
    bool isChildWithFocus = before.focus == change.handle && before.heir;
    if (!isChildWithFocus && !isActive) return expectNothing(change);
    EXPECT_NE(change.after.active, change.handle) << "what is hidden is active";
    if (!isChildWithFocus) return;
    bool isTaken = areAllEnabled(windowOf(before.heir));
    EXPECT_EQ(change.after.focus, isTaken ? before.heir : change.handle);
    expectSameShell(change);
}

static void checkVisible(const Change& change) {
    change.isAsked() ? checkShown(change) : checkHidden(change);
}

// What lies in a control that is disabled keeps the focus.
static void checkEnabled(const Change& change) {
    bool hadFocus = change.before.focus == change.handle;
    bool wasEnabled = change.before.enabled.count(change.handle);
    if (change.isAsked() || !hadFocus || !wasEnabled) return expectNothing(change);
    EXPECT_FALSE(change.after.hasFocus) << "what is disabled has the focus";
    expectSameShell(change);
}

// A window that goes leaves the focus to its parent. What goes with its parent, or is hidden with
// it, may leave it to nobody.
static void checkLeft(const Change& change) {
    uint32_t heir = change.before.heir;
    bool isThere = change.after.controls.count(heir) && windowOf(heir) == change.before.heirsWindow;
    bool isTaken = isThere && areAllEnabled(change.before.heirsWindow);
    bool wasShown = change.before.shown.count(change.before.focus);
    if (!isTaken || (!wasShown && !change.after.focus)) heir = 0;
    EXPECT_EQ(change.after.focus, heir) << "another has got the focus of what is gone";
}

// What lies in the window that is replaced goes with it.
static void checkReplaced(const Change& change) {
    expectSameShell(change);
    bool isGone = change.before.focus && !change.after.controls.count(change.before.focus);
    isGone ? checkLeft(change) : expectSameFocus(change);
}

// The list's new window takes the focus where it can be given; one in the same mode has no new one.
static void checkMode(const Change& change) {
    bool mayBeLost = change.before.focus == change.handle && !isReachable(change.first->hwnd);
    bool isLost = mayBeLost && change.after.focus != change.handle;
    isLost ? checkLeft(change) : checkReplaced(change);
}

// A bar's new window takes no focus.
static void checkTurned(const Change& change) {
    bool isLost = change.before.focus == change.handle;
    isLost ? checkLeft(change) : checkReplaced(change);
}

// A bar that has nothing to scroll any more is off.
static void checkRange(const Change& change) {
    expectSameShell(change);
    bool isOff = !IsWindowEnabled(change.first->hwnd);
    if (change.before.focus != change.handle || !isOff) return expectSameFocus(change);
    EXPECT_FALSE(change.after.hasFocus) << "what is off has the focus";
}

static void checkAbove(const Change& change) {
    bool isRaised = !isChild(change.first->hwnd) && !change.step.arguments[1].value;
    if (!isRaised) return expectNothing(change);
    if (!change.before.shown.count(change.handle) || !IsWindowEnabled(change.first->hwnd)) return;
    EXPECT_EQ(change.after.active, change.handle) << "a shell that is raised is not active";
}

// The first bar that is shown where nothing is active brings its shell to the front.
static void checkBar(const Change& change) {
    if (change.before.active) expectNothing(change);
}

static void checkBounds(const Change& change) {
    HWND window = change.first->hwnd;
    if (isChild(window) || !change.first->parent) return expectNothing(change);
    EXPECT_EQ(change.after.active, change.handle) << "a shell that is moved is not active";
}

// Which shell follows an active one the system knows.
static void checkDisposed(const Change& change) {
    bool hadShell = !change.before.active || change.after.controls.count(change.before.active);
    if (hadShell) checkReplaced(change);
}

struct DeskLaw {
    const char* native;
    void (*check)(const Change& change);
    bool isOfControl = true; // that is there before and behind it
};

void checkDesk(const Step& step, uint32_t first, jint result, const Desk& before,
               const Desk& after) {
    static const DeskLaw laws[] = {
        {"Adjustable_SetMaximum", checkRange},
        {"Adjustable_SetMinimum", checkRange},
        {"Adjustable_SetVisibleAmount", checkRange},
        {"Control_ForceFocus", checkForced},
        {"Control_MoveAbove", checkAbove},
        {"Control_SetBounds", checkBounds},
        {"Control_SetEnabled", checkEnabled},
        {"Control_SetVisible", checkVisible},
        {"Display_ClearFocus", checkCleared, false},
        {"FileDialog_Open", expectAnything, false},
        {"List_SetMultipleMode", checkMode},
        {"Scrollbar_SetOrientation", checkTurned},
        {"Shell_SetMenuBar", checkBar},
        {"Widget_Dispose", checkDisposed, false},
    };
    ControlRecord* control = after.controls.count(first) ? recordOf(first) : nullptr;
    Change change = {step, control, first, result, before, after};
    SCOPED_TRACE("who has the keys after " + toLine(step));
    for (const DeskLaw& law : laws)
        if (step.verb == law.native && (control || !law.isOfControl)) return law.check(change);
    expectNothing(change);
}
