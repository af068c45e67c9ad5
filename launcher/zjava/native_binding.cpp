#include "native_binding.h"
#include "checking.h"
#include "jni_proxy.h"
#include "jni_text.h"
#include "toolkit.h"
#include "unix_side.h"
#include <stdio.h>
#include <string>
#include <vector>

extern "C" void* nativeStubs;
extern "C" uint32_t nativeStubCount;

namespace {

struct Native {
    void* function;
    uint32_t words;               // of arguments, with environment and class
    const CheckedNative* checked; // null: nothing is known of it, or nothing is checked
    bool isBoolean;
    bool isCompanions; // and what it makes is looked at
};

struct NativeMethod {
    std::string name;
    std::string parameters; // descriptors, one behind the other
    std::string result;
    uint32_t words;
};

constexpr size_t stubSize = 16;
constexpr uint32_t mostWords = 64;

std::vector<Companion> companions;
Native natives[1024];
uint32_t boundNatives;

// Reflection through JNI. A null reference means that an exception is pending.
struct Reflection {
    JNIEnv* env;
    jmethodID declaredMethods, name, modifiers, parameterTypes, returnType, descriptor;

    explicit Reflection(JNIEnv* environment) : env(environment) {
        jclass classClass = env->FindClass("java/lang/Class");
        jclass method = env->FindClass("java/lang/reflect/Method");
        declaredMethods =
            env->GetMethodID(classClass, "getDeclaredMethods", "()[Ljava/lang/reflect/Method;");
        descriptor = env->GetMethodID(classClass, "descriptorString", "()Ljava/lang/String;");
        name = env->GetMethodID(method, "getName", "()Ljava/lang/String;");
        modifiers = env->GetMethodID(method, "getModifiers", "()I");
        parameterTypes = env->GetMethodID(method, "getParameterTypes", "()[Ljava/lang/Class;");
        returnType = env->GetMethodID(method, "getReturnType", "()Ljava/lang/Class;");
    }

    template <class Reference>
    Reference get(jobject object, jmethodID method) const {
        auto result = static_cast<Reference>(env->CallObjectMethod(object, method));
        return env->ExceptionCheck() ? nullptr : result;
    }

    std::string text(jobject object, jmethodID method) const {
        auto string = get<jstring>(object, method);
        return string ? toText(env, string) : std::string();
    }

    bool isNative(jobject method) const {
        constexpr jint nativeModifier = 0x100;
        jint bits = env->CallIntMethod(method, modifiers);
        return !env->ExceptionCheck() && (bits & nativeModifier);
    }

    NativeMethod describe(jobject method) const {
        NativeMethod native = {text(method, name), {}, {}, 2};
        auto types = get<jobjectArray>(method, parameterTypes);
        for (jsize i = 0, count = types ? env->GetArrayLength(types) : 0; i < count; ++i) {
            std::string type = text(env->GetObjectArrayElement(types, i), descriptor);
            native.words += type == "J" || type == "D" ? 2 : 1;
            native.parameters += type;
        }
        native.result = text(get<jobject>(method, returnType), descriptor);
        return native;
    }
};

} // namespace

static uint64_t call(const Native& native, const uint32_t* words) {
    uint64_t result = callAligned(native.function, words, native.words);
    // The library answers in the low byte and leaves the rest of the word as it was.
    return native.isBoolean ? (result & 0xFF) != 0 : result;
}

static uint64_t callChecked(const Native& native, const uint32_t* words) {
    constexpr uint32_t environmentAndClass = 2;
    CheckedCall checked(reinterpret_cast<JNIEnv*>(words[0]), *native.checked,
                        words + environmentAndClass);
    if (!checked.isAllowed()) return 0;
    uint64_t result = call(native, words);
    checked.finish(static_cast<uint32_t>(result));
    return result;
}

// Entered from thunks.S by the VM.
extern "C" uint64_t enterNative(uint32_t number, const uint32_t* arguments) {
    const Native& native = natives[number];
    uint32_t words[mostWords];
    words[0] = reinterpret_cast<uint32_t>(proxyOf(reinterpret_cast<void*>(arguments[0])));
    for (uint32_t i = 1; i < native.words; ++i) words[i] = arguments[i];
    if (native.checked) return callChecked(native, words);
    uint64_t result = call(native, words);
    if (native.isCompanions)
        noteCompanionsResult(reinterpret_cast<JNIEnv*>(words[0]), static_cast<uint32_t>(result));
    return result;
}

static std::string mangle(const std::string& name) {
    std::string mangled;
    for (char character : name) {
        if (character == '/')
            mangled += '_';
        else if (character == '_')
            mangled += "_1";
        else
            mangled += character;
    }
    return mangled;
}

enum class Library { toolkit, companion, own };

static bool bind(JNIEnv* env, jclass owner, const NativeMethod& method, void* function,
                 Library library) {
    if (boundNatives == nativeStubCount || method.words > mostWords) return false;
    bool isChecked = isChecking() && library == Library::toolkit;
    bool isCompanions = isChecking() && library == Library::companion && method.result == "I";
    natives[boundNatives] = {function, method.words,
                             isChecked ? findCheckedNative(method.name) : nullptr,
                             method.result == "Z", isCompanions};
    std::string signature = "(" + method.parameters + ")" + method.result;
    JNINativeMethod entry = {const_cast<char*>(method.name.c_str()),
                             const_cast<char*>(signature.c_str()),
                             static_cast<char*>(nativeStubs) + boundNatives * stubSize};
    ++boundNatives;
    return env->RegisterNatives(owner, &entry, 1) == JNI_OK;
}

static bool bindClass(JNIEnv* env, HMODULE library, const std::string& className, Library kind) {
    jclass owner = env->FindClass(className.c_str());
    if (!owner) { // a program may well do without the widget layer
        env->ExceptionClear();
        return true;
    }
    Reflection reflection(env);
    auto methods = reflection.get<jobjectArray>(owner, reflection.declaredMethods);
    if (!methods) return false;
    for (jsize i = 0, count = env->GetArrayLength(methods); i < count; ++i) {
        constexpr jint referencesOfOneMethod = 64;
        env->PushLocalFrame(referencesOfOneMethod);
        jobject method = env->GetObjectArrayElement(methods, i);
        bool bound = true;
        if (reflection.isNative(method)) {
            NativeMethod native = reflection.describe(method);
            std::string name = "Java_" + mangle(className) + "_" + mangle(native.name);
            void* function = exportOf(library, name.c_str());
            bound = !function || bind(env, owner, native, function, kind);
        }
        env->PopLocalFrame(nullptr);
        if (!bound || env->ExceptionCheck()) return false;
    }
    return true;
}

void setCompanions(const std::vector<Companion>& list) { companions = list; }

static bool bindCompanion(JNIEnv* env, const Companion& companion) {
    noteCompanion();
    HMODULE library = loadCompanion(companion.file.c_str());
    if (library) return bindClass(env, library, companion.className, Library::companion);
    fprintf(stderr, "zjava: %s cannot be loaded (error %lu)\n", companion.file.c_str(),
            GetLastError());
    return false;
}

static bool bindChecking(JNIEnv* env) {
    if (!isChecking()) return true;
    jclass owner = prepareChecking(env);
    if (!owner) fprintf(stderr, "zjava: -check wants checking.jar on the class path\n");
    return owner && bind(env, owner, {"left", {}, "[Ljava/lang/Object;", 2},
                         reinterpret_cast<void*>(leftHandles), Library::own);
}

jint bindLibrary(JNIEnv* env) {
    static HMODULE library;
    if (library) return JNI_VERSION_1_8;
    library = loadToolkit();
    if (!library) {
        fprintf(stderr, "zjava: zemvolt11.dll cannot be loaded (error %lu); is it built?\n",
                GetLastError());
        return JNI_ERR;
    }
    tellToolkitOf(env->functions);
    if (!bindChecking(env)) return JNI_ERR;
    for (const char* name : {"com/nuvik/wyx/k4tr/OS", "com/nuvik/wyx/dovr/OS"})
        if (!bindClass(env, library, name, Library::toolkit)) return JNI_ERR;
    for (const Companion& companion : companions)
        if (!bindCompanion(env, companion)) return JNI_ERR;
    return JNI_VERSION_1_8;
}
