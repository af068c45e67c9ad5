#include "emulator.h"

static LONG liveBlocks;

extern "C" {

LONG WINAPI Emulator_CountHeapBlocks() { return liveBlocks; }

// The device has no movable memory: what it allocates is always a pointer.
HLOCAL WINAPI Device_LocalAlloc(UINT flags, SIZE_T size) {
    HLOCAL block = LocalAlloc(flags & LMEM_ZEROINIT, size);
    if (block) InterlockedIncrement(&liveBlocks);
    return block;
}

HLOCAL WINAPI Device_LocalFree(HLOCAL block) {
    HLOCAL left = LocalFree(block);
    if (block && !left) InterlockedDecrement(&liveBlocks);
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
