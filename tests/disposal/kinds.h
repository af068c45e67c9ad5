#pragma once
// The tables that the combinations are made of. A native that makes a new kind of widget, and a new
// callback, must be entered here: the tests see to that.

#include "stage.h"

const std::vector<Kind>& kinds();
const std::vector<Provocation>& provocations();
const std::vector<Action>& actions();

// Every kind with every provocation that is made for it, and a name for the test of both.
void forEachProvocation(
    const std::function<void(const Kind&, const Provocation&, const std::string& name)>& work);

// By the natives that make them.
const std::set<std::string>& kindsThatFireNothing();
