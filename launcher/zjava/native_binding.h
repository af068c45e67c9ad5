#pragma once

#include <jni.h>
#include <string>
#include <vector>

// A native library beside the toolkit's, and the class (with slashes) whose natives it implements.
struct Companion {
    std::string file;
    std::string className;
};

// The companions to load behind the toolkit's library. Called before the VM starts.
void setCompanions(const std::vector<Companion>& companions);

// Loads the library beside the launcher and binds its exports to the natives of its two classes.
// Called by System.loadLibrary. A native without export stays unbound. The JNI version, or JNI_ERR
// with a line on standard error.
jint bindLibrary(JNIEnv* env);
