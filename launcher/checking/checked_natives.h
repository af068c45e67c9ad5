#pragma once
// What the declarations say of handles and of every native's arguments. Made of them by
// checked_natives.py.

#include <stdint.h>
#include <string>
#include <vector>

struct Kind {
    const char* record;
    const char* name; // as it is spoken of: "text field"
    int base;         // the kind that every one of this is, too; -1: none
    bool isSystems;   // the system's own: never ended, and 0 may stand for one
};
const std::vector<Kind>& kinds();

// Whether whatever is of the kind is of the other too.
bool isA(int kind, int other);

// The number of the kind of a record; the record is there.
int kindOf(const char* record);

enum class Role { other, handle, array };

// What the length of an array follows from. src/bridge/handles.h says more of each.
enum class Extent { any, counted, pixels, rows, scannedRows };

struct CheckedParameter {
    const char* name;
    Role role;
    int index = -1;         // of a handle: its kind; of a counted array: the parameter that counts
    bool maybeNone = false; // 0 stands for none
    bool ofThisThread = false; // a display that only its own thread may give
    Extent extent = Extent::any;
};

// Of one native.
constexpr size_t mostParameters = 16;

struct CheckedNative {
    const char* name; // Class_Method
    std::vector<CheckedParameter> parameters;
    int made;    // the kind of the result; -1: no handle
    bool isLent; // what is made stays somebody else's
    bool ends;   // the first argument is no handle any more
};
const std::vector<CheckedNative>& checkedNatives();

// Null when there is none of the name.
const CheckedNative* findCheckedNative(const std::string& name);

struct CheckedEvent {
    const char* name;
    uint32_t id;
    const char* signature; // of the method that it calls
};
const std::vector<CheckedEvent>& checkedEvents();
const CheckedEvent* findCheckedEvent(uint32_t id); // null when there is none
