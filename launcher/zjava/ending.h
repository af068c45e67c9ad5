#pragma once
// How the process ends: by the VM, by an abort, by a fault in Windows code.

#include <jni.h>

// What the VM calls in place of exit and abort, so that libraries are detached as they would be.
void exitThroughWindows(jint code);
void abortThroughWindows();

// From now on a fault prints the module, offset and function where it happened and the Java stack,
// and ends the process as an abort does.
void reportFaults();
