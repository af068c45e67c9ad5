#pragma once
// A walk: steps chosen one after the other by what is there, or steps that were written down.

#include "step.h"

// What sort of steps, and how many.
struct Order {
    const char* name;
    // Plays a walk of that seed; each step is written to the file before it is played. Returns what
    // stays behind; empty when nothing does.
    std::string (*walk)(unsigned seed, int length, std::ostream& trace);
};

// Null for a name that is none.
const Order* findOrder(const std::string& name);

// Plays what was written down, by the laws of the checked order when asked for; returns what stays
// behind.
std::string replay(const Steps& steps, bool isChecked);

// Of this program: how many steps were done, and how many could not be.
struct Played {
    long done = 0, leftOut = 0;
};
Played& played();
