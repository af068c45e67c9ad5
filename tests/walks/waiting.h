#pragma once
// What waits for a person is left after a while, and what hangs ends the program.

#include <windows.h>

// While it lives, menus, dialogs and whatever else of the system's waits for a person on this
// thread are left, once nothing else happens in them.
class Impatience {
  public:
    Impatience();
    ~Impatience();
    Impatience(const Impatience&) = delete;
    Impatience& operator=(const Impatience&) = delete;

  private:
    UINT_PTR timer;
    HHOOK hook;
};

// Something happened: the program ends when nothing has for too long.
void tellProgress();

// The exit code of a program in which nothing happened any more.
constexpr UINT hangCode = 135;
