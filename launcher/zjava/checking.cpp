#include "checking.h"
#include "jni_proxy.h"
#include "jni_text.h"
#include "rules.h"
#include "zemvolt11.h"
#include <windows.h>

static Checking mode;
static Handles handles;
static bool hasCompanions;

// What reaches Java.
static struct {
    jclass misuse, place, callbacks, checking;
    jmethodID newMisuse, newPlace, begin, registerMethod, listen, report, start;
} java;

// The natives of the registry of callbacks, whose misuse Java finds.
static struct {
    const CheckedNative *begins, *registers, *listens;
    bool has(const CheckedNative& native) const {
        return &native == begins || &native == registers || &native == listens;
    }
} ofRegistry;

void setChecking(Checking chosen) { mode = chosen; }
void noteCompanion() { hasCompanions = true; }
bool isChecking() { return mode != Checking::off; }

static jclass findClass(JNIEnv* env, const char* name) {
    jclass found = env->FindClass(name);
    return found ? static_cast<jclass>(env->NewGlobalRef(found)) : nullptr;
}

jclass prepareChecking(JNIEnv* env) {
    ofRegistry = {findCheckedNative("Display_InitCallbacks"),
                  findCheckedNative("Display_RegisterCallback"),
                  findCheckedNative("Widget_SetData")};
    java.misuse = findClass(env, "com/nuvik/checking/Misuse");
    if (!java.misuse) return nullptr;
    java.place = findClass(env, "com/nuvik/checking/Place");
    java.callbacks = findClass(env, "com/nuvik/checking/Callbacks");
    java.checking = findClass(env, "com/nuvik/checking/Checking");
    java.newMisuse =
        env->GetMethodID(java.misuse, "<init>", "(Ljava/lang/String;Lcom/nuvik/checking/Place;)V");
    java.newPlace = env->GetMethodID(java.place, "<init>", "(Ljava/lang/String;)V");
    java.begin = env->GetStaticMethodID(java.callbacks, "begin", "(I)Ljava/lang/String;");
    java.registerMethod = env->GetStaticMethodID(
        java.callbacks, "register",
        "(IILjava/lang/String;Ljava/lang/String;Ljava/lang/String;)Ljava/lang/String;");
    java.listen =
        env->GetStaticMethodID(java.callbacks, "listen", "(ILjava/lang/Object;)Ljava/lang/String;");
    java.report = env->GetStaticMethodID(java.checking, "report", "(Lcom/nuvik/checking/Misuse;)V");
    java.start = env->GetStaticMethodID(java.checking, "start", "()V");
    if (!env->ExceptionCheck()) env->CallStaticVoidMethod(java.checking, java.start);
    return env->ExceptionCheck() ? nullptr : java.checking;
}

// A place is a global reference, which goes with the last that knows it.
static void deletePlace(void* reference) {
    void* env = nullptr;
    if (proxyVm()->GetEnv(&env, JNI_VERSION_1_8) == JNI_OK)
        static_cast<JNIEnv*>(env)->DeleteGlobalRef(static_cast<jobject>(reference));
}

// The stack of this thread. An exception that is pending stays so.
static Place here(JNIEnv* env, const char* what) {
    jthrowable pending = env->ExceptionOccurred();
    if (pending) env->ExceptionClear();
    jstring text = env->NewStringUTF(what);
    jobject stack = text ? env->NewObject(java.place, java.newPlace, text) : nullptr;
    Place place;
    if (stack) place = Place(env->NewGlobalRef(stack), deletePlace);
    env->DeleteLocalRef(stack);
    env->DeleteLocalRef(text);
    if (pending) env->Throw(pending);
    env->DeleteLocalRef(pending);
    return place;
}

// No record lies elsewhere; to ask the system takes long.
static bool mayBeRecord(uint32_t number) {
    constexpr uint32_t lowest = 0x10000, alignment = alignof(ControlRecord);
    return number >= lowest && number % alignment == 0;
}

// Without touching what may not be there.
static bool read(uint32_t address, ControlRecord* record) {
    SIZE_T count = 0;
    if (!mayBeRecord(address)) return false;
    return ReadProcessMemory(GetCurrentProcess(), reinterpret_cast<const void*>(address), record,
                             sizeof(*record), &count) &&
           count == sizeof(*record);
}

namespace {

class JavaSurroundings : public Surroundings {
  public:
    explicit JavaSurroundings(JNIEnv* env) : env(env) {}
    uint32_t thread() override { return GetCurrentThreadId(); }
    int lengthOf(uint32_t array) override {
        return env->GetArrayLength(reinterpret_cast<jarray>(array));
    }
    // A control's window leads back to its record.
    bool isCompanionsControl(uint32_t handle, uint32_t* display) override {
        ControlRecord record;
        if (!read(handle, &record) || !IsWindow(record.hwnd)) return false;
        if (static_cast<uint32_t>(GetWindowLongW(record.hwnd, GWL_USERDATA)) != handle)
            return false;
        *display = static_cast<uint32_t>(reinterpret_cast<uintptr_t>(record.display));
        return handles.find(*display).number != 0;
    }

  private:
    JNIEnv* env;
};

} // namespace

CheckedCall::CheckedCall(JNIEnv* env, const CheckedNative& native, const uint32_t* arguments)
    : env(env), native(native), arguments(arguments) {}

// Whether the native is called all the same.
bool CheckedCall::tell(const Misuse& misuse) {
    jstring sentence = env->NewStringUTF(misuse.sentence.c_str());
    if (!sentence) return false;
    auto error = static_cast<jthrowable>(
        env->NewObject(java.misuse, java.newMisuse, sentence, misuse.place.get()));
    if (!error) return false;
    if (mode == Checking::throws) {
        env->Throw(error);
        return false;
    }
    env->CallStaticVoidMethod(java.checking, java.report, error);
    env->DeleteLocalRef(error);
    env->DeleteLocalRef(sentence);
    return misuse.mayGoOn;
}

static jint numberOfDisplay(uint32_t handle) {
    return static_cast<jint>(handles.find(handles.find(handle).display).number);
}

// What Java finds wrong with a call of the registry's natives; null: nothing, or a pending
// exception.
jobject CheckedCall::findProblemOfCallbacks() {
    if (&native == ofRegistry.begins)
        return env->CallStaticObjectMethod(java.callbacks, java.begin,
                                           numberOfDisplay(arguments[0]));
    if (&native == ofRegistry.listens)
        return env->CallStaticObjectMethod(java.callbacks, java.listen,
                                           numberOfDisplay(arguments[0]), arguments[1]);
    const CheckedEvent* event = findCheckedEvent(arguments[1]);
    const char* known = event ? event->signature : "";
    jstring signature = event || hasCompanions ? env->NewStringUTF(known) : nullptr;
    jobject problem = env->CallStaticObjectMethod(java.callbacks, java.registerMethod,
                                                  numberOfDisplay(arguments[0]), arguments[1],
                                                  arguments[2], arguments[3], signature);
    env->DeleteLocalRef(signature);
    return problem;
}

bool CheckedCall::checkCallbacks() {
    jobject problem = findProblemOfCallbacks();
    if (env->ExceptionCheck()) return false;
    if (!problem) return true;
    std::string text = toText(env, static_cast<jstring>(problem));
    env->DeleteLocalRef(problem);
    return tell(
        {std::string(native.name) + ": " + text, handles.placesOf(arguments[0]).made, false});
}

bool CheckedCall::isAllowed() {
    JavaSurroundings surroundings(env);
    std::optional<Misuse> misuse = findMisuse(native, arguments, &handles, &surroundings);
    if (misuse && !tell(*misuse)) return false;
    if (ofRegistry.has(native) && !checkCallbacks()) return false;
    if (!native.ends || !arguments[0]) return true;
    ended = handles.find(arguments[0]);
    where = here(env, "disposed of here");
    return true;
}

void CheckedCall::finish(uint32_t result) {
    if (ended.number) handles.end(ended, where);
    if (native.made < 0 || !result) return;
    Object made = madeBy(native, arguments, result, &handles, GetCurrentThreadId());
    if (!handles.hasAlready(made)) handles.add(made, here(env, "made here"));
}

void noteCompanionsResult(JNIEnv* env, uint32_t result) {
    if (!mayBeRecord(result)) return;
    uint32_t display = 0;
    JavaSurroundings surroundings(env);
    Object object = handles.find(result);
    if (object.number && !object.isGone) return;
    if (!surroundings.isCompanionsControl(result, &display)) return;
    handles.add(companionsControl(result, handles.find(display), GetCurrentThreadId()),
                here(env, "made here"));
}

jobjectArray JNICALL leftHandles(JNIEnv* env, jclass) {
    auto left = handles.left();
    auto count = static_cast<jsize>(left.size());
    jclass object = env->FindClass("java/lang/Object");
    jobjectArray array = env->NewObjectArray(2 * count, object, nullptr);
    for (jsize i = 0; array && i < count; ++i) {
        jstring kind = env->NewStringUTF(kinds()[left[i].object.kind].name);
        env->SetObjectArrayElement(array, 2 * i, kind);
        env->SetObjectArrayElement(array, 2 * i + 1, static_cast<jobject>(left[i].made.get()));
        env->DeleteLocalRef(kind);
    }
    return array;
}
