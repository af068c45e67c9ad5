#include "snapshot.h"
#include "emulator.h"
#include <commctrl.h>
#include <vector>

namespace {

struct Part {
    int depth;
    const wchar_t* part;
    HWND window;
    std::wstring className, text;
    RECT place;
    unsigned flags;
    std::wstring value;
};

struct Reach {
    POINT point;  // -1, -1: none
    HWND coverer; // null: none
    bool isOnScreen;
};

} // namespace

static constexpr UINT getMenuOfWindow = 0x1E1; // answers a menu window's menu

static std::wstring classOf(HWND window) {
    wchar_t name[64] = L"";
    GetClassNameW(window, name, ARRAYSIZE(name));
    return name;
}

static bool isNamed(const std::wstring& name, const wchar_t* other) {
    return lstrcmpiW(name.c_str(), other) == 0;
}

static bool isOfThisThread(HWND window) {
    return GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId();
}

static bool isOfThisProcess(HWND window) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return process == GetCurrentProcessId();
}

// A text box's text is asked of the window; another thread's window is not waited for.
static std::wstring textOf(HWND window) {
    if (!isOfThisThread(window)) {
        wchar_t text[256] = L"";
        InternalGetWindowText(window, text, ARRAYSIZE(text));
        return text;
    }
    std::wstring text(GetWindowTextLengthW(window) + 1, L'\0');
    text.resize(GetWindowTextW(window, text.data(), static_cast<int>(text.size())));
    return text;
}

static RECT placeOf(HWND window) {
    RECT place;
    GetWindowRect(window, &place);
    return place;
}

// What is left of a place within its window's parents and the screen.
static RECT shownPartOf(HWND window, RECT place) {
    SIZE screen;
    Emulator_GetScreen(&screen);
    const RECT whole = {0, 0, screen.cx, screen.cy};
    IntersectRect(&place, &place, &whole);
    for (; window && (GetWindowLongW(window, GWL_STYLE) & WS_CHILD); window = GetParent(window)) {
        HWND parent = GetParent(window);
        if (!parent) break;
        RECT client;
        GetClientRect(parent, &client);
        MapWindowPoints(parent, nullptr, reinterpret_cast<POINT*>(&client), 2);
        IntersectRect(&place, &place, &client);
    }
    return place;
}

// A label lets the tap through to its parent, which is where it reaches it.
static bool takesTapOf(HWND hit, HWND window) {
    if (hit == window || IsChild(window, hit)) return true;
    return isNamed(classOf(window), L"STATIC") && hit == GetParent(window);
}

// The middle first, then points around it.
static Reach reachOf(HWND window, const RECT& place) {
    RECT shown = shownPartOf(window, place);
    if (IsRectEmpty(&shown)) return {{-1, -1}, nullptr, false};
    LONG width = shown.right - shown.left, height = shown.bottom - shown.top;
    HWND coverer = nullptr;
    for (int quarter : {22, 12, 32, 21, 23, 11, 13, 31, 33}) {
        POINT point = {shown.left + width * (quarter % 10) / 4,
                       shown.top + height * (quarter / 10) / 4};
        HWND hit = WindowFromPoint(point);
        if (takesTapOf(hit, window)) return {point, nullptr, true};
        if (!coverer) coverer = hit;
    }
    return {{-1, -1}, coverer, true};
}

static std::wstring flattened(std::wstring text) {
    for (wchar_t& character : text) {
        if (character == L'\n') character = 0x1E;
        if (character == 0x1F) character = L' ';
    }
    std::erase(text, L'\r');
    return text;
}

static void write(std::wstring* out, const Part& part) {
    Reach reach = reachOf(part.window, part.place);
    unsigned flags = part.flags | (reach.isOnScreen ? snapshotOnScreen : 0);
    const std::wstring fields[] = {
        std::to_wstring(part.depth),
        part.part,
        std::to_wstring(reinterpret_cast<UINT_PTR>(part.window)),
        part.className,
        flattened(part.text),
        std::to_wstring(static_cast<DWORD>(GetWindowLongW(part.window, GWL_STYLE))),
        std::to_wstring(part.place.left),
        std::to_wstring(part.place.top),
        std::to_wstring(part.place.right - part.place.left),
        std::to_wstring(part.place.bottom - part.place.top),
        std::to_wstring(reach.point.x),
        std::to_wstring(reach.point.y),
        std::to_wstring(reinterpret_cast<UINT_PTR>(reach.coverer)),
        std::to_wstring(flags),
        part.value,
    };
    for (const std::wstring& field : fields) *out += field + wchar_t(0x1F);
    *out += L'\n';
}

static unsigned flagsOf(HWND window) {
    unsigned flags = IsWindowVisible(window) ? snapshotVisible : 0;
    if (IsWindowEnabled(window)) flags |= snapshotEnabled;
    if (GetFocus() == window) flags |= snapshotFocused;
    if (GetForegroundWindow() == window) flags |= snapshotActive;
    return flags;
}

static bool isButton(const std::wstring& className) {
    return isNamed(className, L"DeviceButton") || isNamed(className, L"BUTTON");
}

static bool isList(const std::wstring& className) {
    return isNamed(className, L"DeviceListBox") || isNamed(className, L"LISTBOX") ||
           isNamed(className, L"ComboLBox");
}

static bool isText(const std::wstring& className) {
    return isNamed(className, L"DeviceEdit") || isNamed(className, L"EDIT");
}

static std::wstring itemText(HWND list, UINT lengthMessage, UINT textMessage, WPARAM item) {
    LRESULT length = SendMessageW(list, lengthMessage, item, 0);
    if (length < 0) return {};
    std::wstring text(length + 1, L'\0');
    text.resize(SendMessageW(list, textMessage, item, reinterpret_cast<LPARAM>(text.data())));
    return text;
}

static void writeListItems(std::wstring* out, HWND list, int depth) {
    LRESULT count = SendMessageW(list, LB_GETCOUNT, 0, 0);
    for (LRESULT i = 0; i < count; ++i) {
        RECT place = {};
        SendMessageW(list, LB_GETITEMRECT, i, reinterpret_cast<LPARAM>(&place));
        RECT client;
        GetClientRect(list, &client);
        IntersectRect(&place, &place, &client);
        MapWindowPoints(list, nullptr, reinterpret_cast<POINT*>(&place), 2);
        unsigned flags = flagsOf(list) & (snapshotVisible | snapshotEnabled);
        if (SendMessageW(list, LB_GETSEL, i, 0) > 0) flags |= snapshotSelected;
        write(out, {depth, L"item", list, L"", itemText(list, LB_GETTEXTLEN, LB_GETTEXT, i), place,
                    flags, std::to_wstring(i)});
    }
}

// The names of a choice are not on the screen unless its list is open.
static void writeChoiceItems(std::wstring* out, HWND choice, int depth) {
    LRESULT count = SendMessageW(choice, CB_GETCOUNT, 0, 0);
    LRESULT selected = SendMessageW(choice, CB_GETCURSEL, 0, 0);
    for (LRESULT i = 0; i < count; ++i)
        write(out, {depth,
                    L"item",
                    choice,
                    L"",
                    itemText(choice, CB_GETLBTEXTLEN, CB_GETLBTEXT, i),
                    {},
                    snapshotEnabled | (i == selected ? snapshotSelected : 0u),
                    std::to_wstring(i)});
}

static std::wstring menuText(HMENU menu, UINT item) {
    wchar_t text[256] = L"";
    GetMenuStringW(menu, item, text, ARRAYSIZE(text), MF_BYPOSITION);
    return text;
}

static void writeMenuItems(std::wstring* out, HWND window, int depth) {
    auto menu = reinterpret_cast<HMENU>(SendMessageW(window, getMenuOfWindow, 0, 0));
    int count = GetMenuItemCount(menu);
    for (int i = 0; i < count; ++i) {
        UINT state = GetMenuState(menu, i, MF_BYPOSITION);
        unsigned flags = snapshotVisible;
        if (!(state & (MF_GRAYED | MF_DISABLED))) flags |= snapshotEnabled;
        if (state & MF_CHECKED) flags |= snapshotChecked;
        if (state & MF_HILITE) flags |= snapshotSelected;
        if (GetSubMenu(menu, i))
            flags |= snapshotOpensMenu;
        else if (state & MF_SEPARATOR)
            flags |= snapshotSeparator;
        RECT place = {};
        GetMenuItemRect(window, menu, i, &place);
        write(out,
              {depth, L"menu", window, L"", menuText(menu, i), place, flags, std::to_wstring(i)});
    }
}

static void writeToolButtons(std::wstring* out, HWND toolbar, int depth) {
    LRESULT count = SendMessageW(toolbar, TB_BUTTONCOUNT, 0, 0);
    for (LRESULT i = 0; i < count; ++i) {
        TBBUTTON button = {};
        SendMessageW(toolbar, TB_GETBUTTON, i, reinterpret_cast<LPARAM>(&button));
        LRESULT length = SendMessageW(toolbar, TB_GETBUTTONTEXTW, button.idCommand, 0);
        std::wstring text(length > 0 ? length + 1 : 1, L'\0');
        SendMessageW(toolbar, TB_GETBUTTONTEXTW, button.idCommand,
                     reinterpret_cast<LPARAM>(text.data()));
        text.resize(wcslen(text.c_str()));
        RECT place = {};
        SendMessageW(toolbar, TB_GETITEMRECT, i, reinterpret_cast<LPARAM>(&place));
        MapWindowPoints(toolbar, nullptr, reinterpret_cast<POINT*>(&place), 2);
        unsigned flags = IsWindowVisible(toolbar) ? snapshotVisible : 0;
        if (button.fsState & TBSTATE_ENABLED) flags |= snapshotEnabled;
        if (button.fsState & TBSTATE_CHECKED) flags |= snapshotChecked;
        if (button.fsStyle & BTNS_DROPDOWN) flags |= snapshotOpensMenu;
        if (button.fsStyle & BTNS_SEP) flags |= snapshotSeparator;
        write(out, {depth, L"menu", toolbar, L"", text, place, flags, std::to_wstring(i)});
    }
}

static std::wstring valueOf(HWND window, const std::wstring& className) {
    if (isText(className)) {
        DWORD from = 0, to = 0;
        SendMessageW(window, EM_GETSEL, reinterpret_cast<WPARAM>(&from),
                     reinterpret_cast<LPARAM>(&to));
        return std::to_wstring(from) + L'-' + std::to_wstring(to);
    }
    bool isBar = isNamed(className, L"SCROLLBAR");
    if (!isBar && !(GetWindowLongW(window, GWL_STYLE) & WS_VSCROLL)) return {};
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = SIF_ALL;
    GetScrollInfo(window, isBar ? SB_CTL : SB_VERT, &info);
    return std::to_wstring(info.nPos);
}

static void writeWindow(std::wstring* out, HWND window, int depth);

static void writeParts(std::wstring* out, HWND window, const std::wstring& className, int depth) {
    if (!isOfThisThread(window)) return;
    if (isNamed(className, L"#32768")) writeMenuItems(out, window, depth);
    if (isList(className)) writeListItems(out, window, depth);
    if (isNamed(className, L"DeviceComboBox") || isNamed(className, L"COMBOBOX")) {
        writeChoiceItems(out, window, depth);
        return; // the windows within a choice are the choice's
    }
    for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
        writeWindow(out, child, depth);
}

static void writeWindow(std::wstring* out, HWND window, int depth) {
    std::wstring className = classOf(window);
    if (isNamed(className, TOOLBARCLASSNAMEW) && isOfThisThread(window)) {
        writeToolButtons(out, window, depth); // the menu bar's items
        return;
    }
    unsigned flags = flagsOf(window);
    if (isButton(className) && (SendMessageW(window, BM_GETCHECK, 0, 0) & BST_CHECKED))
        flags |= snapshotChecked;
    write(out, {depth, L"window", window, className, textOf(window), placeOf(window), flags,
                isOfThisThread(window) ? valueOf(window, className) : L""});
    writeParts(out, window, className, depth + 1);
}

static BOOL CALLBACK collect(HWND window, LPARAM windows) {
    if (isOfThisProcess(window) && IsWindowVisible(window))
        reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
    return TRUE;
}

std::wstring takeSnapshot() {
    std::vector<HWND> windows;
    EnumWindows(collect, reinterpret_cast<LPARAM>(&windows));
    std::wstring out;
    for (HWND window : windows) writeWindow(&out, window, 0);
    return out;
}
