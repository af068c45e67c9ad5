#include "dialog_class.h"
#include "menu_bar_class.h"
#include "ok_button.h"
#include "task_bar.h"

// Behind what the desk keeps for dialogs, aligned.
static constexpr int okButtonField = (DLGWINDOWEXTRA + 3) & ~3;

static ATOM dialogClass;

bool isDialog(HWND window) { return GetClassLongW(window, GCW_ATOM) == dialogClass; }

bool hasOkButton(HWND window) { return GetWindowLongW(window, okButtonField) != 0; }

void setOkButton(HWND window, bool has) { SetWindowLongW(window, okButtonField, has); }

// A menu bar does not stay on the screen without the window that it belongs to.
static void hideMenuBars(HWND owner) {
    for (HWND bar = FindWindowExW(nullptr, nullptr, menuBarClass, nullptr); bar;
         bar = FindWindowExW(nullptr, bar, menuBarClass, nullptr)) {
        if (GetWindow(bar, GW_OWNER) == owner) ShowWindow(bar, SW_HIDE);
    }
}

static LRESULT CALLBACK dialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result;
    switch (message) {
    case WM_CLOSE: // the program decides what it means
        return 0;
    case WM_SHOWWINDOW:
        if (!wParam) hideMenuBars(window);
        break;
    case WM_NCPAINT:
    case WM_NCACTIVATE:
    case WM_SETTEXT:
        result = DefDlgProcW(window, message, wParam, lParam);
        drawOkButton(window, false);
        if (message == WM_NCACTIVATE && wParam) showTitleOf(window);
        if (message == WM_SETTEXT) titleHasChanged(window);
        return result;
    case WM_NCDESTROY:
        result = DefDlgProcW(window, message, wParam, lParam);
        titleHasChanged(window);
        return result;
    case WM_NCHITTEST:
        if (isOnOkButton(window, POINT{static_cast<short>(LOWORD(lParam)),
                                       static_cast<short>(HIWORD(lParam))}))
            return okButtonHit;
        break;
    case WM_NCLBUTTONDOWN:
    case WM_NCLBUTTONDBLCLK:
        if (wParam != okButtonHit) break;
        if (trackOkButton(window)) PostMessageW(window, WM_COMMAND, IDOK, 0);
        return 0;
    }
    return DefDlgProcW(window, message, wParam, lParam);
}

bool registerDialogClass(HINSTANCE instance) {
    WNDCLASSW windowClass = {};
    windowClass.style = CS_DBLCLKS | CS_GLOBALCLASS;
    windowClass.lpfnWndProc = dialogProc;
    windowClass.cbWndExtra = okButtonField + sizeof(LONG);
    windowClass.hInstance = instance;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.lpszClassName = L"Dialog";
    dialogClass = RegisterClassW(&windowClass);
    return dialogClass != 0;
}
