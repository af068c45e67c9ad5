#include "verbs.h"
#include <cstring>

static bool move(Player& player, const Step& step) {
    HWND window = player.windowOfStep(step.arguments[0]);
    if (!window) return false;
    RECT client;
    GetClientRect(window, &client);
    POINT point = {client.right * step.arguments[1].value / 100,
                   client.bottom * step.arguments[2].value / 100};
    ClientToScreen(window, &point);
    OS::Display_PostPointerMoveEvent(player.vm.env(), player.display, point.x, point.y);
    return true;
}

static bool press(Player& player, const Step& step) {
    if (!move(player, step)) return false;
    OS::Display_PostPointerEvent(player.vm.env(), player.display, pointerPress, buttonLeft);
    return true;
}

static bool release(Player& player, const Step&) {
    OS::Display_PostPointerEvent(player.vm.env(), player.display, pointerRelease, buttonLeft);
    return true;
}

static bool tap(Player& player, const Step& step) {
    return press(player, step) && release(player, step);
}

static bool key(Player& player, const Step& step) {
    for (KeyKind kind : {KeyKind::pressed, KeyKind::released})
        OS::Display_PostKeyEvent(player.vm.env(), player.display, jint(kind),
                                 step.arguments[0].value, u'\0');
    return true;
}

// A window, a message and its parameters.
static bool post(Player& player, const Step& step) {
    HWND window = player.windowOfStep(step.arguments[0]);
    if (!window) return false;
    PostMessageW(window, step.arguments[1].value, step.arguments[2].value, step.arguments[3].value);
    return true;
}

static bool dispatch(Player& player, const Step&) {
    player.dispatchUntilEmpty();
    return true;
}

static bool wait(Player& player, const Step&) {
    constexpr DWORD aTimersLength = 15; // milliseconds
    Sleep(aTimersLength);
    player.dispatchUntilEmpty();
    return true;
}

static bool throwException(Player& player, const Step&) {
    player.throwException();
    return true;
}

static bool answer(Player& player, const Step& step) {
    player.answer(step.arguments[0].value);
    return true;
}

static bool listenToDisplay(Player& player, const Step& step) {
    return player.listenTo(step.arguments[0]);
}

const Verb* findVerb(const std::string& name) {
    static const Verb verbs[] = {
        {"tap", tap},
        {"press", press},
        {"release", release},
        {"move", move},
        {"key", key},
        {"post", post},
        {"dispatch", dispatch},
        {"wait", wait},
        {"throw", throwException},
        {"answer", answer},
        {"listenToDisplay", listenToDisplay},
    };
    for (const Verb& verb : verbs)
        if (name == verb.name) return &verb;
    return nullptr;
}
