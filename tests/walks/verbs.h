#pragma once
// What happens in a walk beside natives: what a person does, what the system sends, what listeners
// do.

#include "player.h"

struct Verb {
    const char* name;
    // False when what the step names is not there.
    bool (*act)(Player& player, const Step& step);
};

// Null for a name that is none.
const Verb* findVerb(const std::string& name);
