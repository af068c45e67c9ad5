#include "aygshell.h"
#include "bridge/memory.h"
#include "control/shell.h"
#include "display/requests.h"
#include "menu/menu.h"
#include "menu/menu_item.h"
#include <commctrl.h>

static constexpr UINT menuBarToolbar = 100;
static constexpr wchar_t creationFailed[] = L"Unable to create menu bar!";

MenuRecord* MenuBar_Create(ControlRecord* shell, ErrorRecord* error) {
    MenuRecord* menuBar = Menu_Allocate(shell);
    if (!menuBar) {
        Win32Error_SetError(error, errorOutOfMemory, creationFailed);
        return nullptr;
    }
    SHMENUBARINFO info = {};
    info.cbSize = sizeof(info);
    info.hwndParent = shell->hwnd;
    info.dwFlags = SHCMBF_EMPTYBAR;
    info.nToolBarId = menuBarToolbar;
    info.hInstRes = menuBar->display->instance;
    // A window that goes would leave its bar behind.
    if (Widget_IsEnding(shell) || !SHCreateMenuBar(&info))
        Win32Error_SetError(error, errorOutOfMemory, creationFailed);
    menuBar->menuBarWindow = info.hwndMB;
    // The bar comes with a button of the system's.
    if (menuBar->menuBarWindow) ask(menuBar->menuBarWindow, TB_DELETEBUTTON);
    return menuBar;
}

void MenuBar_Destroy(MenuRecord* menuBar, ErrorRecord* error) {
    if (!menuBar) return;
    if (Widget_End(menuBar, error)) Widget_Free(menuBar);
}

HWND MenuBar_GetWindow(const MenuRecord* menuBar) {
    return menuBar ? menuBar->menuBarWindow : nullptr;
}
