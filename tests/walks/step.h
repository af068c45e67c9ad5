#pragma once
// One step of a walk: a native, or something that a person, a listener or the system does. A step
// is data that names what earlier steps made, so that any step can be left out, written down and
// played again. It reads like a call:
//
//     17: List_Add(@12, "some", 3)
//     18 in focus: Widget_Dispose(@12)
//     19 failing LocalAlloc 2: Shell_NewChild(@0, 32)

#include <jni.h>
#include <string>
#include <vector>

struct Argument {
    enum class Type {
        number,
        truth,
        object, // what the step of that number made; 0: the display that is there from the start
        none,   // null, where no number stands
        text,
        ints,  // so many, made of a seed
        bytes, // so many, made of a seed
        wave,  // a sound file of so many samples
        image, // an image file, made of a seed
        listener,
    };
    Type type = Type::number;
    jint value = 0; // the number, the object, or how many
    jint seed = 0;
    std::u16string text = {};
};

struct Step {
    int number = 0;
    std::string event = {};   // what is fired before it is done, once; empty: it is done at once
    std::string failing = {}; // the function of the system that fails meanwhile; empty: none
    int nth = 0;              // which call of it
    std::string verb = {};    // a native by its Java name, or one of the player's
    std::vector<Argument> arguments = {};
};

using Steps = std::vector<Step>;

inline Argument number(jint value) { return {.value = value}; }
inline Argument truth(bool value) { return {.type = Argument::Type::truth, .value = value}; }
inline Argument object(int step) { return {.type = Argument::Type::object, .value = step}; }
inline Argument none() { return {.type = Argument::Type::none}; }
inline Argument text(const std::u16string& characters) {
    return {.type = Argument::Type::text, .text = characters};
}
inline Argument made(Argument::Type type, jint count, jint seed) {
    return {.type = type, .value = count, .seed = seed};
}

// A line without its end.
std::string toLine(const Step& step);

// Fails the test when it is none.
Step toStep(const std::string& line);

// A path of this machine's, as the device sees it.
std::string pathOf(const std::string& path);

// Of a file, by its path as the device or this machine sees it.
Steps readSteps(const std::string& path);
void writeSteps(const std::string& path, const Steps& steps);

// What an array of that seed holds.
std::vector<jint> intsOf(const Argument& argument);
std::vector<jbyte> bytesOf(const Argument& argument);
