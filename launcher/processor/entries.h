#pragma once
// Places that code of this side can call in place of functions for the device's processor. The
// image holds them wherever it holds the address of a function, so that what it hands out as
// window procedure, thread or table of functions can be called from both sides.

#include <stdint.h>

// The entry of a function of the image; the same each time. Bytes of arguments that the function
// takes off the stack as a callee of its convention; unknownBytes when nobody told. Not for several
// threads at once.
constexpr uint32_t unknownBytes = 0xFFFFFFFF;
void* entryOf(uint32_t function, uint32_t bytes);

// A place on a word from where code goes on to a function of this side that lies on none.
void* wordAlignedJump(void* function);

// The function for the device's processor that such a place stands for; 0 for any other place.
uint32_t functionOfEntry(uint32_t place);

// Of the entry with that number.
uint32_t functionOfNumber(uint32_t number);
bool canBeCalledFromHost(uint32_t number);
