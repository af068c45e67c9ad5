#pragma once
// Which of the devices (emulator/README.md) the tests run on.

#include "emulator.h"
#include <string>

// Loads the library, and so the device's, when that has not been done yet.
const EmulatorVariety& theDevice();

// The words that end the library's message of a system error: the device's, where it has some.
std::wstring systemText(DWORD code);

// The same as Java gets them.
std::u16string textOf(DWORD code);
