#include "kinds.h"
#include "menu/menu_item.h"
#include <cstring>

static const std::vector<Role> controls = {Role::control}, shells = {Role::shell},
                               windows = {Role::control, Role::shell}, items = {Role::item},
                               bars = {Role::ownBar};

static LPARAM at(LONG x, LONG y) { return MAKELPARAM(x, y); }

static void tapAt(Stage& stage, LPARAM point) {
    stage.post(WM_LBUTTONDOWN, MK_LBUTTON, point);
    stage.post(WM_LBUTTONUP, 0, point);
}

static void drag(Stage& stage, LPARAM from) {
    stage.post(WM_LBUTTONDOWN, MK_LBUTTON, from);
    for (LONG x : {40, 60, 80}) stage.post(WM_MOUSEMOVE, MK_LBUTTON, at(x, 90));
    stage.post(WM_LBUTTONUP, 0, at(80, 90));
}

// What the person holds long enough is told by the time that the tap has been pending.
static void tapWithAnswer(Stage& stage, jint answer) {
    stage.answerPointerDown(answer);
    tapAt(stage, stage.middle());
}

static void click(Stage& stage, UINT down, UINT up, WPARAM button) {
    stage.post(down, button, stage.middle());
    stage.post(up, 0, stage.middle());
}

static void takeFocus(Stage& stage) {
    stage.prepare([&] { stage.tell(OS::Control_ForceFocus, stage.subject); });
}

static void pressKey(WPARAM key) {
    HWND focused = GetFocus();
    PostMessageW(focused, WM_KEYDOWN, key, 1);
    PostMessageW(focused, WM_KEYUP, key, 0xC0000001);
}

static void typeKey(Stage& stage, WPARAM key) {
    takeFocus(stage);
    pressKey(key);
}

static void paint(Stage& stage) {
    RedrawWindow(stage.window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE);
    UpdateWindow(stage.window());
}

static void showAgain(Stage& stage) {
    takeFocus(stage);
    stage.show(stage.subject, false);
    stage.show(stage.subject);
}

static void switchMode(Stage& stage) {
    if (strcmp(stage.kind.name, "List") == 0)
        stage.tell(OS::List_SetMultipleMode, stage.subject, true);
    if (strcmp(stage.kind.name, "Scrollbar") == 0)
        stage.tell(OS::Scrollbar_SetOrientation, stage.subject, 16);
}

static void changeText(Stage& stage) {
    if (strncmp(stage.kind.name, "Text", 4) != 0) return;
    stage.tell(OS::AbstractTextComponent_SetText, stage.subject, stage.vm.newString(u"text"));
}

static void changeBars(Stage& stage, const Native<void(jint, jint, jboolean)>& native) {
    jint owner = stage.kind.role == Role::shell ? stage.subject : stage.parent;
    jint bar = stage.vertical(owner);
    for (bool on : {false, true}) {
        if (stage.isGone(owner)) return;
        stage.tell(native, owner, bar, on);
    }
}

static void changeRange(Stage& stage) {
    jint bar = stage.vertical(stage.subject);
    auto set = [&](const Native<void(jint, jint)>& native, jint value) {
        if (!stage.isGone(stage.subject)) stage.tell(native, bar, value);
    };
    set(OS::Adjustable_SetMaximum, 200);
    set(OS::Adjustable_SetVisibleAmount, 201);
    set(OS::Adjustable_SetVisibleAmount, 5);
    set(OS::Adjustable_SetMinimum, 300);
}

static void swapMenuBar(Stage& stage) {
    stage.tell(OS::Shell_SetMenuBar, stage.subject, 0);
    if (!stage.isGone(stage.bar)) stage.tell(OS::Shell_SetMenuBar, stage.subject, stage.bar);
}

static void loseActivation(Stage& stage) {
    stage.prepare([&] { SetActiveWindow(stage.window()); });
    jint next = stage.make(OS::Shell_New, stage.display, 0);
    stage.show(next);
    stage.pump();
    if (HWND window = stage.window()) SetActiveWindow(window);
}

static void showModal(Stage& stage) {
    takeFocus(stage);
    stage.showModalShell();
}

static void choose(Stage& stage, HWND sender) {
    auto id = reinterpret_cast<MenuItemRecord*>(stage.subject)->id;
    stage.send(WM_COMMAND, id, reinterpret_cast<LPARAM>(sender));
}

static void choosePopup(Stage& stage) {
    for (BYTE key : {VK_DOWN, VK_RETURN}) {
        keybd_event(key, 0, 0, 0);
        keybd_event(key, 0, KEYEVENTF_KEYUP, 0);
    }
    stage.tell(OS::PopupMenu_Show, stage.menu, 10, 10);
}

static void scrollBy(Stage& stage, WPARAM code) {
    bool isOwn = stage.kind.role == Role::ownBar;
    HWND receiver = stage.windowIfThere(stage.parent);
    if (!receiver) return;
    HWND bar = isOwn ? nullptr : stage.window();
    SendMessageW(receiver, WM_VSCROLL, code, reinterpret_cast<LPARAM>(bar));
}

static void pressOwnBar(Stage& stage) {
    RECT place;
    GetWindowRect(stage.window(), &place);
    LPARAM lowerArrow =
        MAKELPARAM(place.right - 4, place.bottom - GetSystemMetrics(SM_CYHSCROLL) - 4);
    stage.post(WM_NCLBUTTONDOWN, HTVSCROLL, lowerArrow);
    stage.post(WM_LBUTTONUP, 0, 0);
}

const std::vector<Provocation>& provocations() {
    static const std::vector<const char*> pressed = {"pointerDown", "pointer1", "pointer2",
                                                     "focus1",      "selected", "listSelected1",
                                                     "chosen",      "scrolled"};
    static const std::vector<Provocation> all = {
        {"tap", windows, pressed, [](Stage& stage) { tapAt(stage, stage.middle()); }},
        {"tap at the edge",
         controls,
         {"pointer1", "pointer2", "scrolled1", "chosen"},
         [](Stage& stage) { tapAt(stage, at(5, 97)); }},
        {"tap timed",
         windows,
         {"pointer1", "pointer2"},
         [](Stage& stage) { tapWithAnswer(stage, 0); }},
        {"tap recognized",
         windows,
         {"pointerDown", "pointer1"},
         [](Stage& stage) { tapWithAnswer(stage, 1); }},
        {"drag",
         windows,
         {"pointer1", "pointer6", "pointer2", "scrolled4", "pointer3"},
         [](Stage& stage) { drag(stage, at(5, 20)); }},
        {"move in and out",
         windows,
         {"pointer4", "pointer3", "pointer5"},
         [](Stage& stage) {
             stage.post(WM_MOUSEMOVE, 0, at(50, 50));
             PostMessageW(Stage::windowOf(stage.other), WM_MOUSEMOVE, 0, at(5, 5));
         }},
        {"right tap",
         windows,
         {"pointer1", "pointer2"},
         [](Stage& stage) { click(stage, WM_RBUTTONDOWN, WM_RBUTTONUP, MK_RBUTTON); }},
        {"middle tap",
         windows,
         {"pointer1", "pointer2"},
         [](Stage& stage) { click(stage, WM_MBUTTONDOWN, WM_MBUTTONUP, MK_MBUTTON); }},
        {"double tap",
         windows,
         {"pointer7", "listSelected2", "selected"},
         [](Stage& stage) {
             tapAt(stage, at(10, 10));
             click(stage, WM_LBUTTONDBLCLK, WM_LBUTTONUP, MK_LBUTTON);
         }},
        {"wheel",
         windows,
         {"wheel"},
         [](Stage& stage) { stage.post(WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), at(60, 60)); }},
        {"take the focus",
         windows,
         {"focus1", "selected"},
         [](Stage& stage) { stage.tell(OS::Control_ForceFocus, stage.subject); }},
        {"lose the focus",
         windows,
         {"focus2"},
         [](Stage& stage) {
             takeFocus(stage);
             stage.tell(OS::Control_ForceFocus, stage.other);
         }},
        {"letter key",
         windows,
         {"key1", "key2", "modified", "listSelected1", "chosen"},
         [](Stage& stage) { typeKey(stage, 'A'); }},
        {"arrow key",
         controls,
         {"key1", "key2", "listSelected1", "chosen", "scrolled1", "selected"},
         [](Stage& stage) { typeKey(stage, VK_DOWN); }},
        {"space key",
         controls,
         {"key1", "key2", "selected", "modified"},
         [](Stage& stage) { typeKey(stage, VK_SPACE); }},
        {"paint", windows, {"paint"}, paint},
        {"bounds",
         windows,
         {"resize", "move", "paint"},
         [](Stage& stage) {
             stage.place(stage.subject, {12, 14, 120, 90});
         }},
        {"show again", windows, {"focus1", "focus2", "paint", "window205", "window206"}, showAgain},
        {"disable",
         windows,
         {"focus2"},
         [](Stage& stage) {
             takeFocus(stage);
             stage.tell(OS::Control_SetEnabled, stage.subject, false);
         }},
        {"switch",
         controls,
         {"focus1", "focus2"},
         [](Stage& stage) {
             takeFocus(stage);
             switchMode(stage);
         }},
        {"change the text", controls, {"modified"}, changeText},
        {"modal shell", windows, {"focus1", "focus2", "window205", "window206"}, showModal},
        {"minimize",
         shells,
         {"window203"},
         [](Stage& stage) { stage.send(WM_SIZE, SIZE_MINIMIZED, 0); }},
        {"resize",
         shells,
         {"resize"},
         [](Stage& stage) {
             SetWindowPos(stage.window(), nullptr, 3, 4, 100, 100, SWP_NOZORDER | SWP_NOACTIVATE);
         }},
        {"close", shells, {"window201"}, [](Stage& stage) { stage.send(WM_CLOSE, 0, 0); }},
        {"lose the activation",
         shells,
         {"window205", "window206", "focus1", "focus2"},
         loseActivation},
        {"change the menu bar", shells, {"resize", "window205", "window206", "paint"}, swapMenuBar},
        {"input panel",
         shells,
         {"resize"},
         [](Stage& stage) { stage.send(WM_SETTINGCHANGE, SPI_SETWORKAREA, 0); }},
        {"show the own bar",
         shells,
         {"resize"},
         [](Stage& stage) { changeBars(stage, OS::Scrollable_SetAdjustableVisible); }},
        {"enable the own bar",
         shells,
         {"resize"},
         [](Stage& stage) { changeBars(stage, OS::Scrollable_SetAdjustableEnabled); }},
        {"change the own range", shells, {"resize"}, changeRange},
        {"scroll",
         {Role::control, Role::ownBar},
         {"scrolled1"},
         [](Stage& stage) { scrollBy(stage, SB_LINEDOWN); }},
        {"press the own bar", bars, {"scrolled1"}, pressOwnBar},
        {"command", items, {"menu"}, [](Stage& stage) { choose(stage, nullptr); }},
        {"pop-up", items, {"menu"}, choosePopup},
    };
    return all;
}

static bool hasParent(const Stage& stage) { return stage.kind.role != Role::shell; }
static bool canSwitch(const Stage& stage) {
    std::string name = stage.kind.name;
    return name == "List" || name == "Scrollbar";
}
static bool hasMenu(const Stage& stage) { return stage.menu != 0; }
static bool canGo(const Stage& stage) { return stage.kind.role != Role::ownBar; }
static bool isControl(const Stage& stage) {
    return stage.kind.role == Role::control || stage.kind.role == Role::shell;
}

const std::vector<Action>& actions() {
    static const std::vector<Action> all = {
        {"dispose itself", canGo, [](Stage& stage) { stage.end(stage.subject); }},
        {"dispose its parent", hasParent, [](Stage& stage) { stage.end(stage.parent); }},
        {"dispose its shell", nullptr, [](Stage& stage) { stage.end(stage.shell); }},
        {"dispose the menu bar", nullptr, [](Stage& stage) { stage.end(stage.bar); }},
        {"dispose its menu", hasMenu, [](Stage& stage) { stage.end(stage.menu); }},
        {"dispose the display", nullptr, [](Stage& stage) { stage.endDisplay(); }},
        {"dispose another", nullptr, [](Stage& stage) { stage.end(stage.bystander); }},
        {"switch itself", canSwitch, switchMode},
        {"move the focus", nullptr,
         [](Stage& stage) { stage.tell(OS::Control_ForceFocus, stage.other); }},
        {"hide itself", isControl, [](Stage& stage) { stage.show(stage.subject, false); }},
        {"hide its shell", nullptr, [](Stage& stage) { stage.show(stage.shell, false); }},
        {"open a file dialog", nullptr, [](Stage& stage) { stage.runFileDialog(); }},
        {"open a modal shell", nullptr, [](Stage& stage) { stage.showModalShell(); }},
        {"throw", nullptr, [](Stage& stage) { stage.throwException(); }},
    };
    return all;
}
