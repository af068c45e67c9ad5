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

static void sized(const ShellRecord* shell, WPARAM kind) {
    if (kind == SIZE_MINIMIZED) {
        fireWindowEvent(shell->callbackTarget, WindowEvent::minimized);
        return;
    }
    if (kind != SIZE_RESTORED && kind != SIZE_MAXIMIZED) return;
    RECT rect = windowRect(shell->hwnd);
    fireResize(shell->callbackTarget, rect.right - rect.left, rect.bottom - rect.top);
}

static LRESULT activate(ShellRecord* shell, Message message) {
    HWND window = shell->hwnd;
    SHHandleWMActivate(window, message.wParam, message.lParam, &shell->activation, 0);
    shell = shellOf(window);
    if (!shell) return 0;
    if (LOWORD(message.wParam) == WA_INACTIVE) {
        fireWindowEvent(shell->callbackTarget, WindowEvent::deactivated);
        return Composite_HandleIn(window, message);
    }
    bool minimized = HIWORD(message.wParam) != 0;
    if (minimized) return 0;
    fireWindowEvent(shell->callbackTarget, WindowEvent::activated);
    shell = shellOf(window);
    if (!shell) return 0;
    Shell_ShowMenuBar(shell);
    shell = shellOf(window);
    if (!shell) return 0;
    if (!shell->parent) Shell_Maximize(shell);
    return Composite_HandleIn(window, message);
}

static LRESULT destroyed(ShellRecord* shell, Message message) {
    HWND window = shell->hwnd;
    DisplayRecord* display = shell->display;
    if (Display_ForgetShell(display, shell)) Display_ApplyModality(display);
    return Composite_HandleIn(window, message);
}

static void settingChanged(ShellRecord* shell, Message message) {
    HWND window = shell->parent ? nullptr : shell->hwnd;
    SHHandleWMSettingChange(window, message.wParam, message.lParam, &shell->activation);
}

static MenuItemRecord* itemOf(const ShellRecord* shell, UINT ownerType, ULONG_PTR itemData) {
    if (ownerType != ODT_MENU) return nullptr;
    return Display_FindCommandItem(shell->display, static_cast<LONG>(itemData));
}

static void drawMenuItem(const ShellRecord* shell, Message message) {
    auto* drawing = message.details<const DRAWITEMSTRUCT>();
    MenuItemRecord* item = itemOf(shell, drawing->CtlType, drawing->itemData);
    if (item) MenuItem_Draw(item, message);
}

static bool measureMenuItem(const ShellRecord* shell, Message message) {
    auto* measuring = message.details<const MEASUREITEMSTRUCT>();
    MenuItemRecord* item = itemOf(shell, measuring->CtlType, measuring->itemData);
    return item && MenuItem_Measure(item, message);
}

static bool isOkButton(HWND window, Message message) {
    HWND sender = message.sender();
    return message.command() == IDOK && (!sender || sender == window);
}

static bool isFromMenuBar(const ShellRecord* shell, HWND sender) {
    HWND barWindow = shell->menuBar ? MenuBar_GetWindow(shell->menuBar) : nullptr;
    return barWindow && sender && (sender == barWindow || IsChild(barWindow, sender));
}

static LRESULT command(ShellRecord* shell, Message message) {
    HWND window = shell->hwnd;
    if (isOkButton(window, message)) {
        PostMessageW(window, WM_CLOSE, 0, 0);
        return 0;
    }
    if (isFromMenuBar(shell, message.sender())) {
        MenuItemRecord* item = Display_FindCommandItem(shell->display, message.command());
        if (item) MenuItem_Select(item, message);
    }
    return Composite_HandleIn(window, message);
}

static LRESULT moveAbove(ShellRecord* shell, const ControlRecord* other) {
    Control_StackAbove(shell, other);
    if (!other) SetForegroundWindow(shell->hwnd);
    return 0;
}

static void updateModality(ShellRecord* shell, bool visible) {
    if (shell->style & styleModal)
        Display_UpdateModalShellVisibility(shell->display, shell, visible);
}

static LRESULT setBounds(ShellRecord* shell, Message message) {
    HWND window = shell->hwnd;
    const RECT& rect = message.bounds();
    if (shell->parent && !SetWindowPos(window, nullptr, rect.left, rect.top, rect.right - rect.left,
                                       rect.bottom - rect.top, SWP_NOZORDER))
        Win32Error_SetLast(message.error(), L"Could not change the size of the shell");
    shell = shellOf(window);
    if (!shell) return 0;
    Bounds bounds = Control_GetBounds(shell, message.error());
    fireResize(shell->callbackTarget, bounds.width, bounds.height);
    shell = shellOf(window);
    if (shell) fireMove(shell->callbackTarget, bounds.x, bounds.y);
    return 0;
}

// While a modal shell holds it back, the shell's window stays disabled.
static bool mayChangeEnabled(ShellRecord* shell, bool enabled) {
    return !Display_SetShellListed(shell->display, shell, enabled);
}

static LRESULT handle(ShellRecord* shell, Message message) {
    HWND window = shell->hwnd;
    switch (message.id) {
    case WM_DESTROY:
        return destroyed(shell, message);
    case WM_MOVE:
        moved(shell);
        break;
    case WM_SIZE:
        sized(shell, message.wParam);
        break;
    case WM_ACTIVATE:
        return activate(shell, message);
    case WM_SETTINGCHANGE:
        settingChanged(shell, message);
        break;
    case WM_DRAWITEM:
        drawMenuItem(shell, message);
        break;
    case WM_MEASUREITEM:
        if (measureMenuItem(shell, message)) return 1;
        break;
    case WM_COMMAND:
        return command(shell, message);
    case controlMoveAbove:
        return moveAbove(shell, message.record<const ControlRecord>());
    case controlSetVisible:
        updateModality(shell, message.flag());
        break;
    case controlGetMinimumSize:
        message.answer<POINT>() = {0, 0};
        return 0;
    case controlSetBounds:
        return setBounds(shell, message);
    case controlGetInsets:
        message.answer<Insets>() = Scrollable_MeasureInsets(window);
        return 0;
    case controlChildMoves:
        return 0;
    case controlSetEnabled:
        if (!mayChangeEnabled(shell, message.flag())) return 0;
        break;
    default:
        break;
    }
    return Composite_HandleIn(window, message);
}

LRESULT CALLBACK Shell_Proc(HWND window, UINT id, WPARAM wParam, LPARAM lParam) {
    return receive<ShellRecord, handle>(window, {id, wParam, lParam});
}
