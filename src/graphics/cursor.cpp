#include "graphics/cursor.h"

static constexpr jint cursorHand = 13;

static const wchar_t* systemCursor(jint type) {
    switch (type) {
    case 1:
        return IDC_ARROW;
    case 2:
        return IDC_CROSS;
    case 3:
        return IDC_IBEAM;
    case 4:
        return IDC_WAIT;
    case 5:
    case 7:
        return IDC_SIZENS;
    case 6:
    case 8:
        return IDC_SIZEWE;
    case 9:
    case 11:
        return IDC_SIZENESW;
    case 10:
    case 12:
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
