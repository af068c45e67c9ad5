#pragma once
// Counts of what a scenario with threads must leave in the process as it found it.

#include "leaks.h"
#include <functional>

struct ProcessCounts {
    int threads;
    int handles; // of events, threads and all the like
    bool operator==(const ProcessCounts&) const = default;
};

ProcessCounts countProcess();

// For rounds in which threads meet by chance: a lock at which they do so for the first time keeps
// an event from then on. Fails the test when each of several rounds leaves threads or handles
// behind.
void expectARoundWithoutHandles(const std::function<void()>& round);

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
