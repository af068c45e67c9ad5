#pragma once
// Blending of 32-bit pixels by an alpha of 0 to 255. Any thread.

#include "ce.h"

// Each colour byte of the target becomes target + (alpha * (source - target)) / 255, the division
// truncating toward zero; the alpha is the source's fourth byte, the target's fourth byte stays.
DWORD blendPixel(DWORD target, DWORD source);

// The same for a row of pixels.
void blendRow(DWORD* target, const DWORD* source, LONG count);
