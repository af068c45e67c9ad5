#include "walk.h"
#include "hostile.h"
#include "player.h"
#include <ostream>

Played& played() {
    static Played all;
    return all;
}

static void playOne(Player* player, const Step& step) {
    ++(player->play(step) ? played().done : played().leftOut);
}

static void playTraced(Player* player, const Step& step, std::ostream& trace) {
    trace << toLine(step) << std::endl;
    playOne(player, step);
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

const Order* findOrder(const std::string& name) {
    static const Order orders[] = {{"hostile", walkCalmly}, {"failing", walkFailing}};
    for (const Order& order : orders)
        if (name == order.name) return &order;
    return nullptr;
}

std::string replay(const Steps& steps) {
    Player player;
    for (const Step& step : steps) {
        if (testing::Test::HasFailure()) break;
        playOne(&player, step);
    }
    return player.finish();
}
