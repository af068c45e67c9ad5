// Lists and choices: what is selected goes with its item, wherever others come and go.

#include "laws.h"
#include <algorithm>

static bool isIndex(jint index, const Items& items) {
    return index >= 0 && index < jint(items.size());
}

static bool isIndex(jint index, const Properties& all) {
    return isIndex(index, split(all.at("items")));
}

// Each selected item has the place that the change gives it; -1: none.
template <class Place>
static void movePlaces(Properties* all, Place placeOf) {
    std::vector<jint> moved;
    for (jint selected : numbersOf((*all)["selection"]))
        if (jint place = placeOf(selected); place >= 0) moved.push_back(place);
    (*all)["selection"] = join(moved);
}

static void foretellAdded(const Call& call, Properties* all) {
    Items items = split((*all)["items"]);
    jint index = call.arguments[2].value;
    if (index > jint(items.size())) return;
    if (index < 0) index = jint(items.size());
    items.insert(items.begin() + index, plain(call.arguments[1].text));
    (*all)["items"] = join(items);
    movePlaces(all, [=](jint place) -> jint { return place < index ? place : place + 1; });
}

// A choice tells of no item that it is to remove and has not, at some indices.
static void foretellRemoved(const Call& call, Properties* all) {
    Items items = split((*all)["items"]);
    jint index = call.arguments[1].value;
    if (!isIndex(index, items)) return;
    items.erase(items.begin() + index);
    (*all)["items"] = join(items);
    movePlaces(all, [=](jint place) -> jint {
        if (place == index) return -1;
        return place < index ? place : place - 1;
    });
}

static void foretellReplaced(const Call& call, Properties* all) {
    Items items = split((*all)["items"]);
    jint index = call.arguments[1].value;
    if (isIndex(index, items)) items[index] = plain(call.arguments[2].text);
    (*all)["items"] = join(items);
}

static void foretellNoItems(const Call&, Properties* all) {
    (*all)["items"] = (*all)["selection"] = "";
}

static void select(jint index, Properties* all) {
    if (!isIndex(index, *all)) return;
    std::set<jint> chosen = {index};
    if ((*all)["multiple"] == "yes")
        for (jint other : numbersOf((*all)["selection"])) chosen.insert(other);
    (*all)["selection"] = join(std::vector<jint>(chosen.begin(), chosen.end()));
}

static void foretellSelected(const Call& call, Properties* all) {
    select(call.arguments[1].value, all);
}

static void foretellAllSelected(const Call& call, Properties* all) {
    jint count = std::min(call.arguments[2].value, call.arguments[1].value);
    if (call.arguments[1].type == Argument::Type::none) count = 0;
    if (call.arguments[2].value > 1 && (*all)["multiple"] == "no") return;
    std::vector<jint> indices = intsOf(call.arguments[1]);
    for (jint i = 0; i < count; ++i) select(indices[i], all);
}

static void foretellDeselected(const Call& call, Properties* all) {
    jint index = call.arguments[1].value;
    movePlaces(all, [=](jint place) -> jint { return place == index ? -1 : place; });
}

static void foretellMode(const Call& call, Properties* all) {
    (*all)["multiple"] = yesOrNo(call.arguments[1]);
    Items chosen = split((*all)["selection"]);
    if (!call.arguments[1].value && chosen.size() > 1) chosen.resize(1);
    (*all)["selection"] = join(chosen);
}

static void foretellChosen(const Call& call, Properties* all) {
    (*all)["selection"] = join(std::vector<jint>{call.arguments[1].value});
}

static jint firstSelected(const Call&, const Properties& all) {
    std::vector<jint> selection = numbersOf(all.at("selection"));
    return selection.empty() ? -1 : selection.front();
}

static jint countSelected(const Call&, const Properties& all) {
    return jint(numbersOf(all.at("selection")).size());
}

static jint whetherSelected(const Call& call, const Properties& all) {
    std::vector<jint> selection = numbersOf(all.at("selection"));
    return std::count(selection.begin(), selection.end(), call.arguments[1].value) != 0;
}

const std::vector<Law>& listLaws() {
    static const std::vector<Law> laws = {
        {"List_Add", {}, foretellAdded},
        {"List_Remove", {}, foretellRemoved},
        {"List_SetItem", {}, foretellReplaced},
        {"List_RemoveAll", {}, foretellNoItems},
        {"List_Select", {}, foretellSelected},
        {"List_SelectIndices", {}, foretellAllSelected},
        {"List_Deselect", {}, foretellDeselected},
        {"List_SetMultipleMode", {}, foretellMode},
        {.native = "List_IsSelected", .answer = whetherSelected},
        {.native = "List_GetSelectionCount", .answer = countSelected},
        {.native = "List_GetSelectionIndex", .answer = firstSelected},
        {"Choice_AddItem", {}, foretellAdded},
        {"Choice_RemoveItem", {}, foretellRemoved},
        {"Choice_RemoveAllItems", {}, foretellNoItems},
        {"Choice_SelectItem", {}, foretellChosen},
        {.native = "Choice_GetSelectedItemIndex", .answer = firstSelected},
    };
    return laws;
}
