#pragma once
// Whether a call of this kind is the one that was asked to fail (Emulator_FailCall). Any thread.

#include "emulator.h"

bool failsNow(EmulatorFailure kind);
