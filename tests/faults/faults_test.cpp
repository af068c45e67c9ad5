// Every native, and every function of the system that it reaches: the first three calls of it fail,
// one at a time. The failure is reported or ignored as outcomes.txt has it, nothing stays behind,
// and the same objects work afterwards.
//
// What a native reaches is what is called while it runs, with what listeners and window procedures
// do in it. What messages bring about later is what Display_ReadAndDispatch reaches, which has a
// row for each of them.

#include "combination.h"
#include "faults.h"
#include "image/image.h"
#include "leaks.h"
#include "outcomes.h"
#include "process_leaks.h"
#include "scenarios.h"
#include "system_functions.h"
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <set>

namespace {

constexpr int callsThatFail = 3;

// What a call did, and whether what it was called on works afterwards.
struct Played {
    std::string outcome, afterwards;
    std::vector<std::string> calls;
    bool hasFailed;
    LiveCounts left;
    int handles, references; // that are left too
};

struct Fault {
    std::string import;
    int nth;
};

std::atomic<DWORD> lastProgress;
int failuresTried;

DWORD WINAPI endWhatHangs(void*) {
    constexpr DWORD tooLong = 120000, look = 500;
    constexpr UINT hangs = 135;
    while (GetTickCount() - lastProgress < tooLong) Sleep(look);
    const char* where = Combination::running();
    std::fprintf(stderr, "nothing happens any more in %s\n", where ? where : "no combination");
    TerminateProcess(GetCurrentProcess(), hangs);
    return 0;
}

std::string plain(const std::u16string& text) {
    std::string told;
    for (char16_t character : text) told += character < 0x7F && character >= ' ' ? character : '?';
    return told;
}

// The system's own words are not the library's.
std::string describe(const TestVm::Report& report) {
    std::string told = "error " + std::to_string(report.code);
    if (!report.hasMessage) return told;
    std::string message = plain(report.message);
    size_t end = message.find("::");
    return told + " " + (end == message.npos ? message : message.substr(0, end + 2));
}

std::string describe(const std::vector<jint>& values) {
    constexpr size_t most = 6;
    std::string told = "[";
    for (size_t i = 0; i < values.size() && i < most; ++i)
        told += (i ? ", " : "") + std::to_string(values[i]);
    return told + (values.size() > most ? ", ...]" : "]");
}

bool givesObject(const std::string& native) {
    static const std::set<std::string> others = {
        OS::Image_Flip.name, OS::Display_GetSystemColor.name, OS::Scrollable_GetHorizontalBar.name,
        OS::Scrollable_GetVerticalBar.name, OS::Control_GetDefaultFont.name};
    return native.find("_New") != native.npos || others.count(native);
}

class FaultsTest : public testing::Test {
  public:
    explicit FaultsTest(const DeclaredNative& tested) : native(tested) {}

    void TestBody() override {
        std::vector<StateOutcomes> states;
        for (const Scenario& scenario : scenariosOf(native))
            if (Combination::isWanted(native.name + (", " + scenario.state)))
                states.push_back({scenario.state, outcomesOf(scenario)});
        EXPECT_FALSE(states.empty() && !Combination::isChosen()) << "nothing is done with it";
        if (states.empty()) return;
        std::string block = blockOf(native.name, states);
        if (const char* file = getenv("ZEMVOLT_WRITE_OUTCOMES")) {
            std::ofstream(file, std::ios::app | std::ios::binary) << block;
            return;
        }
        if (Combination::isChosen())
            std::printf("%s", block.c_str());
        else
            EXPECT_EQ(block, keptBlock(native.name)) << "where that is meant: tests/faults/update";
    }

  private:
    std::string describeResult(DWORD result) {
        std::string type = native.result;
        auto reference = reinterpret_cast<jobject>(result);
        if (type == "void") return "";
        if (type == "boolean") return (result & 0xFF) ? "true" : "false";
        if (type == "int" && givesObject(native.name)) return result ? "an object" : "0";
        if (type == "int") return std::to_string(jint(result));
        if (!reference) return "null";
        if (type == "String") return '"' + plain(scene->vm.text(reference)) + '"';
        if (type == "int[]") return describe(scene->vm.ints(reference));
        if (type == "String[]")
            return scene->vm.texts(reference).empty() ? "no strings" : "strings";
        std::vector<jbyte> bytes = scene->vm.bytes(reference);
        return describe(std::vector<jint>(bytes.begin(), bytes.end()));
    }

    // One report at most, and with it no result.
    std::string describeCall(DWORD result) {
        TestVm& vm = scene->vm;
        EXPECT_LE(vm.reports.size(), 1u);
        EXPECT_EQ(vm.fatalError, "");
        EXPECT_EQ(vm.unreleased, 0) << "arguments are held";
        std::string type = native.result;
        bool hasFailed = !vm.reports.empty() || !vm.pendingException.empty();
        DWORD given = type == "void" ? 0 : type == "boolean" ? result & 0xFF : result;
        EXPECT_TRUE(!hasFailed || given == 0) << "a result beside the error: " << given;
        if (!vm.pendingException.empty()) return "throws " + vm.pendingException;
        if (!vm.reports.empty()) return describe(vm.reports.front());
        return describeResult(result);
    }

    void forgetEvents() {
        TestVm& vm = scene->vm;
        vm.reports.clear();
        vm.calls.clear();
        vm.fatalError.clear();
        vm.clearException();
        vm.takeEvents();
    }

    DWORD actUsually(const Scenario& scenario) {
        std::vector<ObjectKind> kinds = kindsOfFirst(native);
        size_t kind = std::find(kinds.begin(), kinds.end(), scenario.kind) - kinds.begin();
        if (kind == kinds.size()) kind = 0;
        Words words;
        for (const Parameter& parameter : native.parameters)
            words.push_back(scene->usualWord(native, parameter, words.empty() ? kind : 0));
        faults->forget();
        if (fault) faults->fail(fault->import, fault->nth, ERROR_GEN_FAILURE);
        return callAny(exportOf(native.exported), scene->vm.env(), words);
    }

    DWORD act(const Scenario& scenario) {
        if (!scenario.act) return actUsually(scenario);
        faults->forget();
        if (fault) faults->fail(fault->import, fault->nth, ERROR_GEN_FAILURE);
        return scenario.act(*scene);
    }

    void finish(const Scenario& scenario, DWORD result) {
        if (scenario.after) return scenario.after(*scene, result);
        bool isMade = std::strcmp(native.result, "int") == 0 && scene->vm.reports.empty();
        if (isMade && result) scene->disposeOfResult(native.name, jint(result));
    }

    // One call, and what belongs to it.
    std::string play(const Scenario& scenario, Played* run) {
        if (scenario.before) scenario.before(*scene);
        forgetEvents();
        DWORD result = act(scenario);
        if (run) {
            run->calls = faults->calls();
            run->hasFailed = faults->hasFailed();
        }
        int locks =
            faults->countCalls("EnterCriticalSection") - faults->countCalls("LeaveCriticalSection");
        EXPECT_TRUE(locks == 0 || scenario.onAllThreads) << "locks are held: " << locks;
        fault = nullptr;
        faults->forget();
        std::string told = describeCall(result);
        finish(scenario, result);
        scene->dispatchAll();
        forgetEvents();
        return told;
    }

    // Counting takes long: where there are any.
    int countHandles() const {
        std::string name = native.name;
        bool hasAny = name.starts_with("Sound_") || name == OS::Image_NewFromFile.name;
        return hasAny ? countProcess().handles : 0;
    }

    Played run(const Scenario& scenario, const Fault* with = nullptr) {
        lastProgress = GetTickCount();
        Played run = {};
        LiveCounts before = countLive();
        int handles = countHandles();
        int references = scene->vm.globalReferences;
        for (ObjectKind kind : kindsUsed) scene->the(kind);
        if (scenario.arrange) scenario.arrange(*scene);
        fault = with;
        run.outcome = play(scenario, &run);
        run.afterwards = play(scenario, nullptr);
        kindsUsed = scene->kindsThatExist();
        scene->disposeOfObjects();
        forgetEvents();
        LiveCounts after = countLive();
        run.left = {after.gdiObjects - before.gdiObjects, after.windows - before.windows,
                    after.heapBlocks - before.heapBlocks, after.menus - before.menus};
        run.handles = countHandles() - handles;
        run.references = scene->vm.globalReferences - references;
        return run;
    }

    static std::vector<std::string> reached(const std::vector<std::string>& calls) {
        std::vector<std::string> found;
        for (const std::string& call : calls)
            if (!reasonWhyNever(call) && std::find(found.begin(), found.end(), call) == found.end())
                found.push_back(call);
        std::sort(found.begin(), found.end());
        return found;
    }

    // What stays by description stays too when less happened before.
    static bool leavesNoMore(const Played& one, const Played& usual, Leavings may = {}) {
        return (may.gdiObjects || one.left.gdiObjects <= usual.left.gdiObjects) &&
               (may.windows || one.left.windows <= usual.left.windows) &&
               (may.heapBlocks || one.left.heapBlocks <= usual.left.heapBlocks) &&
               (may.menus || one.left.menus <= usual.left.menus) &&
               (may.handles || one.handles <= usual.handles) && one.references <= usual.references;
    }

    // What the system makes once and keeps is not made again.
    void expectNothingLeft(const Scenario& scenario, const Fault& with, const Played& usual,
                           Played told) {
        if (!leavesNoMore(told, usual)) told = run(scenario, &with);
        EXPECT_TRUE(leavesNoMore(told, usual, whatMayStay(native.name, with)))
            << told.left.gdiObjects << " GDI objects, " << told.left.windows << " windows, "
            << told.left.heapBlocks << " heap blocks, " << told.left.menus << " menus, "
            << told.handles << " handles and " << told.references << " global references stay";
    }

    // By description the system's font stays when there is no memory for its record.
    static Leavings whatMayStay(const std::string& native, const Fault& with) {
        bool isFont = native.starts_with("Font_New") && with.import == "LocalAlloc";
        return isFont ? Leavings{.gdiObjects = true} : leavingsOf(with.import);
    }

    // "" for a call that is not made any more.
    std::string tryWith(const Scenario& scenario, const Fault& with, const Played& usual) {
        std::string name = std::string(native.name) + ", " + scenario.state + ", " + with.import +
                           " " + std::to_string(with.nth);
        SCOPED_TRACE(name);
        Combination combination(name);
        ++failuresTried;
        Played told = run(scenario, &with);
        if (!told.hasFailed) return "";
        expectNothingLeft(scenario, with, usual, told);
        bool works = told.afterwards == usual.outcome || told.afterwards == usual.afterwards;
        EXPECT_TRUE(works) << "afterwards: " << told.afterwards << ", usually " << usual.afterwards;
        if (told.outcome == usual.outcome) return "ignored";
        if (told.outcome.starts_with("error") || told.outcome.starts_with("throws"))
            return told.outcome;
        return "gives " + told.outcome + " for " + usual.outcome;
    }

    std::string outcomesOf(const Scenario& scenario) {
        Scene ownScene;
        Faults ownFaults;
        scene = &ownScene;
        faults = &ownFaults;
        fault = nullptr;
        kindsUsed.clear();
        if (!scenario.onAllThreads) faults->watchThisThreadOnly();
        std::string name = std::string(native.name) + ", " + scenario.state;
        Combination combination(name);
        run(scenario);
        run(scenario);
        Played usual = run(scenario);
        std::string lines;
        if (usual.outcome.starts_with("error") || usual.outcome.starts_with("throws"))
            lines += "  usually: " + usual.outcome + "\n";
        for (const std::string& import : reached(usual.calls))
            lines += linesOf(scenario, import, usual);
        return lines;
    }

    std::string linesOf(const Scenario& scenario, const std::string& import, const Played& usual) {
        auto calls = std::count(usual.calls.begin(), usual.calls.end(), import);
        std::string lines, before;
        for (int nth = 1; nth <= std::min<int>(calls, callsThatFail); ++nth) {
            std::string told = tryWith(scenario, {import, nth}, usual);
            if (told.empty()) continue;
            if (told == before) {
                lines.insert(lines.find(": ", lines.rfind("  " + import)),
                             " " + std::to_string(nth));
                continue;
            }
            lines += "  " + import + " " + std::to_string(nth) + ": " + told + "\n";
            before = told;
        }
        return lines;
    }

    const DeclaredNative& native;
    Scene* scene = nullptr;
    Faults* faults = nullptr;
    const Fault* fault = nullptr;
    // Made before a call that is to fail, which has nothing to do with making them.
    std::vector<ObjectKind> kindsUsed;
};

class Summary : public testing::Environment {
    void SetUp() override {
        lastProgress = GetTickCount();
        CloseHandle(CreateThread(nullptr, 0, endWhatHangs, nullptr, 0, nullptr));
    }
    void TearDown() override {
        std::fprintf(stderr, "%d calls failed\n", failuresTried);
        EXPECT_TRUE(failuresTried || !Combination::isChosen()) << "ZEMVOLT_COMBINATION names none";
    }
};

bool registerAll() {
    for (const DeclaredNative& native : declaredNatives())
        testing::RegisterTest("Faults", native.name, nullptr, nullptr, __FILE__, __LINE__,
                              [&]() -> FaultsTest* { return new FaultsTest(native); });
    testing::AddGlobalTestEnvironment(new Summary);
    return true;
}

} // namespace

static const bool areRegistered = registerAll();

TEST(FaultsTables, every_import_fails_somewhere_or_never_does) {
    std::set<std::string> failing;
    for (const KeptOutcome& kept : keptOutcomes()) failing.insert(kept.import);
    Faults faults;
    for (const std::string& import : faults.imported()) {
        EXPECT_NE(failing.count(import) != 0, reasonWhyNever(import) != nullptr) << import;
    }
}

TEST(FaultsTables, what_cannot_be_made_is_told_and_what_cannot_be_given_back_is_not) {
    for (const KeptOutcome& kept : keptOutcomes())
        EXPECT_TRUE(isDescribed(kept.native, kept.import, kept.outcome))
            << kept.native << ", " << kept.import << ": " << kept.outcome;
}

TEST(FaultsTables, every_row_is_of_a_native) {
    for (const Scenario& row : scenarioRows()) {
        auto isIts = [&](const DeclaredNative& native) { return row.native == native.name; };
        EXPECT_TRUE(std::any_of(declaredNatives().begin(), declaredNatives().end(), isIts))
            << row.native;
    }
}
