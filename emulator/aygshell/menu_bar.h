#pragma once
// The window class of menu bars.

#include <windows.h>

bool registerMenuBarClass(HINSTANCE instance);
