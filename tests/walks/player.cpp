#include "player.h"
#include "display/display.h"
#include "fault_report.h"
#include "verbs.h"
#include <cstring>

static constexpr jint unasked = 2; // the answer to a press that asks for nothing
static constexpr int deepest = 4;

static const char* const methods[] = {
    "selected", "listSelected", "window", "scrolled", "chosen", "key",   "modified",   "pointer",
    "menu",     "focus",        "paint",  "resize",   "move",   "wheel", "pointerDown"};

static std::map<std::string, int> called;
const std::map<std::string, int>& Player::counts() { return called; }

Player::Player() : world(display), eventAnswer(unasked) {
    for (const char* method : methods)
        vm.behavior[method] = [this, method](const std::vector<jint>& arguments) {
            return fire(method, arguments);
        };
    faults.watchThisThreadOnly();
    emptyClipboard();
    // What a display makes once.
    jint shell = call(OS::Shell_New, display, 0);
    jint menu = call(OS::PopupMenu_New, shell);
    jint item = call(OS::PushMenuItem_New, menu, 0);
    call(OS::Control_GetDefaultFont, shell);
    call(OS::Control_SetVisible, shell, true);
    dispatchAll();
    for (jint widget : {item, menu, shell}) call(OS::Widget_Dispose, widget);
    dispatchAll();
    referencesBefore = vm.globalReferences;
    before = countLive();
}

Player::~Player() { vm.behavior.clear(); }

HWND Player::windowOfStep(const Argument& argument) {
    std::optional<Object> object = world.find(argument.value);
    if (!object || !isA(object->kind, kindOf("ControlRecord"))) return nullptr;
    HWND window = windowOf(jint(object->handle));
    return IsWindow(window) ? window : nullptr;
}

void Player::dispatchUntilEmpty() {
    constexpr int tooMany = 3000;
    for (int i = 0; i < tooMany; ++i) {
        if (!OS::Display_ReadAndDispatch(vm.env(), display)) return;
        if (depth == 0) vm.clearException();
    }
    ADD_FAILURE() << "the messages do not end";
}

void Player::throwException() {
    hasThrown = true;
    vm.pendingException = "java/lang/IllegalStateException";
}

// No listener is told of a widget that is gone, nor one that the widget has no more.
void Player::note(const char* method, const std::vector<jint>& arguments) {
    for (int step : world.allOf(kindOf("WidgetRecord"))) {
        Object widget = *world.find(step);
        const CallbackTarget* target =
            reinterpret_cast<WidgetRecord*>(widget.handle)->callbackTarget;
        if (!target || target->object != vm.receiver) continue;
        told.push_back({widget, method, arguments});
        if (whenTold) whenTold(told.back());
        return;
    }
    ADD_FAILURE() << "no widget's listener is told: " << TestVm::eventOf(method, arguments);
}

jint Player::fire(const char* method, const std::vector<jint>& arguments) {
    note(method, arguments);
    if (depth >= deepest) return eventAnswer;
    for (size_t i = 0; i < waiting.size(); ++i) {
        if (waiting[i].event != method && waiting[i].event != "any") continue;
        Step step = waiting[i];
        waiting.erase(waiting.begin() + i);
        ++depth;
        playNow(step);
        --depth;
        break;
    }
    return eventAnswer;
}

bool Player::play(const Step& step) {
    told.clear();
    if (step.event.empty()) return playNow(step);
    waiting.push_back(step);
    return true;
}

bool Player::playNow(const Step& step) {
    static std::string running; // and what is said with a fault
    std::string outer = running;
    tellProgress();
    running = toLine(step) + (outer.empty() ? "" : "\n  within " + outer);
    sayWithFault(running.c_str());
    SCOPED_TRACE(running);
    bool isDone = false;
    if (const Verb* verb = findVerb(step.verb))
        isDone = verb->act(*this, step);
    else if (const KnownNative* native = findNative(step.verb))
        isDone = callNative(step, *native);
    else
        ADD_FAILURE() << "nothing is called " << step.verb;
    if (depth == 0) {
        vm.clearException();
        vm.calls.clear();
    }
    running = outer;
    sayWithFault(running.c_str());
    return isDone;
}

DWORD Player::wordOf(const Argument& argument, const Parameter& parameter) {
    switch (argument.type) {
    case Argument::Type::number:
        if (parameter.type == "char") return asWord(jchar(argument.value));
        return argument.value;
    case Argument::Type::truth:
        return asWord(jboolean(argument.value != 0));
    case Argument::Type::object:
        return world.find(argument.value)->handle;
    case Argument::Type::none:
        return 0;
    case Argument::Type::text:
        return word(vm.newString(argument.text));
    case Argument::Type::listener:
        return word(vm.newObject("test/Listener"));
    case Argument::Type::ints: {
        DWORD array = word(vm.newInts(intsOf(argument)));
        world.lengths[array] = argument.value;
        return array;
    }
    default: {
        std::vector<jbyte> bytes = bytesOf(argument);
        DWORD array = word(vm.newBytes(bytes));
        world.lengths[array] = int(bytes.size());
        return array;
    }
    }
}

std::optional<Words> Player::wordsOf(const Step& step, const KnownNative& native) {
    const auto& parameters = native.declared.parameters;
    EXPECT_EQ(step.arguments.size(), parameters.size()) << step.verb;
    if (step.arguments.size() != parameters.size()) return {};
    Words words;
    for (size_t i = 0; i < parameters.size(); ++i) {
        const Argument& argument = step.arguments[i];
        bool isObject = argument.type == Argument::Type::object;
        if (isObject && !world.find(argument.value)) return {};
        words.push_back(wordOf(argument, parameters[i]));
    }
    return words;
}

// What the description leaves open, or has end the VM.
bool Player::isWalked(const KnownNative& native, const Words& words) {
    std::string name = native.declared.name;
    if (name == OS::Display_InitCallbacks.name || name == OS::Display_RegisterCallback.name)
        return false;
    // The first display is there for as long as the walk.
    if (native.checked.ends && words[0] == DWORD(display)) return false;
    // The display's own font is not the program's to end.
    if (name == OS::Font_Dispose.name && world.isLent(words[0])) return false;
    // An empty pie keeps its image's lock, by description.
    constexpr size_t width = 3, height = 4, arcAngle = 6;
    bool isEmptyPie =
        name == OS::Graphics_FillArc.name && (!words[width] || !words[height] || !words[arcAngle]);
    return !isEmptyPie;
}

// The data that a widget, or a bar of its own, still has is held for good.
void Player::noteEnd(const Object& object) {
    std::set<DWORD> widgets;
    if (isA(object.kind, kindOf("WidgetRecord"))) widgets.insert(object.handle);
    for (const Object& lent : world.lentBy(object))
        if (isA(lent.kind, kindOf("WidgetRecord"))) widgets.insert(lent.handle);
    for (DWORD widget : widgets) {
        bool hasData = reinterpret_cast<WidgetRecord*>(widget)->callbackTarget;
        kept.heapBlocks += hasData;
        kept.references += hasData;
    }
    if (!isA(object.kind, kindOf("DisplayRecord"))) return;
    // While the first display lives, its window's class does too.
    kept.heapBlocks += reinterpret_cast<DisplayRecord*>(object.handle)->commandItems != nullptr;
}

void Player::noteFailure(const Step& step) {
    if (!faults.hasFailed()) return;
    Leavings more = leavingsOf(step.failing);
    bool isFont = step.failing == "LocalAlloc"; // without whose record the system's stays
    kept.leavings.gdiObjects = kept.leavings.gdiObjects || more.gdiObjects || isFont;
    kept.leavings.windows = kept.leavings.windows || more.windows;
    kept.leavings.heapBlocks = kept.leavings.heapBlocks || more.heapBlocks;
    kept.leavings.menus = kept.leavings.menus || more.menus;
}

bool Player::callNative(const Step& step, const KnownNative& native) {
    std::optional<Words> words = wordsOf(step, native);
    if (!words) return false;
    std::vector<uint32_t> given(words->begin(), words->end());
    bool mayBe =
        isStrict ? world.isRight(native.checked, given) : world.isSurvived(native.checked, given);
    if (!mayBe) return false;
    if (!isWalked(native, *words)) return false;
    if (step.verb == OS::Display_Sleep.name) call(OS::Display_Wake, display);

    std::optional<Object> ended;
    if (native.checked.ends && step.arguments[0].type == Argument::Type::object)
        ended = world.find(step.arguments[0].value);
    if (ended && ended->isLent) ended.reset();
    if (ended) {
        noteEnd(*ended);
        // They go before its window does, whose listeners find them gone.
        for (const Object& bar : world.lentBy(*ended)) world.end(bar);
    }
    bool leavesCopy = step.verb == OS::AbstractTextComponent_GetSelectionText.name;
    long blocks = leavesCopy ? countHeapBlocks() : 0;
    auto outerReports = std::exchange(vm.reports, {});
    bool outerThrown = std::exchange(hasThrown, false);
    ++called[step.verb];
    faults.forget();
    if (!step.failing.empty()) faults.fail(step.failing, step.nth, ERROR_GEN_FAILURE);
    DWORD result = callAny(exportOf(native.declared.exported), vm.env(), *words);
    noteFailure(step);
    checkCall(step, native, result);
    faults.forget();
    if (leavesCopy) kept.heapBlocks += countHeapBlocks() - blocks;
    if (ended) world.end(*ended);
    if (!hasReported)
        world.enter(step.number, native.checked, {words->begin(), words->end()}, result);
    lastResult = result;
    vm.reports = std::move(outerReports);
    hasThrown = hasThrown || outerThrown;
    vm.clearException();
    return true;
}

void Player::checkCall(const Step& step, const KnownNative& native, DWORD result) {
    std::string type = native.declared.result;
    hasReported = !vm.reports.empty();
    EXPECT_LE(vm.reports.size(), 1u);
    for (const TestVm::Report& report : vm.reports)
        EXPECT_EQ(report.function, native.declared.name);
    EXPECT_TRUE(vm.pendingException.empty() || hasThrown || faults.hasFailed())
        << "throws " << vm.pendingException;
    EXPECT_EQ(vm.fatalError, "");
    vm.fatalError.clear();
    bool hasFailed = hasReported || !vm.pendingException.empty();
    DWORD given = type == "void" ? 0 : type == "boolean" ? result & 0xFF : result;
    EXPECT_TRUE(!hasFailed || hasThrown || !given) << "a result beside the error: " << given;
    if (depth) return;
    EXPECT_EQ(vm.unreleased, 0) << "arguments are held";
    EXPECT_EQ(faults.countCalls("EnterCriticalSection"), faults.countCalls("LeaveCriticalSection"))
        << "locks are held after " << step.verb;
}

bool Player::listenTo(const Argument& argument) {
    std::optional<Object> object = world.find(argument.value);
    bool isDisplay = object && isA(object->kind, kindOf("DisplayRecord"));
    if (!isDisplay) return false;
    auto handle = jint(object->handle);
    if (reinterpret_cast<DisplayRecord*>(handle)->callbackLookup) return false;
    long blocks = countHeapBlocks();
    int references = vm.globalReferences;
    registerCallbacks(handle);
    kept.heapBlocks += countHeapBlocks() - blocks;
    kept.references += vm.globalReferences - references;
    return true;
}

void Player::emptyClipboard() {
    if (!OpenClipboard(nullptr)) return;
    EmptyClipboard();
    CloseClipboard();
}

static void releaseKeys() {
    constexpr int keys = 255;
    for (int key = VK_BACK; key < keys; ++key)
        if (GetAsyncKeyState(key) & 0x8000) keybd_event(BYTE(key), 0, KEYEVENTF_KEYUP, 0);
    if (GetAsyncKeyState(VK_LBUTTON) & 0x8000) mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
    if (GetAsyncKeyState(VK_RBUTTON) & 0x8000) mouse_event(MOUSEEVENTF_RIGHTUP, 0, 0, 0, 0);
    if (GetAsyncKeyState(VK_MBUTTON) & 0x8000) mouse_event(MOUSEEVENTF_MIDDLEUP, 0, 0, 0, 0);
}

void Player::endObject(const Object& object) {
    auto handle = jint(object.handle);
    for (const KnownNative& native : knownNatives()) {
        if (!native.checked.ends || !isA(object.kind, native.checked.parameters[0].index)) continue;
        if (isA(object.kind, kindOf("WidgetRecord"))) call(OS::Widget_SetData, handle, nullptr);
        noteEnd(object);
        callAny(exportOf(native.declared.exported), vm.env(), {object.handle});
        world.end(object);
        return;
    }
}

void Player::endAll() {
    waiting.clear();
    releaseKeys();
    dispatchUntilEmpty();
    std::vector<int> left = world.allOf(anyKind);
    for (auto step = left.rbegin(); step != left.rend(); ++step) {
        std::optional<Object> object = world.find(*step);
        bool isEnded = object && !object->isLent && object->handle != uint32_t(display);
        if (isEnded) endObject(*object);
    }
    vm.reports.clear();
    vm.clearException();
    vm.fatalError.clear();
    dispatchUntilEmpty();
    emptyClipboard();
}

std::string Player::whatIsLeft() {
    LiveCounts after = countLive();
    if (after.gdiObjects < before.gdiObjects) {
        makeSpareContexts();
        after = countLive();
    }
    std::string told;
    auto compare = [&](const char* what, long found, long expected, bool mayStay) {
        if (found == expected || (mayStay && found > expected)) return;
        told += std::to_string(found - expected) + " " + what + " ";
    };
    compare("GDI objects", after.gdiObjects, before.gdiObjects, kept.leavings.gdiObjects);
    compare("windows", after.windows, before.windows, kept.leavings.windows);
    compare("heap blocks", after.heapBlocks, before.heapBlocks + kept.heapBlocks,
            kept.leavings.heapBlocks);
    compare("menus", after.menus, before.menus, kept.leavings.menus);
    compare("global references", vm.globalReferences, referencesBefore + kept.references, false);
    return told;
}

// A sound's player goes a moment later.
std::string Player::finish() {
    endAll();
    constexpr int looks = 20;
    constexpr DWORD pause = 10; // milliseconds
    std::string left = whatIsLeft();
    for (int i = 0; i < looks && !left.empty(); ++i) {
        Sleep(pause);
        dispatchUntilEmpty();
        left = whatIsLeft();
    }
    return left;
}
