#pragma once
// What operations take and return where Java's values are more than one word.

#include "ce.h"
#include <jni.h>

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
