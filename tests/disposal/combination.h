#pragma once
// Which combinations run, and which one does: a fault that ends the program names it.

#include <string>

class Combination {
  public:
    explicit Combination(const std::string& name);
    ~Combination();
    Combination(const Combination&) = delete;
    Combination& operator=(const Combination&) = delete;

    // All but the known failures; with ZEMVOLT_COMBINATION only what its pattern (letters and *)
    // names, known or not.
    static bool isWanted(const std::string& name);

    // Whether any of the combinations that begin so may be wanted.
    static bool mayBeWanted(const std::string& beginning);

  private:
    std::string name;
};
