#include "kinds.h"
#include <algorithm>
#include <cctype>

static constexpr jint bothBars = 0x30000, titled = 0x20;

static Kind control(const char* name, const Maker& native, jint style = 0) {
    return {name, native.name, Role::control,
            [=](Stage& stage) { return stage.make(native, stage.parent, style); }};
}

static jint filledList(Stage& stage) {
    jint list = stage.make(OS::List_New, stage.parent, 0);
    for (jint i = 0; i < 20; ++i) stage.add(OS::List_Add, list, i);
    return list;
}

static jint filledChoice(Stage& stage) {
    jint choice = stage.make(OS::Choice_New, stage.parent);
    for (jint i = 0; i < 3; ++i) stage.add(OS::Choice_AddItem, choice, i);
    return choice;
}

static jint ownBar(Stage& stage) {
    jint bar = stage.vertical(stage.parent);
    stage.tell(OS::Adjustable_SetMaximum, bar, 100);
    stage.tell(OS::Adjustable_SetVisibleAmount, bar, 10);
    return bar;
}

static jint shownShell(Stage& stage) { return stage.shell; }

static jint childShell(Stage& stage) {
    jint child = stage.make(OS::Shell_NewChild, stage.shell, titled | bothBars);
    stage.place(child, {20, 40, 200, 240});
    stage.show(child);
    return child;
}

template <class Signature, class... Arguments>
static Kind item(const char* name, const Native<Signature>& native, Arguments... arguments) {
    return {name, native.name, Role::item, [=](Stage& stage) {
                stage.menu = stage.make(OS::PopupMenu_New, stage.parent);
                return stage.make(native, stage.menu, arguments...);
            }};
}

const std::vector<Kind>& kinds() {
    static const std::vector<Kind> all = {
        {"Shell", OS::Shell_New.name, Role::shell, shownShell},
        {"ChildShell", OS::Shell_NewChild.name, Role::shell, childShell},
        control("Composite", OS::Composite_New, bothBars),
        control("PushButton", OS::PushButton_New),
        control("Checkbox", OS::Checkbox_New),
        control("RadioButton", OS::RadioButton_New),
        control("Label", OS::Label_New),
        control("TextField", OS::TextField_New),
        control("TextArea", OS::TextArea_New, bothBars),
        {"List", OS::List_New.name, Role::control, filledList},
        {"Choice", OS::Choice_New.name, Role::control, filledChoice},
        {"Scrollbar", OS::Scrollbar_New.name, Role::control,
         [](Stage& stage) { return stage.make(OS::Scrollbar_New, stage.parent); }},
        {"OwnBar", OS::Scrollable_GetVerticalBar.name, Role::ownBar, ownBar},
        item("PushMenuItem", OS::PushMenuItem_New, 0),
        item("CascadeMenuItem", OS::CascadeMenuItem_New, 0),
        item("StateMenuItem", OS::StateMenuItem_New, 0, 0),
    };
    return all;
}

const std::set<std::string>& kindsThatFireNothing() {
    static const std::set<std::string> all = {
        OS::Color_New.name,         OS::Cursor_New.name,     OS::Display_New.name,
        OS::DropDownMenu_New.name,  OS::FileDialog_New.name, OS::Font_New.name,
        OS::MenuBar_New.name,       OS::PopupMenu_New.name,  OS::Sound_New.name,
        OS::SeparatorItem_New.name,
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
