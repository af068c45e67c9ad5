#include "laws.h"
#include <algorithm>
#include <sstream>

// How the items of a list stand in one property: each ended by it.
static constexpr char end = '|';

using Items = std::vector<std::string>;

static std::string plain(const std::u16string& text) {
    std::string told;
    for (char16_t character : text) {
        if (!character) break;
        told += character < 0x7F ? static_cast<char>(character) : '?';
    }
    return told;
}

static std::string join(const Items& items) {
    std::string all;
    for (const std::string& item : items) all += item + end;
    return all;
}

static Items split(const std::string& all) {
    Items items;
    std::istringstream in(all);
    for (std::string item; std::getline(in, item, end);) items.push_back(item);
    return items;
}

static std::string join(const std::vector<jint>& numbers) {
    Items items;
    for (jint one : numbers) items.push_back(std::to_string(one));
    return join(items);
}

static std::string itemsOf(HWND window, UINT count, UINT length, UINT read) {
    Items items;
    LRESULT number = SendMessageW(window, count, 0, 0);
    for (LRESULT i = 0; i < number; ++i) {
        std::u16string text(SendMessageW(window, length, i, 0) + 1, u'\0');
        SendMessageW(window, read, i, reinterpret_cast<LPARAM>(text.data()));
        items.push_back(plain(text));
    }
    return join(items);
}

static bool is(const Object& object, const char* record) {
    return isA(object.kind, kindOf(record));
}

void Laws::addWindow(const Object& object, HWND window, Properties* properties) {
    Properties& all = *properties;
    auto handle = jint(object.handle);
    JNIEnv* env = player.vm.env();
    LONG style = GetWindowLongW(window, GWL_STYLE);
    all["shown"] = style & WS_VISIBLE ? "yes" : "no";
    // Modal shells enable and disable the others, and the screen bounds them all. How high a choice
    // is its lines say.
    bool isShell = is(object, "ShellRecord");
    if (!isShell) all["enabled"] = IsWindowEnabled(window) ? "yes" : "no";
    if (!isShell && !is(object, "ChoiceRecord"))
        all["bounds"] = join(player.vm.ints(OS::Control_GetBounds(env, handle)));
    if (is(object, "ListRecord")) {
        all["items"] = itemsOf(window, LB_GETCOUNT, LB_GETTEXTLEN, LB_GETTEXT);
        all["selection"] = join(player.vm.ints(OS::List_GetSelectionIndices(env, handle)));
        all["multiple"] = style & LBS_MULTIPLESEL ? "yes" : "no";
    }
    if (is(object, "ChoiceRecord")) {
        all["items"] = itemsOf(window, CB_GETCOUNT, CB_GETLBTEXTLEN, CB_GETLBTEXT);
        all["selected"] = std::to_string(OS::Choice_GetSelectedItemIndex(env, handle));
    }
    if (is(object, "TextRecord"))
        all["text"] = plain(player.vm.text(OS::AbstractTextComponent_GetText(env, handle)));
}

Properties Laws::propertiesOf(const Object& object) {
    Properties all;
    auto handle = jint(object.handle);
    JNIEnv* env = player.vm.env();
    if (is(object, "ControlRecord") && !is(object, "OwnBarRecord")) {
        HWND window = Player::windowOf(handle);
        if (!IsWindow(window)) return all;
        addWindow(object, window, &all);
    }
    if (is(object, "ScrollbarRecord")) {
        all["minimum"] = std::to_string(OS::Adjustable_GetMinimum(env, handle));
        all["maximum"] = std::to_string(OS::Adjustable_GetMaximum(env, handle));
        all["value"] = std::to_string(OS::Adjustable_GetValue(env, handle));
    }
    if (is(object, "ColorRecord"))
        all["color"] = join({OS::Color_GetRed(env, handle), OS::Color_GetGreen(env, handle),
                             OS::Color_GetBlue(env, handle)});
    if (is(object, "ImageRecord")) {
        all["bounds"] = join(player.vm.ints(OS::Image_GetBounds(env, handle)));
        all["depth"] = std::to_string(OS::Image_GetDepth(env, handle));
    }
    if (is(object, "FontRecord")) {
        all["font"] = join({OS::Font_GetSizeInPoints(env, handle), OS::Font_GetStyle(env, handle),
                            OS::Font_GetAscent(env, handle)});
    }
    return all;
}

std::map<uint32_t, Properties> Laws::lookAtAll() {
    std::map<uint32_t, Properties> all;
    for (int step : player.world.allOf(anyKind)) {
        Object object = *player.world.find(step);
        all[object.handle] = propertiesOf(object);
    }
    return all;
}

void Laws::look() { before = lookAtAll(); }

namespace {

struct Law {
    const char* native;
    std::vector<const char*> changes; // in a way that the law does not foretell
    // What it foretells: makes what was before what must be now.
    void (*foretell)(const Step& step, Properties* all);
};

} // namespace

static std::string yesOrNo(const Argument& argument) { return argument.value ? "yes" : "no"; }

static bool isIndex(jint index, const Items& items) {
    return index >= 0 && index < jint(items.size());
}

static void foretellAdded(const Step& step, Properties* all) {
    Items items = split((*all)["items"]);
    jint index = step.arguments[2].value;
    if (index > jint(items.size())) return;
    items.insert(index < 0 ? items.end() : items.begin() + index, plain(step.arguments[1].text));
    (*all)["items"] = join(items);
}

// A choice tells of no item that it is to remove and has not, at some indices.
static void foretellRemoved(const Step& step, Properties* all) {
    Items items = split((*all)["items"]);
    jint index = step.arguments[1].value;
    if (isIndex(index, items)) items.erase(items.begin() + index);
    (*all)["items"] = join(items);
}

static void foretellReplaced(const Step& step, Properties* all) {
    Items items = split((*all)["items"]);
    jint index = step.arguments[1].value;
    if (isIndex(index, items)) items[index] = plain(step.arguments[2].text);
    (*all)["items"] = join(items);
}

static void foretellNoItems(const Step&, Properties* all) {
    (*all)["items"] = "";
    if (all->count("selection")) (*all)["selection"] = "";
    if (all->count("selected")) (*all)["selected"] = "-1";
}

static void select(jint index, Properties* all) {
    if (!isIndex(index, split((*all)["items"]))) return;
    std::set<jint> chosen = {index};
    if ((*all)["multiple"] == "yes")
        for (const std::string& other : split((*all)["selection"])) chosen.insert(stoi(other));
    (*all)["selection"] = join(std::vector<jint>(chosen.begin(), chosen.end()));
}

static void foretellSelected(const Step& step, Properties* all) {
    select(step.arguments[1].value, all);
}

static void foretellAllSelected(const Step& step, Properties* all) {
    jint count = std::min(step.arguments[2].value, step.arguments[1].value);
    if (step.arguments[1].type == Argument::Type::none) count = 0;
    if (step.arguments[2].value > 1 && (*all)["multiple"] == "no") return;
    std::vector<jint> indices = intsOf(step.arguments[1]);
    for (jint i = 0; i < count; ++i) select(indices[i], all);
}

static void foretellDeselected(const Step& step, Properties* all) {
    Items chosen = split((*all)["selection"]);
    std::erase(chosen, std::to_string(step.arguments[1].value));
    (*all)["selection"] = join(chosen);
}

static void foretellMode(const Step& step, Properties* all) {
    (*all)["multiple"] = yesOrNo(step.arguments[1]);
    Items chosen = split((*all)["selection"]);
    if (!step.arguments[1].value && chosen.size() > 1) chosen.resize(1);
    (*all)["selection"] = join(chosen);
}

static void foretellText(const Step& step, Properties* all) {
    std::string text = plain(step.arguments[1].text);
    bool isOneLine = text.find_first_of("\r\n") == std::string::npos;
    if (isOneLine) (*all)["text"] = text;
}

static void foretellChosen(const Step& step, Properties* all) {
    (*all)["selected"] = std::to_string(step.arguments[1].value);
}

static void foretellShown(const Step& step, Properties* all) {
    (*all)["shown"] = yesOrNo(step.arguments[1]);
}

static void foretellEnabled(const Step& step, Properties* all) {
    if (all->count("enabled")) (*all)["enabled"] = yesOrNo(step.arguments[1]);
}

// Others the system cuts.
static void foretellBounds(const Step& step, Properties* all) {
    constexpr jint widest = 1000;
    std::vector<jint> bounds;
    for (size_t i = 1; i < step.arguments.size(); ++i) bounds.push_back(step.arguments[i].value);
    for (jint one : bounds)
        if (one < 0 || one > widest) return;
    if (all->count("bounds")) (*all)["bounds"] = join(bounds);
}

static void foretellMinimum(const Step& step, Properties* all) {
    if (all->count("minimum")) (*all)["minimum"] = std::to_string(step.arguments[1].value);
}

static void foretellMaximum(const Step& step, Properties* all) {
    if (all->count("maximum")) (*all)["maximum"] = std::to_string(step.arguments[1].value);
}

static const Law* lawOf(const std::string& native) {
    static const Law laws[] = {
        {"List_Add", {"selection"}, foretellAdded},
        {"List_Remove", {"selection"}, foretellRemoved},
        {"List_SetItem", {}, foretellReplaced},
        {"List_RemoveAll", {}, foretellNoItems},
        {"List_Select", {}, foretellSelected},
        {"List_SelectIndices", {}, foretellAllSelected},
        {"List_Deselect", {}, foretellDeselected},
        {"List_SetMultipleMode", {}, foretellMode},
        {"Choice_AddItem", {"selected"}, foretellAdded},
        {"Choice_RemoveItem", {"selected"}, foretellRemoved},
        {"Choice_RemoveAllItems", {}, foretellNoItems},
        {"Choice_SelectItem", {}, foretellChosen},
        {"AbstractTextComponent_SetText", {"text"}, foretellText},
        {"AbstractTextComponent_Replace", {"text"}, nullptr},
        {"Control_SetVisible", {}, foretellShown},
        {"Control_SetEnabled", {}, foretellEnabled},
        {"Control_SetBounds", {"bounds"}, foretellBounds},
        // A bar that has nothing to scroll is off.
        {"Adjustable_SetMinimum", {"value", "maximum", "enabled"}, foretellMinimum},
        {"Adjustable_SetMaximum", {"value", "minimum", "enabled"}, foretellMaximum},
        {"Scrollbar_SetOrientation", {"value"}, nullptr}, // which the new window cuts
        {"Adjustable_SetValue", {"value"}, nullptr},
        {"Adjustable_SetVisibleAmount", {"value", "enabled"}, nullptr},
    };
    for (const Law& law : laws)
        if (native == law.native) return &law;
    return nullptr;
}

// An object that a step reports an error of is not looked at: how much was done nobody says.
void Laws::check(const Step& step) {
    bool hasObject = !step.arguments.empty() && step.arguments[0].type == Argument::Type::object;
    std::optional<Object> first;
    if (hasObject) first = player.world.find(step.arguments[0].value);
    // The window of a scrollable's own bar is the scrollable's.
    bool isOfWindow = step.verb.starts_with("Control_");
    if (first && isOfWindow && is(*first, "OwnBarRecord")) first->handle = first->owner;
    const Law* law = lawOf(step.verb);
    std::map<uint32_t, Properties> after = lookAtAll();
    for (auto& [handle, expected] : before) {
        if (!after.count(handle) || after[handle].empty() || expected.empty()) continue;
        Properties found = after[handle];
        bool isFirst = first && first->handle == handle;
        if (isFirst && player.hasReported) continue;
        if (isFirst && law) {
            for (const char* change : law->changes)
                if (found.count(change)) expected[change] = found[change];
            if (law->foretell) law->foretell(step, &expected);
        }
        EXPECT_EQ(found, expected) << "after " << toLine(step) << (isFirst ? "" : ", of another");
    }
}
