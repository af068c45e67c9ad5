#include "event_laws.h"
#include "properties.h"

static const auto* recordOf(uint32_t control) {
    return reinterpret_cast<const ControlRecord*>(control);
}

static std::string nameOf(const Told& told) { return TestVm::eventOf(told.method, told.arguments); }

static std::string join(const std::vector<Told>& told) {
    std::string all;
    for (const Told& one : told) all += nameOf(one) + " ";
    return all;
}

static RECT placeOf(const Told& told) {
    RECT place;
    GetWindowRect(recordOf(told.widget.handle)->hwnd, &place);
    return place;
}

static void checkResize(const Told& told) {
    RECT place = placeOf(told);
    EXPECT_EQ(told.arguments,
              (std::vector<jint>{place.right - place.left, place.bottom - place.top}));
}

static void checkMove(const Told& told) {
    RECT place = placeOf(told);
    EXPECT_EQ(told.arguments, (std::vector<jint>{place.left, place.top}));
}

static bool isDrawn(const ControlRecord* control) {
    for (; control; control = control->parent)
        if (!control->redraw) return false;
    return true;
}

static void checkPaint(const Told& told) {
    const ControlRecord* control = recordOf(told.widget.handle);
    EXPECT_TRUE(IsWindowVisible(control->hwnd)) << "a hidden control is painted";
    EXPECT_TRUE(isDrawn(control)) << "a control is painted whose drawing is off";
    RECT client;
    GetClientRect(control->hwnd, &client);
    EXPECT_GE(told.arguments[0], 0);
    EXPECT_GE(told.arguments[1], 0);
    EXPECT_LE(told.arguments[0] + told.arguments[2], client.right);
    EXPECT_LE(told.arguments[1] + told.arguments[3], client.bottom);
}

void checkAtOnce(const Told& told) {
    static const struct {
        const char* method;
        void (*check)(const Told& told);
    } laws[] = {{"resize", checkResize}, {"move", checkMove}, {"paint", checkPaint}};
    SCOPED_TRACE(nameOf(told));
    if (is(told.widget, "ControlRecord") && !is(told.widget, "OwnBarRecord")) {
        EXPECT_TRUE(IsWindow(recordOf(told.widget.handle)->hwnd)) << "its window is gone";
    }
    for (const auto& law : laws)
        if (told.method == law.method) law.check(told);
}

// What one after the other has, and each of them is told that it has got and has lost.
struct Baton {
    const char* method;
    jint got, lost;
    uint32_t Desk::*holder;
};

static bool isReminder(const Told& told, Reminders* reminders) {
    auto found = reminders->find(told.widget.handle);
    if (found == reminders->end()) return false;
    reminders->erase(found);
    return true;
}

static void checkBaton(const Baton& baton, const std::vector<Told>& told, const Desk& before,
                       const Desk& after, Reminders* reminders) {
    SCOPED_TRACE(join(told));
    uint32_t holder = before.*baton.holder;
    for (const Told& one : told) {
        if (one.method != baton.method) continue;
        uint32_t widget = one.widget.handle;
        bool isNoChange = before.*baton.holder == after.*baton.holder;
        bool hasGot = one.arguments[0] == baton.got;
        if (hasGot && isNoChange && isReminder(one, reminders)) continue;
        if (one.arguments[0] == baton.got) {
            EXPECT_EQ(0u, after.listening.count(holder)) << "who had it before is not told";
            holder = widget;
        } else if (one.arguments[0] == baton.lost) {
            EXPECT_EQ(holder, widget) << "who did not have it is told to have lost it";
            holder = 0;
        }
    }
    uint32_t last = after.*baton.holder;
    if (after.listening.count(last)) {
        EXPECT_EQ(holder, last) << "who has it is not told";
    } else {
        EXPECT_EQ(0u, after.listening.count(holder)) << "who lost it is not told";
    }
}

using Natives = std::set<std::string>;

// Which steps an event may come of. When to paint the system knows.
static const std::map<std::string, Natives>& causes() {
    // Of the window, or of what a bar leaves of it.
    static const Natives sizing = {"Adjustable_SetMaximum",
                                   "Adjustable_SetMinimum",
                                   "Adjustable_SetVisibleAmount",
                                   "Control_SetBounds",
                                   "Control_SetVisible",
                                   "Scrollable_SetAdjustableEnabled",
                                   "Scrollable_SetAdjustableVisible",
                                   "Shell_SetMaximized",
                                   "Shell_SetMenuBar",
                                   "Shell_SetResizable"};
    static const std::map<std::string, Natives> all = {
        {"modified", {"AbstractTextComponent_SetText"}},
        {"move", sizing},
        {"resize", sizing},
    };
    return all;
}

static bool isEvent(const Told& told, const char* method, jint argument) {
    return told.method == method && told.arguments[0] == argument;
}

// The widget was told just before that it has got the focus, or is active.
static bool follows(const std::vector<Told>& told, size_t index, const char* method, jint got) {
    for (size_t i = index; i > 0; --i)
        if (told[i - 1].widget.handle == told[index].widget.handle)
            if (isEvent(told[i - 1], method, got)) return true;
    return false;
}

// A radio button takes the focus for a click, and an active shell fills the screen.
static bool comesWithAnother(const std::vector<Told>& told, size_t index) {
    const Told& one = told[index];
    if (one.method == "selected") return follows(told, index, "focus", jint(FocusChange::gained));
    if (one.method != "resize" && one.method != "move") return false;
    return follows(told, index, "window", jint(WindowEvent::activated));
}

static void checkCause(const Step& step, const std::vector<Told>& told, size_t index) {
    const Told& one = told[index];
    bool isFree = one.method == "focus" || one.method == "paint" ||
                  isEvent(one, "window", jint(WindowEvent::activated)) ||
                  isEvent(one, "window", jint(WindowEvent::deactivated));
    if (isFree || comesWithAnother(told, index)) return;
    auto cause = causes().find(one.method);
    EXPECT_TRUE(cause != causes().end() && cause->second.count(step.verb))
        << "this brings about no " << nameOf(one);
}

static std::vector<std::string> methodsOf(const std::vector<Told>& told, const Object& widget,
                                          const std::set<std::string>& wanted) {
    std::vector<std::string> methods;
    for (const Told& one : told)
        if (one.widget.handle == widget.handle && wanted.count(one.method))
            methods.push_back(one.method);
    return methods;
}

// What must be told, not only may.
static void checkDue(const Step& step, const Object& first, const std::vector<Told>& told) {
    using Methods = std::vector<std::string>;
    if (step.verb == OS::AbstractTextComponent_SetText.name) {
        EXPECT_EQ(methodsOf(told, first, {"modified"}), Methods{"modified"});
    }
    if (step.verb != OS::Control_SetBounds.name || !is(first, "ShellRecord")) return;
    Methods methods = methodsOf(told, first, {"resize", "move"});
    ASSERT_GE(methods.size(), 2u);
    EXPECT_EQ(Methods(methods.end() - 2, methods.end()), (Methods{"resize", "move"}));
}

// What the widget that the step is for must not be told.
static void checkOfFirst(const Step& step, const Told& told) {
    EXPECT_NE(step.verb, OS::Widget_Dispose.name) << "who is disposed of is told";
    bool isForced = step.verb == OS::Control_ForceFocus.name;
    EXPECT_FALSE(isForced && told.method == "selected") << "the focus was given without a click";
}

void checkTold(const Step& step, const Object& first, const std::vector<Told>& told,
               const Desk& before, const Desk& after, Reminders* reminders) {
    static const Baton focus = {"focus", jint(FocusChange::gained), jint(FocusChange::lost),
                                &Desk::focus};
    static const Baton activation = {"window", jint(WindowEvent::activated),
                                     jint(WindowEvent::deactivated), &Desk::active};
    SCOPED_TRACE("told in " + toLine(step));
    for (size_t i = 0; i < told.size(); ++i) {
        if (told[i].widget.number == first.number) checkOfFirst(step, told[i]);
        checkCause(step, told, i);
    }
    if (after.listening.count(first.handle)) checkDue(step, first, told);
    for (const Baton& baton : {focus, activation})
        checkBaton(baton, told, before, after, reminders);
}
