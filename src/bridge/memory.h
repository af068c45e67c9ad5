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

// Owns a block, which may be null, until it is released.
template <class Element>
class Block {
  public:
    explicit Block(Element* elements) : elements(elements) {}
    ~Block() { freeBlock(elements); }
    Block(const Block&) = delete;
    Block& operator=(const Block&) = delete;
    operator Element*() const { return elements; }
    Element* operator->() const { return elements; }

    // The block is the caller's from here on.
    Element* release() {
        Element* released = elements;
        elements = nullptr;
        return released;
    }

  private:
    Element* elements;
};
