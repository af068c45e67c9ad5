#pragma once
// What a declaration says of a handle beyond the kind of its record. To the compiler they are plain
// pointers and numbers; the desk's checked mode reads the words.

#include <jni.h>

// A handle that may be 0, which stands for none.
template <class Record>
using OrNone = Record*;

// A display that only its own thread may give.
template <class Record>
using OfThisThread = Record*;

// A result that stays somebody else's, who ends it: Java does not.
template <class Record>
using Lent = Record*;

// How many elements of the array before it count.
using CountOfArray = jint;
