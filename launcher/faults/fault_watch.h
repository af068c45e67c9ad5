#pragma once
// Ends the process at the first fault of our own code. The system catches faults wherever it calls
// back into a program, in a window procedure say, and goes on as if nothing had been; so they are
// looked at before anybody can catch them.

#include <windows.h>

// A module, its offset, the function there and what went wrong, as one line without its end.
struct FaultDescription {
    char text[2 * MAX_PATH];
};

// Told of the fault on the thread that made it; the process ends with this code when it returns.
using FaultReporter = UINT (*)(const FaultDescription& fault);

// From now on, and on all threads. Ours are the modules that lie in the program's own folder, what
// lies in no module, and memory that was given up. Faults of other modules are left to those who
// may expect them, and end the process where nobody does: also at the border of a callback that the
// system has entered. Once.
void watchFaults(FaultReporter reporter);
