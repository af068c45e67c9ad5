#pragma once
// The device's window class "Dialog", which the desk does not have.

#include <windows.h>

bool registerDialogClass(HINSTANCE instance);

bool isDialog(HWND window);

// Whether the window's caption has an OK button. The bit has another meaning in a desk window's
// extended style, so that it is kept beside it. The window is of the class "Dialog".
bool hasOkButton(HWND window);
void setOkButton(HWND window, bool has);
