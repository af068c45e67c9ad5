#pragma once
// The natives that the Java classes declare, and what the ints among their arguments are.

#include <jni.h>
#include <string>
#include <vector>

struct Parameter {
    std::string type, name;
};

struct DeclaredNative {
    const char* name;
    const char* exported;
    const char* result; // its type
    std::vector<Parameter> parameters;
};

const std::vector<DeclaredNative>& declaredNatives();
// Those of them that are wanted.
std::vector<DeclaredNative> declaredNatives(bool (*isWanted)(const DeclaredNative&));

enum class ObjectKind {
    number, // none
    display,
    shell,
    childShell,
    composite,
    button,
    label,
    list,
    choice,
    textField,
    textArea,
    scrollBar,
    ownBar, // of the composite
    menuBar,
    dropDownMenu,
    popupMenu,
    pushItem,
    stateItem,
    cascadeItem,
    color,
    font,
    cursor,
    image,
    indexedImage,
    graphics, // on the image
    controlGraphics,
    sound,
    fileDialog,
};

struct Meaning {
    // A number: only that. An object: every kind that the native may be given.
    std::vector<ObjectKind> kinds;
    bool maybeNone;           // of an object: 0 stands for none
    jint usual;               // of a number
    std::vector<jint> limits; // of a number: the last that is like the usual one, in any direction

    bool isNumber() const { return kinds.front() == ObjectKind::number; }
};

// What the native's first object may be; a number when it takes none.
std::vector<ObjectKind> kindsOfFirst(const DeclaredNative& native);

// Null when it is not known.
const Meaning* meaningOf(const std::string& native, const std::string& parameter);
