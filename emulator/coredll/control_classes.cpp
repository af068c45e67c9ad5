#include "control_classes.h"

static ControlClass* const classes[] = {&buttonClass, &comboClass, &editClass, &listClass};

static bool registerControlClass(ControlClass* control, HINSTANCE instance) {
    WNDCLASSW windowClass;
    if (!GetClassInfoW(nullptr, control->name, &windowClass)) return false;
    control->deskProc = windowClass.lpfnWndProc;
    windowClass.style |= CS_GLOBALCLASS;
    windowClass.lpfnWndProc = control->proc;
    windowClass.hInstance = instance;
    windowClass.lpszClassName = control->deskName;
    return RegisterClassW(&windowClass) != 0;
}

bool registerControlClasses(HINSTANCE instance) {
    bool registered = true;
    for (ControlClass* control : classes)
        registered = registerControlClass(control, instance) && registered;
    return registered;
}

LPCWSTR deskClassName(LPCWSTR name) {
    if (IS_INTRESOURCE(name)) return name;
    for (const ControlClass* control : classes)
        if (!lstrcmpiW(control->name, name)) return control->deskName;
    return name;
}

void notifyParent(HWND control, WORD code) {
    SendMessageW(GetParent(control), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(control), code),
                 reinterpret_cast<LPARAM>(control));
}

// A class is described under the name that was asked for.
extern "C" BOOL WINAPI Device_GetClassInfoW(HINSTANCE instance, LPCWSTR name, WNDCLASSW* info) {
    if (!GetClassInfoW(instance, deskClassName(name), info)) return FALSE;
    info->lpszClassName = name;
    return TRUE;
}
