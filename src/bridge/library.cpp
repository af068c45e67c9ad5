#include "bridge/library.h"

static HINSTANCE libraryInstance;

HINSTANCE Library_GetInstance() { return libraryInstance; }

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH && !libraryInstance) libraryInstance = instance;
    return TRUE;
}
