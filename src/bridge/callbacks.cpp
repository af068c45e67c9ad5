#include "bridge/callbacks.h"
#include "bridge/java_values.h"
#include "bridge/memory.h"
#include "bridge/narrow.h"
#include "bridge/widget.h"

extern "C" jint getEnv(CallbackLookup* lookup, JNIEnv** envOut, jint* attachedOut) {
    jint result = lookup->vm->GetEnv(reinterpret_cast<void**>(envOut), JNI_VERSION_1_1);
    *attachedOut = result == JNI_EDETACHED;
    if (result != JNI_EDETACHED) return result;
    return lookup->vm->AttachCurrentThread(reinterpret_cast<void**>(envOut), nullptr);
}

static CallbackEntry** bucketOf(CallbackLookup* lookup, DWORD id) {
    return &lookup->table[id % callbackBuckets];
}

static CallbackEntry* findEntry(CallbackLookup* lookup, DWORD id) {
    for (CallbackEntry* entry = *bucketOf(lookup, id); entry; entry = entry->next)
        if (entry->id == id) return entry;
    return nullptr;
}

static CallbackLookup* newLookup(JNIEnv* env) {
    auto* lookup = allocate<CallbackLookup>();
    if (!lookup) {
        throwOutOfMemory(env, "Failed to allocate space for callback lookup");
        return nullptr;
    }
    lookup->table = allocateArray<CallbackEntry*>(callbackBuckets);
    if (!lookup->table) {
        freeBlock(lookup);
        throwOutOfMemory(env, "Failed to allocate space for callback table");
        return nullptr;
    }
    return lookup;
}

void Display_InitCallbacks(JNIEnv* env, DisplayRecord* display, jobject target) {
    CallbackLookup* lookup = newLookup(env);
    if (!lookup) return;
    env->GetJavaVM(&lookup->vm);
    lookup->target = env->NewGlobalRef(target);
    if (!lookup->target) {
        freeBlock(lookup->table);
        freeBlock(lookup);
        return;
    }
    Display_SetCallbacks(display, lookup);
}

static bool nameMethod(JNIEnv* env, CallbackEntry* entry, jstring className, jstring methodName) {
    if (!className || !methodName) return false;
    entry->className = env->GetStringUTFChars(className, nullptr);
    if (!entry->className) return false;
    entry->methodName = env->GetStringUTFChars(methodName, nullptr);
    if (entry->methodName) return true;
    env->ReleaseStringUTFChars(className, entry->className);
    return false;
}

static void link(CallbackLookup* lookup, CallbackEntry* entry) {
    CallbackEntry** end = bucketOf(lookup, entry->id);
    while (*end) end = &(*end)->next;
    *end = entry;
}

void Display_RegisterCallback(JNIEnv* env, DisplayRecord* display, jint id, jstring className,
                              jstring methodName) {
    CallbackLookup* lookup = Display_GetCallbacks(display);
    if (!lookup) {
        env->FatalError("Display_GetCallbacks() returned NULL and should not have");
        return;
    }
    auto* entry = allocate<CallbackEntry>();
    if (!entry) {
        throwOutOfMemory(env, "Failed to allocate space for callback entry");
        return;
    }
    entry->id = static_cast<DWORD>(id);
    if (!nameMethod(env, entry, className, methodName)) {
        freeBlock(entry);
        return;
    }
    if (findEntry(lookup, entry->id)) {
        env->FatalError("An event callback with that ID has already been registered");
        return;
    }
    link(lookup, entry);
}

static CallbackTarget* newTarget(JNIEnv* env, WidgetRecord* widget, jobject data) {
    jobject object = env->NewGlobalRef(data);
    if (!object) return nullptr;
    auto* target = allocate<CallbackTarget>();
    if (!target) {
        env->DeleteGlobalRef(object);
        throwOutOfMemory(env, "Failed to allocate space for callback target");
        return nullptr;
    }
    target->object = object;
    target->widget = widget;
    return target;
}

void Widget_SetData(JNIEnv* env, WidgetRecord* widget, jobject data) {
    CallbackTarget* target = nullptr;
    if (data) {
        target = newTarget(env, widget, data);
        if (!target) return;
    }
    CallbackTarget* previous = Widget_SwapCallbackTarget(widget, target);
    if (!previous) return;
    env->DeleteGlobalRef(previous->object);
    freeBlock(previous);
}

extern "C" CallbackLookup* getCallbackLookup(CallbackTarget* target) {
    if (!target) return nullptr;
    if (!target->display) target->display = target->widget->display;
    return Display_GetCallbacks(target->display);
}

namespace {

enum class Readiness { ready, noMethod, noEnvironment };

struct Invocation {
    JNIEnv* env;
    JavaVM* vm;
    jmethodID method;
    jint attached;
};

} // namespace

// A thread that was attached here stays attached when the method cannot be resolved; that is meant.
static jmethodID resolveMethod(JNIEnv* env, CallbackEntry* entry, const char* signature) {
    if (entry->methodID) return entry->methodID;
    jclass receiver = env->FindClass(entry->className);
    if (receiver) entry->methodID = env->GetMethodID(receiver, entry->methodName, signature);
    if (!entry->methodID) env->ExceptionDescribe();
    return entry->methodID;
}

static Readiness prepare(DWORD id, const char* signature, CallbackTarget* target,
                         Invocation* invocation) {
    CallbackLookup* lookup = getCallbackLookup(target);
    if (!lookup) return Readiness::noMethod;
    CallbackEntry* entry = findEntry(lookup, id);
    if (!entry) return Readiness::noMethod;
    invocation->vm = lookup->vm;
    if (getEnv(lookup, &invocation->env, &invocation->attached) != JNI_OK)
        return Readiness::noEnvironment;
    // What an earlier listener threw has yet to surface in Java; until then none may be called.
    if (isExceptionPending(invocation->env)) return Readiness::noMethod;
    invocation->method = resolveMethod(invocation->env, entry, signature);
    return invocation->method ? Readiness::ready : Readiness::noMethod;
}

static void finish(const Invocation& invocation) {
    if (invocation.attached) invocation.vm->DetachCurrentThread();
}

extern "C" void vaCallback(DWORD id, const char* signature, CallbackTarget* target, ...) {
    Invocation call;
    if (prepare(id, signature, target, &call) != Readiness::ready) return;
    va_list arguments;
    va_start(arguments, target);
    call.env->CallVoidMethodV(target->object, call.method, arguments);
    va_end(arguments);
    finish(call);
}

extern "C" jint vaCallbackBoolean(DWORD id, const char* signature, CallbackTarget* target, ...) {
    Invocation call;
    Readiness readiness = prepare(id, signature, target, &call);
    // Without an environment the answer is true; that is meant.
    if (readiness == Readiness::noEnvironment) return 1;
    if (readiness != Readiness::ready) return 0;
    va_list arguments;
    va_start(arguments, target);
    jboolean answer = narrow(call.env->CallBooleanMethodV(target->object, call.method, arguments));
    va_end(arguments);
    finish(call);
    return answer != JNI_FALSE;
}

jint vaCallbackInt(DWORD id, const char* signature, CallbackTarget* target, ...) {
    Invocation call;
    if (prepare(id, signature, target, &call) != Readiness::ready) return 0;
    va_list arguments;
    va_start(arguments, target);
    jint answer = call.env->CallIntMethodV(target->object, call.method, arguments);
    va_end(arguments);
    finish(call);
    return answer;
}
