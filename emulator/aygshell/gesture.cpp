// Tap and hold: the pointer stays down near the place of the press for long enough.

#include "aygshell.h"

static constexpr DWORD holdTime = 500;   // milliseconds
static constexpr LONG holdTolerance = 6; // pixels each way

static bool isHeldNear(POINT press) {
    if (!(GetAsyncKeyState(VK_LBUTTON) & 0x8000)) return false;
    POINT now;
    GetCursorPos(&now);
    LONG dx = now.x - press.x;
    LONG dy = now.y - press.y;
    return dx >= -holdTolerance && dx <= holdTolerance && dy >= -holdTolerance &&
           dy <= holdTolerance;
}

extern "C" DWORD WINAPI SHRecognizeGesture(SHRGINFO* request) {
    POINT press = request->ptDown;
    ClientToScreen(request->hwndClient, &press);
    DWORD start = GetTickCount();
    for (DWORD held = 0; held < holdTime; held = GetTickCount() - start) {
        if (!isHeldNear(press)) return 0;
        MsgWaitForMultipleObjectsEx(0, nullptr, holdTime - held, QS_MOUSE, 0);
    }
    if (request->dwFlags & SHRG_RETURNCMD) return GN_CONTEXTMENU;
    return 0;
}
