#pragma once
// Which combinations run, and which one does: a fault that ends the program names it.

#include <string>

class Combination {
  public:
    explicit Combination(const std::string& name);
    ~Combination();
    Combination(const Combination&) = delete;
    Combination& operator=(const Combination&) = delete;

    // All; with ZEMVOLT_COMBINATION only what its pattern names, in which * stands for anything.
    static bool isWanted(const std::string& name);
    static bool isChosen();

    // The name of the one that runs, the innermost; null without one. Any thread.
    static const char* running();

  private:
    std::string name;
    const char* outer; // what ran around it
};
