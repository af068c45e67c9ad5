#pragma once
// The device's heap, for the emulator's own use.

#include <windows.h>

// As it was asked for.
SIZE_T sizeOfBlock(HLOCAL block);

extern "C" {
HLOCAL WINAPI Device_LocalAlloc(UINT flags, SIZE_T size);
HLOCAL WINAPI Device_LocalFree(HLOCAL block);
}
