#pragma once
// Holds a lock for the length of a scope.

#include <windows.h>

class ExclusiveLock {
  public:
    explicit ExclusiveLock(SRWLOCK* lock) : held(lock) { AcquireSRWLockExclusive(held); }
    ~ExclusiveLock() { ReleaseSRWLockExclusive(held); }
    ExclusiveLock(const ExclusiveLock&) = delete;
    ExclusiveLock& operator=(const ExclusiveLock&) = delete;

  private:
    SRWLOCK* held;
};
