// The library's own objects within a program of tests: what the system does when it loads a library
// is done as the program starts.

#include <windows.h>

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved);

static const BOOL loaded = DllMain(GetModuleHandleW(nullptr), DLL_PROCESS_ATTACH, nullptr);
