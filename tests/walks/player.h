#pragma once
// Does the steps of a walk, each with what it may bring about, and looks after each at what always
// holds.

#include "declared/any_call.h"
#include "device.h"
#include "faults.h"
#include "leaks.h"
#include "system_functions.h"
#include "waiting.h"
#include "world.h"

// What may stay behind by description.
struct Kept {
    long heapBlocks = 0;
    int references = 0;
    Leavings leavings = {}; // after a failure of the system
};

// What a listener was told.
struct Told {
    Object widget; // whose listener
    std::string method;
    std::vector<jint> arguments;
};

class Player : public DeviceTest {
  public:
    Player();
    ~Player() override;
    void TestBody() override {}

    World world;

    // Only what is a program's right is done.
    bool isStrict = false;

    // Does the step, or lets it wait for its event. False when what it names is not there, or when
    // the library does not promise to stand it.
    bool play(const Step& step);

    // Ends all that is left. What stays behind that must not; empty when nothing does.
    std::string finish();

    // By their names, how often each native was called in this program.
    static const std::map<std::string, int>& counts();

    // For the verbs.
    using DeviceTest::dispatchAll;
    using DeviceTest::display;
    using DeviceTest::tapAt;
    using DeviceTest::vm;
    using DeviceTest::windowOf;
    HWND windowOfStep(const Argument& argument);
    void dispatchUntilEmpty();
    void throwException();
    void answer(jint value) { eventAnswer = value; }
    bool listenTo(const Argument& argument);

    // What listeners were told in this step, and who else wants to know as soon as one is.
    std::vector<Told> told;
    std::function<void(const Told&)> whenTold;

    // What the last native that was called gave, and whether it reported an error.
    DWORD lastResult = 0;
    bool hasReported = false;

  private:
    bool playNow(const Step& step);
    bool callNative(const Step& step, const KnownNative& native);
    bool isWalked(const KnownNative& native, const Words& words);
    std::optional<Words> wordsOf(const Step& step, const KnownNative& native);
    DWORD wordOf(const Argument& argument, const Parameter& parameter);
    jint fire(const char* method, const std::vector<jint>& arguments);
    void note(const char* method, const std::vector<jint>& arguments);
    void noteEnd(const Object& object);
    void noteFailure(const Step& step);
    void checkCall(const Step& step, const KnownNative& native, DWORD result);
    void endAll();
    void endObject(const Object& object);
    void emptyClipboard();
    std::string whatIsLeft();

    Impatience impatience;
    Faults faults;
    Steps waiting; // for their events
    int depth = 0;
    bool hasThrown = false;
    jint eventAnswer;
    Kept kept;
    int referencesBefore;
    LiveCounts before;
};
