#pragma once
// Bytes with memory before and behind them that nobody may touch: reading a byte too early or too
// late ends the test's program.

#include <cstring>
#include <windows.h>

class GuardedBytes {
  public:
    explicit GuardedBytes(size_t capacity)
        : room((capacity + page - 1) / page * page),
          area(static_cast<BYTE*>(
              VirtualAlloc(nullptr, room + 2 * page, MEM_RESERVE, PAGE_NOACCESS))),
          first(static_cast<BYTE*>(VirtualAlloc(area + page, room, MEM_COMMIT, PAGE_READWRITE))) {
        SetErrorMode(SEM_NOGPFAULTERRORBOX); // nobody is there to answer a question
    }
    ~GuardedBytes() { VirtualFree(area, 0, MEM_RELEASE); }
    GuardedBytes(const GuardedBytes&) = delete;
    GuardedBytes& operator=(const GuardedBytes&) = delete;

    // A copy right behind the guarded memory, or right before it; the one before it is gone.
    BYTE* copyToStart(const void* bytes, size_t count) {
        return static_cast<BYTE*>(memcpy(first, bytes, count));
    }
    BYTE* copyToEnd(const void* bytes, size_t count) {
        return static_cast<BYTE*>(memcpy(first + room - count, bytes, count));
    }

  private:
    static constexpr size_t page = 4096;

    size_t room;
    BYTE* area;
    BYTE* first;
};
