#pragma once
// The OK button in the caption of a window of the class "Dialog". All of it is for the window's own
// thread, and does nothing for a window without the button.

#include <windows.h>

constexpr WPARAM okButtonHit = HTOBJECT;

// screenPoint in screen coordinates.
bool isOnOkButton(HWND window, POINT screenPoint);

void drawOkButton(HWND window, bool pressed);

// Follows the pointer until it is released; whether that was on the button.
bool trackOkButton(HWND window);
