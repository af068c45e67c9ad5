#pragma once
// Menu bars, which aygshell makes; coredll hides them with their owners and keeps clear of them.

#include "emulator.h"

constexpr wchar_t menuBarClass[] = L"MenuBar";

// Pixels. As large to the eye on every screen.
inline int menuBarHeight() {
    constexpr int height = 26, dotsPerInch = 96;
    return MulDiv(height, Emulator_GetVariety()->dotsPerInch, dotsPerInch);
}
