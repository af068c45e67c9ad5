#include "stage.h"
#include <cstring>

static constexpr jint bothBars = 0x30000, titled = 0x20, modal = 0x40;

std::string keyOf(const std::string& event) {
    std::string method = event.substr(0, event.find('('));
    size_t argument = 0;
    if (method == "scrolled" || method == "listSelected")
        argument = event.find(", ") + 2;
    else if (method == "pointer" || method == "focus" || method == "window" || method == "key")
        argument = method.size() + 1;
    if (!argument) return method;
    return method + event.substr(argument, event.find_first_of(",)", argument) - argument);
}

Stage::Stage(const Kind& made) : kind(made) {
    shell = make(OS::Shell_New, display, bothBars);
    show(shell);
    parent = make(OS::Composite_New, shell, bothBars);
    place(parent, {5, 5, 205, 205});
    show(parent);
    other = make(OS::PushButton_New, shell, 0);
    place(other, {5, 220, 105, 250});
    show(other);
    bystander = make(OS::PushButton_New, parent, 0);
    place(bystander, {130, 130, 170, 150});
    show(bystander);
    bar = make(OS::MenuBar_New, shell);
    barItem = make(OS::PushMenuItem_New, bar, 0);
    tell(OS::Shell_SetMenuBar, shell, bar);
    subject = kind.make(*this);
    if (kind.role == Role::control) {
        place(subject, {10, 10, 110, 110});
        show(subject);
    }
    pump();
    SetFocus(windowOf(other));
    pump();
}

Stage::~Stage() {
    vm.behavior.clear();
    surface();
    for (jint widget : std::vector<jint>(made)) end(widget);
    pump();
}

void Stage::show(jint control, bool shown) { tell(OS::Control_SetVisible, control, shown); }

void Stage::place(jint control, RECT place) {
    tell(OS::Control_SetBounds, control, place.left, place.top, place.right - place.left,
         place.bottom - place.top);
}

void Stage::end(jint widget) {
    if (!widget || !gone.insert(widget).second) return;
    dispose(widget);
    surface();
}

void Stage::endDisplay() {
    call(OS::Device_Dispose, display);
    display = 0;
}

static BOOL CALLBACK findDialog(HWND window, LPARAM found) {
    wchar_t name[16];
    GetClassNameW(window, name, 16);
    if (lstrcmpW(name, L"#32770") != 0 || !IsWindowVisible(window)) return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

static void CALLBACK leaveDialog(HWND, UINT, UINT_PTR timer, DWORD) {
    HWND dialog = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), findDialog, reinterpret_cast<LPARAM>(&dialog));
    if (!dialog) return;
    KillTimer(nullptr, timer);
    PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
}

void Stage::runFileDialog() {
    jint dialog = make(OS::FileDialog_New, shell, 0);
    if (!dialog) return;
    UINT_PTR timer = SetTimer(nullptr, 0, USER_TIMER_MINIMUM, leaveDialog);
    tell(OS::FileDialog_Open, dialog);
    KillTimer(nullptr, timer);
}

void Stage::showModalShell() {
    jint child = make(OS::Shell_NewChild, shell, titled | modal);
    if (!child) return; // of a shell that is gone
    show(child);
    end(child);
}

HWND Stage::window() const {
    if (kind.role == Role::item) return windowIfThere(shell);
    jint control = kind.role == Role::ownBar ? parent : subject;
    return windowIfThere(control);
}

void Stage::post(UINT message, WPARAM wParam, LPARAM lParam) {
    if (HWND target = window()) PostMessageW(target, message, wParam, lParam);
}

void Stage::send(UINT message, WPARAM wParam, LPARAM lParam) {
    if (HWND target = window()) SendMessageW(target, message, wParam, lParam);
    surface();
}

LPARAM Stage::middle() const {
    RECT client;
    GetClientRect(window(), &client);
    return MAKELPARAM(client.right / 2, client.bottom / 2);
}

void Stage::pump() {
    constexpr int tooMany = 5000;
    MSG message;
    for (int i = 0; i < tooMany; ++i) {
        if (display) {
            if (!call(OS::Display_ReadAndDispatch, display)) return;
        } else {
            if (!PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) return;
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        surface();
    }
    ADD_FAILURE() << "the messages do not end";
}

void Stage::prepare(const std::function<void()>& work) {
    isPreparing = true;
    work();
    pump();
    isPreparing = false;
    vm.takeEvents();
}

static const char* const methods[] = {
    "selected", "listSelected", "window", "scrolled", "chosen", "key",   "modified",   "pointer",
    "menu",     "focus",        "paint",  "resize",   "move",   "wheel", "pointerDown"};

void Stage::watch(const char* key, const Action* action) {
    acted = false;
    std::string awaited = key ? key : "";
    for (const char* method : methods) {
        vm.behavior[method] = [=, this](const std::vector<jint>&) {
            jint answer = strcmp(method, "pointerDown") == 0 ? pointerDownAnswer : 0;
            if (acted || isPreparing || !action || keyOf(vm.events.back()) != awaited)
                return answer;
            acted = true;
            action->act(*this);
            return answer;
        };
    }
}

static bool isInMenu() {
    GUITHREADINFO thread = {};
    thread.cbSize = sizeof thread;
    return GetGUIThreadInfo(GetCurrentThreadId(), &thread) &&
           (thread.flags & (GUI_INMENUMODE | GUI_POPUPMENUMODE)) != 0;
}

// Whoever holds the capture and waits, and for whom no release is due any more, gets another. What
// a text offers of its own is left.
void CALLBACK Stage::letGo(HWND, UINT, UINT_PTR, DWORD) {
    MSG message;
    if (isInMenu() && !PeekMessageW(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_NOREMOVE)) {
        EndMenu();
        return;
    }
    HWND holder = GetCapture();
    if (!holder || PeekMessageW(&message, nullptr, WM_LBUTTONUP, WM_LBUTTONUP, PM_NOREMOVE)) return;
    ++furtherReleases;
    PostMessageW(holder, WM_LBUTTONUP, 0, 0);
}

Events Stage::play(const Provocation& provocation, const char* key, const Action* action) {
    watch(key, action);
    listen(subject);
    furtherReleases = 0;
    playing = true;
    UINT_PTR timer = SetTimer(nullptr, 0, 100, letGo);
    provocation.provoke(*this);
    pump();
    playing = false;
    KillTimer(nullptr, timer);
    Events events = vm.takeEvents();
    vm.behavior.clear();
    return events;
}

void Stage::expectNextTapWorks() {
    if (!display) openDisplay();
    jint next = make(OS::Shell_New, display, 0);
    show(next);
    jint button = make(OS::PushButton_New, next, 0);
    place(button, {10, 10, 60, 40});
    show(button);
    pump();
    listen(button);
    HWND tapped = windowOf(button);
    PostMessageW(tapped, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    PostMessageW(tapped, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    pump();
    std::map<std::string, int> counts;
    for (const std::string& event : vm.takeEvents()) ++counts[keyOf(event)];
    for (const char* once : {"pointerDown", "pointer1", "pointer2", "selected"})
        EXPECT_EQ(counts[once], 1) << "the next tap's " << once;
}
