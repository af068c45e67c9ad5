#pragma once
// Native values to Java values and back. All take the environment of the calling thread; all that
// build return a local reference, or null with the VM's exception pending.

#include "bridge/narrow.h"
#include "ce.h"
#include <jni.h>

extern "C" {

// Null gives null without touching the VM.
jstring convertToJavaString(JNIEnv* env, const wchar_t* text);

// An int[4] of x, y, width, height.
jintArray createJavaRect(JNIEnv* env, jint x, jint y, jint width, jint height);

// An int[2].
jintArray createJavaPoint(JNIEnv* env, jint x, jint y);
}

// An int[4] of insets: left, top, right, bottom.
jintArray createJavaIntArray4(JNIEnv* env, jint left, jint top, jint right, jint bottom);

// An int[4] of colour masks.
jintArray createJavaMaskArray(JNIEnv* env, jint red, jint green, jint blue, jint alpha);

// An int[count] holding the values; null with an exception pending when it cannot be made.
jintArray createJavaIntArray(JNIEnv* env, const jint* values, jint count);

// A byte[count] likewise.
jbyteArray createJavaByteArray(JNIEnv* env, const jbyte* values, jint count);

// A String[] of a string list; an absent or empty list gives an array of length 0.
jobjectArray convertToJavaStringArray(JNIEnv* env, const wchar_t* const* list);

// A NUL-terminated wide string of a Java string's characters: the VM need not terminate its own.
// mustFreeOut is set when the caller frees the result with freeBlock. Null when there is no
// memory for it.
wchar_t* toNativeString(const jchar* characters, jint length, BYTE* mustFreeOut);

inline bool isExceptionPending(JNIEnv* env) { return narrow(env->ExceptionCheck()) != JNI_FALSE; }

// Throws java/lang/OutOfMemoryError; fatal to the VM when not even that class can be found.
void throwOutOfMemory(JNIEnv* env, const char* message);
