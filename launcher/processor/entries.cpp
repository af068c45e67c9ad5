#include "entries.h"
#include <map>
#include <string.h>
#include <windows.h>

extern "C" void enterFromHost();

namespace {

constexpr uint32_t mostEntries = 4096;
constexpr uint32_t entrySize = 16;

struct Entry {
    uint32_t function;
    bool bytesAreKnown;
};

Entry entries[mostEntries];
std::map<uint32_t, uint32_t> numbers; // by function
std::map<void*, void*> jumps;
uint8_t* code;
uint32_t codeUsed;

} // namespace

extern "C" uint32_t entryBytes[mostEntries];
uint32_t entryBytes[mostEntries];

static uint8_t* newCode() {
    if (!code)
        code = static_cast<uint8_t*>(VirtualAlloc(
            nullptr, mostEntries * entrySize, MEM_COMMIT | MEM_RESERVE, PAGE_EXECUTE_READWRITE));
    if (!code || codeUsed == mostEntries) return nullptr;
    return code + entrySize * codeUsed++;
}

static void writeJump(uint8_t* place, void* target) {
    auto distance =
        static_cast<int32_t>(reinterpret_cast<uint8_t*>(target) - (place + 1 + sizeof(int32_t)));
    *place = 0xE9;
    memcpy(place + 1, &distance, sizeof(distance));
}

void* entryOf(uint32_t function, uint32_t bytes) {
    auto known = numbers.find(function);
    if (known != numbers.end()) return code + known->second * entrySize;
    uint8_t* place = newCode();
    if (!place) return nullptr;
    uint32_t number = (place - code) / entrySize;
    entries[number] = {function, bytes != unknownBytes};
    entryBytes[number] = bytes == unknownBytes ? 0 : bytes;
    numbers[function] = number;
    *place = 0x68; // push
    memcpy(place + 1, &number, sizeof(number));
    writeJump(place + 1 + sizeof(number), reinterpret_cast<void*>(enterFromHost));
    return place;
}

void* wordAlignedJump(void* function) {
    if (reinterpret_cast<uint32_t>(function) % sizeof(uint32_t) == 0) return function;
    void*& place = jumps[function];
    if (place) return place;
    uint8_t* jump = newCode();
    if (jump) writeJump(jump, function);
    place = jump;
    return place;
}

uint32_t functionOfEntry(uint32_t place) {
    uint32_t offset = place - reinterpret_cast<uint32_t>(code);
    if (!code || offset >= mostEntries * entrySize || offset % entrySize) return 0;
    return entries[offset / entrySize].function;
}

uint32_t functionOfNumber(uint32_t number) { return entries[number].function; }
bool canBeCalledFromHost(uint32_t number) { return entries[number].bytesAreKnown; }
