#pragma once
// The convention of every native method, written once.
//
// A native is one line: its Java result, its class and method, its Java parameters. It takes the
// Java arguments (a null reference gives a null pointer), calls the operation of the same name with
// them and a fresh error record last, releases what it took, and then either reports the error
// under the native's Java name and returns zero, or converts the result. A Java exception that is
// pending after an argument was taken ends the native before the operation runs. A widget or a
// graphics context that an operation made in spite of an error is disposed of: Java never learns of
// it, so that nobody else could.

#include "bridge/error.h"
#include "bridge/java_values.h"
#include "bridge/memory.h"
#include "bridge/narrow.h"
#include "bridge/string_list.h"
#include "ce.h"
#include <jni.h>
#include <type_traits>

// What operations return for results that are more than one word.
struct Bounds {
    jint x, y, width, height;
};
struct Insets {
    jint left, top, right, bottom;
};
struct ColorMasks {
    jint red, green, blue, alpha;
};
struct PixelPair { // a point, or a size
    jint x, y;
};
struct NativeString {
    const wchar_t* text; // null gives a null String
    bool mustFree;
};
struct NativeStringList {
    wchar_t** list;
    bool mustFree;
};
struct NativeIntArray {
    jint* values;
    jint count;
    bool mustFree;
};
struct NativeByteArray {
    jbyte* values;
    jint count;
    bool mustFree;
};

// What operations take for an array: the VM's elements, changes to which Java sees.
struct IntArguments {
    jint* values; // null for a null array
    jint count;
};
struct ByteArguments {
    jbyte* values;
    jint count;
};

namespace native {

// Argument<Java> holds one Java argument for the length of a call and converts to the operation's
// parameter type.
template <class Java>
struct Argument {
    Java value;
    Argument(JNIEnv*, Java java) : value(java) {}
    static bool mayRaise() { return false; }
    operator Java() const { return value; }
};

template <>
struct Argument<jint> {
    jint value;
    Argument(JNIEnv*, jint java) : value(java) {}
    static bool mayRaise() { return false; }
    operator jint() const { return value; }
    template <class Record>
    operator Record*() const {
        return reinterpret_cast<Record*>(value);
    }
};

template <>
struct Argument<jboolean> {
    bool value;
    Argument(JNIEnv*, jboolean java) : value(narrow(java) != JNI_FALSE) {}
    static bool mayRaise() { return false; }
    operator bool() const { return value; }
};

template <>
struct Argument<jchar> {
    jchar value;
    Argument(JNIEnv*, jchar java) : value(narrow(java)) {}
    static bool mayRaise() { return false; }
    operator jchar() const { return value; }
};

template <>
struct Argument<jstring> {
    JNIEnv* env;
    jstring string;
    const jchar* characters = nullptr;
    wchar_t* text = nullptr;
    BYTE mustFree = 0;

    Argument(JNIEnv* environment, jstring java) : env(environment), string(java) {
        if (!string) return;
        characters = env->GetStringChars(string, nullptr);
        if (isExceptionPending(env)) return;
        text = toNativeString(characters, env->GetStringLength(string), &mustFree);
        if (!text) throwOutOfMemory(env, "Failed to allocate space for string");
    }
    ~Argument() {
        if (mustFree) freeBlock(text);
        if (characters) env->ReleaseStringChars(string, characters);
    }
    Argument(const Argument&) = delete;
    Argument& operator=(const Argument&) = delete;
    bool mayRaise() const { return string != nullptr; }
    operator const wchar_t*() const { return text; }
};

template <>
struct Argument<jintArray> {
    JNIEnv* env;
    jintArray array;
    IntArguments elements = {};

    Argument(JNIEnv* environment, jintArray java) : env(environment), array(java) {
        if (!array) return;
        elements.values = env->GetIntArrayElements(array, nullptr);
        if (isExceptionPending(env)) return;
        elements.count = env->GetArrayLength(array);
    }
    ~Argument() {
        if (elements.values) env->ReleaseIntArrayElements(array, elements.values, 0);
    }
    Argument(const Argument&) = delete;
    Argument& operator=(const Argument&) = delete;
    bool mayRaise() const { return array != nullptr; }
    operator IntArguments() const { return elements; }
};

template <>
struct Argument<jbyteArray> {
    JNIEnv* env;
    jbyteArray array;
    ByteArguments elements = {};

    Argument(JNIEnv* environment, jbyteArray java) : env(environment), array(java) {
        if (!array) return;
        elements.values = env->GetByteArrayElements(array, nullptr);
        if (isExceptionPending(env)) return;
        elements.count = env->GetArrayLength(array);
    }
    ~Argument() {
        if (elements.values) env->ReleaseByteArrayElements(array, elements.values, 0);
    }
    Argument(const Argument&) = delete;
    Argument& operator=(const Argument&) = delete;
    bool mayRaise() const { return array != nullptr; }
    operator ByteArguments() const { return elements; }
};

// Takes the arguments in order, each only when those before it raised nothing.
template <class... Java>
struct Arguments;

template <>
struct Arguments<> {
    bool taken = true;
    explicit Arguments(JNIEnv*) {}
    template <auto Operation, class Outcome, class... Taken>
    void run(Outcome& outcome, ErrorRecord* error, Taken&... arguments) {
        outcome.template run<Operation>(error, arguments...);
    }
};

template <class First, class... Rest>
struct Arguments<First, Rest...> {
    Argument<First> first;
    bool taken;
    Arguments<Rest...> rest;

    Arguments(JNIEnv* env, First head, Rest... tail)
        : first(env, head), taken(!(first.mayRaise() && isExceptionPending(env))),
          rest(env, (taken ? tail : Rest{})...) {
        taken = taken && rest.taken;
    }
    template <auto Operation, class Outcome, class... Taken>
    void run(Outcome& outcome, ErrorRecord* error, Taken&... arguments) {
        rest.template run<Operation>(outcome, error, arguments..., first);
    }
};

inline jint toJava(JNIEnv*, jint value) { return value; }
inline jint toJava(JNIEnv*, DWORD value) { return static_cast<jint>(value); }
inline jboolean toJava(JNIEnv*, bool value) { return value ? JNI_TRUE : JNI_FALSE; }
template <class Record>
jint toJava(JNIEnv*, Record* record) {
    return reinterpret_cast<jint>(record);
}
inline jintArray toJava(JNIEnv* env, const Bounds& bounds) {
    return createJavaRect(env, bounds.x, bounds.y, bounds.width, bounds.height);
}
inline jintArray toJava(JNIEnv* env, const Insets& insets) {
    return createJavaIntArray4(env, insets.left, insets.top, insets.right, insets.bottom);
}
inline jintArray toJava(JNIEnv* env, const ColorMasks& masks) {
    return createJavaMaskArray(env, masks.red, masks.green, masks.blue, masks.alpha);
}
inline jintArray toJava(JNIEnv* env, const PixelPair& pair) {
    return createJavaPoint(env, pair.x, pair.y);
}
inline jstring toJava(JNIEnv* env, const NativeString& string) {
    return convertToJavaString(env, string.text);
}
inline jobjectArray toJava(JNIEnv* env, const NativeStringList& strings) {
    return convertToJavaStringArray(env, strings.list);
}
inline jintArray toJava(JNIEnv* env, const NativeIntArray& array) {
    return createJavaIntArray(env, array.values, array.count);
}
inline jbyteArray toJava(JNIEnv* env, const NativeByteArray& array) {
    return createJavaByteArray(env, array.values, array.count);
}

// Frees what a result owns, whether it was converted or thrown away.
template <class Result>
void release(const Result&) {}
inline void release(const NativeString& string) {
    if (string.mustFree) freeBlock(const_cast<wchar_t*>(string.text));
}
inline void release(const NativeStringList& strings) {
    if (strings.mustFree) stringListFree(strings.list);
}
inline void release(const NativeIntArray& array) {
    if (array.mustFree) freeBlock(array.values);
}
inline void release(const NativeByteArray& array) {
    if (array.mustFree) freeBlock(array.values);
}

// Ends what a failed operation made all the same.
template <class Result>
void discard(Result result) {
    if constexpr (requires { Widget_Discard(result); }) {
        Widget_Discard(result);
    } else if constexpr (requires(ErrorRecord * error) { Graphics_Dispose(result, error); }) {
        ErrorRecord unheard = {};
        if (result) Graphics_Dispose(result, &unheard);
        Error_Clear(&unheard);
    }
}

// What an operation left behind, and its way to Java.
template <class Result>
struct Outcome {
    using JavaResult = decltype(toJava(nullptr, Result{}));
    Result result = {};
    template <auto Operation, class... Taken>
    void run(ErrorRecord* error, Taken&... arguments) {
        result = Operation(arguments..., error);
    }
    JavaResult finish(JNIEnv* env) {
        JavaResult java = toJava(env, result);
        release(result);
        return java;
    }
    void abandon() {
        discard(result);
        release(result);
    }
};

template <>
struct Outcome<void> {
    using JavaResult = void;
    template <auto Operation, class... Taken>
    void run(ErrorRecord* error, Taken&... arguments) {
        Operation(arguments..., error);
    }
    void finish(JNIEnv*) {}
    void abandon() {}
};

template <class Result, class... Parameters>
Result resultOf(Result (*)(Parameters...));

template <auto Operation, class... Java>
auto call(JNIEnv* env, const char* name, Java... javaArguments) {
    using Returned = Outcome<decltype(resultOf(Operation))>;
    ErrorRecord error = {};
    Returned outcome;
    {
        Arguments<Java...> arguments(env, javaArguments...);
        if (!arguments.taken) return typename Returned::JavaResult();
        arguments.template run<Operation>(outcome, &error);
    }
    if (error.code == errorNone) return outcome.finish(env);
    // Before Java hears: what its error handler throws would keep other widgets' events away.
    outcome.abandon();
    WYX_ErrorHandler(env, name, &error);
    return typename Returned::JavaResult();
}

} // namespace native

#define NATIVE_TAIL(...) __VA_OPT__(, ) __VA_ARGS__

#define NATIVE_METHOD(package, Result, Class, Method, parameters, arguments)                       \
    extern "C" Result JNICALL Java_com_nuvik_wyx_##package##_OS_##Class##_1##Method(               \
        JNIEnv* env, jclass NATIVE_TAIL parameters) {                                              \
        return native::call<Class##_##Method>(env, #Class "_" #Method NATIVE_TAIL arguments);      \
    }

// Natives of the base layer and of the widget layer: BASE_NATIVE(jint, Shell, New,
// (jint display, jint style), (display, style)).
#define BASE_NATIVE(Result, Class, Method, parameters, arguments)                                  \
    NATIVE_METHOD(k4tr, Result, Class, Method, parameters, arguments)
#define WIDGET_NATIVE(Result, Class, Method, parameters, arguments)                                \
    NATIVE_METHOD(dovr, Result, Class, Method, parameters, arguments)
