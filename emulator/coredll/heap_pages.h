#pragma once
// Blocks on pages of their own, for finding whoever touches what is not, or no longer, theirs: any
// touch beyond a block's end, or of one that was given up, faults at the instruction that does it.
// Any thread.

#include <windows.h>

// Whether the heap works so: the environment says ZEMVOLT_HEAP=pages. Read once.
bool heapUsesPages();

// The block ends where its last page does, but for what rounds its size up to words: callers count
// on blocks that begin on a word, and on no more. Its bytes are zero. Null without room.
BYTE* takePages(SIZE_T size);

// The size that was asked for; -1 for what is no block, or is gone.
SIZE_T sizeOnPages(const void* block);

// How many bytes lie between the block's end and the untouchable page.
SIZE_T spareOnPages(SIZE_T size);

// The pages cannot be touched from now on, and are not used again before all others were.
void givePagesUp(void* block);
