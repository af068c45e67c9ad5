// Tap and hold: the pointer stays down near the place of the press for long enough.

#include "aygshell.h"
#include "emulator.h"

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

static DWORD waitForGesture(POINT press) {
    DWORD start = GetTickCount();
    for (DWORD held = 0; held < holdTime; held = GetTickCount() - start) {
        if (!isHeldNear(press)) return 0;
        MsgWaitForMultipleObjectsEx(0, nullptr, holdTime - held, QS_MOUSE, 0);
    }
    return isHeldNear(press) ? GN_CONTEXTMENU : 0;
}

// Only the answer is offered, no notification of windows.
extern "C" DWORD WINAPI SHRecognizeGesture(SHRGINFO* request) {
    if (request->cbSize != sizeof(*request) || !(request->dwFlags & SHRG_RETURNCMD)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    DWORD scripted;
    if (Emulator_TakeGestureAnswer(&scripted)) return scripted;
    POINT press = request->ptDown;
    ClientToScreen(request->hwndClient, &press);
    return waitForGesture(press);
}
