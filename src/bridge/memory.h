#pragma once
// Zero-filled heap blocks. Every record and buffer of the library comes from here, so that the
// blocks of the process heap can be counted from outside. Any thread.

#include "ce.h"

// A zero-filled block of the given size in bytes, or null. Freed with freeBlock.
inline void* allocateBytes(UINT size) { return LocalAlloc(LPTR, size); }

// Null is allowed.
inline void freeBlock(void* block) {
    if (block) LocalFree(block);
}

template <class Record>
Record* allocate() {
    return static_cast<Record*>(allocateBytes(sizeof(Record)));
}

template <class Element>
Element* allocateArray(UINT count) {
    return static_cast<Element*>(allocateBytes(count * sizeof(Element)));
}
