#include "widgets/choice.h"
#include "bridge/memory.h"
#include "control/input.h"
#include "graphics/gdi_guards.h"
#include "widgets/measuring.h"

static constexpr int listId = 1000;
static constexpr int editId = 1001;

// The device's number; the desk's headers have another.
static constexpr UINT getComboBoxInfo = 0x162;

namespace {

struct Item {
    LONG length; // characters
    LONG index;
};

} // namespace

static ChoiceRecord* choiceOf(HWND window) { return static_cast<ChoiceRecord*>(controlOf(window)); }

static LRESULT countItems(HWND window) { return ask(window, CB_GETCOUNT); }

// The focus only moves between the choice and its own edit field: no change for Java.
static bool staysWithin(const ChoiceRecord* choice, HWND otherWindow) {
    return otherWindow && controlOf(otherWindow) == choice;
}

static LRESULT focusChanged(const ChoiceRecord* choice, Message message) {
    if (staysWithin(choice, message.window())) return Control_CallClass(choice, message);
    return Control_HandleIn(choice->hwnd, message);
}

// The dropped list has no record: its colours are the choice's.
static LRESULT colorList(const ChoiceRecord* choice, HDC context) {
    SetTextColor(context,
                 choice->foreground ? choice->foreground->color : systemColor(COLOR_WINDOWTEXT));
    SetBkColor(context, choice->background ? choice->background->color : systemColor(COLOR_WINDOW));
    HBRUSH brush = choice->background ? Color_GetBrush(choice->background)
                                      : GetSysColorBrush(COLOR_WINDOW | SYS_COLOR_INDEX_FLAG);
    return reinterpret_cast<LRESULT>(brush);
}

static LRESULT colorChild(const ChoiceRecord* choice, Message message) {
    if (controlOf(message.sender())) return Control_HandleIn(choice->hwnd, message);
    return colorList(choice, message.context());
}

static void applyOwnBounds(ChoiceRecord* choice) {
    ErrorRecord error = {};
    ErrorRecord* errorPointer = &error;
    Bounds bounds = Control_GetBounds(choice, errorPointer);
    RECT rect = {bounds.x, bounds.y, bounds.x + bounds.width, bounds.y + bounds.height};
    ask(choice->hwnd, controlSetBounds, &rect, &errorPointer);
    Error_Clear(&error);
}

// The list tells of a selection first the choice and then, through it, the choice's parent: only
// the first notice fires the callback.
static LRESULT command(ChoiceRecord* choice, Message message) {
    constexpr LRESULT notHandled = 1;
    HWND window = choice->hwnd;
    applyOwnBounds(choice);
    if (message.notification() != CBN_SELCHANGE || message.command() != listId) return notHandled;
    jint index = ask(window, CB_GETCURSEL);
    if (index == 0 && countItems(window) == 0) index = -1;
    choice = choiceOf(window);
    if (choice) fireChoiceSelection(choice->callbackTarget, index);
    return notHandled;
}

// The window's size counts the dropped list.
static LRESULT setBounds(const ChoiceRecord* choice, Message message) {
    constexpr LONG listBorders = 2;
    HWND window = choice->hwnd;
    LONG visibleItems = choice->visibleItems;
    RECT rect = message.bounds();
    rect.bottom += visibleItems * ask(window, CB_GETITEMHEIGHT, 1) + listBorders;
    return Control_HandleIn(window, message.about(&rect));
}

// The longest item; the longest but one that stood before it when one item is much longer than all
// others, so that it alone does not widen the choice.
static Item itemToMeasure(HWND window, LONG count) {
    constexpr LONG muchLonger = 15;
    Item longest = {}, before = {};
    for (LONG i = 0; i < count; ++i) {
        LONG length = ask(window, CB_GETLBTEXTLEN, i);
        if (length <= longest.length) continue;
        before = longest;
        longest = {length, i};
    }
    bool standsOut = before.length && longest.length - before.length > muchLonger;
    return standsOut ? before : longest;
}

static wchar_t* copyItem(HWND window, const Item& item) {
    wchar_t* text = allocateArray<wchar_t>(item.length + 1);
    if (text) ask(window, CB_GETLBTEXT, item.index, text);
    return text;
}

static LONG widthOf(HWND window, const wchar_t* text) {
    RECT area = {};
    WindowContext context(window);
    SelectedObject font(context, windowFont(window));
    DrawTextW(context, text, -1, &area, DT_CALCRECT | DT_NOPREFIX);
    return area.right - area.left;
}

static LONG textWidth(HWND window) {
    constexpr LONG margin = 10;
    constexpr LONG columnsWithoutItem = 6;
    LONG count = countItems(window);
    Block<wchar_t> text(count > 0 ? copyItem(window, itemToMeasure(window, count)) : nullptr);
    if (!text) return columnsWithoutItem * measureFont(window).averageWidth;
    return widthOf(window, text) + margin;
}

static PixelPair minimumSize(HWND window) {
    constexpr LONG unknown = 64;
    constexpr LONG heightMargin = 3;
    COMBOBOXINFO info = {};
    info.cbSize = sizeof(info);
    static_assert(sizeof(info) == 52);
    LONG width = textWidth(window);
    if (!ask(window, getComboBoxInfo, 0, &info)) return {unknown, unknown};
    const RECT& button = info.rcButton;
    return {width + button.right - button.left + info.rcItem.left,
            button.bottom - button.top + heightMargin};
}

static void detachChildren(const ChoiceRecord* choice);

static LRESULT handle(ChoiceRecord* choice, Message message) {
    HWND window = choice->hwnd;
    switch (message.id) {
    case WM_DESTROY:
        detachChildren(choice);
        break;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        return focusChanged(choice, message);
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
        return colorChild(choice, message);
    case controlCommand:
        return command(choice, message);
    case controlGetMinimumSize:
        message.answer<PixelPair>() = minimumSize(window);
        return 0;
    case controlSetBounds:
        return setBounds(choice, message);
    default:
        return Control_Handle(choice, message);
    }
    return Control_HandleIn(window, message);
}

// The choice that an edit field lies in, as long as there is one.
static ChoiceRecord* choiceAround(HWND edit) { return choiceOf(GetParent(edit)); }

static LRESULT callEdit(HWND edit, Message message) {
    const ChoiceRecord* choice = choiceAround(edit);
    return callProc(choice ? choice->editProc : nullptr, edit, message);
}

static bool swallowsEscape(HWND edit) {
    constexpr DWORD swallowing = WS_CLIPSIBLINGS;
    if (!(GetWindowLongW(edit, GWL_STYLE) & swallowing)) return false;
    // Quirk: the field, which knows of no list, is asked whether one is dropped, so that a clipped
    // field swallows every Escape. Pinned by
    // ChoiceEditTest.swallows_the_escape_of_a_clipped_field_that_shows_no_list.
    return !ask(edit, CB_GETDROPPEDSTATE, VK_ESCAPE);
}

static LRESULT editCharacter(HWND edit, const ChoiceRecord* choice, Message message) {
    jint handled = Control_ProcessCharacter(choice->hwnd, message);
    if (message.character() == VK_TAB) return 0;
    if (message.character() == VK_ESCAPE && swallowsEscape(edit)) return 0;
    return handled ? handled : callEdit(edit, message);
}

static LRESULT editFocus(HWND edit, const ChoiceRecord* choice, Message message) {
    if (message.window() != choice->hwnd)
        fireFocus(choice->callbackTarget,
                  message.id == WM_SETFOCUS ? FocusChange::gained : FocusChange::lost);
    return callEdit(edit, message);
}

static LRESULT handleEdit(HWND edit, Message message) {
    const ChoiceRecord* choice = choiceAround(edit);
    if (!choice) return callSystem(edit, message);
    LRESULT handled = 0;
    switch (message.id) {
    case WM_KEYDOWN:
        handled = Control_ProcessKeyDown(choice->hwnd, message);
        break;
    case WM_KEYUP:
        handled = Control_ProcessKeyUp(choice->hwnd, message);
        break;
    case WM_CHAR:
        return editCharacter(edit, choice, message);
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        return editFocus(edit, choice, message);
    default:
        break;
    }
    return handled ? handled : callEdit(edit, message);
}

static LRESULT CALLBACK editFieldProc(HWND edit, UINT id, WPARAM wParam, LPARAM lParam) {
    return handleEdit(edit, {id, wParam, lParam});
}

static WNDPROC procOf(HWND window) {
    return reinterpret_cast<WNDPROC>(GetWindowLongW(window, GWL_WNDPROC));
}

static void attachChildren(ChoiceRecord* choice) {
    if (HWND edit = GetDlgItem(choice->hwnd, editId)) {
        choice->editProc = procOf(edit);
        Control_Attach(choice, edit, editFieldProc);
    }
    if (HWND list = GetDlgItem(choice->hwnd, listId)) {
        SetWindowLongW(list, GWL_USERDATA, reinterpret_cast<LONG>(choice));
        choice->listProc = procOf(list);
    }
}

// The window goes, and takes them along: what follows is their window class's own to see.
static void detachChildren(const ChoiceRecord* choice) {
    if (HWND edit = GetDlgItem(choice->hwnd, editId)) Control_Detach(edit, choice->editProc);
    if (HWND list = GetDlgItem(choice->hwnd, listId)) SetWindowLongW(list, GWL_USERDATA, 0);
}

ChoiceRecord* Choice_Create(ControlRecord* parent, DWORD style, ErrorRecord* error) {
    constexpr LONG visibleItems = 7;
    bool dropDownList = style & ownStyleDropDownList;
    DWORD windowStyle = _Control_Style() | WS_VSCROLL | CBS_NOINTEGRALHEIGHT | CBS_AUTOHSCROLL |
                        (dropDownList ? CBS_DROPDOWNLIST : CBS_DROPDOWN);
    auto* choice =
        Control_NewOf<ChoiceRecord>(parent, {.className = L"COMBOBOX",
                                             .windowProc = controlProc<ChoiceRecord, handle>,
                                             .javaStyle = style,
                                             .windowStyle = windowStyle,
                                             .error = error});
    if (!choice) return nullptr;
    choice->ctlColorMessage = WM_CTLCOLOREDIT;
    choice->dispose = _Dispose_Scrollable;
    choice->dropDownList = dropDownList;
    choice->visibleItems = visibleItems;
    attachChildren(choice);
    return choice;
}

ChoiceRecord* Choice_New(ControlRecord* parent, ErrorRecord* error) {
    return Choice_Create(parent, ownStyleDropDownList, error);
}

static void addItem(HWND window, const wchar_t* item, jint index, ErrorRecord* error) {
    LRESULT result = ask(window, CB_INSERTSTRING, index, item ? item : L"");
    if (result != CB_ERR && result != CB_ERRSPACE) return;
    DWORD code = GetLastError();
    // Quirk: whatever fails at a positive index is reported as an index out of range. Pinned by
    // ChoiceTest.an_item_without_room_is_reported.
    bool outOfRange = index > 0 || index >= countItems(window);
    Win32Error_SetError(error, code,
                        outOfRange ? L"Index is out of valid range for combo"
                                   : L"Unable to add item to combo");
}

void Choice_AddItem(ChoiceRecord* choice, const wchar_t* item, jint index, ErrorRecord* error) {
    Control_Run(choice,
                [=](const ChoiceRecord* found) { addItem(found->hwnd, item, index, error); });
}

static void removeItem(const ChoiceRecord* choice, jint index, ErrorRecord* error) {
    HWND window = choice->hwnd;
    bool showsItem = choice->dropDownList;
    LRESULT result = ask(window, CB_DELETESTRING, index);
    LONG count = countItems(window);
    // Quirk: nothing reports the removal at the index right behind the last item, nor at a negative
    // one. Pinned by ChoiceTest.removing_what_is_not_there_is_reported_beyond_the_end_only.
    if (result == CB_ERR && index > 0 && index > count)
        Win32Error_SetError(error, errorFailed, L"Invalid range of item to remove from combo");
    // The field would go on showing the item that was its last.
    if (showsItem && count == 0) InvalidateRect(window, nullptr, FALSE);
}

void Choice_RemoveItem(ChoiceRecord* choice, jint index, ErrorRecord* error) {
    Control_Run(choice, [=](const ChoiceRecord* found) { removeItem(found, index, error); });
}

void Choice_RemoveAllItems(ChoiceRecord* choice, ErrorRecord*) {
    ask(choice->hwnd, CB_RESETCONTENT);
}

static void selectItem(HWND window, jint index, ErrorRecord* error) {
    // Quirk: the choice's window is asked for what nobody uses. Pinned by
    // ChoiceTest.an_item_is_selected_after_a_look_at_what_there_is.
    ask(window, CB_GETCOUNT);
    ask(window, CB_GETCURSEL);
    if (ask(window, CB_SETCURSEL, index) == CB_ERR)
        Win32Error_SetLast(error, L"Unable to select item in combo");
}

void Choice_SelectItem(ChoiceRecord* choice, jint index, ErrorRecord* error) {
    Control_Run(choice, [=](const ChoiceRecord* found) { selectItem(found->hwnd, index, error); });
}

jint Choice_GetSelectedItemIndex(ChoiceRecord* choice, ErrorRecord*) {
    return ask(choice->hwnd, CB_GETCURSEL);
}
