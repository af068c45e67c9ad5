// Whatever a listener does to the widgets around it, and to its own: nothing that is gone is
// touched, no event comes twice, no loop ends early, and the next event works.
//
// Every combination of a kind of widget, what makes it fire, an event and what the listener does in
// it. They run with the heap's blocks on pages of their own, so that a touch of what is gone ends
// the program, which names the combination.

#include "combination.h"
#include "kinds.h"
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <map>

static int ran;

static Events eventsWithout(const Kind& kind, const Provocation& provocation) {
    Stage stage(kind);
    return stage.play(provocation, nullptr, nullptr);
}

static bool startsWith(const std::string& text, const char* start) {
    return text.compare(0, strlen(start), start) == 0;
}

// What listeners may bring about themselves, and what comes as often as the pointer is looked at.
static bool mayComeAgain(const std::string& key) {
    for (const char* start : {"paint", "focus", "window", "resize", "move", "pointer3", "pointer4",
                              "pointer5", "pointer6"})
        if (startsWith(key, start)) return true;
    return false;
}

// By their keys: where the pointer is and what a value is may well be different afterwards.
static std::map<std::string, int> countKeys(const Events& events) {
    std::map<std::string, int> counts;
    for (const std::string& event : events) ++counts[keyOf(event)];
    return counts;
}

static void expectNothingTwice(const Kind& kind, const Events& usual, const Events& events,
                               int furtherReleases) {
    std::map<std::string, int> expected = countKeys(usual), counts = countKeys(events);
    expected["pointer2"] += furtherReleases;
    // To the system, a radio button that gets the focus is clicked.
    if (strcmp(kind.name, "RadioButton") == 0)
        expected["selected"] += std::max(0, counts["focus1"] - expected["focus1"]);
    for (const auto& [key, count] : counts) {
        if (mayComeAgain(key)) continue;
        EXPECT_LE(count, expected[key]) << key << " in " << testing::PrintToString(events);
    }
}

// What happens to another widget is no reason to end anything early, a loop for instance.
static void expectTheSame(const Events& usual, const Events& events) {
    auto lasting = [](const Events& all) {
        Events kept;
        for (const std::string& event : all)
            if (!mayComeAgain(keyOf(event)) || startsWith(event, "focus")) kept.push_back(event);
        return kept;
    };
    EXPECT_EQ(lasting(events), lasting(usual));
}

static void expectNoEventsOfTheGone(const Events& usual, const Events& events,
                                    const std::string& key) {
    auto isKey = [&](const std::string& event) { return keyOf(event) == key; };
    size_t place = std::find_if(events.begin(), events.end(), isKey) - events.begin();
    EXPECT_EQ(events.size(), place + 1) << "the widget is gone: " << testing::PrintToString(events)
                                        << " for " << testing::PrintToString(usual);
}

static void play(const Kind& kind, const Provocation& provocation, const Events& usual,
                 const char* key, const Action& action) {
    std::string name =
        std::string(kind.name) + ", " + provocation.name + ", " + key + ", " + action.name;
    if (!Combination::isWanted(name)) return;
    SCOPED_TRACE(name);
    Combination running(name);
    Stage stage(kind);
    if (action.isPossible && !action.isPossible(stage)) return;
    ++ran;
    Events events = stage.play(provocation, key, &action);
    EXPECT_TRUE(stage.hasActed()) << testing::PrintToString(events);
    bool isGone = strcmp(action.name, "dispose itself") == 0;
    if (isGone) expectNoEventsOfTheGone(usual, events, key);
    if (strcmp(action.name, "dispose another") == 0) expectTheSame(usual, events);
    expectNothingTwice(kind, usual, events, stage.countFurtherReleases());
    stage.expectNextTapWorks();
}

static void playAll(const Kind& kind, const Provocation& provocation) {
    std::string beginning = std::string(kind.name) + ", " + provocation.name;
    Combination running(beginning);
    Events usual = eventsWithout(kind, provocation);
    std::set<std::string> keys;
    for (const std::string& event : usual) keys.insert(keyOf(event));
    for (const char* key : provocation.keys) {
        if (!keys.count(key)) continue;
        for (const Action& action : actions()) play(kind, provocation, usual, key, action);
    }
}

namespace {

class Disposal : public testing::Test {
  public:
    Disposal(const Kind& tested, const Provocation& made) : kind(tested), provocation(made) {}
    void TestBody() override { playAll(kind, provocation); }

  private:
    const Kind& kind;
    const Provocation& provocation;
};

} // namespace

static bool registerAll() {
    forEachProvocation(
        [](const Kind& kind, const Provocation& provocation, const std::string& name) {
            testing::RegisterTest("Disposal", name.c_str(), nullptr, nullptr, __FILE__, __LINE__,
                                  [&]() -> Disposal* { return new Disposal(kind, provocation); });
        });
    return true;
}
static const bool areRegistered = registerAll();

static std::vector<std::string> nativesThatMakeWidgets() {
    auto* base = reinterpret_cast<const char*>(theLibrary());
    auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS32*>(
        base + reinterpret_cast<const IMAGE_DOS_HEADER*>(base)->e_lfanew);
    auto* exports = reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(
        base + headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT].VirtualAddress);
    auto* names = reinterpret_cast<const DWORD*>(base + exports->AddressOfNames);
    std::vector<std::string> found;
    for (DWORD i = 0; i < exports->NumberOfNames; ++i) {
        std::string name = base + names[i];
        size_t start = name.find("_OS_"), end = name.find("_1New");
        if (start == name.npos || end == name.npos) continue;
        std::string made = name.substr(start + 4, end - start - 4);
        if (name.size() == end + strlen("_1New")) found.push_back(made + "_New");
    }
    return found;
}

TEST(DisposalTables, every_kind_of_widget_is_among_them) {
    std::vector<std::string> natives = nativesThatMakeWidgets();
    ASSERT_GT(natives.size(), 20u);
    for (const std::string& native : natives) {
        auto makes = [&](const Kind& kind) { return native == kind.native; };
        bool isKnown = std::any_of(kinds().begin(), kinds().end(), makes);
        EXPECT_TRUE(isKnown || kindsThatFireNothing().count(native)) << native;
    }
}

static const struct {
    DWORD id;
    const char* name;
} callbackIds[] = {
#include "callback_ids.inc"
};

static bool isFiredBy(const Kind& kind, const Provocation& provocation, const std::string& method) {
    auto isOfMethod = [&](const std::string& text) {
        return keyOf(text).substr(0, strcspn(keyOf(text).c_str(), "0123456789")) == method;
    };
    if (std::none_of(provocation.keys.begin(), provocation.keys.end(), isOfMethod)) return false;
    Events events = eventsWithout(kind, provocation);
    return std::any_of(events.begin(), events.end(), isOfMethod);
}

TEST(DisposalTables, every_callback_is_provoked) {
    for (const auto& callback : callbackIds) {
        const char* method = listenerMethod(static_cast<jint>(callback.id));
        ASSERT_NE(method, nullptr) << callback.name;
        bool isFired = false;
        forEachProvocation([&](const Kind& kind, const Provocation& provocation, const auto&) {
            isFired = isFired || isFiredBy(kind, provocation, method);
        });
        EXPECT_TRUE(isFired) << callback.name;
    }
}

namespace {

class Summary : public testing::Environment {
    void TearDown() override {
        std::printf("%d combinations ran\n", ran);
        EXPECT_TRUE(ran || !Combination::isChosen()) << "ZEMVOLT_COMBINATION names none";
    }
};

} // namespace

static auto* summary = testing::AddGlobalTestEnvironment(new Summary);
