#include "display/services.h"
#include "display/keys.h"
#include "display/message.h"
#include "display/requests.h"
#include "graphics/color.h"

void Display_Beep(DisplayRecord*, ErrorRecord*) { MessageBeep(0); }

// In the order of SystemColor.
static constexpr BYTE systemColors[] = {
    COLOR_BACKGROUND,
    COLOR_ACTIVECAPTION,
    COLOR_CAPTIONTEXT,
    COLOR_ACTIVEBORDER,
    COLOR_INACTIVECAPTION,
    COLOR_INACTIVECAPTIONTEXT,
    COLOR_INACTIVEBORDER,
    COLOR_WINDOW,
    COLOR_WINDOWFRAME,
    COLOR_WINDOWTEXT,
    COLOR_MENU,
    COLOR_MENUTEXT,
    COLOR_WINDOW,
    COLOR_WINDOWTEXT,
    COLOR_HIGHLIGHT,
    COLOR_HIGHLIGHTTEXT,
    COLOR_GRAYTEXT,
    COLOR_BTNFACE,
    COLOR_WINDOWTEXT,
    COLOR_3DLIGHT,
    COLOR_BTNHIGHLIGHT,
    COLOR_BTNSHADOW,
    COLOR_3DDKSHADOW,
    COLOR_SCROLLBAR,
    COLOR_INFOBK,
    COLOR_INFOTEXT,
};
static constexpr jint systemColorCount = sizeof(systemColors) / sizeof(systemColors[0]);
static_assert(systemColorCount == static_cast<jint>(SystemColor::toolTipText) + 1);

ColorRecord* Display_GetSystemColor(DeviceRecord* device, jint id, ErrorRecord* error) {
    if (id < 0 || id >= systemColorCount) {
        Win32Error_SetError(error, errorFailed, L"Unrecognized color ID");
        return nullptr;
    }
    COLORREF color = systemColor(systemColors[id]);
    return Color_New(device, GetRValue(color), GetGValue(color), GetBValue(color), error);
}

Insets Display_GetInsets(DisplayRecord* display, ErrorRecord* error) {
    RECT work = {};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    Bounds screen = Device_GetBounds(&display->device, error);
    return {work.left - screen.x, work.top - screen.y, screen.x + screen.width - work.right,
            screen.y + screen.height - work.bottom};
}

static BYTE virtualKeyOf(jint key) {
    bool isLowerLetter = key >= 'a' && key <= 'z';
    return static_cast<BYTE>(isLowerLetter ? key - 'a' + 'A' : Key_FromJava(key));
}

bool Display_PostKeyEvent(DisplayRecord*, jint type, jint key, jchar, ErrorRecord*) {
    DWORD flags = KEYEVENTF_EXTENDEDKEY;
    if (type != static_cast<jint>(KeyKind::pressed)) flags |= KEYEVENTF_KEYUP;
    keybd_event(virtualKeyOf(key), 0, flags, 0);
    return true;
}

static bool sendMouse(DWORD flags, LONG dx, LONG dy) {
    INPUT input = {};
    input.type = INPUT_MOUSE;
    input.mi.dx = dx;
    input.mi.dy = dy;
    input.mi.dwFlags = flags;
    return SendInput(1, &input, sizeof(input)) != 0;
}

bool Display_PostPointerEvent(DisplayRecord*, jint type, jint button, ErrorRecord*) {
    bool down = type == pointerPress;
    switch (button) {
    case buttonLeft:
        return sendMouse(down ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_LEFTUP, 0, 0);
    case buttonMiddle:
        return sendMouse(down ? MOUSEEVENTF_MIDDLEDOWN : MOUSEEVENTF_MIDDLEUP, 0, 0);
    case buttonRight:
        return sendMouse(down ? MOUSEEVENTF_RIGHTDOWN : MOUSEEVENTF_RIGHTUP, 0, 0);
    default:
        return false;
    }
}

bool Display_PostPointerMoveEvent(DisplayRecord*, jint x, jint y, ErrorRecord*) {
    constexpr LONG fullScale = 65535;
    LONG dx = x * fullScale / (GetSystemMetrics(SM_CXSCREEN) - 1);
    LONG dy = y * fullScale / (GetSystemMetrics(SM_CYSCREEN) - 1);
    return sendMouse(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, dx, dy);
}

void Display_ClearFocus(DisplayRecord* display, ErrorRecord*) {
    ask(display->messageWindow, requestSetFocus);
}

void Display_SetFullScreenShell(DisplayRecord*, ShellRecord*, ErrorRecord*) {}
