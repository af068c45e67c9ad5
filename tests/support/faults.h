#pragma once
// Failures of the platform on demand: while a Faults lives, every call that the library makes into
// the device's DLLs goes through it.

#include <functional>
#include <string>
#include <vector>
#include <windows.h>

class Faults {
  public:
    Faults();
    ~Faults();
    Faults(const Faults&) = delete;
    Faults& operator=(const Faults&) = delete;

    // The nth call of the function from now on (1 is the next, 0 means every one) does nothing and
    // answers the value (0: its failure value), with that last error.
    void fail(const std::string& function, int nth = 1, DWORD lastError = 0, DWORD value = 0);

    // The nth call from now on of any function that can fail answers its failure value.
    void failAnyCall(int nth);

    // Nothing is asked for any more, and no call has been made.
    void forget();

    // Calls of other threads than this one neither count nor fail from now on.
    void watchThisThreadOnly();

    // Whether a failure that was asked for has happened.
    bool hasFailed() const;

    // The functions that the library imports, but those of the C library.
    static std::vector<std::string> imported();

    // The functions called, in order.
    std::vector<std::string> calls() const;
    int countCalls(const std::string& function) const;

    // Looks at every call before it is made, on the thread that makes it; may call the library.
    void watch(std::function<void(const std::string& function)> look);

    // Calls another function of the same signature in its place.
    void replace(const std::string& function, void* replacement);
};

// Runs the scenario with the first platform call failing, then the second, and so on until none is
// left to fail. Returns how often a call failed.
int forEachFailure(const std::function<void(Faults&)>& scenario);
