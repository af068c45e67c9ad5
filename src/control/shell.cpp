#include "control/shell.h"
#include "bridge/leaf_lock.h"
#include "bridge/memory.h"
#include "display/requests.h"
#include "display/shells.h"
#include "menu/menu.h"
#include "menu/menu_item.h"

static constexpr wchar_t shellClass[] = L"Dialog";
static constexpr wchar_t creationFailed[] = L"Unable to create window";
static constexpr UINT frameChanged =
    SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED;

HWND Shell_GetWindow(const ShellRecord* shell) { return shell->hwnd; }

const ShellRecord* Shell_GetParent(const ShellRecord* shell) {
    return static_cast<const ShellRecord*>(shell->parent);
}

ShellRecord** Shell_GetNext(ShellRecord* shell) { return &shell->next; }

ShellRecord* Shell_Find(HWND window) {
    ControlRecord* control = controlOf(window);
    return control ? Display_FindShell(control->display, window) : nullptr;
}

ShellAccelerators* Shell_GetAccelerators(ShellRecord* shell) { return &shell->accelerators; }

MenuRecord* Shell_GetCurrentMenuBar(const ShellRecord* shell) {
    return shell->menuBar ? shell->menuBar : shell->defaultMenuBar;
}

static DWORD windowStyleOf(HWND parent, DWORD javaStyle) {
    DWORD style = _Scrollable_Style(javaStyle) & ~(WS_CHILD | WS_TABSTOP);
    if (parent) return style | WS_POPUP;
    return javaStyle & styleCloseBox ? style | WS_SYSMENU : style;
}

static DWORD extendedStyleOf(HWND parent, DWORD javaStyle) {
    DWORD style = javaStyle & styleBorder ? WS_EX_DLGMODALFRAME : 0;
    if (parent && (javaStyle & styleCloseBox)) style |= WS_EX_CAPTIONOKBTN;
    return style;
}

// The system gives every top-level window a caption; only some child shells keep it.
static void fixFrame(HWND window, HWND parent, DWORD javaStyle) {
    DWORD style = GetWindowLongW(window, GWL_STYLE) & ~WS_CAPTION;
    if (parent && (javaStyle & styleTitle)) style |= WS_CAPTION;
    if (javaStyle & styleBorder) style |= WS_BORDER;
    SetWindowLongW(window, GWL_STYLE, style);
    SetWindowPos(window, nullptr, 0, 0, 0, 0, frameChanged);
}

// Those are left whose windows have not gone with the shell's, which the system did not destroy.
static void leaveChildren(const ShellRecord* shell) {
    LeafLock lock;
    for (ShellRecord* child = shell->display->shells; child; child = child->next)
        if (child->parent == shell) child->parent = nullptr;
}

static int disposeShell(WidgetRecord* widget, ErrorRecord* error) {
    auto* shell = static_cast<ShellRecord*>(widget);
    Display_UnlistShell(shell->display, shell);
    Display_ForgetShell(shell->display, shell);
    Accelerators_Free(&shell->accelerators);
    MenuRecord* defaultBar = shell->defaultMenuBar;
    shell->defaultMenuBar = nullptr;
    MenuBar_Destroy(defaultBar, error);
    int result = _Dispose_Scrollable(shell, error);
    leaveChildren(shell);
    return result;
}

static HWND createWindow(const DisplayRecord* display, HWND parent, DWORD javaStyle,
                         ErrorRecord* error) {
    HWND window =
        CreateWindowExW(extendedStyleOf(parent, javaStyle), shellClass, nullptr,
                        windowStyleOf(parent, javaStyle), CW_USEDEFAULT, CW_USEDEFAULT,
                        CW_USEDEFAULT, CW_USEDEFAULT, parent, nullptr, display->instance, nullptr);
    if (!window) {
        Win32Error_SetLast(error, creationFailed);
        return nullptr;
    }
    fixFrame(window, parent, javaStyle);
    return window;
}

static bool isGone(ShellRecord* parent, HWND parentWindow) {
    return parent && controlOf(parentWindow) != parent;
}

ShellRecord* Shell_Create(DisplayRecord* display, ShellRecord* parent, DWORD javaStyle,
                          ErrorRecord* error) {
    if (parent) display = Control_GetDisplay(parent);
    HWND parentWindow = parent ? parent->hwnd : nullptr;
    Block<ShellRecord> record(allocate<ShellRecord>());
    // Quirk: Java gets no shell and no error when there is no memory for the record. Pinned by
    // ShellTest.no_memory_for_a_shell_gives_none_and_no_error.
    if (!record) return nullptr;
    HWND window = createWindow(display, parentWindow, javaStyle, error);
    if (window && isGone(parent, parentWindow)) {
        DestroyWindow(window);
        window = nullptr;
        Win32Error_SetError(error, ERROR_INVALID_WINDOW_HANDLE, creationFailed);
    }
    if (!window) return nullptr;
    ShellRecord* shell = record.release();
    Control_FillHead(shell, display, parent, window, javaStyle);
    shell->dispose = disposeShell;
    shell->inheritsBackground = TRUE;
    shell->activation.cbSize = sizeof(shell->activation);
    shell->classProc = Control_FindClassProc(display, shellClass);
    Control_Attach(shell, window, Shell_Proc);
    Display_RememberShell(display, shell);
    shell->defaultMenuBar = MenuBar_Create(shell, error);
    if (!parent) Shell_Maximize(shell);
    Display_ListShell(display, shell, error);
    return shell;
}

static ShellRecord* createOnDisplayThread(DisplayRecord* display, ShellRecord* parent,
                                          DWORD javaStyle, ErrorRecord* error) {
    if (Display_IsCurrentThread(display)) return Shell_Create(display, parent, javaStyle, error);
    ShellRequest request = {parent, error};
    return reinterpret_cast<ShellRecord*>(
        ask(display->messageWindow, requestCreateShell, javaStyle, &request));
}

ShellRecord* Shell_New(DisplayRecord* display, DWORD style, ErrorRecord* error) {
    return createOnDisplayThread(display, nullptr, style, error);
}

ShellRecord* Shell_NewChild(ShellRecord* parent, DWORD style, ErrorRecord* error) {
    return createOnDisplayThread(Control_GetDisplay(parent), parent, style, error);
}

void Shell_SetText(ShellRecord* shell, const wchar_t* text, ErrorRecord*) {
    SetWindowTextW(shell->hwnd, text ? text : L"");
}

static int visibleHeight(HWND window) {
    if (!window || !IsWindowVisible(window)) return 0;
    RECT rect;
    GetWindowRect(window, &rect);
    return rect.bottom - rect.top;
}

static void dropBorders(HWND window) {
    constexpr DWORD edges = WS_EX_CLIENTEDGE | WS_EX_WINDOWEDGE | WS_EX_STATICEDGE;
    SetWindowLongW(window, GWL_STYLE, GetWindowLongW(window, GWL_STYLE) & ~WS_BORDER);
    SetWindowLongW(window, GWL_EXSTYLE, GetWindowLongW(window, GWL_EXSTYLE) & ~edges);
}

void Shell_Maximize(ShellRecord* shell) {
    RECT work = {};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    HWND barWindow = MenuBar_GetWindow(Shell_GetCurrentMenuBar(shell));
    int width = work.right - work.left;
    int height = work.bottom - work.top - visibleHeight(barWindow);
    if (shell->style & styleBorder) dropBorders(shell->hwnd);

    RECT now;
    GetWindowRect(shell->hwnd, &now);
    bool sameSize = now.right - now.left == width && now.bottom - now.top == height;
    SetWindowPos(shell->hwnd, nullptr, work.left, work.top, width, height,
                 SWP_NOZORDER | SWP_NOACTIVATE | (sameSize ? SWP_NOSIZE : SWP_FRAMECHANGED));
}

void Shell_SetMaximized(ShellRecord* shell, bool maximized, ErrorRecord*) {
    if (maximized) Control_Run(shell, Shell_Maximize);
}

bool Shell_GetMinimized(ShellRecord*, ErrorRecord*) { return false; }

void Shell_SetMinimized(ShellRecord*, bool, ErrorRecord*) {}

void Shell_SetImage(ShellRecord*, ImageRecord*, ErrorRecord*) {}

void Shell_SetResizable(ShellRecord* shell, bool resizable, ErrorRecord*) {
    if (!shell->parent) return;
    DWORD style = GetWindowLongW(shell->hwnd, GWL_STYLE);
    style = resizable ? style | WS_THICKFRAME : style & ~WS_THICKFRAME;
    SetWindowLongW(shell->hwnd, GWL_STYLE, style);
    SetWindowPos(shell->hwnd, nullptr, 0, 0, 0, 0, frameChanged | SWP_NOOWNERZORDER);
}

void Shell_ShowMenuBar(const ShellRecord* shell) {
    HWND barWindow = MenuBar_GetWindow(Shell_GetCurrentMenuBar(shell));
    if (barWindow) ShowWindow(barWindow, SW_SHOW);
}

// The new bar is the shell's before anybody can dispose of it: it is taken out of the shell then.
static void changeBar(ShellRecord* shell, MenuRecord* menuBar) {
    HWND window = shell->hwnd;
    HWND shown = MenuBar_GetWindow(Shell_GetCurrentMenuBar(shell));
    shell->menuBar = menuBar;
    if (shown) ShowWindow(shown, SW_HIDE);
    shell = Shell_Find(window);
    if (!shell) return;
    Shell_ShowMenuBar(shell);
    shell = Shell_Find(window);
    if (shell && !shell->parent) Shell_Maximize(shell);
}

void Shell_SetMenuBar(ShellRecord* shell, MenuBarRecord* menuBar, ErrorRecord*) {
    Control_Run(shell, [=](ShellRecord* found) { changeBar(found, menuBar); });
}
