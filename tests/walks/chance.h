#pragma once
// The same choices in every run that starts from the same seed.

#include <initializer_list>
#include <random>
#include <vector>

class Chance {
  public:
    explicit Chance(unsigned seed) : random(seed) {}

    // From first to last, both included.
    int among(int first, int last) { return first + int(random() % unsigned(last - first + 1)); }
    bool percent(int share) { return among(1, 100) <= share; }
    template <class Choice>
    Choice of(std::initializer_list<Choice> choices) {
        return choices.begin()[among(0, int(choices.size()) - 1)];
    }
    template <class Choice>
    const Choice& of(const std::vector<Choice>& choices) {
        return choices[among(0, int(choices.size()) - 1)];
    }

  private:
    std::mt19937 random;
};
