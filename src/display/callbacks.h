#pragma once
// The registry through which native code reports events to Java by number.
//
// A display has one lookup. It maps a callback id to a Java method; each widget's target names the
// Java object that receives that widget's events. An event without target, lookup, registered
// method or environment vanishes. Events may be fired on any thread; one that the VM does not know
// is attached for the call. Exceptions that the Java method throws are left for Java, and while one
// is pending events vanish.

#include "bridge/java_numbers.h"
#include "bridge/layout.h"
#include "ce.h"
#include <jni.h>
#include <stdarg.h>

struct DisplayRecord;
struct WidgetRecord;

struct CallbackEntry {
    const char* className;  // modified UTF-8, held for good
    const char* methodName; // modified UTF-8, held for good
    jmethodID methodID;     // null until the first event
    DWORD id;
    CallbackEntry* next;
};
ASSERT_OFFSET(CallbackEntry, methodID, 8)
ASSERT_OFFSET(CallbackEntry, next, 16)

constexpr DWORD callbackBuckets = 20;

struct CallbackLookup {
    CallbackEntry** table; // callbackBuckets heads
    JavaVM* vm;
    jobject target; // global reference, held for the display's lifetime
};
ASSERT_OFFSET(CallbackLookup, vm, 4)
ASSERT_OFFSET(CallbackLookup, target, 8)

struct CallbackTarget {
    jobject object; // global reference to the receiver
    WidgetRecord* widget;
    DisplayRecord* display; // null until the first event
};
ASSERT_OFFSET(CallbackTarget, widget, 4)
ASSERT_OFFSET(CallbackTarget, display, 8)

// The three natives of the registry report by Java exceptions, not by error records. A method
// without class or name is not registered.
void Display_InitCallbacks(JNIEnv* env, DisplayRecord* display, jobject target);
void Display_RegisterCallback(JNIEnv* env, DisplayRecord* display, jint id, jstring className,
                              jstring methodName);
void Widget_SetData(JNIEnv* env, WidgetRecord* widget, jobject data);

extern "C" {

// The environment of the calling thread, which is attached when the VM does not know it yet:
// *attachedOut is then 1 and the caller detaches it when done. Returns the VM's result, 0 for
// success.
jint getEnv(CallbackLookup* lookup, JNIEnv** envOut, jint* attachedOut);

// The lookup of the target's display, or null; null for a null target too.
CallbackLookup* getCallbackLookup(CallbackTarget* target);

// Call the method registered under the id on the target's object. The signature is the id's own
// and the arguments follow it.
void vaCallback(DWORD id, const char* signature, CallbackTarget* target, ...);

// 1 when the method returned true, else 0; 1 when the thread has no environment.
jint vaCallbackBoolean(DWORD id, const char* signature, CallbackTarget* target, ...);
}

// The method's result; 0 when it could not be called.
jint vaCallbackInt(DWORD id, const char* signature, CallbackTarget* target, ...);
