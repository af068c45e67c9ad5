// Walks over the whole of the natives: each step is chosen by what is there, at random, and walks
// of the same seed are the same. tests/walks/walk runs this program, and makes what fails shorter.
//
// ZEMVOLT_ORDER says which steps are chosen, ZEMVOLT_SEED from which seed on, ZEMVOLT_WALKS how
// many walks, ZEMVOLT_STEPS how long they are; each is written to ZEMVOLT_TRACE. ZEMVOLT_WALK names
// a file of steps to be played instead.

#include "player.h"
#include "walk.h"
#include <cstdio>
#include <cstdlib>
#include <fstream>

static std::string variable(const char* name, const std::string& usual) {
    const char* value = getenv(name);
    return value ? value : usual;
}

static int numberOf(const char* name, int usual) {
    return atoi(variable(name, std::to_string(usual)).c_str());
}

static bool isChecked() { return variable("ZEMVOLT_ORDER", "hostile") == "checked"; }

// What the system makes once and keeps is not made again.
static void expectNothingLeft(std::string left, const Steps& steps) {
    if (!left.empty() && !testing::Test::HasFailure()) left = replay(steps, isChecked());
    EXPECT_EQ(left, "") << "stays behind";
}

static void walkFrom(const Order& order) {
    std::string path = pathOf(variable("ZEMVOLT_TRACE", "x:/walk.txt"));
    int seed = numberOf("ZEMVOLT_SEED", 1), end = seed + numberOf("ZEMVOLT_WALKS", 1);
    for (; seed < end && !testing::Test::HasFailure(); ++seed) {
        std::ofstream trace(path, std::ios::binary | std::ios::trunc);
        trace << "# " << order.name << ", seed " << seed << std::endl;
        std::string left = order.walk(seed, numberOf("ZEMVOLT_STEPS", 200), trace);
        expectNothingLeft(left, left.empty() ? Steps() : readSteps(path));
    }
}

static void tellCounts() {
    std::printf("steps %ld left out %ld\n", played().done, played().leftOut);
    std::map<std::string, int> counts = Player::counts();
    for (const DeclaredNative& native : declaredNatives())
        std::printf("native %s %d\n", native.name, counts[native.name]);
}

TEST(Walk, holds_what_is_promised) {
    if (const char* file = getenv("ZEMVOLT_WALK")) {
        Steps steps = readSteps(file);
        expectNothingLeft(replay(steps, isChecked()), steps);
    } else {
        const Order* order = findOrder(variable("ZEMVOLT_ORDER", "hostile"));
        ASSERT_NE(order, nullptr) << "no such order";
        walkFrom(*order);
    }
    tellCounts();
}

// What is declared for Java, and what the operations' declarations say of handles, is one list.
TEST(Walk, knows_every_native) { EXPECT_EQ(knownNatives().size(), declaredNatives().size()); }
