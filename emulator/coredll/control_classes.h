#pragma once
// The device's classes of controls: the desk's, with what the device does differently. Only windows
// that the device's programs create are of them; the desk's own dialogs keep the desk's.

#include <windows.h>

struct ControlClass {
    LPCWSTR name;     // as the device's programs know it
    LPCWSTR deskName; // under which it is registered on the desk
    WNDPROC proc;
    WNDPROC deskProc; // of the desk's class of that name, which does the rest
};

extern ControlClass buttonClass;
extern ControlClass comboClass;
extern ControlClass editClass;
extern ControlClass listClass;

bool registerControlClasses(HINSTANCE instance);

// The name or atom under which the desk knows the class that a device's program means.
LPCWSTR deskClassName(LPCWSTR name);

// A notification of the control to its parent.
void notifyParent(HWND control, WORD code);
