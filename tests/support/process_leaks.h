#pragma once
// Counts of what a scenario with threads must leave in the process as it found it.

#include "leaks.h"

struct ProcessCounts {
    int threads;
    int handles; // of events, threads and all the like
};

ProcessCounts countProcess();

// Fails the test when the scope leaves more or less behind than it found, on the heap too.
class NothingLeft {
  public:
    NothingLeft() : before(countProcess()) {}
    ~NothingLeft();
    NothingLeft(const NothingLeft&) = delete;
    NothingLeft& operator=(const NothingLeft&) = delete;

  private:
    NoLeaks noLeaks;
    ProcessCounts before;
};
