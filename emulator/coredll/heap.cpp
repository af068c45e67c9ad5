// The device's heap: blocks never move. Fresh and freed memory holds patterns, so that reading what
// was never written, or is gone, shows.

#include "heap.h"
#include "emulator.h"
#include <string.h>

static constexpr int freshPattern = 0xCD;
static constexpr int freedPattern = 0xDD;

static LONG liveBlocks;

extern "C" {

LONG WINAPI Emulator_CountHeapBlocks() { return liveBlocks; }

// The flags for movable memory mean nothing: what the device allocates is always a pointer.
HLOCAL WINAPI Device_LocalAlloc(UINT flags, SIZE_T size) {
    HLOCAL block = LocalAlloc(flags & LMEM_ZEROINIT, size);
    if (!block) return nullptr;
    if (!(flags & LMEM_ZEROINIT)) memset(block, freshPattern, size);
    InterlockedIncrement(&liveBlocks);
    return block;
}

HLOCAL WINAPI Device_LocalFree(HLOCAL block) {
    if (!block) return nullptr;
    SIZE_T size = LocalSize(block);
    if (size == static_cast<SIZE_T>(-1)) return block; // no block, or one that is gone
    memset(block, freedPattern, size);
    HLOCAL left = LocalFree(block);
    if (!left) InterlockedDecrement(&liveBlocks);
    return left;
}

// The text that it allocates is a block like any other.
DWORD WINAPI Device_FormatMessageW(DWORD flags, LPCVOID source, DWORD message, DWORD language,
                                   LPWSTR buffer, DWORD size, va_list* arguments) {
    DWORD length = FormatMessageW(flags, source, message, language, buffer, size, arguments);
    if (length && (flags & FORMAT_MESSAGE_ALLOCATE_BUFFER)) InterlockedIncrement(&liveBlocks);
    return length;
}
}
