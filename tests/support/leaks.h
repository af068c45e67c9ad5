#pragma once
// Counts of what a scenario must leave as it found it.

struct LiveCounts {
    int gdiObjects;  // of this process
    int windows;     // of this thread, children included
    long heapBlocks; // allocated through the device's API
};

LiveCounts countLive();

// How often a scenario is repeated for what it leaves behind to show: 500 times, or as often as
// ZEMVOLT_LEAK_ROUNDS says.
int leakRounds();
long countHeapBlocks();

// Fails the test when the scope leaves more or less behind than it found.
class NoLeaks {
  public:
    NoLeaks() : before(countLive()) {}
    ~NoLeaks();
    NoLeaks(const NoLeaks&) = delete;
    NoLeaks& operator=(const NoLeaks&) = delete;

  private:
    LiveCounts before;
};
