#pragma once
// Rows of pixels between the formats of Java and of sections. No division and no call for a pixel:
// words of several pixels are taken apart and put together. Rows of sections and of Java's ints
// start at multiples of 4 bytes. Any thread.

#include "ce.h"
#include <jni.h>

// Java's pixels to a section's row.
void storeHighColor(BYTE* row, const jint* pixels, LONG count);             // 5-6-5 to 5-5-5
void storeTrueColor(BYTE* row, const jint* pixels, LONG count);             // to 24 bits
void storeWithAlpha(BYTE* row, const jint* pixels, LONG count, BYTE alpha); // to 32 bits
void storeWithAlphas(BYTE* row, const jint* pixels, LONG count, const BYTE* alphas);

// 5-6-5 to 32 bits: widened to 8 bits a component, or left as they are.
void storeWidenedWithAlphas(BYTE* row, const jint* pixels, LONG count, const BYTE* alphas);
void storeNarrowedWithAlpha(BYTE* row, const jint* pixels, LONG count, BYTE alpha);

// A row of 24-bit pixels of one colour, 0xRRGGBB.
void fillTrueColor(BYTE* row, LONG count, jint color);

// Bytes of four 2-bit indices to a section's row of 4-bit indices.
void storeIndexPairs(BYTE* row, const BYTE* data, LONG bytes);

// A section's row to Java's pixels.
void loadHighColor(jint* pixels, const BYTE* row, LONG count); // 5-5-5 to 5-6-5
void loadTrueColor(jint* pixels, const BYTE* row, LONG count); // 24 bits to 0xRRGGBB

// 24 bits to 0xFFRRGGBB; starts at any pixel of the row.
void loadOpaqueColor(jint* pixels, const BYTE* row, LONG first, LONG count);
