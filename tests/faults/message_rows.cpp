#include "menu/menu_item.h"
#include "rows.h"

// What messages bring about.

static DWORD dispatch(Scene& scene) {
    constexpr int most = 200;
    for (int i = 0; i < most; ++i)
        if (!(scene.tell(OS::Display_ReadAndDispatch, scene.display) & 0xFF)) return 0;
    return 1;
}

static void addMessage(Rows* rows, const std::string& state,
                       const std::function<void(Scene&)>& before,
                       const std::function<void(Scene&)>& arrange = nullptr) {
    rows->push_back({.native = OS::Display_ReadAndDispatch.name,
                     .state = state,
                     .arrange = arrange,
                     .before = before,
                     .act = dispatch,
                     .after = nothing});
}

void addMessages(Rows* rows) {
    static const std::pair<const char*, Kind> controls[] = {
        {"shell", Kind::shell},         {"child shell", Kind::childShell},
        {"composite", Kind::composite}, {"button", Kind::button},
        {"label", Kind::label},         {"list", Kind::list},
        {"choice", Kind::choice},       {"text field", Kind::textField},
        {"text area", Kind::textArea},  {"scroll bar", Kind::scrollBar},
    };
    for (const auto& [name, known] : controls) {
        Kind kind = known;
        std::string of = std::string(" of a ") + name;
        auto listening = [=](Scene& scene) { scene.listen(scene.the(kind)); };
        addMessage(
            rows, "painting" + of,
            [=](Scene& scene) {
                RedrawWindow(scene.windowOf(scene.the(kind)), nullptr, nullptr,
                             RDW_INVALIDATE | RDW_ERASE);
            },
            listening);
        addMessage(
            rows, "painting in colors" + of,
            [=](Scene& scene) {
                RedrawWindow(scene.windowOf(scene.the(kind)), nullptr, nullptr,
                             RDW_INVALIDATE | RDW_ERASE);
            },
            [=](Scene& scene) {
                scene.tell(OS::Control_SetBackground, scene.the(kind), scene.the(Kind::color));
                scene.tell(OS::Control_SetForeground, scene.the(kind), scene.the(Kind::color));
            });
        addMessage(
            rows, "a letter" + of,
            [=](Scene& scene) {
                post(scene, scene.the(kind), WM_KEYDOWN, 'A');
                post(scene, scene.the(kind), WM_KEYUP, 'A');
            },
            listening);
        addMessage(
            rows, "an arrow" + of,
            [=](Scene& scene) {
                post(scene, scene.the(kind), WM_KEYDOWN, VK_DOWN);
                post(scene, scene.the(kind), WM_KEYUP, VK_DOWN);
            },
            listening);
        if (kind == Kind::scrollBar || kind == Kind::choice) continue;
        addMessage(
            rows, "a tap" + of,
            [=](Scene& scene) {
                post(scene, scene.the(kind), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
                post(scene, scene.the(kind), WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
            },
            listening);
        addMessage(
            rows, "the pointer's move" + of,
            [=](Scene& scene) { post(scene, scene.the(kind), WM_MOUSEMOVE, 0, MAKELPARAM(7, 7)); },
            listening);
    }
    addMessage(
        rows, "a menu's command",
        [](Scene& scene) { post(scene, scene.the(Kind::shell), WM_COMMAND, 1000, 0); },
        [](Scene& scene) { scene.listen(scene.the(Kind::pushItem)); });
    addMessage(
        rows, "an accelerator",
        [](Scene& scene) { post(scene, scene.the(Kind::shell), WM_KEYDOWN, VK_F5); },
        [](Scene& scene) {
            scene.tell(OS::LabeledMenuItem_SetAccelerator, scene.the(Kind::pushItem), jint(keyF5));
            scene.listen(scene.the(Kind::pushItem));
        });
    addMessage(
        rows, "a shell's closing",
        [](Scene& scene) { post(scene, scene.the(Kind::shell), WM_CLOSE); },
        [](Scene& scene) { scene.listen(scene.the(Kind::shell)); });
    addMessage(
        rows, "a shell's activation",
        [](Scene& scene) { post(scene, scene.the(Kind::shell), WM_ACTIVATE, WA_ACTIVE); },
        [](Scene& scene) { scene.listen(scene.the(Kind::shell)); });
    addMessage(
        rows, "scrolling of an own bar",
        [](Scene& scene) { post(scene, scene.the(Kind::composite), WM_VSCROLL, SB_LINEDOWN); },
        [](Scene& scene) { scene.listen(scene.the(Kind::ownBar)); });
    addMessage(
        rows, "a wheel",
        [](Scene& scene) {
            post(scene, scene.the(Kind::button), WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA),
                 MAKELPARAM(30, 40));
        },
        [](Scene& scene) { scene.listen(scene.the(Kind::button)); });
}

// What the system sends and does not post.
static DRAWITEMSTRUCT drawing;
static void addSent(Rows* rows, const char* state, Kind kind, UINT id) {
    addMessage(rows, state, nullptr);
    rows->back().act = [=](Scene& scene) {
        LPARAM about = id == WM_DRAWITEM ? reinterpret_cast<LPARAM>(&drawing) : 0;
        scene.sendTo(scene.the(kind), id, 0, about);
        return dispatch(scene);
    };
}

void addFurtherMessages(Rows* rows) {
    addMessage(rows, "painting of a label's one line", [](Scene& scene) {
        scene.made =
            jint(scene.tell(OS::Label_New, scene.the(Kind::shell), jint(styleCenteredLine)));
        scene.tell(OS::Label_SetText, scene.made, scene.vm.newString(u"text"));
        scene.tell(OS::Control_SetBounds, scene.made, 10, 10, 90, 30);
        scene.tell(OS::Control_SetVisible, scene.made, true);
        RedrawWindow(scene.windowOf(scene.made), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE);
    });
    rows->back().after = [](Scene& scene, DWORD) { scene.dispose(scene.made); };
    addMessage(rows, "painting while it is off", [](Scene& scene) {
        scene.tell(OS::Control_SetRedraw, scene.the(Kind::button), false);
        RedrawWindow(scene.windowOf(scene.the(Kind::button)), nullptr, nullptr, RDW_INVALIDATE);
    });
    rows->back().after = [](Scene& scene, DWORD) {
        scene.tell(OS::Control_SetRedraw, scene.the(Kind::button), true);
    };
    addMessage(
        rows, "a tap on a scroll bar",
        [](Scene& scene) {
            jint bar = scene.the(Kind::scrollBar);
            post(scene, bar, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
            post(scene, bar, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
        },
        [](Scene& scene) {
            scene.tell(OS::Control_SetBounds, scene.the(Kind::scrollBar), 10, 10, 15, 100);
            scene.tell(OS::Control_SetVisible, scene.the(Kind::scrollBar), true);
            scene.listen(scene.the(Kind::scrollBar));
        });
    addMessage(
        rows, "a command of the menu bar",
        [](Scene& scene) {
            post(scene, scene.the(Kind::shell), WM_COMMAND, 1000,
                 reinterpret_cast<LPARAM>(scene.windowOf(scene.the(Kind::button))));
        },
        [](Scene& scene) {
            scene.tell(OS::Shell_SetMenuBar, scene.the(Kind::shell), scene.the(Kind::menuBar));
        });
    addSent(rows, "a choice's colors", Kind::choice, WM_CTLCOLORLISTBOX);
    addSent(rows, "other settings", Kind::shell, WM_SETTINGCHANGE);
    addSent(rows, "painting of a menu item with an image", Kind::shell, WM_DRAWITEM);
    rows->back().before = [](Scene& scene) {
        auto* item = reinterpret_cast<MenuItemRecord*>(scene.the(Kind::pushItem));
        item->image = reinterpret_cast<ImageRecord*>(scene.the(Kind::image));
        drawing = {};
        drawing.CtlType = ODT_MENU;
        drawing.itemData = item->id;
        drawing.hDC = GetDC(scene.windowOf(scene.the(Kind::shell)));
        drawing.rcItem = {1, 2, 21, 22};
    };
    rows->back().after = [](Scene& scene, DWORD) {
        ReleaseDC(scene.windowOf(scene.the(Kind::shell)), drawing.hDC);
    };
}

// Input.

void addInput(Rows* rows) {
    rows->push_back({.native = OS::Display_PostKeyEvent.name,
                     .state = "",
                     .act =
                         [](Scene& scene) {
                             return scene.tell(OS::Display_PostKeyEvent, scene.display,
                                               jint(KeyKind::pressed), jint('a'), u'\0');
                         },
                     .after =
                         [](Scene& scene, DWORD) {
                             scene.tell(OS::Display_PostKeyEvent, scene.display,
                                        jint(KeyKind::released), jint('a'), u'\0');
                         }});
    rows->push_back({.native = OS::Display_PostPointerEvent.name,
                     .state = "",
                     .before =
                         [](Scene& scene) {
                             scene.tell(OS::Display_PostPointerMoveEvent, scene.display, 9, 9);
                         },
                     .act =
                         [](Scene& scene) {
                             return scene.tell(OS::Display_PostPointerEvent, scene.display,
                                               jint(pointerPress), jint(buttonLeft));
                         },
                     .after =
                         [](Scene& scene, DWORD) {
                             scene.tell(OS::Display_PostPointerEvent, scene.display,
                                        jint(pointerRelease), jint(buttonLeft));
                         }});
}
