#pragma once
// What the emulated device offers to tests and tools on the desk, beside the device's own API.
// Exported by coredll.dll. Any thread.

#include <windows.h>

// Of the device's screen, pixels.
constexpr int deviceScreenWidth = 240;
constexpr int deviceScreenHeight = 320;

extern "C" {
// Heap blocks that were allocated through the device's API and not freed yet.
LONG WINAPI Emulator_CountHeapBlocks();
}
