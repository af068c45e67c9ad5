#pragma once
// Which of the devices (emulator/README.md) the tests run on.

#include "emulator.h"

// Loads the library, and so the device's, when that has not been done yet.
const EmulatorVariety& theDevice();
