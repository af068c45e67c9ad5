// The device's heap: blocks never move. Fresh and freed memory holds patterns, so that reading what
// was never written, or is gone, shows; so does a fence behind each block, so that writing beyond
// its end shows when it is freed.

#include "heap.h"
#include "emulator.h"
#include <algorithm>
#include <stdint.h>
#include <stdio.h>
#include <string.h>

static constexpr int freshPattern = 0xCD;
static constexpr int freedPattern = 0xDD;
static constexpr BYTE fencePattern = 0xFD;
static constexpr SIZE_T fenceSize = 16;
static constexpr DWORD heapIsDamaged = 0xC0000374; // as the desk's heap says it

static LONG liveBlocks;

SIZE_T sizeOfBlock(HLOCAL block) {
    SIZE_T size = LocalSize(block);
    return size < fenceSize ? 0 : size - fenceSize;
}

static BYTE* fenceOf(HLOCAL block) { return static_cast<BYTE*>(block) + sizeOfBlock(block); }

static void checkFence(HLOCAL block) {
    const BYTE* fence = fenceOf(block);
    auto isWhole = [](BYTE byte) { return byte == fencePattern; };
    if (std::all_of(fence, fence + fenceSize, isWhole)) return;
    fprintf(stderr, "the heap block at %p was written to beyond its %lu bytes\n", block,
            static_cast<unsigned long>(sizeOfBlock(block)));
    fflush(stderr);
    RaiseException(heapIsDamaged, 0, 0, nullptr);
}

extern "C" {

LONG WINAPI Emulator_CountHeapBlocks() { return liveBlocks; }

// The flags for movable memory mean nothing: what the device allocates is always a pointer.
HLOCAL WINAPI Device_LocalAlloc(UINT flags, SIZE_T size) {
    if (size > SIZE_MAX - fenceSize) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    HLOCAL block = LocalAlloc(flags & LMEM_ZEROINIT, size + fenceSize);
    if (!block) return nullptr;
    memset(fenceOf(block), fencePattern, fenceSize);
    if (!(flags & LMEM_ZEROINIT)) memset(block, freshPattern, size);
    InterlockedIncrement(&liveBlocks);
    return block;
}

HLOCAL WINAPI Device_LocalFree(HLOCAL block) {
    if (!block) return nullptr;
    SIZE_T size = LocalSize(block);
    if (size == static_cast<SIZE_T>(-1)) return block; // no block, or one that is gone
    checkFence(block);
    memset(block, freedPattern, size);
    HLOCAL left = LocalFree(block);
    if (!left) InterlockedDecrement(&liveBlocks);
    return left;
}

// The text that it allocates is a block like any other.
DWORD WINAPI Device_FormatMessageW(DWORD flags, LPCVOID source, DWORD message, DWORD language,
                                   LPWSTR buffer, DWORD size, va_list* arguments) {
    DWORD length = FormatMessageW(flags, source, message, language, buffer, size, arguments);
    if (!length || !(flags & FORMAT_MESSAGE_ALLOCATE_BUFFER)) return length;
    auto** allocated = reinterpret_cast<HLOCAL*>(buffer);
    HLOCAL text = *allocated;
    SIZE_T bytes = (length + 1) * sizeof(wchar_t);
    *allocated = Device_LocalAlloc(LMEM_FIXED, bytes);
    if (*allocated) memcpy(*allocated, text, bytes);
    LocalFree(text);
    return *allocated ? length : 0;
}
}
