#include "kinds.h"
#include <algorithm>
#include <cctype>

static constexpr jint bothBars = 0x30000, titled = 0x20;

static Kind control(const char* name, const char* native, jint style = 0) {
    return {name, native, Role::control,
            [=](Stage& stage) { return stage.make(native, stage.parent, style); }};
}

static jint filledList(Stage& stage) {
    jint list = stage.make("List_New", stage.parent, 0);
    for (jint i = 0; i < 20; ++i) stage.add("List_Add", list, i);
    return list;
}

static jint filledChoice(Stage& stage) {
    jint choice = stage.make("Choice_New", stage.parent);
    for (jint i = 0; i < 3; ++i) stage.add("Choice_AddItem", choice, i);
    return choice;
}

static jint ownBar(Stage& stage) {
    jint bar = stage.vertical(stage.parent);
    stage.tell("Adjustable_SetMaximum", bar, jint(100));
    stage.tell("Adjustable_SetVisibleAmount", bar, jint(10));
    return bar;
}

static jint shownShell(Stage& stage) { return stage.shell; }

static jint childShell(Stage& stage) {
    jint child = stage.make("Shell_NewChild", stage.shell, titled | bothBars);
    stage.place(child, {20, 40, 200, 240});
    stage.show(child);
    return child;
}

static Kind item(const char* name, const char* native) {
    return {name, native, Role::item, [=](Stage& stage) {
                stage.menu = stage.make("PopupMenu_New", stage.parent);
                return stage.item(native, stage.menu);
            }};
}

const std::vector<Kind>& kinds() {
    static const std::vector<Kind> all = {
        {"Shell", "Shell_New", Role::shell, shownShell},
        {"ChildShell", "Shell_NewChild", Role::shell, childShell},
        control("Composite", "Composite_New", bothBars),
        control("PushButton", "PushButton_New"),
        control("Checkbox", "Checkbox_New"),
        control("RadioButton", "RadioButton_New"),
        control("Label", "Label_New"),
        control("TextField", "TextField_New"),
        control("TextArea", "TextArea_New", bothBars),
        {"List", "List_New", Role::control, filledList},
        {"Choice", "Choice_New", Role::control, filledChoice},
        {"Scrollbar", "Scrollbar_New", Role::control,
         [](Stage& stage) { return stage.make("Scrollbar_New", stage.parent); }},
        {"OwnBar", "Scrollable_GetVerticalBar", Role::ownBar, ownBar},
        item("PushMenuItem", "PushMenuItem_New"),
        item("CascadeMenuItem", "CascadeMenuItem_New"),
        item("StateMenuItem", "StateMenuItem_New"),
    };
    return all;
}

const std::set<std::string>& kindsThatFireNothing() {
    static const std::set<std::string> all = {
        "Color_New", "Cursor_New",  "Display_New",   "DropDownMenu_New", "FileDialog_New",
        "Font_New",  "MenuBar_New", "PopupMenu_New", "Sound_New",        "SeparatorItem_New",
    };
    return all;
}

static bool isMadeFor(const Kind& kind, const Provocation& provocation) {
    const auto& roles = provocation.roles;
    return std::find(roles.begin(), roles.end(), kind.role) != roles.end();
}

static std::string identifier(std::string text) {
    for (char& letter : text)
        if (!isalnum(letter)) letter = '_';
    return text;
}

void forEachProvocation(
    const std::function<void(const Kind&, const Provocation&, const std::string& name)>& work) {
    for (const Kind& kind : kinds())
        for (const Provocation& provocation : provocations())
            if (isMadeFor(kind, provocation))
                work(kind, provocation,
                     identifier(std::string(kind.name) + "_" + provocation.name));
}
