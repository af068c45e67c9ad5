#pragma once
// How the process ends: by the VM, by an abort, by a fault in Windows code.

#include <jni.h>

// What the VM calls in place of exit and abort, so that libraries are detached as they would be.
void exitThroughWindows(jint code);
void abortThroughWindows();

// A fault that neither the VM nor the program handles prints the module and offset where it
// happened and the Java stack, and ends the process.
void reportUnhandledFaults();
