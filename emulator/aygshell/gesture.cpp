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
    LONGLONG end = Emulator_GetTime() + holdTime;
    for (LONGLONG left = holdTime; left > 0; left = end - Emulator_GetTime()) {
        GetQueueStatus(QS_MOUSE); // what has come by now ends no wait
        if (!isHeldNear(press)) return 0;
        Emulator_AwaitInput(static_cast<DWORD>(left), QS_MOUSE);
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
