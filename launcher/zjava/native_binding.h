#pragma once

#include <jni.h>

// Loads the library beside the launcher and binds its exports to the natives of its two classes.
// Called by System.loadLibrary. A native without export stays unbound. The JNI version, or JNI_ERR
// with a line on standard error.
jint bindLibrary(JNIEnv* env);
