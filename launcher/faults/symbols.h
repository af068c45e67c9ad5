#pragma once
// The names of functions, as the linker has left them in a module's file.

#include <windows.h>

// " (function+0xoffset)" of what lies at the offset in the module, or nothing when that is not
// known.
void describeFunction(const char* modulePath, DWORD offset, char* text, size_t size);
