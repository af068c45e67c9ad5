#pragma once
// Checksums of what the library computes by itself, over many inputs: the same on each processor.

#include <stdint.h>

void computeChecksums();

// Called with each, in one order. Whoever computes them defines it.
void writeChecksum(const char* name, uint32_t sum);
