#pragma once
// The toolkit's library: the desk's build, or, when the environment asks for it (ZEMVOLT_IMAGE),
// the device's own code on an emulated processor.

#include <jni.h>
#include <windows.h>

// The loaded image; null with the last error set when it cannot be loaded.
HMODULE loadToolkit();

// An export of it, callable from here; null when there is none. After loadToolkit.
void* toolkitExport(const char* name);

// A library with further natives. With the device's code goes the device's build of it, from the
// same folder; only one that does not call the toolkit may be the desk's. Null with the last error
// set when it cannot be loaded. After loadToolkit, and before other threads use the toolkit.
HMODULE loadCompanion(const char* file);

// An export of the toolkit or of a companion, callable from here; null when there is none.
void* exportOf(HMODULE library, const char* name);

// What the system calls when the library comes and goes.
using LibraryEntry = BOOL(WINAPI*)(HINSTANCE, DWORD, LPVOID);
LibraryEntry toolkitEntry();

// Before the library gets a Java environment with this table. Loads the library.
void tellToolkitOf(const JNINativeInterface_* table);

// Instructions that the emulated processor has run; 0 on the desk's own.
unsigned long long toolkitInstructions();

// Says on standard error what the device's code does on the calling thread: where a fault was met.
// Nothing where it does not run.
void reportProcessor();
