#include "widgets/renewal.h"
#include "display/requests.h"
#include "graphics/font.h"
#include "widgets/measuring.h"

HWND Renewal_Create(const ControlRecord* control, const wchar_t* className, DWORD style) {
    HWND old = control->hwnd;
    HINSTANCE instance = control->display->instance;
    HWND parent = GetParent(old);
    RECT place = {};
    GetWindowRect(old, &place);
    MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&place), 2);
    HWND window = CreateWindowExW(GetWindowLongW(old, GWL_EXSTYLE), className, nullptr, style,
                                  place.left, place.top, place.right - place.left,
                                  place.bottom - place.top, parent, nullptr, instance, nullptr);
    if (!window) return nullptr;
    SetWindowPos(window, old, 0, 0, 0, 0,
                 SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
    if (controlOf(old) == control) return window;
    DestroyWindow(window);
    return nullptr;
}

void Renewal_MoveTo(ControlRecord* control, HWND window, WNDPROC proc, HWND* follower) {
    Control_Detach(control->hwnd, control->classProc);
    Control_ForgetWindow(control->display, control->hwnd);
    control->hwnd = window;
    Control_Attach(control, window, proc);
    if (follower) *follower = window;
}

void Renewal_DestroyOld(HWND messageWindow, HWND old) {
    Font_Wear(windowFont(old), nullptr);
    if (!ask(messageWindow, requestDestroyWindow, old)) DestroyWindow(old);
}
