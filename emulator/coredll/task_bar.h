#pragma once
// The bar at the top of the screen, on devices that have one: it shows the title of the window that
// is in use. It has a thread of its own, as it belongs to no program. Any thread.

#include <windows.h>

// Returns when it is on the screen; does nothing from the second time on.
void startTaskBar();

// The window is in use now. Returns when its title is on the screen.
void showTitleOf(HWND window);

// As wide as the screen is now.
void placeTaskBar();

// To be called when a window's title has changed or the window is gone.
void titleHasChanged(HWND window);
