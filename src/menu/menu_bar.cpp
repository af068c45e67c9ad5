#include "aygshell.h"
#include "bridge/memory.h"
#include "control/menu_hooks.h"
#include "control/shell.h"
#include "menu/menu.h"
#include <commctrl.h>

static constexpr UINT menuBarToolbar = 100;
static constexpr wchar_t creationFailed[] = L"Unable to create menu bar!";

static int disposeMenu(WidgetRecord* widget, ErrorRecord*) {
    auto* menu = static_cast<MenuRecord*>(widget);
    return menu->menuHandle ? DestroyMenu(menu->menuHandle) : 0;
}

MenuRecord* MenuBar_Create(ShellRecord* shell, ErrorRecord* error) {
    auto* bar = allocate<MenuRecord>();
    if (!bar) {
        Win32Error_SetError(error, errorOutOfMemory, creationFailed);
        return nullptr;
    }
    bar->display = shell->display;
    bar->dispose = disposeMenu;
    bar->owner = shell;

    SHMENUBARINFO info = {};
    info.cbSize = sizeof(info);
    info.hwndParent = shell->hwnd;
    info.dwFlags = SHCMBF_EMPTYBAR;
    info.nToolBarId = menuBarToolbar;
    info.hInstRes = shell->display->instance;
    if (!SHCreateMenuBar(&info)) Win32Error_SetError(error, errorOutOfMemory, creationFailed);
    bar->menuBarWindow = info.hwndMB;
    // The bar comes with a button of the system's.
    if (bar->menuBarWindow) SendMessageW(bar->menuBarWindow, TB_DELETEBUTTON, 0, 0);
    return bar;
}

void MenuBar_Destroy(MenuRecord* bar, ErrorRecord* error) {
    if (!bar) return;
    bar->dispose(bar, error);
    freeBlock(bar);
}

HWND MenuBar_GetWindow(const MenuRecord* bar) { return bar ? bar->menuBarWindow : nullptr; }
