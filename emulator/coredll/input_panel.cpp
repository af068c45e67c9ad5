// The device's input panel: a keyboard at the bottom of the work area, above the menu bars. It
// takes its room from the work area while it shows, and the activation from nobody.

#include "input_panel.h"
#include "menu_bar_class.h"
#include "screen.h"

static constexpr wchar_t panelClass[] = L"SipWndClass";
static constexpr int keyHeight = 20;
static constexpr int rows = 4;
static constexpr int columns = 10;
static constexpr int panelHeight = rows * keyHeight;

static constexpr wchar_t keys[rows][columns + 1] = {L"1234567890", L"qwertyuiop", L"asdfghjkl\b",
                                                    L"zxcvbnm. \r"};

static HWND panel;

static int keyWidth() { return screenSize().cx / columns; }

static const wchar_t* labelOf(const wchar_t* key) {
    switch (*key) {
    case L'\b':
        return L"<-";
    case L'\r':
        return L"ret";
    case L' ':
        return L"spc";
    default:
        return nullptr;
    }
}

static void drawKey(HDC context, int row, int column) {
    RECT place = {column * keyWidth(), row * keyHeight, (column + 1) * keyWidth(),
                  (row + 1) * keyHeight};
    DrawFrameControl(context, &place, DFC_BUTTON, DFCS_BUTTONPUSH);
    const wchar_t* key = &keys[row][column];
    const wchar_t* label = labelOf(key);
    DrawTextW(context, label ? label : key, label ? -1 : 1, &place,
              DT_CENTER | DT_VCENTER | DT_SINGLELINE);
}

static void paint(HWND window) {
    PAINTSTRUCT paint;
    HDC context = BeginPaint(window, &paint);
    HGDIOBJ font = SelectObject(context, GetStockObject(DEFAULT_GUI_FONT));
    SetBkMode(context, TRANSPARENT);
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column) drawKey(context, row, column);
    SelectObject(context, font);
    EndPaint(window, &paint);
}

static void type(int x, int y) {
    if (x < 0 || x >= columns * keyWidth() || y < 0 || y >= panelHeight) return;
    BYTE key = LOBYTE(VkKeyScanW(keys[y / keyHeight][x / keyWidth()]));
    keybd_event(key, 0, 0, 0);
    keybd_event(key, 0, KEYEVENTF_KEYUP, 0);
}

static LRESULT CALLBACK panelProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_MOUSEACTIVATE:
        return MA_NOACTIVATE;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        type(static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam)));
        return 0;
    case WM_PAINT:
        paint(window);
        return 0;
    case WM_NCDESTROY:
        panel = nullptr;
        break;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

static RECT placeOfPanel() {
    SIZE screen = screenSize();
    LONG bottom = screen.cy - menuBarHeight();
    return {0, bottom - panelHeight, screen.cx, bottom};
}

static HWND makePanel() {
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = panelProc;
    windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    windowClass.lpszClassName = panelClass;
    RegisterClassW(&windowClass);
    RECT place = placeOfPanel();
    return CreateWindowExW(WS_EX_NOACTIVATE | WS_EX_TOOLWINDOW | WS_EX_TOPMOST, panelClass, nullptr,
                           WS_POPUP, place.left, place.top, place.right, panelHeight, nullptr,
                           nullptr, nullptr, nullptr);
}

// What it leaves of the work area.
static RECT freeArea() {
    RECT area = wholeWorkArea();
    if (panel) area.bottom -= panelHeight;
    return area;
}

RECT placeInputPanel() {
    RECT place = placeOfPanel();
    if (panel) {
        SetWindowPos(panel, nullptr, place.left, place.top, place.right, panelHeight,
                     SWP_NOZORDER | SWP_NOACTIVATE);
        InvalidateRect(panel, nullptr, TRUE);
    }
    return freeArea();
}

extern "C" {

BOOL WINAPI Emulator_IsInputPanelShown() { return panel != nullptr; }

void WINAPI Emulator_ShowInputPanel(BOOL shown) {
    if (shown == Emulator_IsInputPanelShown()) return;
    if (shown) {
        panel = makePanel();
        ShowWindow(panel, SW_SHOWNOACTIVATE);
    } else {
        DestroyWindow(panel);
    }
    changeWorkArea(freeArea());
}
}
