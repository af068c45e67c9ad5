#pragma once
// The library under test, as a Java VM and companion libraries see it: by its exports.

#include <string>
#include <utility>
#include <windows.h>

// The loaded image, with the headers that it was linked with.
HMODULE theLibrary();

// An export of the library; fails the test and ends the program when there is none.
void* exportOf(const std::string& name);

// The native of either layer by its Java name: nativeMethod<jint(jint, jint)>("Shell_New")(env,
// ...).
void* nativeNamed(const std::string& javaName);

struct _jobject;
struct JNIEnv_;

// How a VM passes an argument: as a word, above whose own bits lies anything.
template <class Argument>
auto asWord(Argument argument) {
    if constexpr (sizeof(Argument) < sizeof(unsigned)) {
        constexpr unsigned rubbish = 0xBADBADBA;
        constexpr unsigned own = (1u << 8 * sizeof(Argument)) - 1;
        return (rubbish & ~own) | (static_cast<unsigned>(argument) & own);
    } else {
        return argument;
    }
}

template <class Signature>
struct Native;
template <class Result, class... Arguments>
struct Native<Result(Arguments...)> {
    using Function = Result(__stdcall*)(JNIEnv_*, void*,
                                        decltype(asWord(std::declval<Arguments>()))...);
    Function function;
    Result operator()(JNIEnv_* env, Arguments... arguments) const {
        return function(env, nullptr, asWord(arguments)...);
    }
};

template <class Signature>
Native<Signature> nativeMethod(const std::string& javaName) {
    return {reinterpret_cast<typename Native<Signature>::Function>(nativeNamed(javaName))};
}

// An entry point for companion libraries; Signature is a function type of the header's.
template <class Signature>
Signature* entryPoint(const std::string& name) {
    return reinterpret_cast<Signature*>(exportOf(name));
}
