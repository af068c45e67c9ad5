#include "laws.h"

Laws::Laws(Player& walking) : player(walking) { player.whenTold = checkAtOnce; }

std::map<uint32_t, Properties> Laws::lookAtAll() {
    std::map<uint32_t, Properties> all;
    for (int step : player.world.allOf(anyKind)) {
        Object object = *player.world.find(step);
        all[object.handle] = propertiesOf(player, object);
    }
    return all;
}

// 0 for no object.
uint32_t Laws::handleAt(const Step& step, size_t index) {
    bool isObject =
        step.arguments.size() > index && step.arguments[index].type == Argument::Type::object;
    std::optional<Object> object;
    if (isObject) object = player.world.find(step.arguments[index].value);
    if (!object) return 0;
    // The window of a scrollable's own bar is the scrollable's.
    bool isOfOwner = step.verb.starts_with("Control_") && is(*object, "OwnBarRecord");
    return isOfOwner ? object->owner : object->handle;
}

void Laws::look(const Step& step) {
    before = lookAtAll();
    first = handleAt(step, 0);
    second = handleAt(step, 1);
    deskBefore = deskOf(player);
}

static const Law* lawOf(const std::string& native) {
    static const Law none = {.native = ""};
    for (const auto* laws : {&listLaws(), &menuLaws(), &controlLaws(), &textLaws()})
        for (const Law& law : *laws)
            if (native == law.native) return &law;
    return &none;
}

// The mark of the focus on a bar's window changes its size by a message to it.
void Laws::noteReminder(const Step& step) {
    if (step.verb != OS::Adjustable_SetVisibleAmount.name) return;
    Object bar = player.world.at(first);
    uint32_t owner = is(bar, "OwnBarRecord") ? bar.owner : first;
    if (deskBefore.focus == owner) reminders.insert(owner);
}

void Laws::checkAnswer(const Step& step, const Law& law, const Call& call) {
    if (!law.answer || player.hasReported || before[first].empty()) return;
    bool isTruth = findNative(step.verb)->declared.result == std::string("boolean");
    EXPECT_EQ(isTruth ? call.result & 0xFF : call.result, law.answer(call, before[first]))
        << "from " << toLine(step);
}

void Laws::foretell(const Law& law, const Call& call, uint32_t handle, const Properties& found,
                    Properties* expected) {
    if (handle != first) {
        if (law.foretellOther && first) law.foretellOther(before[first], expected);
        return;
    }
    for (const char* change : law.changes)
        if (found.count(change)) (*expected)[change] = found.at(change);
    if (law.foretell) law.foretell(call, expected);
}

// An object that a step reports an error of is not looked at: how much was done nobody says.
void Laws::check(const Step& step) {
    const Law& law = *lawOf(step.verb);
    Call call = {step.arguments, jint(player.lastResult), before[first],
                 second ? &before[second] : nullptr};
    checkAnswer(step, law, call);
    Desk desk = deskOf(player);
    noteReminder(step);
    checkTold(step, player.world.at(first), player.told, deskBefore, desk, &reminders);
    checkDesk(step, first, call.result, deskBefore, desk);
    for (auto& [handle, found] : lookAtAll()) {
        if (!before.count(handle) || before[handle].empty() || found.empty()) continue;
        if (handle == first && player.hasReported) continue;
        Properties expected = before[handle];
        foretell(law, call, handle, found, &expected);
        EXPECT_EQ(found, expected)
            << "after " << toLine(step) << (handle == first ? "" : ", of another");
    }
}
