#pragma once
// The checked order: after each step every object is as the step leaves it. A native changes of its
// first object what its law says, and nothing of any other object.

#include "player.h"

// What natives tell of an object, by what it is of it: "items", "selection", "bounds".
using Properties = std::map<std::string, std::string>;

class Laws {
  public:
    explicit Laws(Player& walking) : player(walking) {}

    // Before each step and behind it. Fails the test where something is not as it must be.
    void look();
    void check(const Step& step);

  private:
    std::map<uint32_t, Properties> lookAtAll();
    Properties propertiesOf(const Object& object);
    void addWindow(const Object& object, HWND window, Properties* properties);

    Player& player;
    std::map<uint32_t, Properties> before; // by handle
};
