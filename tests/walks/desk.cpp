#include "desk.h"

Desk deskOf(Player& player) {
    Desk desk;
    HWND focus = GetFocus(), active = GetActiveWindow();
    desk.hasFocus = focus != nullptr;
    for (int step : player.world.allOf(kindOf("ControlRecord"))) {
        Object object = *player.world.find(step);
        if (isA(object.kind, kindOf("OwnBarRecord"))) continue; // which has its owner's window
        auto* control = reinterpret_cast<ControlRecord*>(object.handle);
        HWND window = control->hwnd;
        if (!IsWindow(window)) continue;
        desk.controls.insert(object.handle);
        bool listens = control->callbackTarget && control->display->callbackLookup;
        if (listens) desk.listening.insert(object.handle);
        if (IsWindowVisible(window)) desk.shown.insert(object.handle);
        if (window == focus) desk.focus = object.handle;
        if (IsWindowEnabled(window)) desk.enabled.insert(object.handle);
        constexpr LONG shownChild = WS_CHILD | WS_VISIBLE;
        bool hasHeir = (GetWindowLongW(window, GWL_STYLE) & shownChild) == shownChild;
        if (window == focus && hasHeir) {
            desk.heir = uint32_t(uintptr_t(control->parent));
            desk.heirsWindow = control->parent->hwnd;
        }
        if (window == active) desk.active = object.handle;
    }
    return desk;
}
