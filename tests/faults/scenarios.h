#pragma once
// What is done with each native while the system fails. Every native that the Java classes declare
// is called with its usual arguments, on every kind of object that it takes first; what takes
// another way through the library has a row besides.

#include "scene.h"
#include <functional>

struct Scenario {
    std::string native;                                 // by its Java name
    std::string state;                                  // of what it is called on
    std::function<void(Scene&)> arrange = nullptr;      // once, before all calls
    std::function<void(Scene&)> before = nullptr;       // before each
    std::function<DWORD(Scene&)> act = nullptr;         // null: the usual call
    std::function<void(Scene&, DWORD)> after = nullptr; // null: what was made is disposed of
    ObjectKind kind = ObjectKind::number; // of the usual call's first object; number: the first one
    bool onAllThreads = false;            // the calls of the library's own threads fail too
};

// The rows; natives whose usual call waits, or ends what it is called on, have nothing else.
const std::vector<Scenario>& scenarioRows();
bool hasRowsOnly(const std::string& native);

// Usual calls and rows.
std::vector<Scenario> scenariosOf(const DeclaredNative& native);
