#pragma once
// Any export by the words of its arguments, whatever its declaration.

#include <jni.h>
#include <vector>
#include <windows.h>

using Words = std::vector<DWORD>;

template <class Reference>
DWORD word(Reference reference) {
    return reinterpret_cast<DWORD>(reference);
}

// There may be as many words as in the longest declaration.
DWORD callAny(void* function, JNIEnv* env, const Words& words);
