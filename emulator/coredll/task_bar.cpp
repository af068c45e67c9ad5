#include "task_bar.h"
#include "emulator.h"
#include "menu_bar_class.h"
#include "screen.h"

static constexpr UINT showTitle = WM_APP; // lParam: the window, null for the same as before

static HWND bar;
static HFONT barFont;
static HWND titled; // of the bar's thread only

// The button that turns the screen, at the right end; empty without one.
static RECT turnButton() {
    LONG right = screenSize().cx, size = Emulator_GetVariety()->taskBarHeight;
    return {Emulator_GetVariety()->hasTurnButton ? right - size : right, 0, right, size};
}

// A screen upright, and the same on its side.
static void drawTurnButton(HDC context, RECT place) {
    LONG size = place.bottom;
    DrawFrameControl(context, &place, DFC_BUTTON, DFCS_BUTTONPUSH);
    auto* black = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
    RECT upright = {place.left + size / 4, size / 4, place.left + size / 2, size * 3 / 4};
    FrameRect(context, &upright, black);
    RECT onItsSide = {upright.left, size / 2, place.left + size * 3 / 4, upright.bottom};
    FrameRect(context, &onItsSide, black);
}

static void paint(HWND window) {
    constexpr LONG margin = 6;
    PAINTSTRUCT paint;
    HDC context = BeginPaint(window, &paint);
    RECT place;
    GetClientRect(window, &place);
    FillRect(context, &place, GetSysColorBrush(COLOR_ACTIVECAPTION));
    wchar_t title[100] = L"";
    // Without asking the window's thread, which waits for this one.
    if (IsWindow(titled)) InternalGetWindowText(titled, title, ARRAYSIZE(title));
    RECT button = turnButton();
    if (!IsRectEmpty(&button)) drawTurnButton(context, button);
    place.right = button.left;
    InflateRect(&place, -margin, 0);
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, GetSysColor(COLOR_CAPTIONTEXT));
    HGDIOBJ font = SelectObject(context, barFont);
    DrawTextW(context, title, -1, &place,
              DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
    SelectObject(context, font);
    EndPaint(window, &paint);
}

static LRESULT CALLBACK barProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case showTitle:
        titled = reinterpret_cast<HWND>(lParam);
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
        return 0;
    case WM_PAINT:
        paint(window);
        return 0;
    case WM_MOUSEACTIVATE:
        return MA_NOACTIVATE;
    case WM_LBUTTONDOWN:
        if (LOWORD(lParam) >= turnButton().left) Emulator_TurnScreen();
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

static HWND makeBar() {
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = barProc;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.lpszClassName = taskBarClass;
    RegisterClassW(&windowClass);
    return CreateWindowExW(
        WS_EX_NOACTIVATE | WS_EX_TOOLWINDOW | WS_EX_TOPMOST, taskBarClass, nullptr, WS_POPUP, 0, 0,
        screenSize().cx, Emulator_GetVariety()->taskBarHeight, nullptr, nullptr, nullptr, nullptr);
}

static DWORD WINAPI run(LPVOID shown) {
    barFont = newBarFont();
    bar = makeBar();
    ShowWindow(bar, SW_SHOWNOACTIVATE);
    UpdateWindow(bar);
    SetEvent(shown);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
    return 0;
}

static BOOL CALLBACK start(INIT_ONCE*, void*, void**) {
    HANDLE shown = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    HANDLE thread = CreateThread(nullptr, 0, run, shown, 0, nullptr);
    WaitForSingleObject(shown, INFINITE);
    CloseHandle(thread);
    CloseHandle(shown);
    return TRUE;
}

void startTaskBar() {
    static INIT_ONCE once = INIT_ONCE_STATIC_INIT;
    if (Emulator_GetVariety()->taskBarHeight) InitOnceExecuteOnce(&once, start, nullptr, nullptr);
}

// No message of another thread comes in between.
static void tell(HWND window) {
    constexpr UINT longest = 1000; // milliseconds
    if (bar)
        SendMessageTimeoutW(bar, showTitle, 0, reinterpret_cast<LPARAM>(window),
                            SMTO_BLOCK | SMTO_ABORTIFHUNG, longest, nullptr);
}

void placeTaskBar() {
    if (!bar) return;
    SetWindowPos(bar, nullptr, 0, 0, screenSize().cx, Emulator_GetVariety()->taskBarHeight,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    InvalidateRect(bar, nullptr, FALSE);
}

void showTitleOf(HWND window) { tell(window); }

void titleHasChanged(HWND window) {
    if (titled == window) tell(window);
}
