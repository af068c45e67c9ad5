#pragma once
// What natives and the system tell of an object: "items", "selection", "bounds". Lists of several
// have each of them ended by a '|'.

#include "player.h"

using Properties = std::map<std::string, std::string>;
using Items = std::vector<std::string>;

// Of whatever there is to tell; nothing of a control whose window has gone.
Properties propertiesOf(Player& player, const Object& object);

// Whether the object is of the kind that the record is for, "ListRecord".
bool is(const Object& object, const char* record);

// Up to the first character 0, with a '?' for each character that is not ASCII.
std::string plain(const std::u16string& text);

// What menus name their items by.
std::string idOfItem(jint item);

std::string join(const Items& items);
std::string join(const std::vector<jint>& numbers);
Items split(const std::string& all);
std::vector<jint> numbersOf(const std::string& all);
