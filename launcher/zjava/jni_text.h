#pragma once
// Java's strings as text. On the environment's thread.

#include <jni.h>
#include <string>

// In the VM's modified UTF-8; empty, with an exception pending, when there is no memory.
inline std::string toText(JNIEnv* env, jstring string) {
    const char* characters = env->GetStringUTFChars(string, nullptr);
    if (!characters) return {};
    std::string text = characters;
    env->ReleaseStringUTFChars(string, characters);
    return text;
}
