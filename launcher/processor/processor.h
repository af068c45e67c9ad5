#pragma once
// An emulated processor of the device, with a stack of its own. Addresses are the process's. It
// runs the images' code; all else it can read and write but not execute, so that going there ends
// the run. Used by one thread at a time.

#include "image.h"
#include "unicorn.h"

enum class Count { nothing, instructions };

class Processor {
  public:
    // Null when one cannot be made.
    static Processor* make(unicorn::Model model, Count count);

    // Shows the calling thread in the kernel's page, before it calls functions.
    void showThread();

    // Runs the function with the words as its arguments (in registers and on the stack) until it
    // returns; host functions that it calls are called. A flaw of the code ends the process.
    uint64_t call(uint32_t function, const uint32_t* words);

    // Instructions that this processor has run, when they are counted.
    uint64_t instructionCount() const { return instructions; }

    // What it is doing, on standard error. Once: what follows a flaw is not its cause.
    void report(const std::string& problem);
    bool isRunning() const { return running; }

  private:
    struct Registers;

    Processor() = default;
    bool open(unicorn::Model model, Count count);
    bool openEngine();
    void renewEngine();
    bool mapAll();
    bool mapPieces(uint32_t start, uint32_t end);
    void save(Registers* registers);
    uint64_t leave(const Registers& at, uint32_t target);
    void check(const Registers& before, const Registers& after);
    [[noreturn]] void fail(const std::string& problem);
    std::string describe(unicorn::Result result, const Registers& at) const;
    static void onAccess(void*, int kind, uint64_t address, int size, int64_t value, void* self);
    static bool onMissing(void*, int kind, uint64_t address, int size, int64_t value, void* self);
    static void onInstruction(void*, uint64_t address, uint32_t size, void* self);
    static void onBlock(void*, uint64_t address, uint32_t size, void* self);

    unicorn::Model model = {};
    Count count = Count::nothing;
    unicorn::Engine engine = nullptr;
    uint32_t runs = 0;      // since the engine was made
    size_t knownImages = 0; // whose code the engine may run
    uint32_t stackTop = 0;
    uint32_t* kernelData = nullptr; // what the kernel shows to programs
    uint32_t depth = 0;             // of calls that have not returned
    uint32_t block = 0;             // of instructions that run; their own places are not kept
    uint32_t missing = 0;           // the address of an access to nothing
    uint32_t misaligned = 0;        // the address of a misaligned access
    uint64_t instructions = 0;
    bool running = false;
    bool reported = false;
};

// How processors are made: set before the first is used.
struct ProcessorSettings {
    unicorn::Model model;
    Count count;
};
void setProcessors(const ProcessorSettings& settings);

// Code that all processors can run from now on. The image stays; no other thread runs one
// meanwhile.
void addImage(const Image& image);

// A function of this side whose result is a word at most: the register for the second one holds
// rubbish after it. Noted before it is called.
void noteNarrowResult(void* function);

// Functions of this side whose result is a byte: the rest of its word means nothing, and is made to
// look so. Noted before they are called.
void noteByteResults(void* const* functions, uint32_t count);

// The processor on which the calling thread's functions run; null outside of them.
Processor* currentProcessor();

// Of all processors.
uint64_t countInstructions();
