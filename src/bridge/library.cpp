#include "bridge/library.h"
#include "bridge/leaf_lock.h"

static HINSTANCE libraryInstance;

HINSTANCE Library_GetInstance() { return libraryInstance; }

static void attach(HINSTANCE instance) {
    if (libraryInstance) return;
    LeafLock::initialize();
    libraryInstance = instance;
}

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) attach(instance);
    return TRUE;
}
