#include "graphics/cursor.h"

static const wchar_t* systemCursor(jint type) {
    switch (type) {
    case cursorArrow:
        return IDC_ARROW;
    case cursorCross:
        return IDC_CROSS;
    case cursorText:
        return IDC_IBEAM;
    case cursorWait:
        return IDC_WAIT;
    case cursorResizeNorth:
    case cursorResizeSouth:
        return IDC_SIZENS;
    case cursorResizeEast:
    case cursorResizeWest:
        return IDC_SIZEWE;
    case cursorResizeNortheast:
    case cursorResizeSouthwest:
        return IDC_SIZENESW;
    case cursorResizeNorthwest:
    case cursorResizeSoutheast:
        return IDC_SIZENWSE;
    case cursorHand:
        return IDC_HAND;
    default:
        return nullptr;
    }
}

HCURSOR Cursor_New(DeviceRecord*, jint type, ErrorRecord* error) {
    HCURSOR cursor = LoadCursorW(nullptr, systemCursor(type));
    if (!cursor && type == cursorHand)
        Win32Error_SetError(error, errorFailed, L"Unable to create cursor in WinCE");
    return cursor;
}

void Cursor_Dispose(HCURSOR, ErrorRecord*) {}
