#include "control/shell.h"
#include "bridge/memory.h"
#include "control/menu_hooks.h"
#include "display/requests.h"
#include "display/shells.h"

static constexpr wchar_t shellClass[] = L"Dialog";
static constexpr UINT frameChanged =
    SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED;

HWND Shell_GetWindow(const ShellRecord* shell) { return shell->hwnd; }

const ShellRecord* Shell_GetParent(const ShellRecord* shell) {
    return static_cast<const ShellRecord*>(shell->parent);
}

ShellAccelerators* Shell_GetAccelerators(ShellRecord* shell) { return &shell->accelerators; }

MenuRecord* Shell_GetCurrentMenuBar(const ShellRecord* shell) {
    return shell->menuBar ? shell->menuBar : shell->defaultMenuBar;
}

static DWORD windowStyleOf(const ShellRecord* parent, DWORD javaStyle) {
    DWORD style = _Scrollable_Style(javaStyle) & ~(WS_CHILD | WS_TABSTOP);
    if (parent) return style | WS_POPUP;
    return javaStyle & styleCloseBox ? style | WS_SYSMENU : style;
}

static DWORD extendedStyleOf(const ShellRecord* parent, DWORD javaStyle) {
    DWORD style = javaStyle & styleBorder ? WS_EX_DLGMODALFRAME : 0;
    if (parent && (javaStyle & styleCloseBox)) style |= WS_EX_CAPTIONOKBTN;
    return style;
}

// The system gives every top-level window a caption; only some child shells keep it.
static void fixFrame(HWND window, const ShellRecord* parent, DWORD javaStyle) {
    DWORD style = GetWindowLongW(window, GWL_STYLE) & ~WS_CAPTION;
    if (parent && (javaStyle & styleTitle)) style |= WS_CAPTION;
    if (javaStyle & styleBorder) style |= WS_BORDER;
    SetWindowLongW(window, GWL_STYLE, style);
    SetWindowPos(window, nullptr, 0, 0, 0, 0, frameChanged);
}

static int disposeShell(WidgetRecord* widget, ErrorRecord* error) {
    auto* shell = static_cast<ShellRecord*>(widget);
    Display_RemoveControl(shell->display, shell);
    freeBlock(shell->accelerators.entries);
    shell->accelerators.entries = nullptr;
    shell->accelerators.count = 0;
    Accelerators_DropTable(&shell->accelerators);
    MenuBar_Destroy(shell->defaultMenuBar, error);
    shell->defaultMenuBar = nullptr;
    return _Dispose_Scrollable(shell, error);
}

static void attach(ShellRecord* shell) {
    SetWindowLongW(shell->hwnd, GWL_USERDATA, reinterpret_cast<LONG>(shell));
    WNDCLASSW windowClass = {};
    GetClassInfoW(shell->display->instance, shellClass, &windowClass);
    shell->classProc = windowClass.lpfnWndProc;
    SetWindowLongW(shell->hwnd, GWL_WNDPROC, reinterpret_cast<LONG>(Shell_Proc));
}

static HWND createWindow(DisplayRecord* display, const ShellRecord* parent, DWORD javaStyle,
                         ErrorRecord* error) {
    HWND window = CreateWindowExW(extendedStyleOf(parent, javaStyle), shellClass, nullptr,
                                  windowStyleOf(parent, javaStyle), CW_USEDEFAULT, CW_USEDEFAULT,
                                  CW_USEDEFAULT, CW_USEDEFAULT, parent ? parent->hwnd : nullptr,
                                  nullptr, display->instance, nullptr);
    if (!window) {
        Win32Error_SetError(error, GetLastError(), L"Unable to create window");
        return nullptr;
    }
    fixFrame(window, parent, javaStyle);
    return window;
}

ShellRecord* Shell_Create(DisplayRecord* display, ShellRecord* parent, DWORD javaStyle,
                          ErrorRecord* error) {
    if (parent) display = Control_GetDisplay(parent);
    auto* shell = allocate<ShellRecord>();
    if (!shell) return nullptr; // without an error, that is meant
    HWND window = createWindow(display, parent, javaStyle, error);
    if (!window) {
        freeBlock(shell);
        return nullptr;
    }
    Control_FillHead(shell, display, parent, window, javaStyle);
    shell->dispose = disposeShell;
    shell->inheritsBackground = TRUE;
    shell->activation.cbSize = sizeof(shell->activation);
    attach(shell);
    shell->defaultMenuBar = MenuBar_Create(shell, error);
    if (!parent) Shell_Maximize(shell);
    Display_AddControl(display, shell, error);
    return shell;
}

static ShellRecord* createOnDisplayThread(DisplayRecord* display, ShellRecord* parent,
                                          DWORD javaStyle, ErrorRecord* error) {
    if (Display_IsCurrentThread(display)) return Shell_Create(display, parent, javaStyle, error);
    ShellRequest request = {parent, error};
    return reinterpret_cast<ShellRecord*>(SendMessageW(
        display->messageWindow, requestCreateShell, javaStyle, reinterpret_cast<LPARAM>(&request)));
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
    HWND bar = MenuBar_GetWindow(Shell_GetCurrentMenuBar(shell));
    int width = work.right - work.left;
    int height = work.bottom - work.top - visibleHeight(bar);
    if (shell->style & styleBorder) dropBorders(shell->hwnd);

    RECT now;
    GetWindowRect(shell->hwnd, &now);
    bool sameSize = now.right - now.left == width && now.bottom - now.top == height;
    SetWindowPos(shell->hwnd, nullptr, work.left, work.top, width, height,
                 SWP_NOZORDER | SWP_NOACTIVATE | (sameSize ? SWP_NOSIZE : SWP_FRAMECHANGED));
}

void Shell_SetMaximized(ShellRecord* shell, bool maximized, ErrorRecord*) {
    if (maximized) Shell_Maximize(shell);
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

static void showBar(const MenuRecord* bar, int command) {
    HWND window = MenuBar_GetWindow(bar);
    if (window) ShowWindow(window, command);
}

void Shell_SetMenuBar(ShellRecord* shell, MenuRecord* bar, ErrorRecord*) {
    showBar(Shell_GetCurrentMenuBar(shell), SW_HIDE);
    shell->menuBar = bar;
    showBar(Shell_GetCurrentMenuBar(shell), SW_SHOW);
    if (!shell->parent) Shell_Maximize(shell);
}
