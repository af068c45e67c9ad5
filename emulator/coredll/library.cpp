#include "control_classes.h"
#include "dialog_class.h"
#include "emulator.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    return reason != DLL_PROCESS_ATTACH ||
           (Emulator_GetVariety() && registerDialogClass(instance) &&
            registerControlClasses(instance));
}
