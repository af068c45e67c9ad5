// The device's heap: blocks never move. Fresh and freed memory holds patterns, so that reading what
// was never written, or is gone, shows; so does a fence behind each block, so that writing beyond
// its end shows when it is freed. With a setting the blocks lie on pages of their own, where both
// show at once.

#include "heap.h"
#include "emulator.h"
#include "failures.h"
#include "heap_pages.h"
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

static constexpr SIZE_T noBlock = static_cast<SIZE_T>(-1);

static SIZE_T fenceFor(SIZE_T size) { return heapUsesPages() ? spareOnPages(size) : fenceSize; }

// -1 for what is no block, or is gone.
static SIZE_T askedFor(HLOCAL block) {
    if (heapUsesPages()) return sizeOnPages(block);
    SIZE_T size = LocalSize(block);
    return size == noBlock ? noBlock : size - fenceSize;
}

SIZE_T sizeOfBlock(HLOCAL block) {
    SIZE_T size = askedFor(block);
    return size == noBlock ? 0 : size;
}

static BYTE* fenceOf(HLOCAL block, SIZE_T size) { return static_cast<BYTE*>(block) + size; }

static void checkFence(HLOCAL block, SIZE_T size) {
    const BYTE* fence = fenceOf(block, size);
    auto isWhole = [](BYTE byte) { return byte == fencePattern; };
    if (std::all_of(fence, fence + fenceFor(size), isWhole)) return;
    fprintf(stderr, "the heap block at %p was written to beyond its %lu bytes\n", block,
            static_cast<unsigned long>(size));
    fflush(stderr);
    RaiseException(heapIsDamaged, 0, 0, nullptr);
}

static HLOCAL take(UINT flags, SIZE_T size) {
    if (heapUsesPages()) return takePages(size);
    return LocalAlloc(flags & LMEM_ZEROINIT, size + fenceSize);
}

static bool giveUp(HLOCAL block, SIZE_T size) {
    if (heapUsesPages()) {
        givePagesUp(block);
        return true;
    }
    memset(block, freedPattern, size + fenceSize);
    return !LocalFree(block);
}

extern "C" {

LONG WINAPI Emulator_CountHeapBlocks() { return liveBlocks; }

// The flags for movable memory mean nothing: what the device allocates is always a pointer.
HLOCAL WINAPI Device_LocalAlloc(UINT flags, SIZE_T size) {
    if (flags != LMEM_FIXED && flags != LMEM_MOVEABLE && flags != LMEM_ZEROINIT) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    if (size > SIZE_MAX - fenceSize || failsNow(failMemory)) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    HLOCAL block = take(flags, size);
    if (!block) return nullptr;
    memset(fenceOf(block, size), fencePattern, fenceFor(size));
    if (!(flags & LMEM_ZEROINIT)) memset(block, freshPattern, size);
    InterlockedIncrement(&liveBlocks);
    return block;
}

HLOCAL WINAPI Device_LocalFree(HLOCAL block) {
    if (!block) return nullptr;
    SIZE_T size = askedFor(block);
    if (size == noBlock) return block;
    checkFence(block, size);
    if (!giveUp(block, size)) return block;
    InterlockedDecrement(&liveBlocks);
    return nullptr;
}

// The text that it allocates is a block like any other.
DWORD WINAPI Device_FormatMessageW(DWORD flags, LPCVOID source, DWORD message, DWORD language,
                                   LPWSTR buffer, DWORD size, va_list* arguments) {
    if ((flags & FORMAT_MESSAGE_FROM_SYSTEM) && Emulator_GetVariety()->hasNoSystemTexts) {
        SetLastError(ERROR_MR_MID_NOT_FOUND);
        return 0;
    }
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
