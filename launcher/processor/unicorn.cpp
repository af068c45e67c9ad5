#include "unicorn.h"

namespace unicorn {

Library library;

bool Library::load(const char* path) {
    constexpr int now = 2;
    void* file = reinterpret_cast<void*>(callUnix(unixSide()->dlopen, path, now));
    if (!file) return false;
    const struct {
        void** place;
        const char* name;
    } wanted[] = {{&open, "uc_open"},           {&close, "uc_close"},
                  {&control, "uc_ctl"},         {&map, "uc_mem_map_ptr"},
                  {&start, "uc_emu_start"},     {&stop, "uc_emu_stop"},
                  {&read, "uc_reg_read_batch"}, {&write, "uc_reg_write_batch"},
                  {&addHook, "uc_hook_add"},    {&error, "uc_strerror"}};
    for (const auto& symbol : wanted) {
        *symbol.place = unixSymbol(file, symbol.name);
        if (!*symbol.place) return false;
    }
    return true;
}

Engine open(Model model) {
    constexpr uint32_t setModel = 7 | 1u << 26 | 1u << 30; // the model, one argument, to be set
    Engine engine = nullptr;
    if (callUnix(library.open, architectureArm, modeArm, &engine) != succeeded) return nullptr;
    if (callUnix(library.control, engine, setModel, uint32_t(model)) != succeeded) return nullptr;
    return engine;
}

void close(Engine engine) { callUnix(library.close, engine); }

// Addresses cross as 64-bit numbers; all of ours are smaller.
Result map(Engine engine, uint32_t address, uint32_t size, uint32_t permissions, void* memory) {
    return Result(callUnix(library.map, engine, address, 0, size, permissions, memory));
}

Result map(Engine engine, uint32_t address, uint32_t size, uint32_t permissions) {
    return map(engine, address, size, permissions, reinterpret_cast<void*>(address));
}

Result run(Engine engine, uint32_t address) {
    constexpr uint32_t nowhere = 1; // where to stop: odd, and so never reached
    return Result(callUnix(library.start, engine, address, 0, nowhere, 0, 0, 0, 0));
}

void stop(Engine engine) { callUnix(library.stop, engine); }

constexpr uint32_t mostRegisters = 20;

void read(Engine engine, const int* registers, uint32_t* values, uint32_t count) {
    uint32_t* places[mostRegisters];
    for (uint32_t i = 0; i < count; ++i) places[i] = values + i;
    callUnix(library.read, engine, registers, places, count);
}

void write(Engine engine, const int* registers, const uint32_t* values, uint32_t count) {
    const uint32_t* places[mostRegisters];
    for (uint32_t i = 0; i < count; ++i) places[i] = values + i;
    callUnix(library.write, engine, registers, places, count);
}

bool addHook(Engine engine, uint32_t kinds, void* function, void* owner) {
    uint32_t hook;
    // From 1 to 0: everywhere.
    return callUnix(library.addHook, engine, &hook, kinds, function, owner, 1, 0, 0, 0) ==
           succeeded;
}

const char* textOf(Result result) {
    return reinterpret_cast<const char*>(callUnix(library.error, uint32_t(result)));
}

} // namespace unicorn
