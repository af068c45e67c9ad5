#pragma once
// What is wrong with a call of a native, and what a call makes and ends.

#include "checked_natives.h"
#include "handles.h"
#include <optional>
#include <string>

struct Misuse {
    std::string sentence; // "List_Add: list 4199472 was disposed of"
    Place place;          // where what it tells of happened; null: nowhere
    bool mayGoOn;         // the library stands the call all the same
};

// What the rules ask of whoever calls.
class Surroundings {
  public:
    virtual ~Surroundings() = default;
    virtual uint32_t thread() = 0;
    virtual int lengthOf(uint32_t array) = 0;
    // Whether a handle that no native gave is a control of a companion library's, with its display.
    virtual bool isCompanionsControl(uint32_t handle, uint32_t* display) = 0;
};

// The arguments are those behind environment and class, a word each. Nothing without misuse.
std::optional<Misuse> findMisuse(const CheckedNative& native, const uint32_t* arguments,
                                 Handles* handles, Surroundings* surroundings);

// What the native that returned the handle has made of its arguments.
Object madeBy(const CheckedNative& native, const uint32_t* arguments, uint32_t handle,
              Handles* handles, uint32_t thread);

// A control that a companion library made.
Object companionsControl(uint32_t handle, const Object& display, uint32_t thread);
