#pragma once
// What a call reads or writes of its arrays.

#include "checked_natives.h"

struct Elements {
    long long first = 0, end = 0; // indices; nothing when the end is not behind the first
    std::string reason;           // the arguments that it follows from: "width 3, height 2"
};

// Of the array that is the parameter of that index, whose length counts. The arguments are a word
// each.
Elements elementsUsed(const CheckedNative& native, const uint32_t* arguments, size_t index);
