#include "ok_button.h"
#include "dialog_class.h"

static constexpr int buttonWidth = 24;
static constexpr int buttonMargin = 2;

static bool isShown(HWND window) {
    return hasOkButton(window) && (GetWindowLongW(window, GWL_STYLE) & WS_CAPTION) == WS_CAPTION;
}

// In screen coordinates.
static RECT buttonRect(HWND window) {
    RECT frame = {};
    AdjustWindowRectEx(&frame, GetWindowLongW(window, GWL_STYLE), FALSE,
                       GetWindowLongW(window, GWL_EXSTYLE));
    RECT outside;
    GetWindowRect(window, &outside);
    LONG captionBottom = outside.top - frame.top - buttonMargin;
    LONG right = outside.right - frame.right - buttonMargin;
    return {right - buttonWidth, captionBottom - GetSystemMetrics(SM_CYSIZE) + 2 * buttonMargin,
            right, captionBottom};
}

bool isOnOkButton(HWND window, POINT screenPoint) {
    if (!isShown(window)) return false;
    RECT rect = buttonRect(window);
    return PtInRect(&rect, screenPoint);
}

void drawOkButton(HWND window, bool pressed) {
    if (!isShown(window)) return;
    RECT outside;
    GetWindowRect(window, &outside);
    RECT rect = buttonRect(window);
    OffsetRect(&rect, -outside.left, -outside.top);
    HDC context = GetWindowDC(window);
    if (!context) return;
    DrawFrameControl(context, &rect, DFC_BUTTON, DFCS_BUTTONPUSH | (pressed ? DFCS_PUSHED : 0));
    HGDIOBJ font = SelectObject(context, GetStockObject(DEFAULT_GUI_FONT));
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, GetSysColor(COLOR_BTNTEXT));
    DrawTextW(context, L"ok", -1, &rect, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    SelectObject(context, font);
    ReleaseDC(window, context);
}

bool trackOkButton(HWND window) {
    bool pressed = true;
    drawOkButton(window, pressed);
    SetCapture(window);
    MSG message;
    while (GetCapture() == window &&
           GetMessageW(&message, nullptr, WM_MOUSEFIRST, WM_MOUSELAST) > 0) {
        bool inside = isOnOkButton(window, message.pt);
        if (inside != pressed) drawOkButton(window, inside);
        pressed = inside;
        if (message.message == WM_LBUTTONUP) break;
    }
    bool kept = GetCapture() == window;
    ReleaseCapture();
    drawOkButton(window, false);
    return kept && pressed;
}
