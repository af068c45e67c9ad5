#pragma once
// A native of the library with the types that its Java class declares. natives.h, which is made of
// the classes, has all of them.

#include "library.h"
#include <atomic>
#include <concepts>
#include <jni.h>
#include <ostream>
#include <type_traits>
#include <utility>

// Whether an argument may be given for a parameter of the type Declared: C++ alone would take a
// truth for a number, and any number for a truth or a character.
template <class Given, class Declared>
concept GivenAs = std::same_as<Given, Declared> ||
                  (std::is_pointer_v<Declared>&& std::is_convertible_v<Given, Declared>) ||
                  (std::same_as<Declared, jboolean> && std::same_as<Given, bool>) ||
                  (std::same_as<Declared, jchar> && std::same_as<Given, char16_t>) ||
                  (std::same_as<Declared, jint> && std::is_convertible_v<Given, jint> &&
                   sizeof(Given) <= sizeof(jint) && !std::is_floating_point_v<Given> &&
                   !std::same_as<Given, bool> && !std::same_as<Given, jboolean>);

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

// Found in the library when it is first called; may be called on any thread. Copies are the same
// native.
template <class Signature>
class Native;

template <class Result, class... Parameters>
class Native<Result(Parameters...)> {
  public:
    constexpr Native(const char* javaName, const char* exportName)
        : name(javaName), exported(exportName) {}
    Native(const Native& other) : name(other.name), exported(other.exported) {}
    Native& operator=(const Native&) = delete;

    template <class... Arguments>
    Result operator()(JNIEnv* env, Arguments... arguments) const
        requires(sizeof...(Arguments) == sizeof...(Parameters) &&
                 (GivenAs<Arguments, Parameters> && ...)) {
        return function()(env, nullptr, asWord(static_cast<Parameters>(arguments))...);
    }

    const char* const name; // as Java has it: "Shell_New"
    friend std::ostream& operator<<(std::ostream& out, const Native& native) {
        return out << native.name;
    }

  private:
    using Function = Result(__stdcall*)(JNIEnv*, jclass,
                                        decltype(asWord(std::declval<Parameters>()))...);
    Function function() const {
        if (!found) found = reinterpret_cast<Function>(exportOf(exported));
        return found;
    }

    const char* const exported;
    mutable std::atomic<Function> found = nullptr;
};
