// The device's clipboard takes and gives plain heap blocks; the desk's wants movable global ones.

#include "heap.h"
#include <string.h>

// What GetClipboardData gave out since the clipboard was opened; the clipboard's own.
static HLOCAL lent;

static void takeBack() {
    LocalFree(lent);
    lent = nullptr;
}

static HGLOBAL globalCopy(HLOCAL block) {
    SIZE_T size = sizeOfBlock(block);
    HGLOBAL copy = GlobalAlloc(GMEM_MOVEABLE, size);
    if (!copy) return nullptr;
    memcpy(GlobalLock(copy), block, size);
    GlobalUnlock(copy);
    return copy;
}

static HLOCAL localCopy(HGLOBAL data) {
    const void* bytes = GlobalLock(data);
    if (!bytes) return nullptr;
    SIZE_T size = GlobalSize(data);
    HLOCAL copy = LocalAlloc(LMEM_FIXED, size);
    if (copy) memcpy(copy, bytes, size);
    GlobalUnlock(data);
    return copy;
}

extern "C" {

// The block is the clipboard's from here on.
HANDLE WINAPI Device_SetClipboardData(UINT format, HANDLE block) {
    HGLOBAL copy = globalCopy(block);
    if (!copy) return nullptr;
    if (!SetClipboardData(format, copy)) {
        DWORD error = GetLastError();
        GlobalFree(copy);
        SetLastError(error);
        return nullptr;
    }
    Device_LocalFree(block);
    return copy;
}

// Readable until the clipboard is closed or asked again.
HANDLE WINAPI Device_GetClipboardData(UINT format) {
    HGLOBAL data = GetClipboardData(format);
    if (!data) return nullptr;
    takeBack();
    lent = localCopy(data);
    return lent;
}

BOOL WINAPI Device_CloseClipboard() {
    if (!CloseClipboard()) return FALSE;
    takeBack();
    return TRUE;
}
}
