#pragma once
// Faults end the program where they happen and are told with module, offset and function: also
// those in callbacks that the system enters (painting, focus, sizes), which it would swallow there.

#include <windows.h>

// Ends the process; does not return. Called once, on the thread that has the fault, where it
// happened.
using FaultEnding = void (*)(const char* message);

// From now on, on all threads. The message is one line.
void endAtFaults(FaultEnding end);

// "module+0xoffset (function+0xoffset)", as much of it as is known.
void describePlace(const void* address, char* text, size_t size);
