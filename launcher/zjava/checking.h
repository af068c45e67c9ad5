#pragma once
// The checked mode: what stands between Java and the natives and tells misuse. Any thread.

#include "rules.h"
#include <jni.h>

enum class Checking { off, throws, reports };

// What happens to calls of natives that are bound from now on. Called before the VM starts.
void setChecking(Checking mode);
bool isChecking();

// Finds the classes that tell misuse, from the thread that binds the natives. The one whose native
// leftHandles is; null with an exception pending when they are not on the class path.
jclass prepareChecking(JNIEnv* env);

// Of com.nuvik.checking.Checking.
jobjectArray JNICALL leftHandles(JNIEnv* env, jclass);

// Around the call of a native with the arguments behind environment and class.
class CheckedCall {
  public:
    CheckedCall(JNIEnv* env, const CheckedNative& native, const uint32_t* arguments);

    // False when the native must not be called: it returns zero, maybe with a pending exception.
    bool isAllowed();

    // The native has returned.
    void finish(uint32_t result);

  private:
    bool tell(const Misuse& misuse);
    jobject findProblemOfCallbacks();
    bool checkCallbacks();

    JNIEnv* env;
    const CheckedNative& native;
    const uint32_t* arguments;
    Object ended; // by the call
    Place where;
};

// A companion library is bound, which may fire events of its own.
void noteCompanion();

// A companion library's native has returned a number, which may be the handle of a control.
void noteCompanionsResult(JNIEnv* env, uint32_t result);
