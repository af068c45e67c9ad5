// Where the device's windows start, and the part of their styles that a desk window cannot carry.

#include "control_classes.h"
#include "dialog_class.h"
#include "pointer_place.h"
#include "refusal.h"
#include "screen.h"
#include "task_bar.h"

static constexpr DWORD captionOkButton = 0x80000000;
static constexpr DWORD alwaysOn = WS_CLIPSIBLINGS | WS_CLIPCHILDREN;

// A top-level window of default size fills the device's work area.
static void placeByDefault(DWORD style, int* x, int* y, int* width, int* height) {
    if (style & (WS_CHILD | WS_POPUP)) return;
    RECT work = workArea();
    if (*x == CW_USEDEFAULT) {
        *x = work.left;
        *y = work.top;
    }
    if (*width == CW_USEDEFAULT) {
        *width = work.right - *x;
        *height = work.bottom - *y;
    }
}

static void changeOkButton(HWND window, bool has) {
    if (has == hasOkButton(window)) return;
    setOkButton(window, has);
    RedrawWindow(window, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE);
}

extern "C" {

ATOM WINAPI Device_RegisterClassW(const WNDCLASSW* description) {
    constexpr UINT styles =
        CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW | CS_NOCLOSE | CS_PARENTDC | CS_GLOBALCLASS;
    if (!isAllowed(!(description->style & ~styles) && !description->hIcon)) return 0;
    return RegisterClassW(description);
}

HWND WINAPI Device_CreateWindowExW(DWORD extendedStyle, LPCWSTR className, LPCWSTR title,
                                   DWORD style, int x, int y, int width, int height, HWND parent,
                                   HMENU menu, HINSTANCE instance, LPVOID data) {
    if (!isAllowed(!menu || (style & WS_CHILD))) return nullptr; // no window has a menu of its own
    startTaskBar();
    watchStylus();
    placeByDefault(style, &x, &y, &width, &height);
    HWND window =
        CreateWindowExW(extendedStyle & ~captionOkButton, deskClassName(className), title,
                        style | alwaysOn, x, y, width, height, parent, menu, instance, data);
    if (window && (extendedStyle & captionOkButton) && isDialog(window))
        changeOkButton(window, true);
    return window;
}

LONG WINAPI Device_GetWindowLongW(HWND window, int index) {
    LONG value = GetWindowLongW(window, index);
    if (index == GWL_EXSTYLE && isDialog(window) && hasOkButton(window)) value |= captionOkButton;
    return value;
}

LONG WINAPI Device_SetWindowLongW(HWND window, int index, LONG value) {
    if (index == GWL_STYLE) value |= alwaysOn;
    if (index != GWL_EXSTYLE || !isDialog(window)) return SetWindowLongW(window, index, value);
    LONG old = Device_GetWindowLongW(window, index);
    SetWindowLongW(window, index, value & ~captionOkButton);
    changeOkButton(window, value & captionOkButton);
    return old;
}

// An internal paint of a window that its parents clip away never ends on the desk: the thread's
// queue says for ever that there is something to paint. What is invalidated is painted without it.
BOOL WINAPI Device_RedrawWindow(HWND window, const RECT* area, HRGN region, UINT flags) {
    if (flags & RDW_INVALIDATE) flags &= ~RDW_INTERNALPAINT;
    return RedrawWindow(window, area, region, flags);
}
}
