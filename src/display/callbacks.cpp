#include "display/callbacks.h"
#include "bridge/java_values.h"
#include "bridge/memory.h"
#include "bridge/narrow.h"
#include "display/display.h"
#include "display/widget.h"

static jint findEnv(const CallbackLookup* lookup, JNIEnv** envOut) {
    return lookup->vm->GetEnv(reinterpret_cast<void**>(envOut), JNI_VERSION_1_1);
}

static jint attach(const CallbackLookup* lookup, JNIEnv** envOut) {
    return lookup->vm->AttachCurrentThread(reinterpret_cast<void**>(envOut), nullptr);
}

extern "C" jint getEnv(CallbackLookup* lookup, JNIEnv** envOut, jint* attachedOut) {
    jint result = findEnv(lookup, envOut);
    *attachedOut = result == JNI_EDETACHED;
    return *attachedOut ? attach(lookup, envOut) : result;
}

// Nearly all ids are the number of their bucket, and spare the division.
static CallbackEntry** bucketOf(CallbackLookup* lookup, DWORD id) {
    DWORD bucket = id;
    if (bucket >= callbackBuckets) [[unlikely]]
        bucket %= callbackBuckets;
    return &lookup->table[bucket];
}

static CallbackEntry* findEntry(CallbackLookup* lookup, DWORD id) {
    for (CallbackEntry* entry = *bucketOf(lookup, id); entry; entry = entry->next)
        if (entry->id == id) return entry;
    return nullptr;
}

void Display_InitCallbacks(JNIEnv* env, DisplayRecord* display, jobject target) {
    Block<CallbackLookup> lookup(allocate<CallbackLookup>());
    if (!lookup) return throwOutOfMemory(env, "Failed to allocate space for callback lookup");
    Block<CallbackEntry*> table(allocateArray<CallbackEntry*>(callbackBuckets));
    if (!table) return throwOutOfMemory(env, "Failed to allocate space for callback table");
    env->GetJavaVM(&lookup->vm);
    lookup->target = env->NewGlobalRef(target);
    if (!lookup->target) return;
    lookup->table = table.release();
    display->callbackLookup = lookup.release();
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
    CallbackLookup* lookup = display->callbackLookup;
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
    if (!target->display) [[unlikely]]
        target->display = target->widget->display;
    return target->display->callbackLookup;
}

namespace {

struct Invocation {
    JNIEnv* env;
    jmethodID method;
    JavaVM* attachedTo; // from which the thread is detached behind the call; null: stays
    bool lacksEnvironment;
};

} // namespace

// Quirk: a thread that was attached for the call stays attached when the method cannot be resolved.
// Pinned by CallbacksTest.a_thread_stays_attached_when_its_event_has_no_method.
static jmethodID resolveMethod(JNIEnv* env, CallbackEntry* entry, const char* signature) {
    jclass receiver = env->FindClass(entry->className);
    if (receiver) entry->methodID = env->GetMethodID(receiver, entry->methodName, signature);
    if (!entry->methodID) env->ExceptionDescribe();
    return entry->methodID;
}

// The environment of a thread that the VM does not know yet.
[[gnu::noinline]] static bool attachFor(Invocation* invocation, CallbackLookup* lookup,
                                        jint result) {
    if (result == JNI_EDETACHED) {
        invocation->attachedTo = lookup->vm;
        result = attach(lookup, &invocation->env);
    }
    invocation->lacksEnvironment = result != JNI_OK;
    return result == JNI_OK;
}

// The environment in which the method can be called, or null. Without one on this thread the
// invocation tells so; else that field is left alone.
[[gnu::always_inline]] static inline JNIEnv*
prepareHere(DWORD id, const char* signature, CallbackTarget* target, Invocation* invocation) {
    CallbackLookup* lookup = getCallbackLookup(target);
    if (!lookup) return nullptr;
    CallbackEntry* entry = findEntry(lookup, id);
    if (!entry) return nullptr;
    invocation->attachedTo = nullptr;
    jint result = findEnv(lookup, &invocation->env);
    if (result != JNI_OK && !attachFor(invocation, lookup, result)) return nullptr;
    JNIEnv* env = invocation->env;
    // What an earlier listener threw has yet to surface in Java; until then none may be called.
    if (isExceptionPending(env)) return nullptr;
    invocation->method = entry->methodID;
    if (!invocation->method) [[unlikely]] {
        invocation->method = resolveMethod(env, entry, signature);
        if (!invocation->method) return nullptr;
    }
    return env;
}

static JNIEnv* prepare(DWORD id, const char* signature, CallbackTarget* target,
                       Invocation* invocation) {
    return prepareHere(id, signature, target, invocation);
}

static void finish(const Invocation& invocation) {
    if (invocation.attachedTo) [[unlikely]]
        invocation.attachedTo->DetachCurrentThread();
}

extern "C" void vaCallback(DWORD id, const char* signature, CallbackTarget* target, ...) {
    Invocation call;
    // Most events pass here.
    JNIEnv* env = prepareHere(id, signature, target, &call);
    if (!env) return;
    va_list arguments;
    va_start(arguments, target);
    env->CallVoidMethodV(target->object, call.method, arguments);
    va_end(arguments);
    finish(call);
}

extern "C" jint vaCallbackBoolean(DWORD id, const char* signature, CallbackTarget* target, ...) {
    Invocation call = {};
    JNIEnv* env = prepare(id, signature, target, &call);
    // Quirk: a thread without an environment has every question answered with yes, where any other
    // failure means no. Pinned by CallbacksTest.a_question_without_environment_is_answered_yes.
    if (!env) return call.lacksEnvironment;
    va_list arguments;
    va_start(arguments, target);
    jboolean answer = narrow(env->CallBooleanMethodV(target->object, call.method, arguments));
    va_end(arguments);
    finish(call);
    return answer != JNI_FALSE;
}

jint vaCallbackInt(DWORD id, const char* signature, CallbackTarget* target, ...) {
    Invocation call;
    JNIEnv* env = prepare(id, signature, target, &call);
    if (!env) return 0;
    va_list arguments;
    va_start(arguments, target);
    jint answer = env->CallIntMethodV(target->object, call.method, arguments);
    va_end(arguments);
    finish(call);
    return answer;
}
