#pragma once
// The toolkit's library: the desk's build, or, when the environment asks for it (ZEMVOLT_IMAGE),
// the device's own code on an emulated processor.

#include <jni.h>
#include <windows.h>

// The loaded image; null with the last error set when it cannot be loaded.
HMODULE loadToolkit();

// An export of it, callable from here; null when there is none. After loadToolkit.
void* toolkitExport(const char* name);

// What the system calls when the library comes and goes.
using LibraryEntry = BOOL(WINAPI*)(HINSTANCE, DWORD, LPVOID);
LibraryEntry toolkitEntry();

// Before the library gets a Java environment with this table. Loads the library.
void tellToolkitOf(const JNINativeInterface_* table);

// Instructions that the emulated processor has run; 0 on the desk's own.
unsigned long long toolkitInstructions();
