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
//
// Natives of the same Java types have one body. An entry function hands it the native's description
// in the place of the class, which leaves all other arguments where they are.
//
// The name of an entry function is the longest text that a native has, and the export table holds
// it anyway: a description keeps it whole, so that the device's library stores it once.

#include "bridge/error.h"
#include "bridge/java_values.h"
#include "bridge/memory.h"
#include "bridge/narrow.h"
#include "bridge/string_list.h"
#include "bridge/values.h"
#include "ce.h"
#include <jni.h>
#include <type_traits>

struct WidgetRecord;
struct GraphicsRecord;

namespace native {

// What an operation makes, and who ends it when Java does not learn of it.
enum class Made : BYTE { nothing, widget, graphics };

// With its terminator.
inline constexpr size_t longestEntryName = 80;

// What tells natives of the same Java types apart. A body reads it whatever the length of its name.
template <size_t NameSize>
struct DescriptionOf {
    static_assert(NameSize <= longestEntryName);
    void (*operation)(); // called with the types that the body's Java types stand for
    Made made;
    char entryName[NameSize]; // Java_com_nuvik_wyx_k4tr_OS_Class_1Method; NUL-terminated
};
using Description = DescriptionOf<1>;

// The arguments of one call, taken in order. After one that raised an exception no more are taken.
struct Taking {
    JNIEnv* env;
    bool raised = false;
};

// Argument<Java> holds one Java argument for the length of a call and converts to what operations
// take for it.
template <class Java>
struct Argument {
    using Passed = Java;
    Java value;
    Argument(Taking&, Java java) : value(java) {}
    operator Java() const { return value; }
};

template <>
struct Argument<jboolean> {
    using Passed = bool;
    bool value;
    Argument(Taking&, jboolean java) : value(narrow(java) != JNI_FALSE) {}
    operator bool() const { return value; }
};

template <>
struct Argument<jchar> {
    using Passed = jchar;
    jchar value;
    Argument(Taking&, jchar java) : value(narrow(java)) {}
    operator jchar() const { return value; }
};

template <>
struct Argument<jstring> {
    using Passed = const wchar_t*;
    JNIEnv* env;
    jstring string;
    const jchar* characters = nullptr;
    wchar_t* text = nullptr;

    Argument(Taking& taking, jstring java);
    ~Argument();
    Argument(const Argument&) = delete;
    Argument& operator=(const Argument&) = delete;
    operator const wchar_t*() const { return text; }
};

template <>
struct Argument<jintArray> {
    using Passed = IntArguments;
    JNIEnv* env;
    jintArray array;
    IntArguments elements = {};

    Argument(Taking& taking, jintArray java);
    ~Argument();
    Argument(const Argument&) = delete;
    Argument& operator=(const Argument&) = delete;
    operator IntArguments() const { return elements; }
};

template <>
struct Argument<jbyteArray> {
    using Passed = ByteArguments;
    JNIEnv* env;
    jbyteArray array;
    ByteArguments elements = {};

    Argument(Taking& taking, jbyteArray java);
    ~Argument();
    Argument(const Argument&) = delete;
    Argument& operator=(const Argument&) = delete;
    operator ByteArguments() const { return elements; }
};

// Runs the operation, unless an argument could not be taken. Made with braces, which take the
// arguments in order.
template <class Result, class... Java>
struct Call {
    using Operation = Result (*)(typename Argument<Java>::Passed..., ErrorRecord*);
    Result result = {};
    Call(const Description& native, ErrorRecord* error, const Taking& taking,
         const Argument<Java>&... taken) {
        if (!taking.raised) result = reinterpret_cast<Operation>(native.operation)(taken..., error);
    }
};

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

// Ends what a failed operation made all the same, and then reports its error: what Java's error
// handler throws would keep other widgets' events away. Returns 0.
jint fail(JNIEnv* env, const Description& native, jint result, ErrorRecord* error);

// A result of one word goes to Java as it is, or fails.
inline jint finish(JNIEnv* env, const Description& native, jint result, ErrorRecord* error) {
    if (error->code != errorNone) [[unlikely]]
        return fail(env, native, result, error);
    return result;
}
template <class Result>
auto finish(JNIEnv* env, const Description& native, const Result& result, ErrorRecord* error)
    -> decltype(toJava(env, result)) {
    if (error->code == errorNone) {
        auto java = toJava(env, result);
        release(result);
        return java;
    }
    release(result);
    fail(env, native, 0, error);
    return nullptr;
}

// How an entry function returns a Java result: a boolean as the word that the operation left, of
// which the VM takes the low byte.
template <class Java>
using EntryResult = std::conditional_t<std::is_same_v<Java, jboolean>, jint, Java>;

template <class Result, class... Java>
[[gnu::noinline]] auto JNICALL body(JNIEnv* env, const Description& native, Java... java) {
    ErrorRecord error;
    Error_Init(&error);
    Taking taking = {env};
    // The arguments are released behind this line.
    Result result =
        Call<Result, Java...>{native, &error, taking, Argument<Java>(taking, java)...}.result;
    if constexpr (!std::is_scalar_v<Result>)
        if (taking.raised) return decltype(toJava(env, result))();
    return finish(env, native, result, &error);
}

template <class Operation>
struct Signature;
template <class Returned, class... Parameters>
struct Signature<Returned (*)(Parameters...)> {
    // Nothing, and what is a word or narrower, comes back where a jint does.
    using Result = std::conditional_t<std::is_class_v<Returned>, Returned, jint>;

    static constexpr Made made() {
        if (std::is_convertible_v<Returned, WidgetRecord*>) return Made::widget;
        if (std::is_convertible_v<Returned, GraphicsRecord*>) return Made::graphics;
        return Made::nothing;
    }

    // Whether the body passes what the operation takes: the same, or another scalar of its size.
    template <class Passed, class Parameter>
    static constexpr bool agree() {
        if (std::is_same_v<Passed, Parameter>) return true;
        bool isScalar = std::is_integral_v<Passed> && std::is_scalar_v<Parameter>;
        return isScalar && !std::is_same_v<bool, Parameter> && sizeof(Passed) == sizeof(Parameter);
    }
    template <class... Passed>
    static constexpr bool takes() {
        if constexpr (sizeof...(Passed) == sizeof...(Parameters))
            return (agree<Passed, Parameters>() && ...);
        return false;
    }
};

template <auto Operation, size_t NameSize, class... Java>
auto call(JNIEnv* env, const DescriptionOf<NameSize>& native, Java... java) {
    using Called = Signature<decltype(Operation)>;
    static_assert(Called::template takes<typename Argument<Java>::Passed..., ErrorRecord*>(),
                  "the operation takes something else than what is declared to Java");
    return body<typename Called::Result>(env, reinterpret_cast<const Description&>(native),
                                         java...);
}

} // namespace native

#define NATIVE_TAIL(...) __VA_OPT__(, ) __VA_ARGS__

#define NATIVE_DESCRIPTION(variable, operation, name)                                              \
    static const native::DescriptionOf<sizeof(name)> variable = {                                  \
        reinterpret_cast<void (*)()>(operation), native::Signature<decltype(+operation)>::made(),  \
        name}

#define NATIVE_METHOD(package, Result, Class, Method, parameters, arguments)                       \
    extern "C" native::EntryResult<Result> JNICALL                                                 \
        Java_com_nuvik_wyx_##package##_OS_##Class##_1##Method(JNIEnv* env,                         \
                                                              jclass NATIVE_TAIL parameters) {     \
        NATIVE_DESCRIPTION(description, Class##_##Method,                                          \
                           "Java_com_nuvik_wyx_" #package "_OS_" #Class "_1" #Method);             \
        return static_cast<native::EntryResult<Result>>(                                           \
            native::call<Class##_##Method>(env, description NATIVE_TAIL arguments));               \
    }

// Natives of the base layer and of the widget layer: BASE_NATIVE(jint, Shell, New,
// (jint display, jint style), (display, style)).
#define BASE_NATIVE(Result, Class, Method, parameters, arguments)                                  \
    NATIVE_METHOD(k4tr, Result, Class, Method, parameters, arguments)
#define WIDGET_NATIVE(Result, Class, Method, parameters, arguments)                                \
    NATIVE_METHOD(dovr, Result, Class, Method, parameters, arguments)
