#pragma once
// The resource from which the shell makes a menu bar's buttons.

#include <windows.h>

#include <commctrl.h>
#include <optional>
#include <vector>

// None, with the last error set, when the module has no such resource or it is cut off.
std::optional<std::vector<TBBUTTON>> loadToolBar(HINSTANCE module, UINT id);
