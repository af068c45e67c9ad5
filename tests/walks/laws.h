#pragma once
// The checked order: after each step every object is as the step leaves it. A native changes of its
// first object what its law says, and of any other only what the law says of others.

#include "event_laws.h"
#include "properties.h"

// What was called, and what came of it.
struct Call {
    const std::vector<Argument>& arguments;
    jint result;
    const Properties& before; // of the first argument; empty: it is no object
    const Properties* second; // of the second argument before; null: it is no object
};

struct Law {
    const char* native;
    std::vector<const char*> changes = {}; // in a way that the law need not foretell
    // What it foretells: makes what must be now of what was before, where what changes is as it was
    // found. Null: nothing.
    void (*foretell)(const Call& call, Properties* all) = nullptr;
    // What the native must answer. Null: anything.
    jint (*answer)(const Call& call, const Properties& before) = nullptr;
    // What becomes of every other object, by what the first was. Null: nothing.
    void (*foretellOther)(const Properties& first, Properties* other) = nullptr;
};

const std::vector<Law>& listLaws(); // and choices
const std::vector<Law>& menuLaws();
const std::vector<Law>& controlLaws();
const std::vector<Law>& textLaws();

inline std::string yesOrNo(const Argument& argument) { return argument.value ? "yes" : "no"; }

class Laws {
  public:
    explicit Laws(Player& walking);

    // Before each step and behind it. Fails the test where something is not as it must be.
    void look(const Step& step);
    void check(const Step& step);

  private:
    std::map<uint32_t, Properties> lookAtAll();
    uint32_t handleAt(const Step& step, size_t index);
    void noteReminder(const Step& step);
    void checkAnswer(const Step& step, const Law& law, const Call& call);
    void foretell(const Law& law, const Call& call, uint32_t handle, const Properties& found,
                  Properties* expected);

    Player& player;
    std::map<uint32_t, Properties> before; // by handle
    Desk deskBefore;
    Reminders reminders;
    uint32_t first = 0, second = 0; // what the step is given; 0: no object
};
