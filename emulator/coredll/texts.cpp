// Measuring of texts.

#include <windows.h>

extern "C" {

// Without a context nothing is measured and the area stays: the desk leaves in it what its stack
// held.
int WINAPI Device_DrawTextW(HDC context, LPCWSTR text, int length, RECT* area, UINT format) {
    if (!GetObjectType(context)) {
        SetLastError(ERROR_INVALID_HANDLE);
        return 0;
    }
    return DrawTextW(context, text, length, area, format);
}
}
