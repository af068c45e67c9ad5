// What all controls have, and bars.

#include "laws.h"

static void foretellShown(const Call& call, Properties* all) {
    (*all)["shown"] = yesOrNo(call.arguments[1]);
}

static void foretellEnabled(const Call& call, Properties* all) {
    for (const char* enabled : {"enabled", "barEnabled"})
        if (all->count(enabled)) (*all)[enabled] = yesOrNo(call.arguments[1]);
}

// Others the system cuts.
static void foretellBounds(const Call& call, Properties* all) {
    constexpr jint widest = 1000;
    std::vector<jint> bounds;
    for (size_t i = 1; i < call.arguments.size(); ++i) bounds.push_back(call.arguments[i].value);
    for (jint one : bounds)
        if (one < 0 || one > widest) return;
    if (all->count("bounds")) (*all)["bounds"] = join(bounds);
}

static void foretellMinimum(const Call& call, Properties* all) {
    if (all->count("minimum")) (*all)["minimum"] = std::to_string(call.arguments[1].value);
}

static void foretellMaximum(const Call& call, Properties* all) {
    if (all->count("maximum")) (*all)["maximum"] = std::to_string(call.arguments[1].value);
}

const std::vector<Law>& controlLaws() {
    static const std::vector<Law> laws = {
        {"Control_SetVisible", {"value", "barEnabled"}, foretellShown},
        {"Control_SetEnabled", {"value"}, foretellEnabled},
        {"Control_SetBounds", {"bounds"}, foretellBounds},
        // A bar that has nothing to scroll is off.
        {"Adjustable_SetMinimum", {"value", "maximum", "barEnabled"}, foretellMinimum},
        {"Adjustable_SetMaximum", {"value", "minimum", "barEnabled"}, foretellMaximum},
        // The new window cuts the value, and is on when it has something to scroll.
        {"Scrollbar_SetOrientation", {"value", "barEnabled"}, nullptr},
        {"Adjustable_SetValue", {"value"}, nullptr},
        {"Adjustable_SetVisibleAmount", {"value", "barEnabled"}, nullptr},
    };
    return laws;
}
