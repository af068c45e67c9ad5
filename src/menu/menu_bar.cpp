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
    MenuRecord* bar = Menu_Allocate(shell);
    if (!bar) {
        Win32Error_SetError(error, errorOutOfMemory, creationFailed);
        return nullptr;
    }
    SHMENUBARINFO info = {};
    info.cbSize = sizeof(info);
    info.hwndParent = shell->hwnd;
    info.dwFlags = SHCMBF_EMPTYBAR;
    info.nToolBarId = menuBarToolbar;
    info.hInstRes = bar->display->instance;
    if (!SHCreateMenuBar(&info)) Win32Error_SetError(error, errorOutOfMemory, creationFailed);
    bar->menuBarWindow = info.hwndMB;
    // The bar comes with a button of the system's.
    if (bar->menuBarWindow) SendMessageW(bar->menuBarWindow, TB_DELETEBUTTON, 0, 0);
    return bar;
}

void MenuBar_Destroy(MenuRecord* bar, ErrorRecord* error) {
    if (!bar) return;
    if (Widget_End(bar, error)) Widget_Free(bar);
}

HWND MenuBar_GetWindow(const MenuRecord* bar) { return bar ? bar->menuBarWindow : nullptr; }
