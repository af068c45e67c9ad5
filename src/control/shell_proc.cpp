#include "control/appearance.h"
#include "control/shell.h"
#include "display/commands.h"
#include "display/shells.h"
#include "menu/menu.h"
#include "menu/menu_item.h"

static ShellRecord* shellOf(HWND window) { return static_cast<ShellRecord*>(controlOf(window)); }

static RECT windowRect(HWND window) {
    RECT rect = {};
    GetWindowRect(window, &rect);
    return rect;
}

static void moved(const ShellRecord* shell) {
    RECT rect = windowRect(shell->hwnd);
    fireMove(shell->callbackTarget, rect.left, rect.top);
}

static void sized(const ShellRecord* shell, WPARAM wParam) {
    if (wParam == SIZE_MINIMIZED) {
        fireWindowEvent(shell->callbackTarget, WindowEvent::minimized);
        return;
    }
    if (wParam != SIZE_RESTORED && wParam != SIZE_MAXIMIZED) return;
    RECT rect = windowRect(shell->hwnd);
    fireResize(shell->callbackTarget, rect.right - rect.left, rect.bottom - rect.top);
}

static LRESULT activate(ShellRecord* shell, WPARAM wParam, LPARAM lParam) {
    HWND window = shell->hwnd;
    SHHandleWMActivate(window, wParam, lParam, &shell->activation, 0);
    shell = shellOf(window);
    if (!shell) return 0;
    if (LOWORD(wParam) == WA_INACTIVE) {
        fireWindowEvent(shell->callbackTarget, WindowEvent::deactivated);
        return Composite_Proc(window, WM_ACTIVATE, wParam, lParam);
    }
    bool minimized = HIWORD(wParam) != 0;
    if (minimized) return 0;
    fireWindowEvent(shell->callbackTarget, WindowEvent::activated);
    shell = shellOf(window);
    if (!shell) return 0;
    Shell_ShowMenuBar(shell);
    shell = shellOf(window);
    if (!shell) return 0;
    if (!shell->parent) Shell_Maximize(shell);
    return Composite_Proc(window, WM_ACTIVATE, wParam, lParam);
}

static LRESULT destroyed(ShellRecord* shell, WPARAM wParam, LPARAM lParam) {
    HWND window = shell->hwnd;
    DisplayRecord* display = shell->display;
    if (Display_ForgetShell(display, shell)) Display_ApplyModality(display);
    return Composite_Proc(window, WM_DESTROY, wParam, lParam);
}

static void settingChanged(ShellRecord* shell, WPARAM wParam, LPARAM lParam) {
    HWND window = shell->parent ? nullptr : shell->hwnd;
    SHHandleWMSettingChange(window, wParam, lParam, &shell->activation);
}

static MenuItemRecord* itemOf(const ShellRecord* shell, UINT ownerType, ULONG_PTR itemData) {
    if (ownerType != ODT_MENU) return nullptr;
    return Display_FindCommandItem(shell->display, static_cast<LONG>(itemData));
}

static void drawMenuItem(const ShellRecord* shell, WPARAM wParam, LPARAM lParam) {
    auto* drawing = reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
    MenuItemRecord* item = itemOf(shell, drawing->CtlType, drawing->itemData);
    if (item) MenuItem_Draw(item, wParam, lParam);
}

static bool measureMenuItem(const ShellRecord* shell, WPARAM wParam, LPARAM lParam) {
    auto* measuring = reinterpret_cast<const MEASUREITEMSTRUCT*>(lParam);
    MenuItemRecord* item = itemOf(shell, measuring->CtlType, measuring->itemData);
    return item && MenuItem_Measure(item, wParam, lParam);
}

static bool isOkButton(HWND window, WPARAM wParam, LPARAM lParam) {
    HWND sender = reinterpret_cast<HWND>(lParam);
    return LOWORD(wParam) == IDOK && (!sender || sender == window);
}

static bool isFromMenuBar(const ShellRecord* shell, LPARAM lParam) {
    HWND barWindow = shell->menuBar ? MenuBar_GetWindow(shell->menuBar) : nullptr;
    HWND sender = reinterpret_cast<HWND>(lParam);
    return barWindow && sender && (sender == barWindow || IsChild(barWindow, sender));
}

static LRESULT command(ShellRecord* shell, WPARAM wParam, LPARAM lParam) {
    HWND window = shell->hwnd;
    if (isOkButton(window, wParam, lParam)) {
        PostMessageW(window, WM_CLOSE, 0, 0);
        return 0;
    }
    if (isFromMenuBar(shell, lParam)) {
        MenuItemRecord* item = Display_FindCommandItem(shell->display, LOWORD(wParam));
        if (item) MenuItem_Select(item, wParam);
    }
    return Composite_Proc(window, WM_COMMAND, wParam, lParam);
}

static LRESULT moveAbove(ShellRecord* shell, WPARAM wParam) {
    Control_StackAbove(shell, reinterpret_cast<const ControlRecord*>(wParam));
    if (!wParam) SetForegroundWindow(shell->hwnd);
    return 0;
}

static void updateModality(ShellRecord* shell, WPARAM visible) {
    if (shell->style & styleModal)
        Display_UpdateModalShellVisibility(shell->display, shell, visible != 0);
}

static LRESULT setBounds(ShellRecord* shell, WPARAM wParam, LPARAM lParam) {
    HWND window = shell->hwnd;
    auto* rect = reinterpret_cast<const RECT*>(wParam);
    if (shell->parent &&
        !SetWindowPos(window, nullptr, rect->left, rect->top, rect->right - rect->left,
                      rect->bottom - rect->top, SWP_NOZORDER))
        Win32Error_SetLast(errorOf(lParam), L"Could not change the size of the shell");
    shell = shellOf(window);
    if (!shell) return 0;
    Bounds bounds = Control_GetBounds(shell, errorOf(lParam));
    fireResize(shell->callbackTarget, bounds.width, bounds.height);
    shell = shellOf(window);
    if (shell) fireMove(shell->callbackTarget, bounds.x, bounds.y);
    return 0;
}

// While a modal shell holds it back, the shell's window stays disabled.
static bool mayChangeEnabled(ShellRecord* shell, WPARAM enabled) {
    return !Display_SetControlEnabled(shell->display, shell, enabled != 0);
}

LRESULT CALLBACK Shell_Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    ShellRecord* shell = shellOf(window);
    if (!shell) return DefWindowProcW(window, message, wParam, lParam);
    switch (message) {
    case WM_DESTROY:
        return destroyed(shell, wParam, lParam);
    case WM_MOVE:
        moved(shell);
        break;
    case WM_SIZE:
        sized(shell, wParam);
        break;
    case WM_ACTIVATE:
        return activate(shell, wParam, lParam);
    case WM_SETTINGCHANGE:
        settingChanged(shell, wParam, lParam);
        break;
    case WM_DRAWITEM:
        drawMenuItem(shell, wParam, lParam);
        break;
    case WM_MEASUREITEM:
        if (measureMenuItem(shell, wParam, lParam)) return 1;
        break;
    case WM_COMMAND:
        return command(shell, wParam, lParam);
    case controlMoveAbove:
        return moveAbove(shell, wParam);
    case controlSetVisible:
        updateModality(shell, wParam);
        break;
    case controlGetMinimumSize:
        *reinterpret_cast<POINT*>(wParam) = {0, 0};
        return 0;
    case controlSetBounds:
        return setBounds(shell, wParam, lParam);
    case controlGetInsets:
        *reinterpret_cast<Insets*>(wParam) = Scrollable_MeasureInsets(window);
        return 0;
    case controlChildMoves:
        return 0;
    case controlSetEnabled:
        if (!mayChangeEnabled(shell, wParam)) return 0;
        break;
    default:
        break;
    }
    return Composite_Proc(window, message, wParam, lParam);
}
