#pragma once
// A string list is an array of wide-string pointers ended by a null pointer. A null list is an
// empty one. The strings and the array are heap blocks. Any thread.

#include "ce.h"

int stringListCount(const wchar_t* const* list);

// Element index, or null for an absent list. mustFreeOut tells whether the caller frees the
// returned string; here it never does.
const wchar_t* stringListGet(const wchar_t* const* list, int index, BYTE* mustFreeOut);

// Frees every string up to the terminator, then the array.
void stringListFree(wchar_t** list);
