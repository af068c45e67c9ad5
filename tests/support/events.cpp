#include "events.h"
#include <algorithm>

static bool isOfAny(const std::string& event, const std::vector<std::string>& methods) {
    return std::any_of(methods.begin(), methods.end(),
                       [&](const std::string& method) { return fired::isOf(event, method); });
}

Events fired::only(Events events, const std::vector<std::string>& methods) {
    std::erase_if(events, [&](const std::string& event) { return !isOfAny(event, methods); });
    return events;
}

Events fired::without(Events events, const std::vector<std::string>& methods) {
    std::erase_if(events, [&](const std::string& event) { return isOfAny(event, methods); });
    return events;
}
