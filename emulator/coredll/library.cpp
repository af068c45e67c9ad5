#include "control_classes.h"
#include "dialog_class.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    return reason != DLL_PROCESS_ATTACH ||
           (registerDialogClass(instance) && registerControlClasses(instance));
}
