#include "rows.h"

// Dialogs and menus that wait for a person.

static BOOL CALLBACK cancelDialog(HWND window, LPARAM) {
    wchar_t name[16];
    GetClassNameW(window, name, std::size(name));
    bool isDialog = lstrcmpW(name, L"#32770") == 0 && IsWindowVisible(window);
    if (isDialog) PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
    return !isDialog;
}
static UINT_PTR leaving;
static void CALLBACK leaveDialog(HWND, UINT, UINT_PTR, DWORD) {
    EnumThreadWindows(GetCurrentThreadId(), cancelDialog, 0);
}

static void giveEscape(Scene&) {
    keybd_event(VK_ESCAPE, 0, 0, 0);
    keybd_event(VK_ESCAPE, 0, KEYEVENTF_KEYUP, 0);
}

void addWaiting(Rows* rows) {
    for (const auto& [state, style] :
         {std::pair<const char*, jint>{"cancelled", 0}, {"cancelled while it saves", styleSave}}) {
        rows->push_back(
            {.native = OS::FileDialog_Open.name,
             .state = state,
             .before =
                 [style = style](Scene& scene) {
                     scene.made =
                         jint(scene.tell(OS::FileDialog_New, scene.the(Kind::shell), style));
                     leaving = SetTimer(nullptr, 0, USER_TIMER_MINIMUM, leaveDialog);
                 },
             .act = [](Scene& scene) { return scene.tell(OS::FileDialog_Open, scene.made); },
             .after =
                 [](Scene& scene, DWORD) {
                     KillTimer(nullptr, leaving);
                     scene.dispose(scene.made);
                 }});
    }
    rows->push_back({.native = OS::PopupMenu_Show.name,
                     .state = "left",
                     .arrange =
                         [](Scene& scene) {
                             jint menu = scene.the(Kind::popupMenu);
                             auto item = jint(scene.tell(OS::PushMenuItem_New, menu, 0));
                             scene.tell(OS::LabeledMenuItem_SetText, item,
                                        scene.vm.newString(u"text"), scene.vm.newString(u"key"));
                             scene.tell(OS::LabeledMenuItem_SetFont, item, scene.the(Kind::font));
                         },
                     .before = giveEscape,
                     .act =
                         [](Scene& scene) {
                             return scene.tell(OS::PopupMenu_Show, scene.the(Kind::popupMenu), 10,
                                               10);
                         },
                     .after = nothing});
}

void addLists(Rows* rows) {
    auto several = [](Scene& scene) {
        jint list = scene.the(Kind::list);
        scene.tell(OS::List_SetMultipleMode, list, true);
        for (jint selected : {0, 2}) scene.tell(OS::List_Select, list, selected);
    };
    auto selected = [](Scene& scene) { scene.tell(OS::List_Select, scene.the(Kind::list), 1); };
    auto add = [&](const char* state, const std::function<void(Scene&)>& arrange) {
        addState(rows, state, arrange, OS::List_Remove, Kind::list, 1);
        addState(rows, state, arrange, OS::List_RemoveAll, Kind::list);
        addState(rows, state, arrange, OS::List_Deselect, Kind::list, 2);
        addState(rows, state, arrange, OS::List_Select, Kind::list, 2);
        addState(rows, state, arrange, OS::List_IsSelected, Kind::list, 2);
        addState(rows, state, arrange, OS::List_GetSelectionCount, Kind::list);
        addState(rows, state, arrange, OS::List_GetSelectionIndex, Kind::list);
        addState(rows, state, arrange, OS::List_GetSelectionIndices, Kind::list);
        addState(rows, state, arrange, OS::List_SetMultipleMode, Kind::list, false);
        rows->push_back({.native = OS::List_SetItem.name, .state = state, .arrange = arrange});
        rows->push_back(
            {.native = OS::List_SelectIndices.name, .state = state, .arrange = arrange});
    };
    add("one item selected", selected);
    add("several items selected", several);
}

void addTexts(Rows* rows) {
    auto selected = [](Scene& scene) {
        jint area = scene.the(Kind::textArea);
        scene.tell(OS::AbstractTextComponent_SetText, area,
                   scene.vm.newString(u"some\ntext of\nlines"));
        scene.tell(OS::AbstractTextComponent_SetSelection, area, 2, 7);
    };
    const char* state = "text area with selected lines";
    addState(rows, state, selected, OS::AbstractTextComponent_GetText, Kind::textArea);
    addState(rows, state, selected, OS::AbstractTextComponent_GetSelection, Kind::textArea);
    addState(rows, state, selected, OS::AbstractTextComponent_GetSelectionText, Kind::textArea);
    addState(rows, state, selected, OS::AbstractTextComponent_GetCharCount, Kind::textArea);
    addState(rows, state, selected, OS::AbstractTextComponent_SetSelection, Kind::textArea, 1, 9);
    addState(rows, state, selected, OS::AbstractTextComponent_SetCaretPosition, Kind::textArea, 9);
    rows->push_back({.native = OS::AbstractTextComponent_Replace.name,
                     .state = state,
                     .arrange = selected,
                     .kind = Kind::textArea});
    addState(
        rows, "text field with an echo character",
        [](Scene& scene) {
            scene.tell(OS::AbstractTextComponent_SetEchoChar, scene.the(Kind::textField), u'*');
        },
        OS::AbstractTextComponent_SetEchoChar, Kind::textField, u'\0');
}

void addShells(Rows* rows) {
    static const std::pair<const char*, jint> styles[] = {
        {"titled", styleTitle | styleCloseBox}, {"scrollable", bothBars},   {"modal", styleModal},
        {"of a dialog's kind", 0x10},           {"of another kind", 0x100},
    };
    for (const auto& [name, style] : styles) {
        addState(rows, name, nullptr, OS::Shell_New, Kind::display, style);
        addState(rows, name, nullptr, OS::Shell_NewChild, Kind::shell, style);
    }
    auto makeShown = [](jint style) {
        return [=](Scene& scene) {
            scene.the(Kind::shell);
            scene.made = shownShell(scene, style);
        };
    };
    auto endMadeShell = [](Scene& scene, DWORD) { scene.dispose(scene.made); };
    for (auto [style, name] : {std::pair<jint, const char*>{styleTitle, "shown child shell"},
                               {styleModal, "shown modal shell"}})
        rows->push_back(
            {.native = OS::Control_SetVisible.name,
             .state = std::string("hiding a ") + name,
             .before = makeShown(style),
             .act =
                 [](Scene& scene) { return scene.tell(OS::Control_SetVisible, scene.made, false); },
             .after = endMadeShell});
    addState(
        rows, "restoring",
        [](Scene& scene) { scene.tell(OS::Shell_SetMinimized, scene.the(Kind::shell), true); },
        OS::Shell_SetMinimized, Kind::shell, false);
    addState(rows, "not maximized", nullptr, OS::Shell_SetMaximized, Kind::shell, false);
    addState(
        rows, "none for one",
        [](Scene& scene) {
            scene.tell(OS::Shell_SetMenuBar, scene.the(Kind::shell), scene.the(Kind::menuBar));
        },
        OS::Shell_SetMenuBar, Kind::shell, 0);
}

void addMenus(Rows* rows) {
    rows->push_back(
        {.native = OS::CascadeMenuItem_New.name, .state = "menu bar", .kind = Kind::menuBar});
    for (const auto& [state, known] : {std::pair{"menu bar", Kind::menuBar},
                                       {"drop-down menu", Kind::dropDownMenu},
                                       {"pop-up menu", Kind::popupMenu}}) {
        Kind kind = known;
        std::string in = std::string("in a ") + state;
        auto own = [&](const std::string& native, const std::function<DWORD(Scene&)>& act) {
            rows->push_back({.native = native, .state = in, .act = act});
        };
        own(OS::PushMenuItem_New.name,
            [=](Scene& scene) { return scene.tell(OS::PushMenuItem_New, scene.the(kind), 0); });
        own(OS::SeparatorItem_New.name,
            [=](Scene& scene) { return scene.tell(OS::SeparatorItem_New, scene.the(kind), 0); });
        own(OS::CascadeMenuItem_New.name,
            [=](Scene& scene) { return scene.tell(OS::CascadeMenuItem_New, scene.the(kind), 0); });
        own(OS::StateMenuItem_New.name, [=](Scene& scene) {
            return scene.tell(OS::StateMenuItem_New, scene.the(kind), 0, jint(styleRadioItem));
        });
        own(OS::CascadeMenuItem_SetMenu.name, nullptr);
        rows->back().before = [=](Scene& scene) {
            scene.owner = jint(scene.tell(OS::CascadeMenuItem_New, scene.the(kind), 0));
            scene.made = jint(scene.tell(OS::DropDownMenu_New, scene.the(Kind::shell)));
        };
        rows->back().act = [](Scene& scene) {
            return scene.tell(OS::CascadeMenuItem_SetMenu, scene.owner, scene.made);
        };
        rows->back().after = [](Scene& scene, DWORD) {
            scene.dispose(scene.owner);
            scene.dispose(scene.made);
        };
    }
    addState(
        rows, "taking the menu away",
        [](Scene& scene) {
            scene.tell(OS::CascadeMenuItem_SetMenu, scene.the(Kind::cascadeItem),
                       scene.the(Kind::dropDownMenu));
        },
        OS::CascadeMenuItem_SetMenu, Kind::cascadeItem, 0);
    addState(
        rows, "after a key was pressed",
        [](Scene& scene) {
            scene.tell(OS::LabeledMenuItem_SetAccelerator, scene.the(Kind::pushItem), jint(keyF5));
            post(scene, scene.the(Kind::shell), WM_KEYDOWN, VK_F5);
            scene.dispatchAll();
        },
        OS::LabeledMenuItem_SetAccelerator, Kind::pushItem, jint(keyF6));
    addState(
        rows, "taking the accelerator away",
        [](Scene& scene) {
            scene.tell(OS::LabeledMenuItem_SetAccelerator, scene.the(Kind::pushItem), jint('A'));
        },
        OS::LabeledMenuItem_SetAccelerator, Kind::pushItem, 0);
}

void addOthers(Rows* rows) {
    rows->push_back(
        {.native = OS::Clipboard_GetText.name,
         .state = "with a text",
         .arrange =
             [](Scene& scene) { scene.tell(OS::Clipboard_SetText, scene.vm.newString(u"text")); },
         .act = [](Scene& scene) { return scene.tell(OS::Clipboard_GetText); }});
    rows->push_back(
        {.native = OS::Choice_AddItem.name, .state = "beyond its end", .act = [](Scene& scene) {
             return scene.tell(OS::Choice_AddItem, scene.the(Kind::choice),
                               scene.vm.newString(u"item"), 99);
         }});
    rows->push_back(
        {.native = OS::Image_NewFromHandle.name, .state = "indexed image", .act = [](Scene& scene) {
             return scene.tell(OS::Image_NewFromHandle, scene.display,
                               scene.the(Kind::indexedImage));
         }});
    addState(rows, "child shell to the top", nullptr, OS::Control_MoveAbove, Kind::childShell, 0);
}
