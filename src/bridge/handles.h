#pragma once
// What a declaration says of a handle beyond the kind of its record, and of how long an array has
// to be. To the compiler they are plain pointers, numbers and arrays; the desk's checked mode reads
// the words.

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

// How many elements of the array before it count, or of so many arrays before it.
using CountOfArray = jint;
template <int arrays>
using CountOfArrays = jint;

// An array with an element for each pixel of width and height.
template <class Array>
using OfPixels = Array;

// An array of height rows with bytesPerLine bytes each, of which width pixels of depth bits count.
template <class Array>
using OfRows = Array;

// An array of height rows of width elements: the first begins at offset, each next scanSize
// further.
template <class Array>
using OfScannedRows = Array;

// An array that may have any length. The declaration says what a short one brings about.
template <class Array>
using OfAnyLength = Array;
