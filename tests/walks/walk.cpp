#include "walk.h"
#include "hostile.h"
#include "laws.h"
#include "player.h"
#include <ostream>

Played& played() {
    static Played all;
    return all;
}

// laws: what is checked besides; null: nothing.
static void playOne(Player* player, const Step& step, Laws* laws) {
    if (laws) laws->look(step);
    bool isDone = player->play(step);
    ++(isDone ? played().done : played().leftOut);
    if (laws && isDone) laws->check(step);
}

static void playTraced(Player* player, const Step& step, std::ostream& trace,
                       Laws* laws = nullptr) {
    trace << toLine(step) << std::endl;
    playOne(player, step, laws);
}

static std::string walkHostile(unsigned seed, int length, bool failing, std::ostream& trace) {
    Player player;
    Hostile hostile(player.world, seed, failing);
    int number = 1;
    for (; number <= length && !testing::Test::HasFailure(); ++number)
        playTraced(&player, hostile.next(number), trace);
    for (const Step& step : hostile.endings(number))
        if (!testing::Test::HasFailure()) playTraced(&player, step, trace);
    return player.finish();
}

static std::string walkCalmly(unsigned seed, int length, std::ostream& trace) {
    return walkHostile(seed, length, false, trace);
}

static std::string walkFailing(unsigned seed, int length, std::ostream& trace) {
    return walkHostile(seed, length, true, trace);
}

// What a program has every right to do, without anybody else.
static bool isCalm(const Step& step) {
    return (findNative(step.verb) || step.verb == "dispatch" || step.verb == "listenToDisplay") &&
           !step.verb.starts_with("Display_Post");
}

static std::string walkChecked(unsigned seed, int length, std::ostream& trace) {
    Player player;
    player.isStrict = true;
    Laws laws(player);
    Hostile chooser(player.world, seed, false);
    chooser.usesWhatItMakes = true;
    int number = 1;
    for (; number <= length && !testing::Test::HasFailure(); ++number) {
        Step step = chooser.next(number);
        step.event.clear();
        if (!isCalm(step)) continue;
        playTraced(&player, step, trace, &laws);
    }
    for (const Step& step : chooser.endings(number))
        if (!testing::Test::HasFailure()) playTraced(&player, step, trace);
    return player.finish();
}

const Order* findOrder(const std::string& name) {
    static const Order orders[] = {
        {"hostile", walkCalmly}, {"failing", walkFailing}, {"checked", walkChecked}};
    for (const Order& order : orders)
        if (name == order.name) return &order;
    return nullptr;
}

std::string replay(const Steps& steps, bool isChecked) {
    Player player;
    player.isStrict = isChecked;
    std::optional<Laws> laws;
    if (isChecked) laws.emplace(player);
    for (const Step& step : steps) {
        if (testing::Test::HasFailure()) break;
        playOne(&player, step, laws ? &*laws : nullptr);
    }
    return player.finish();
}
