#include "hostile.h"
#include "ce.h"
#include "faults.h"
#include "natives.h"
#include "system_functions.h"
#include <algorithm>
#include <climits>

using Type = Argument::Type;

static const char* const events[] = {
    "selected", "listSelected", "window", "scrolled", "chosen", "key",   "modified",    "pointer",
    "menu",     "focus",        "paint",  "resize",   "move",   "wheel", "pointerDown", "any"};

Hostile::Hostile(World& walked, unsigned seed, bool failing)
    : world(walked), chance(seed), systemFails(failing) {}

static Sort sortOf(const KnownNative& native) {
    if (native.checked.ends) return Sort::ender;
    return native.checked.made >= 0 && !native.checked.isLent ? Sort::maker : Sort::other;
}

static std::vector<const KnownNative*> nativesOf(Sort sort) {
    std::vector<const KnownNative*> found;
    for (const KnownNative& native : knownNatives())
        if (sortOf(native) == sort) found.push_back(&native);
    return found;
}

// The first that is possible, of those that have not come for the longest.
std::optional<Step> Hostile::dealOf(std::vector<const KnownNative*>* deck, Sort sort) {
    if (deck->empty()) {
        *deck = nativesOf(sort);
        for (size_t i = deck->size(); i > 1; --i)
            std::swap((*deck)[i - 1], (*deck)[chance.among(0, int(i) - 1)]);
    }
    for (size_t i = 0; i < deck->size(); ++i) {
        std::optional<Step> step = stepOf(*(*deck)[i]);
        if (!step) continue;
        deck->erase(deck->begin() + i);
        return step;
    }
    deck->clear();
    return {};
}

std::optional<Step> Hostile::deal() {
    constexpr size_t few = 25, many = 50;
    size_t count = world.countAll();
    if (chance.percent(count < few ? 60 : count > many ? 5 : 15))
        return dealOf(&makers, Sort::maker);
    if (chance.percent(count > many ? 30 : 4)) return dealOf(&enders, Sort::ender);
    return dealOf(&others, Sort::other);
}

std::optional<Argument> Hostile::handle(const CheckedParameter& parameter) {
    std::vector<int> candidates = world.allOf(parameter.index);
    if (parameter.maybeNone && (candidates.empty() || chance.percent(20))) return number(0);
    if (candidates.empty()) return {};
    return object(chance.of(candidates));
}

Argument Hostile::textOf() {
    switch (chance.among(0, 9)) {
    case 0:
        return none();
    case 1:
        return text({});
    case 2:
        return text(std::u16string(chance.among(100, 400), u'W'));
    case 3:
        return text(u"line\none\r\ntwo\r");
    case 4:
        return text(u"\xDC00 a&b\t\xD800");
    case 5:
        return text(std::u16string(u"before\0behind", 13));
    default:
        return text(std::u16string(chance.among(1, 9), char16_t(chance.among('a', 'z'))));
    }
}

Argument Hostile::bytesFor(const std::string& native) {
    if (chance.percent(10)) return none();
    if (native == OS::Sound_Play.name && chance.percent(70))
        return made(Type::wave, chance.among(0, 400), 0);
    if (native == OS::Image_NewFromFileData.name && chance.percent(70))
        return made(Type::image, chance.among(1, 20), 0);
    return made(Type::bytes, chance.of({0, 1, 3, 64, 300}), chance.among(0, 99));
}

// Millions of pixels that the system stretches one by one; the library is given such sizes by
// limits_test.
static constexpr jint longestStretch = 0x400;
static bool isStretched(const std::string& native, const std::string& parameter) {
    return native == OS::Graphics_DrawImageRegion.name &&
           (parameter == "targetWidth" || parameter == "targetHeight");
}

Argument Hostile::numberOf(const KnownNative& native, const std::string& parameter) {
    const Meaning* meaning = meaningOf(native.declared.name, parameter);
    if (parameter.find("style") != std::string::npos && chance.percent(80))
        return number(chance.of({0, 0x20, 0x40, 0x60, 1, 2, 0x10000, 0x20000, 0x30000, 0x800}) |
                      chance.of({0, 0, 0x10, 0x100, 0x400, 0x2000, 0x8, 0x4}));
    if (parameter == "key")
        return number(chance.percent(50) ? chance.among(1000, 1082) : chance.among(' ', 'z'));
    if (parameter == "accelerator" && chance.percent(60))
        return number(chance.of({0, 0x10000, 0x20000, 0x40000, 0x60000}) + chance.among('A', 'F'));
    bool hasMeaning = meaning && meaning->isNumber();
    if (hasMeaning && chance.percent(25)) return number(meaning->usual);
    if (hasMeaning && !meaning->limits.empty() && chance.percent(20))
        return number(jint(DWORD(chance.of(meaning->limits)) + DWORD(chance.among(-1, 1))));
    if (chance.percent(7))
        return number(chance.of({INT_MAX, INT_MIN, -1, 0x7FFF, -0x8000, 0xFFFF}));
    return number(chance.percent(60) ? chance.among(-1, 5) : chance.among(0, 200));
}

// The array that the parameter of that index counts; null when it counts none.
static const Argument* countedBy(const CheckedNative& native, size_t index,
                                 const std::vector<Argument>& before) {
    for (size_t i = 0; i < index; ++i)
        if (native.parameters[i].extent == Extent::counted &&
            native.parameters[i].index == int(index))
            return &before[i];
    return nullptr;
}

Argument Hostile::plain(const KnownNative& native, size_t index,
                        const std::vector<Argument>& before) {
    const Parameter& parameter = native.declared.parameters[index];
    const Argument* counted = countedBy(native.checked, index, before);
    if (counted && chance.percent(70))
        return number(counted->type == Type::none ? 0 : counted->value);
    if (parameter.type == "boolean") return truth(chance.percent(50));
    if (parameter.type == "char")
        return number(chance.of({0, 1, int('x'), int('*'), 0x7F, 0xD800, 0xFFFF}));
    if (parameter.type == "String") return textOf();
    if (parameter.type == "Object")
        return chance.percent(20) ? none() : Argument{.type = Type::listener};
    if (parameter.type == "int[]")
        return chance.percent(10) ? none()
                                  : made(Type::ints, chance.among(0, 200), chance.among(0, 99));
    if (parameter.type == "byte[]") return bytesFor(native.declared.name);
    Argument chosen = numberOf(native, parameter.name);
    if (isStretched(native.declared.name, parameter.name) && chosen.value > longestStretch)
        return number(longestStretch);
    return chosen;
}

std::optional<Step> Hostile::stepOf(const KnownNative& native) {
    Step step = {.verb = native.declared.name};
    for (size_t i = 0; i < native.checked.parameters.size(); ++i) {
        const CheckedParameter& parameter = native.checked.parameters[i];
        if (parameter.role != Role::handle) {
            step.arguments.push_back(plain(native, i, step.arguments));
            continue;
        }
        std::optional<Argument> argument = handle(parameter);
        if (!argument) return {};
        step.arguments.push_back(*argument);
    }
    return step;
}

// Few enough to leave some of a short list's items alone.
Argument Hostile::argumentOfList(const KnownNative& native, size_t index,
                                 const std::vector<Argument>& before) {
    constexpr int mostItems = 4, mostIndices = 3;
    const Parameter& parameter = native.declared.parameters[index];
    if (parameter.name == "index") return number(chance.among(-1, mostItems));
    if (parameter.type == "int[]")
        return made(Type::ints, chance.among(0, mostIndices), chance.among(0, 99));
    return plain(native, index, before);
}

// A list or choice by the class of its natives, which only say something of one that has items.
void Hostile::fillAndUse(int list, const std::string& ownClass) {
    constexpr int items = 4, uses = 24;
    std::vector<const KnownNative*> adding, own;
    for (const KnownNative& native : knownNatives()) {
        std::string name = native.declared.name;
        bool isOwn = name.starts_with(ownClass) && native.checked.made < 0;
        if (!isOwn || name.starts_with(ownClass + "RemoveAll")) continue;
        if (name.starts_with(ownClass + "Add")) adding.push_back(&native);
        own.push_back(&native);
    }
    for (int i = 0; i < items + uses; ++i) {
        const KnownNative& native = *chance.of(i < items ? adding : own);
        Step step = {.verb = native.declared.name, .arguments = {object(list)}};
        for (size_t j = 1; j < native.declared.parameters.size(); ++j)
            step.arguments.push_back(argumentOfList(native, j, step.arguments));
        following.push_back(step);
    }
}

void Hostile::useText(int text) {
    constexpr int uses = 12;
    std::vector<const KnownNative*> own;
    for (const KnownNative& native : knownNatives())
        if (std::string(native.declared.name).starts_with("AbstractTextComponent_"))
            own.push_back(&native);
    for (int i = 0; i < uses; ++i) {
        const KnownNative& native = *chance.of(own);
        Step step = {.verb = native.declared.name, .arguments = {object(text)}};
        for (size_t j = 1; j < native.declared.parameters.size(); ++j)
            step.arguments.push_back(plain(native, j, step.arguments));
        following.push_back(step);
    }
}

// Two items are selected where the list takes several, and it has the focus.
void Hostile::switchMode(int list) {
    auto then = [&](const char* verb, std::vector<Argument> arguments) {
        arguments.insert(arguments.begin(), object(list));
        following.push_back({.verb = verb, .arguments = std::move(arguments)});
    };
    then(OS::List_SetMultipleMode.name, {truth(true)});
    for (int index : {1, 0}) then(OS::List_Select.name, {number(index)});
    then(OS::Control_ForceFocus.name, {});
    then(OS::List_SetMultipleMode.name, {truth(false)});
}

// Shows, hides, raises, enables, disables and gives the focus to it and others.
void Hostile::moveFocus(int made) {
    constexpr int moves = 5;
    std::vector<int> controls = world.allOf(kindOf("ControlRecord"));
    controls.push_back(made);
    following.push_back({.verb = OS::Control_ForceFocus.name, .arguments = {object(made)}});
    for (int i = 0; i < moves; ++i) {
        Argument moved = object(chance.percent(60) ? made : chance.of(controls));
        Argument truly = truth(chance.percent(60));
        following.push_back(chance.of<Step>({
            {.verb = OS::Control_ForceFocus.name, .arguments = {moved}},
            {.verb = OS::Control_SetVisible.name, .arguments = {moved, truly}},
            {.verb = OS::Control_SetEnabled.name, .arguments = {moved, truly}},
            {.verb = OS::Control_MoveAbove.name, .arguments = {moved, number(0)}},
            {.verb = "dispatch"},
        }));
    }
    if (!chance.percent(15)) return;
    for (const char* verb : {OS::Control_ForceFocus.name, OS::Widget_Dispose.name})
        following.push_back({.verb = verb, .arguments = {object(made)}});
}

void Hostile::fill(int made, int kind) {
    if (isA(kind, kindOf("ControlRecord")) && chance.percent(70)) moveFocus(made);
    if (isA(kind, kindOf("ListRecord"))) {
        fillAndUse(made, "List_");
        switchMode(made);
    }
    if (isA(kind, kindOf("TextRecord"))) useText(made);
    if (isA(kind, kindOf("ChoiceRecord"))) fillAndUse(made, "Choice_");
    if (isA(kind, kindOf("LabeledMenuItemRecord")))
        following.push_back({.verb = OS::LabeledMenuItem_SetText.name,
                             .arguments = {object(made), textOf(), textOf()}});
    if (!isA(kind, kindOf("MenuRecord"))) return;
    for (const char* item : {OS::PushMenuItem_New.name, OS::CascadeMenuItem_New.name})
        following.push_back({.verb = item, .arguments = {object(made), number(0)}});
}

void Hostile::follow(int number_, const KnownNative& native) {
    if (native.checked.made < 0) return;
    auto then = [&](const char* verb, std::vector<Argument> arguments) {
        arguments.insert(arguments.begin(), object(number_));
        following.push_back({.verb = verb, .arguments = std::move(arguments)});
    };
    if (isA(native.checked.made, kindOf("ControlRecord")) && chance.percent(85)) {
        then(OS::Control_SetBounds.name,
             {number(chance.among(0, 120)), number(chance.among(0, 200)),
              number(chance.among(20, 120)), number(chance.among(15, 100))});
        then(OS::Control_SetVisible.name, {truth(true)});
    }
    if (native.declared.name == std::string(OS::Control_NewGraphics.name) && chance.percent(80)) {
        then(OS::Graphics_SetFont.name, {number(0)});
        then(OS::Graphics_DrawString.name, {textOf(), number(1), number(2), number(0)});
        then(OS::Graphics_Dispose.name, {});
    }
    if (isA(native.checked.made, kindOf("DisplayRecord"))) then("listenToDisplay", {});
    if (isA(native.checked.made, kindOf("WidgetRecord")) && chance.percent(70))
        then(OS::Widget_SetData.name, {{.type = Type::listener}});
    if (usesWhatItMakes) fill(number_, native.checked.made);
}

Step Hostile::chooseNative(int number) {
    std::optional<Step> step = deal();
    if (!step) return {.verb = "dispatch"};
    follow(number, *findNative(step->verb));
    return *step;
}

Step Hostile::chooseInput() {
    std::vector<int> controls = world.allOf(kindOf("ControlRecord"));
    if (controls.empty() || chance.percent(10))
        return {.verb = "answer",
                .arguments = {number(chance.percent(4) ? 1 : chance.of({0, 2, 2}))}};
    Argument on = object(chance.of(controls));
    Argument right = number(chance.among(0, 100)), down = number(chance.among(0, 100));
    switch (chance.among(0, 9)) {
    case 0:
        return {.verb = "press", .arguments = {on, right, down}};
    case 1:
        return {.verb = "move", .arguments = {on, right, down}};
    case 2:
        return {.verb = "release"};
    case 3:
    case 4:
        return {.verb = "key",
                .arguments = {number(chance.percent(60) ? chance.among(1000, 1022)
                                                        : chance.among('a', 'z'))}};
    case 5:
    case 6: {
        static const struct {
            UINT message;
            int first, last;
        } posted[] = {{WM_VSCROLL, SB_LINEUP, SB_ENDSCROLL},
                      {WM_HSCROLL, SB_LINEUP, SB_ENDSCROLL},
                      {WM_CLOSE, 0, 0},
                      {WM_SIZE, SIZE_RESTORED, SIZE_MAXIMIZED},
                      {WM_MOUSEWHEEL, 120 << 16, 120 << 16},
                      {WM_RBUTTONDOWN, MK_RBUTTON, MK_RBUTTON},
                      {WM_RBUTTONUP, 0, 0},
                      {WM_MBUTTONDOWN, MK_MBUTTON, MK_MBUTTON},
                      {WM_MBUTTONUP, 0, 0},
                      {WM_LBUTTONDBLCLK, MK_LBUTTON, MK_LBUTTON},
                      {WM_LBUTTONUP, 0, 0},
                      {WM_CHAR, ' ', 'z'},
                      {WM_COMMAND, 108, 116},
                      {WM_CANCELMODE, 0, 0},
                      {WM_SETTINGCHANGE, SPI_SETWORKAREA, SPI_SETWORKAREA}};
        const auto& chosen = posted[chance.among(0, std::size(posted) - 1)];
        return {.verb = "post",
                .arguments = {on, number(jint(chosen.message)),
                              number(chance.among(chosen.first, chosen.last)), number(0)}};
    }
    case 7:
        return {.verb = chance.percent(10) ? "wait" : "dispatch"};
    default:
        return {.verb = "tap", .arguments = {on, right, down}};
    }
}

void Hostile::decorate(Step* step) {
    bool isNative = findNative(step->verb) != nullptr;
    if (isNative && chance.percent(15))
        step->event = events[chance.among(0, std::size(events) - 1)];
    if (!isNative || !systemFails || !chance.percent(12)) return;
    static const std::vector<std::string> failing = [] {
        std::vector<std::string> names;
        for (const std::string& name : Faults::imported())
            if (!reasonWhyNever(name)) names.push_back(name);
        return names;
    }();
    step->failing = chance.of(failing);
    step->nth = chance.among(1, 3);
}

Step Hostile::choose(int number) {
    if (!following.empty()) {
        Step step = following.front();
        following.pop_front();
        return step;
    }
    if (chance.percent(14)) return {.verb = "dispatch"};
    Step step = chance.percent(20) ? chooseInput() : chooseNative(number);
    if (chance.percent(1)) step = {.event = "any", .verb = "throw"};
    if (step.verb != "throw") decorate(&step);
    return step;
}

Step Hostile::next(int number) {
    Step step = choose(number);
    step.number = number;
    return step;
}

Steps Hostile::endings(int number) {
    std::vector<int> left = world.allOf(anyKind);
    Steps steps;
    while (!left.empty()) {
        size_t chosen = chance.among(0, int(left.size()) - 1);
        std::optional<Object> ending = world.find(left[chosen]);
        int made = left[chosen];
        left.erase(left.begin() + chosen);
        if (!made || !ending || ending->isLent) continue;
        for (const KnownNative& native : knownNatives()) {
            if (!native.checked.ends || !isA(ending->kind, native.checked.parameters[0].index))
                continue;
            if (isA(ending->kind, kindOf("WidgetRecord")))
                steps.push_back({.number = number++,
                                 .verb = OS::Widget_SetData.name,
                                 .arguments = {object(made), none()}});
            steps.push_back(
                {.number = number++, .verb = native.declared.name, .arguments = {object(made)}});
        }
    }
    return steps;
}
