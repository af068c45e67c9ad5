#include "heap_pages.h"
#include "exclusive_lock.h"
#include <stdint.h>
#include <stdlib.h>
#include <string.h>

static constexpr SIZE_T pageSize = 0x1000;
static constexpr SIZE_T wordSize = 4;
// The system hands out address space in pieces of 64 KB, too much for a block: one area is reserved
// at once and gone round in.
static constexpr SIZE_T areaPages = 0x10000;

namespace {

struct Page {
    SIZE_T size;     // of the block that begins here
    uint16_t extent; // pages of the block that begins here, the untouchable one included; 0: none
    bool taken;
};

} // namespace

static BYTE* area;
static Page pages[areaPages];
static SIZE_T next; // where the search for room goes on
static SRWLOCK lock = SRWLOCK_INIT;

bool heapUsesPages() {
    static const bool uses = [] {
        const char* heap = getenv("ZEMVOLT_HEAP");
        return heap && strcmp(heap, "pages") == 0;
    }();
    return uses;
}

SIZE_T spareOnPages(SIZE_T size) { return (wordSize - size % wordSize) % wordSize; }

static SIZE_T dataPages(SIZE_T size) {
    // A block of no bytes has an address of its own too.
    return size ? (size + pageSize - 1) / pageSize : 1;
}

static BYTE* addressOf(SIZE_T first, SIZE_T size) {
    return area + (first + dataPages(size)) * pageSize - size - spareOnPages(size);
}

// Where a block of the size begins; areaPages without one.
static SIZE_T pageOf(const void* block) {
    SIZE_T offset = static_cast<const BYTE*>(block) - area;
    if (!area || offset >= areaPages * pageSize) return areaPages;
    SIZE_T first = offset / pageSize;
    // A block of no bytes begins at the untouchable page.
    if (!pages[first].extent && first) --first;
    const Page& page = pages[first];
    return page.extent && addressOf(first, page.size) == block ? first : areaPages;
}

static SIZE_T roomFrom(SIZE_T start, SIZE_T end, SIZE_T count) {
    SIZE_T free = 0;
    for (SIZE_T i = start; i < end; ++i) {
        free = pages[i].taken ? 0 : free + 1;
        if (free == count) return i + 1 - count;
    }
    return areaPages;
}

static SIZE_T findRoom(SIZE_T count) {
    SIZE_T first = roomFrom(next, areaPages, count);
    return first == areaPages ? roomFrom(0, areaPages, count) : first;
}

static BYTE* noRoom() {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

BYTE* takePages(SIZE_T size) {
    if (size >= areaPages * pageSize / 2) return noRoom();
    ExclusiveLock hold(&lock);
    if (!area)
        area = static_cast<BYTE*>(
            VirtualAlloc(nullptr, areaPages * pageSize, MEM_RESERVE, PAGE_NOACCESS));
    if (!area) return noRoom();
    SIZE_T count = dataPages(size) + 1;
    SIZE_T first = findRoom(count);
    if (first == areaPages) return noRoom();
    if (!VirtualAlloc(area + first * pageSize, dataPages(size) * pageSize, MEM_COMMIT,
                      PAGE_READWRITE))
        return noRoom();
    for (SIZE_T i = 0; i < count; ++i) pages[first + i].taken = true;
    pages[first].size = size;
    pages[first].extent = static_cast<uint16_t>(count);
    next = first + count;
    return addressOf(first, size);
}

SIZE_T sizeOnPages(const void* block) {
    ExclusiveLock hold(&lock);
    SIZE_T first = pageOf(block);
    return first == areaPages ? static_cast<SIZE_T>(-1) : pages[first].size;
}

void givePagesUp(void* block) {
    ExclusiveLock hold(&lock);
    SIZE_T first = pageOf(block);
    if (first == areaPages) return;
    SIZE_T count = pages[first].extent;
    VirtualFree(area + first * pageSize, (count - 1) * pageSize, MEM_DECOMMIT);
    for (SIZE_T i = 0; i < count; ++i) pages[first + i] = {};
}
