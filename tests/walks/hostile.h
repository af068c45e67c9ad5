#pragma once
// The hostile order: any native with anything that the library promises to stand, whatever a person
// does meanwhile, listeners that do the same within events, and a system that fails.

#include "chance.h"
#include "world.h"
#include <deque>

enum class Sort { maker, ender, other };

class Hostile {
  public:
    // failing: whether the system fails now and then.
    Hostile(World& walked, unsigned seed, bool failing);

    // Whether lists and menus get items, lists are used, and controls get and lose the focus, as
    // soon as they are made.
    bool usesWhatItMakes = false;

    Step next(int number);

    // That end all that is left, in any order.
    Steps endings(int number);

  private:
    Step choose(int number);
    Step chooseInput();
    Step chooseNative(int number);
    std::optional<Step> deal();
    std::optional<Step> dealOf(std::vector<const KnownNative*>* deck, Sort sort);
    std::optional<Step> stepOf(const KnownNative& native);
    std::optional<Argument> handle(const CheckedParameter& parameter);
    Argument plain(const KnownNative& native, size_t index, const std::vector<Argument>& before);
    Argument numberOf(const KnownNative& native, const std::string& parameter);
    Argument textOf();
    Argument bytesFor(const std::string& native);
    void follow(int number, const KnownNative& native);
    void fill(int made, int kind);
    void moveFocus(int made);
    void switchMode(int list);
    void useText(int text);
    void fillAndUse(int list, const std::string& ownClass);
    Argument argumentOfList(const KnownNative& native, size_t index,
                            const std::vector<Argument>& before);
    void decorate(Step* step);

    World& world;
    Chance chance;
    bool systemFails;
    std::deque<Step> following; // what makes a new widget show and listen
    // Of what is left to be dealt, before any native comes again.
    std::vector<const KnownNative*> makers, enders, others;
};
