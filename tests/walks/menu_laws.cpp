// Menus and their items. What a command bar shows stands in it, not in a menu of the system's.

#include "laws.h"
#include <algorithm>

static void foretellNewItem(const Call& call, Properties* all) {
    Items order = split((*all)["order"]);
    jint index = call.arguments[1].value;
    bool isPlace = index >= 0 && index < jint(order.size());
    order.insert(isPlace ? order.begin() + index : order.end(), idOfItem(call.result));
    (*all)["order"] = join(order);
}

static void foretellItemEnabled(const Call& call, Properties* all) {
    (*all)["enabled"] = yesOrNo(call.arguments[1]);
}

static void foretellChecked(const Call& call, Properties* all) {
    (*all)["checked"] = yesOrNo(call.arguments[1]);
}

static void foretellLabel(const Call& call, Properties* all) {
    std::string label = plain(call.arguments[1].text);
    std::erase(label, '&');
    std::string accelerator = plain(call.arguments[2].text);
    bool isInBar = (*all)["place"] == "bar";
    if (!isInBar && !accelerator.empty()) label += '\t' + accelerator;
    (*all)["label"] = label;
}

// The item is made anew around its label: nothing else of it stays.
static void renew(const std::string& opens, Properties* item) {
    constexpr size_t longestLabel = 127;
    (*item)["opens"] = opens;
    (*item)["enabled"] = "yes";
    (*item)["label"] = (*item)["label"].substr(0, longestLabel);
}

static void foretellSubMenu(const Call& call, Properties* all) {
    if ((*all)["place"] != "bar") renew(call.second ? call.second->at("handle") : "", all);
}

static void foretellGone(const Properties& gone, Properties* other) {
    if (gone.count("id") && other->count("order")) {
        Items order = split((*other)["order"]);
        std::erase(order, gone.at("id"));
        (*other)["order"] = join(order);
    }
    bool isShown =
        gone.count("handle") && other->count("opens") && other->at("opens") == gone.at("handle");
    if (isShown) renew("", other);
}

const std::vector<Law>& menuLaws() {
    static const std::vector<Law> laws = {
        {"PushMenuItem_New", {}, foretellNewItem},
        {"SeparatorItem_New", {}, foretellNewItem},
        {"CascadeMenuItem_New", {}, foretellNewItem},
        {"StateMenuItem_New", {}, foretellNewItem},
        {"AbstractMenuItem_SetEnabled", {}, foretellItemEnabled},
        {"StateMenuItem_SetSelection", {}, foretellChecked},
        {"LabeledMenuItem_SetText", {}, foretellLabel},
        {"CascadeMenuItem_SetMenu", {}, foretellSubMenu},
        {.native = "Widget_Dispose", .foretellOther = foretellGone},
    };
    return laws;
}
