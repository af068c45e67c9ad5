#pragma once
// What listeners are told: each event is true when it comes, nobody is told twice what does not
// change, and of a step come the events that its native's law names, and no others.

#include "desk.h"

// As soon as a listener is told. Fails the test where it is not so.
void checkAtOnce(const Told& told);

// Controls that will be told once more that they have the focus.
using Reminders = std::multiset<uint32_t>;

// Of all that listeners were told in a step, by what was before it and is behind it.
// first: the step's first object, as it was before.
void checkTold(const Step& step, const Object& first, const std::vector<Told>& told,
               const Desk& before, const Desk& after, Reminders* reminders);
