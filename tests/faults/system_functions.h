#pragma once
// What is known of failures of the system's functions.

#include <string>

// Why the function is never made to fail; null for one that is.
const char* reasonWhyNever(const std::string& import);

// What a function that gives something back leaves behind when it fails.
struct Leavings {
    const char* import = "";
    bool gdiObjects = false, windows = false, heapBlocks = false, handles = false, menus = false;
};

// Nothing for every other function.
Leavings leavingsOf(const std::string& import);

// Whether the failure of that function may have that outcome in a native: what is given back is
// never told, and what could not be made always is, but for what is described not to be.
bool isDescribed(const std::string& native, const std::string& import, const std::string& outcome);
