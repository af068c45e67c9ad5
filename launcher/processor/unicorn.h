#pragma once
// The CPU emulator's Unix library, as much of it as is used, called from this side of the process.

#include "unix_side.h"

namespace unicorn {

using Engine = void*;

// As the library's headers number them.
constexpr uint32_t architectureArm = 1;
constexpr uint32_t modeArm = 0;
enum Register { cpsr = 3, lr = 10, pc = 11, sp = 12, r0 = 66 };
enum Result {
    succeeded = 0,
    readUnmapped = 6,
    writeUnmapped = 7,
    fetchUnmapped = 8,
    invalidInstruction = 10,
    writeProtected = 12,
    fetchProtected = 14,
    exception = 21,
};
enum Permission { readable = 1, writable = 2, executable = 4 };
enum Hook {
    everyInstruction = 1 << 2,
    everyBlock = 1 << 3, // of instructions up to the next branch
    readOfNothing = 1 << 4,
    writeToNothing = 1 << 5,
    writeToProtected = 1 << 8,
    everyRead = 1 << 10,
    everyWrite = 1 << 11,
};
enum Model { model925T = 18, modelSA1110 = 20 }; // of architectures 4T and 4

// The library's functions; each answers a Result, or what open says.
struct Library {
    void *open, *close, *control, *map, *start, *stop, *read, *write, *addHook, *error;

    // False when the library is not what it should be.
    bool load(const char* path);
};

extern Library library;

Engine open(Model model);
void close(Engine engine);
// The memory of this process that lies at the address, or that lies elsewhere.
Result map(Engine engine, uint32_t address, uint32_t size, uint32_t permissions);
Result map(Engine engine, uint32_t address, uint32_t size, uint32_t permissions, void* memory);
Result run(Engine engine, uint32_t address);
void stop(Engine engine);
void read(Engine engine, const int* registers, uint32_t* values, uint32_t count);
void write(Engine engine, const int* registers, const uint32_t* values, uint32_t count);
// The hook is called with the engine, the parameters of its kind, and owner.
bool addHook(Engine engine, uint32_t kinds, void* function, void* owner);
const char* textOf(Result result);

} // namespace unicorn
