#pragma once
// What each failure does, as text: a block for each native, which is kept in outcomes.txt.

#include <string>
#include <vector>

// "Shell_New, display", and the lines that follow it.
struct StateOutcomes {
    std::string state;
    std::string lines;
};

// States with the same lines share them.
std::string blockOf(const std::string& native, const std::vector<StateOutcomes>& states);

// Of outcomes.txt; empty when it has none.
std::string keptBlock(const std::string& native);

struct KeptOutcome {
    std::string native, import, outcome;
};

// All of outcomes.txt.
std::vector<KeptOutcome> keptOutcomes();
