// The device's menu bar: a command bar at the bottom of the screen that belongs to a top-level
// window but never takes the activation from it. It answers tool bar messages through the tool bar
// inside it, and drops menus down by itself. Its user data stays empty: programs look there for
// records of their own.

#include "menu_bar.h"
#include "aygshell.h"
#include "emulator.h"
#include "menu_bar_class.h"
#include "tool_bar_resource.h"
#include <map>

static constexpr int buttonHeight = 22; // on the usual screen

static ATOM menuBarAtom;
static HFONT barFont;

static SIZE screen() {
    SIZE size;
    Emulator_GetScreen(&size);
    return size;
}

static int panelButtonWidth() {
    constexpr int width = 26; // at the right end; shows and hides the input panel
    return Emulator_GetVariety()->hasNoInputPanel ? 0 : scaledToScreen(width);
}

namespace {

struct MenuBar {
    HWND toolbar;
    std::map<int, HMENU> subMenus; // by command id
};

} // namespace

static MenuBar* barOf(HWND window) { return reinterpret_cast<MenuBar*>(GetWindowLongW(window, 0)); }

static HWND makeToolbar(HWND bar, UINT id) {
    constexpr DWORD style = WS_CHILD | WS_VISIBLE | CCS_NORESIZE | CCS_NOPARENTALIGN |
                            CCS_NODIVIDER | TBSTYLE_LIST | TBSTYLE_FLAT;
    HWND toolbar = CreateWindowExW(
        0, TOOLBARCLASSNAMEW, nullptr, style, 0, 0, screen().cx - panelButtonWidth(),
        menuBarHeight(), bar, reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), nullptr, nullptr);
    if (!toolbar) return nullptr;
    SendMessageW(toolbar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    SendMessageW(toolbar, WM_SETFONT, reinterpret_cast<WPARAM>(barFont), FALSE);
    SendMessageW(toolbar, TB_SETBUTTONSIZE, 0, MAKELPARAM(0, scaledToScreen(buttonHeight)));
    return toolbar;
}

// Without this flag, the bar starts with the buttons of a resource of the program's.
static constexpr DWORD withoutResource = 1;

static bool addButtons(HWND toolbar, const SHMENUBARINFO& info) {
    if (info.dwFlags & withoutResource) return true;
    auto buttons = loadToolBar(info.hInstRes, info.nToolBarId);
    if (!buttons) return false;
    SendMessageW(toolbar, TB_ADDBUTTONSW, buttons->size(),
                 reinterpret_cast<LPARAM>(buttons->data()));
    return true;
}

static bool create(HWND window, const SHMENUBARINFO& info) {
    HWND toolbar = makeToolbar(window, info.nToolBarId);
    if (!toolbar || !addButtons(toolbar, info)) return false;
    SetWindowLongW(window, 0, reinterpret_cast<LONG>(new MenuBar{toolbar, {}}));
    return true; // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks) the window's, until it goes
}

// The screen may have been turned.
static void takePlace(HWND window) {
    constexpr UINT flags = SWP_NOZORDER | SWP_NOACTIVATE;
    SIZE size = screen();
    SetWindowPos(barOf(window)->toolbar, nullptr, 0, 0, size.cx - panelButtonWidth(),
                 menuBarHeight(), flags);
    SetWindowPos(window, nullptr, 0, size.cy - menuBarHeight(), size.cx, menuBarHeight(), flags);
    InvalidateRect(window, nullptr, TRUE);
}

static void destroy(HWND window) {
    delete barOf(window);
    SetWindowLongW(window, 0, 0);
}

static void setSubMenu(MenuBar* bar, int command, HMENU menu) {
    if (menu)
        bar->subMenus[command] = menu;
    else
        bar->subMenus.erase(command);
}

// The owner gets the menu's messages, and the command that is chosen in it.
static LRESULT dropDown(HWND window, const NMTOOLBARW& button) {
    MenuBar* bar = barOf(window);
    auto menu = bar->subMenus.find(button.iItem);
    if (menu == bar->subMenus.end()) return TBDDRET_NODEFAULT;
    RECT place;
    SendMessageW(bar->toolbar, TB_GETRECT, button.iItem, reinterpret_cast<LPARAM>(&place));
    MapWindowPoints(bar->toolbar, nullptr, reinterpret_cast<POINT*>(&place), 2);
    TrackPopupMenuEx(menu->second, TPM_LEFTALIGN | TPM_BOTTOMALIGN, place.left, place.top,
                     GetWindow(window, GW_OWNER), nullptr);
    return TBDDRET_DEFAULT;
}

// A little keyboard.
static void drawPanelButton(HDC context) {
    RECT place = {screen().cx - panelButtonWidth(), 0, screen().cx, menuBarHeight()};
    UINT pushed = Emulator_IsInputPanelShown() ? DFCS_PUSHED : 0;
    DrawFrameControl(context, &place, DFC_BUTTON, DFCS_BUTTONPUSH | pushed);
    InflateRect(&place, -scaledToScreen(5), -scaledToScreen(8));
    FrameRect(context, &place, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    for (LONG y = place.top + 2; y < place.bottom - 1; y += 2)
        for (LONG x = place.left + 2; x < place.right - 1; x += 2) SetPixel(context, x, y, 0);
}

static void paintBesideToolbar(HWND window) {
    PAINTSTRUCT paint;
    HDC context = BeginPaint(window, &paint);
    if (panelButtonWidth()) drawPanelButton(context);
    EndPaint(window, &paint);
}

static void tapPanelButton(HWND window) {
    Emulator_ShowInputPanel(!Emulator_IsInputPanelShown());
    InvalidateRect(window, nullptr, FALSE);
}

// The desk's takes descriptions of later systems' sizes too.
static LRESULT askToolbar(HWND toolbar, UINT message, WPARAM wParam, LPARAM lParam) {
    bool reads = message == TB_GETBUTTONINFOW;
    bool describes = reads || message == TB_SETBUTTONINFOW;
    if (describes &&
        reinterpret_cast<const TBBUTTONINFOW*>(lParam)->cbSize != sizeof(TBBUTTONINFOW))
        return reads ? -1 : FALSE;
    return SendMessageW(toolbar, message, wParam, lParam);
}

static LRESULT CALLBACK menuBarProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CREATE: {
        auto* creation = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        auto* info = static_cast<const SHMENUBARINFO*>(creation->lpCreateParams);
        return create(window, *info) ? 0 : -1;
    }
    case WM_NCDESTROY:
        destroy(window);
        break;
    case WM_MOUSEACTIVATE:
        return MA_NOACTIVATE;
    case WM_WINDOWPOSCHANGING:
        reinterpret_cast<WINDOWPOS*>(lParam)->flags |= SWP_NOACTIVATE;
        break;
    case WM_PAINT:
        paintBesideToolbar(window);
        return 0;
    case WM_LBUTTONDOWN: // beside the tool bar
        tapPanelButton(window);
        return 0;
    case WM_SETTINGCHANGE:
        if (wParam == SPI_SETWORKAREA) takePlace(window);
        break;
    case WM_COMMAND:
        return SendMessageW(GetWindow(window, GW_OWNER), WM_COMMAND, wParam,
                            reinterpret_cast<LPARAM>(window));
    case WM_NOTIFY:
        if (reinterpret_cast<const NMHDR*>(lParam)->code != UINT(TBN_DROPDOWN)) break;
        return dropDown(window, *reinterpret_cast<const NMTOOLBARW*>(lParam));
    case SHCMBM_SETSUBMENU:
        setSubMenu(barOf(window), static_cast<int>(wParam), reinterpret_cast<HMENU>(lParam));
        return 0;
    }
    if (message >= WM_USER && message < WM_APP)
        return askToolbar(barOf(window)->toolbar, message, wParam, lParam);
    return DefWindowProcW(window, message, wParam, lParam);
}

bool registerMenuBarClass(HINSTANCE instance) {
    InitCommonControls();
    barFont = newBarFont();
    WNDCLASSW windowClass = {};
    windowClass.style = CS_GLOBALCLASS;
    windowClass.lpfnWndProc = menuBarProc;
    windowClass.cbWndExtra = sizeof(MenuBar*);
    windowClass.hInstance = instance;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    windowClass.lpszClassName = menuBarClass;
    menuBarAtom = RegisterClassW(&windowClass);
    return menuBarAtom != 0;
}

static bool isMenuBarOf(HWND window, HWND owner) {
    return GetClassLongW(window, GCW_ATOM) == menuBarAtom && GetWindow(window, GW_OWNER) == owner;
}

namespace {

struct Search {
    HWND owner;
    HWND found;
};

} // namespace

static BOOL CALLBACK findBar(HWND window, LPARAM lParam) {
    auto* search = reinterpret_cast<Search*>(lParam);
    if (!isMenuBarOf(window, search->owner)) return TRUE;
    bool shown = IsWindowVisible(window);
    if (shown || !search->found) search->found = window;
    return !shown;
}

extern "C" {

BOOL WINAPI SHCreateMenuBar(SHMENUBARINFO* info) {
    info->hwndMB = nullptr;
    if (info->cbSize != sizeof(*info) || !IsWindow(info->hwndParent)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    info->hwndMB =
        CreateWindowExW(WS_EX_NOACTIVATE | WS_EX_TOOLWINDOW, menuBarClass, nullptr,
                        WS_POPUP | WS_CLIPCHILDREN, 0, screen().cy - menuBarHeight(), screen().cx,
                        menuBarHeight(), info->hwndParent, nullptr, nullptr, info);
    return info->hwndMB != nullptr;
}

HWND WINAPI SHFindMenuBar(HWND window) {
    Search search = {window, nullptr};
    EnumThreadWindows(GetWindowThreadProcessId(window, nullptr), findBar,
                      reinterpret_cast<LPARAM>(&search));
    return search.found;
}
}
