#pragma once
// Critical sections are entered and left with a guard. Any thread.

#include "ce.h"

class Lock {
  public:
    explicit Lock(CRITICAL_SECTION* section) : section(section) { EnterCriticalSection(section); }
    ~Lock() { LeaveCriticalSection(section); }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

  private:
    CRITICAL_SECTION* section;
};
