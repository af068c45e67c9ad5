// Whatever another thread disposes of while the display's thread handles an event, wherever in it
// the system may let the other thread's messages through: nothing that is gone is touched, and the
// next event works.
//
// Every combination of a kind of widget, what makes it fire, what is disposed of, and the number of
// the call into the system at which it is: the first, the second, and so on to the last.

#include "combination.h"
#include "faults.h"
#include "kinds.h"
#include <algorithm>
#include <cstdio>
#include <cstring>

static int ran;

// Those of the calls that dispatch what other threads send, and that take nothing of a record with
// them that they read later.
static bool dispatches(const std::string& function) {
    static const std::set<std::string> all = {
        "CallWindowProcW",  "CreateWindowExW",     "DefWindowProcW", "DestroyWindow",
        "EnableWindow",     "PeekMessageW",        "RedrawWindow",   "SendMessageW",
        "SetFocus",         "SetForegroundWindow", "SetWindowPos",   "ShowWindow",
        "TrackPopupMenuEx", "UpdateWindow",
    };
    return all.count(function);
}

static const struct Victim {
    const char* name;
    void (*end)(Stage&);
} victims[] = {
    {"itself", [](Stage& stage) { stage.end(stage.subject); }},
    {"its parent", [](Stage& stage) { stage.end(stage.parent); }},
    {"its shell", [](Stage& stage) { stage.end(stage.shell); }},
    {"the menu bar", [](Stage& stage) { stage.end(stage.bar); }},
};

static std::vector<UINT> answering; // the messages that are being answered, innermost last

static LRESULT CALLBACK noteSent(int code, WPARAM fromSystem, LPARAM lParam) {
    answering.push_back(reinterpret_cast<const CWPSTRUCT*>(lParam)->message);
    return CallNextHookEx(nullptr, code, fromSystem, lParam);
}

static LRESULT CALLBACK noteAnswered(int code, WPARAM fromSystem, LPARAM lParam) {
    if (!answering.empty()) answering.pop_back();
    return CallNextHookEx(nullptr, code, fromSystem, lParam);
}

// What a class asks its window and its parent for in the midst of drawing: nothing may be let in
// there.
static bool isAskedWhileDrawing() {
    auto isQuestion = [](UINT message) {
        bool isColor = message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC;
        return isColor || message == WM_ERASEBKGND || message == WM_NCPAINT;
    };
    return std::any_of(answering.begin(), answering.end(), isQuestion);
}

// Goes to windows of the same thread, whose own calls are looked at in their turn.
static bool passesOn(const std::string& function) {
    return function == "CallWindowProcW" || function == "DefWindowProcW" ||
           function == "SendMessageW";
}

namespace {

// Counts the calls that dispatch.
class Calls {
  public:
    explicit Calls(const Stage& watched) : stage(watched) {
        faults.watch([this](const std::string& function) {
            if (GetCurrentThreadId() != displayThread || !dispatches(function)) return;
            if (!stage.isPlaying()) return;
            if (isAskedWhileDrawing()) {
                EXPECT_TRUE(passesOn(function)) << function << " while a class draws";
                return;
            }
            ++made;
            if (made == awaited) atAwaited();
        });
    }
    ~Calls() {
        for (HHOOK hook : hooks) UnhookWindowsHookEx(hook);
        answering.clear();
    }
    Calls(const Calls&) = delete;
    Calls& operator=(const Calls&) = delete;
    int count() const { return made; }
    // Does the work at the nth of them.
    void at(int nth, std::function<void()> work) {
        awaited = nth;
        atAwaited = std::move(work);
    }

  private:
    const Stage& stage;
    DWORD displayThread = GetCurrentThreadId();
    int made = 0, awaited = 0;
    std::function<void()> atAwaited;
    HHOOK hooks[2] = {
        SetWindowsHookExW(WH_CALLWNDPROC, noteSent, nullptr, displayThread),
        SetWindowsHookExW(WH_CALLWNDPROCRET, noteAnswered, nullptr, displayThread),
    };
    Faults faults;
};

struct Work {
    const Victim& victim;
    Stage& stage;
};

} // namespace

static DWORD WINAPI endVictim(void* given) {
    auto* work = static_cast<Work*>(given);
    work->victim.end(work->stage);
    return 0;
}

// Waits for the other thread's end, taking what it sends.
static void endOnOtherThread(Work work) {
    HANDLE thread = CreateThread(nullptr, 0, endVictim, &work, 0, nullptr);
    MSG message;
    while (MsgWaitForMultipleObjects(1, &thread, FALSE, INFINITE, QS_SENDMESSAGE) != WAIT_OBJECT_0)
        PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
    CloseHandle(thread);
}

static int countCalls(const Kind& kind, const Provocation& provocation) {
    Stage stage(kind);
    Calls calls(stage);
    stage.play(provocation, nullptr, nullptr);
    return calls.count();
}

static void play(const Kind& kind, const Provocation& provocation, const Victim& victim, int nth) {
    std::string name = std::string(kind.name) + ", " + provocation.name + ", call " +
                       std::to_string(nth) + ", another thread disposes of " + victim.name;
    if (!Combination::isWanted(name)) return;
    SCOPED_TRACE(name);
    Combination running(name);
    Stage stage(kind);
    {
        Calls calls(stage);
        calls.at(nth, [&] { endOnOtherThread({victim, stage}); });
        stage.play(provocation, nullptr, nullptr);
        // The last ones are the system's own, a paint for instance, and may come later another
        // time.
        if (calls.count() < nth) return;
    }
    ++ran;
    stage.expectNextTapWorks();
}

static bool canBe(const Victim& victim, const Kind& kind) {
    bool isItself = strcmp(victim.name, "itself") == 0;
    bool isParent = strcmp(victim.name, "its parent") == 0;
    return !(isItself && kind.role == Role::ownBar) && !(isParent && kind.role == Role::shell);
}

static void playAll(const Kind& kind, const Provocation& provocation) {
    std::string beginning = std::string(kind.name) + ", " + provocation.name;
    Combination running(beginning);
    int calls = countCalls(kind, provocation);
    for (const Victim& victim : victims)
        for (int nth = 1; canBe(victim, kind) && nth <= calls; ++nth)
            play(kind, provocation, victim, nth);
}

namespace {

class OtherThreadDisposes : public testing::Test {
  public:
    OtherThreadDisposes(const Kind& tested, const Provocation& made)
        : kind(tested), provocation(made) {}
    void TestBody() override { playAll(kind, provocation); }

  private:
    const Kind& kind;
    const Provocation& provocation;
};

class Summary : public testing::Environment {
    void TearDown() override {
        std::printf("%d combinations ran\n", ran);
        EXPECT_TRUE(ran || !Combination::isChosen()) << "ZEMVOLT_COMBINATION names none";
    }
};

} // namespace

static bool registerAll() {
    forEachProvocation(
        [](const Kind& kind, const Provocation& provocation, const std::string& name) {
            testing::RegisterTest("OtherThreadDisposes", name.c_str(), nullptr, nullptr, __FILE__,
                                  __LINE__, [&]() -> OtherThreadDisposes* {
                                      return new OtherThreadDisposes(kind, provocation);
                                  });
        });
    return true;
}
static const bool areRegistered = registerAll();
static auto* summary = testing::AddGlobalTestEnvironment(new Summary);
