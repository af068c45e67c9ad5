#include "menu_bar.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    return reason != DLL_PROCESS_ATTACH || registerMenuBarClass(instance);
}
