#pragma once
// Counts of what a scenario must leave as it found it.

struct LiveCounts {
    int gdiObjects;  // of this process
    int windows;     // of this thread, children included
    long heapBlocks; // allocated through the device's API
    long menus;      // and tables of accelerators
};

LiveCounts countLive();

// Fills up the system's contexts for whoever needs one next, as the first count does: a window that
// goes while it is painted takes one with it.
void makeSpareContexts();

// Fails the test unless there is now just as much.
void expectLive(const LiveCounts& expected);

// How often a scenario is repeated for what it leaves behind to show: as often as
// ZEMVOLT_LEAK_ROUNDS says, or the usual number of times.
int leakRounds(int usual = 500);
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
