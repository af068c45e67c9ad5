#pragma once
// Who has the keys: the control with the focus and the shell that is active.

#include "player.h"
#include <set>

struct Desk {
    uint32_t focus = 0;  // 0: no control of the walk's
    uint32_t active = 0; // 0: no shell of the walk's
    uint32_t heir = 0;   // the parent of who has the focus, of a child that is not hidden; 0: none
    HWND heirsWindow = nullptr;
    bool hasFocus = false;                                  // any window
    std::set<uint32_t> controls, listening, shown, enabled; // all of them have windows
};

Desk deskOf(Player& player);

// Fails the test where a step brings about, or leaves out, a change of who has the keys.
// first: the step's first object; 0: none. result: what its native gave.
void checkDesk(const Step& step, uint32_t first, jint result, const Desk& before,
               const Desk& after);
