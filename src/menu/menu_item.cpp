#include "menu/menu_item.h"
#include "bridge/memory.h"
#include "display/accelerators.h"
#include "display/commands.h"
#include "display/display.h"
#include "display/firing.h"
#include "display/keys.h"
#include "graphics/drawing.h"
#include "graphics/gdi_guards.h"
#include "menu/item_info.h"
#include "menu/menu.h"
#include <commctrl.h>

static constexpr wchar_t creationFailed[] = L"Unable to create new menu item";

static int locate(const MenuItemRecord* item, const wchar_t* failure, ErrorRecord* error) {
    if (!item->menu) {
        Win32Error_SetError(error, ERROR_INVALID_MENU_HANDLE, failure);
        return -1;
    }
    int position = Menu_FindPosition(item->menu, item->id);
    if (position < 0) Win32Error_SetLast(error, failure);
    return position;
}

int MenuItem_Locate(const MenuItemRecord* item, ErrorRecord* error) {
    return locate(item, L"Unable to find the item", error);
}

static LRESULT paint(MenuItemRecord* item, WPARAM, LPARAM lParam) {
    if (!item->image) return 0;
    auto* drawing = reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
    SavedClip clip(drawing->hDC);
    GraphicsRecord graphics = Graphics_On(drawing->hDC, drawing->rcItem);
    Graphics_DrawImage(&graphics, item->image, drawing->rcItem.left, drawing->rcItem.top, nullptr);
    return 0;
}

static LRESULT measure(MenuItemRecord*, WPARAM, LPARAM) { return 0; }

void MenuItem_Draw(MenuItemRecord* item, Message message) {
    if (item->paint) item->paint(item, message.wParam, message.lParam);
}

bool MenuItem_Measure(MenuItemRecord* item, Message message) {
    if (!item->measure) return false;
    item->measure(item, message.wParam, message.lParam);
    return true;
}

static HMENU menuHandleOf(const MenuItemRecord* item) {
    return item->menu ? item->menu->menuHandle : nullptr;
}

static bool isChecked(const MenuItemRecord* item) {
    MENUITEMINFOW info = menuItemInfo(MIIM_STATE);
    GetMenuItemInfoW(menuHandleOf(item), item->id, FALSE, &info);
    return (info.fState & MFS_CHECKED) != 0;
}

static void select(MenuItemRecord* item, WPARAM, void*) {
    if (item->style & ownStyleStateItem)
        StateMenuItem_SetSelection(static_cast<StateMenuItemRecord*>(item), !isChecked(item),
                                   nullptr);
    fireMenuSelection(item->callbackTarget, 0);
}

void MenuItem_Select(MenuItemRecord* item, Message message) {
    if (item->select) item->select(item, message.wParam, nullptr);
}

static bool removeFromBar(HWND barWindow, DWORD id, ErrorRecord* error) {
    LRESULT index = ask(barWindow, TB_COMMANDTOINDEX, id);
    if (index == -1) {
        Win32Error_SetError(error, errorFailed, L"Unable to find menu item");
        return false;
    }
    if (ask(barWindow, TB_DELETEBUTTON, index)) return true;
    Win32Error_SetError(error, errorFailed, L"Unable to delete menu item");
    return false;
}

// The sub-menu is its own record's to destroy, which deleting the item would do.
static BOOL takeOut(const MenuItemRecord* item, int position) {
    if (item->subMenu) return RemoveMenu(item->menu->menuHandle, position, MF_BYPOSITION);
    return DeleteMenu(item->menu->menuHandle, position, MF_BYPOSITION);
}

static bool removeFromMenu(const MenuItemRecord* item, ErrorRecord* error) {
    int position = locate(item, L"Unable to find menu item", error);
    if (position < 0) return false;
    if (takeOut(item, position)) return true;
    Win32Error_SetLast(error, L"Unable to delete menu item");
    return false;
}

static ShellAccelerators* acceleratorsOf(const MenuItemRecord* item) {
    return item->menu ? Accelerators_Above(item->menu->ownerWindow) : nullptr;
}

// From whichever shell has it: the menu that told of the shell may be gone.
static void removeAccelerator(const MenuItemRecord* item) {
    Accelerators_RemoveAll(item->display, static_cast<WORD>(item->id));
}

static int disposeItem(WidgetRecord* widget, ErrorRecord* error) {
    auto* item = static_cast<MenuItemRecord*>(widget);
    removeAccelerator(item);
    HWND barWindow = MenuItem_GetBar(item);
    bool removed =
        barWindow ? removeFromBar(barWindow, item->id, error) : removeFromMenu(item, error);
    // Its record goes in any case, so its id must not lead to it any more.
    Display_ReleaseCommandId(item->display, item->id);
    if (item->subMenu && item->subMenu->cascadeItem == item) item->subMenu->cascadeItem = nullptr;
    return removed;
}

static bool insertIntoBar(HWND barWindow, jint index, DWORD id, BYTE buttonStyle) {
    TBBUTTON button = {};
    button.iBitmap = I_IMAGENONE;
    button.idCommand = id;
    button.fsState = TBSTATE_ENABLED;
    button.fsStyle = buttonStyle;
    return ask(barWindow, TB_INSERTBUTTON, index, &button) != 0;
}

static bool insertIntoMenu(HMENU menu, jint index, DWORD id, UINT flags) {
    if (!InsertMenuW(menu, index, MF_BYPOSITION | flags, id, L"")) return false;
    MENUITEMINFOW info = menuItemInfo(MIIM_DATA);
    info.dwItemData = id;
    // An index beyond the last item has appended it: it is found by its id.
    if (SetMenuItemInfoW(menu, id, FALSE, &info)) return true;
    DeleteMenu(menu, id, MF_BYCOMMAND);
    return false;
}

namespace {

// How a kind of item is inserted.
struct ItemKind {
    DWORD style;      // the Java style
    BYTE buttonStyle; // in a menu bar
    UINT menuFlags;   // in the other menus
};

} // namespace

static MenuItemRecord* fail(MenuItemRecord* item, ErrorRecord* error) {
    if (item) {
        Display_ReleaseCommandId(item->display, item->id);
        Widget_Free(item);
    }
    Win32Error_SetError(error, errorFailed, creationFailed);
    return nullptr;
}

static MenuItemRecord* create(MenuRecord* menu, jint index, const ItemKind& kind,
                              ErrorRecord* error) {
    auto* item = allocate<MenuItemRecord>();
    if (!item) return fail(nullptr, error);
    Widget_SetDisplay(item, menu->display);
    item->style = kind.style;
    item->dispose = disposeItem;
    item->menu = menu;
    item->paint = paint;
    item->measure = measure;
    item->select = select;
    item->id = Display_AssignCommandId(menu->display, item);
    if (!item->id) return fail(item, error);
    HWND barWindow = menu->menuBarWindow;
    bool inserted = barWindow ? insertIntoBar(barWindow, index, item->id, kind.buttonStyle)
                              : insertIntoMenu(menu->menuHandle, index, item->id, kind.menuFlags);
    return inserted ? item : fail(item, error);
}

PushMenuItemRecord* PushMenuItem_New(MenuRecord* menu, jint index, ErrorRecord* error) {
    return static_cast<PushMenuItemRecord*>(create(menu, index, {0, BTNS_AUTOSIZE, 0}, error));
}

SeparatorItemRecord* SeparatorItem_New(MenuRecord* menu, jint index, ErrorRecord* error) {
    return static_cast<SeparatorItemRecord*>(
        create(menu, index, {0, BTNS_SEP, MF_SEPARATOR}, error));
}

CascadeMenuItemRecord* CascadeMenuItem_New(MenuRecord* menu, jint index, ErrorRecord* error) {
    return static_cast<CascadeMenuItemRecord*>(
        create(menu, index, {0, BTNS_AUTOSIZE | BTNS_DROPDOWN | BTNS_WHOLEDROPDOWN, 0}, error));
}

StateMenuItemRecord* StateMenuItem_New(MenuRecord* menu, jint index, DWORD style,
                                       ErrorRecord* error) {
    return static_cast<StateMenuItemRecord*>(
        create(menu, index, {style | ownStyleStateItem, BTNS_AUTOSIZE, 0}, error));
}

static bool readButtonState(HWND barWindow, DWORD id, TBBUTTONINFOW* info) {
    info->cbSize = sizeof(*info);
    info->dwMask = TBIF_STATE;
    return ask(barWindow, TB_GETBUTTONINFO, id, info) != -1;
}

// Quirk: a state that cannot be read is written all the same, and reported as not written. Pinned
// by MenuBarTest.an_item_is_enabled_although_the_bar_does_not_tell_its_state.
static void enableButton(HWND barWindow, DWORD id, bool enabled, ErrorRecord* error) {
    TBBUTTONINFOW info = {};
    bool changed = readButtonState(barWindow, id, &info);
    if (enabled)
        info.fsState |= TBSTATE_ENABLED;
    else
        info.fsState &= ~TBSTATE_ENABLED;
    if (!ask(barWindow, TB_SETBUTTONINFO, id, &info)) changed = false;
    if (!changed) Win32Error_SetError(error, errorFailed, L"Unable to set menu item enabled state");
}

void AbstractMenuItem_SetEnabled(MenuItemRecord* item, bool enabled, ErrorRecord* error) {
    HWND barWindow = MenuItem_GetBar(item);
    if (barWindow) {
        enableButton(barWindow, item->id, enabled, error);
        return;
    }
    int position = MenuItem_Locate(item, error);
    if (position < 0) return;
    UINT flags = MF_BYPOSITION | (enabled ? MF_ENABLED : MF_GRAYED);
    if (static_cast<int>(EnableMenuItem(item->menu->menuHandle, position, flags)) == -1)
        Win32Error_SetError(error, errorFailed, L"The menu item does not exist");
}

void StateMenuItem_SetSelection(StateMenuItemRecord* item, bool checked, ErrorRecord* error) {
    UINT flags = checked ? MF_CHECKED : MF_UNCHECKED;
    if (static_cast<int>(CheckMenuItem(menuHandleOf(item), item->id, flags)) == -1)
        Win32Error_SetError(error, errorFailed, L"Menu item doesn't exist");
}

static ACCEL entryOf(const MenuItemRecord* item, jint accelerator) {
    WORD modifiers = HIWORD(accelerator);
    BYTE flags = FVIRTKEY;
    if (modifiers & modifierAlt) flags |= FALT;
    if (modifiers & modifierControl) flags |= FCONTROL;
    if (modifiers & modifierShift) flags |= FSHIFT;
    WORD key = static_cast<WORD>(Key_FromJava(LOWORD(accelerator)));
    return {flags, key, static_cast<WORD>(item->id)};
}

static void changeAccelerator(MenuItemRecord* item, jint accelerator, ErrorRecord* error) {
    if (accelerator == 0) {
        removeAccelerator(item);
        return;
    }
    ShellAccelerators* accelerators = acceleratorsOf(item);
    if (accelerators) Accelerators_Set(accelerators, entryOf(item, accelerator), error);
}

void LabeledMenuItem_SetAccelerator(LabeledMenuItemRecord* item, jint accelerator,
                                    ErrorRecord* error) {
    Display_Run(item->display, [=] {
        changeAccelerator(item, accelerator, error);
        return 0;
    });
}

void LabeledMenuItem_SetFont(LabeledMenuItemRecord*, FontRecord*, ErrorRecord*) {}
