// The labels of menu items.

#include "bridge/memory.h"
#include "menu/item_info.h"
#include "menu/menu_item.h"
#include <commctrl.h>

// "text", or "text TAB accelerator", without mnemonic marks in the text. Null without memory.
static wchar_t* buildLabel(const wchar_t* text, const wchar_t* accelerator) {
    auto* label = allocateArray<wchar_t>(wcslen(text) + 1 + wcslen(accelerator) + 1);
    if (!label) return nullptr;
    wchar_t* end = label;
    for (; *text; ++text)
        if (*text != L'&') *end++ = *text;
    if (*accelerator) {
        *end++ = L'\t';
        wcscpy(end, accelerator);
    }
    return label;
}

static void setButtonText(HWND barWindow, DWORD id, wchar_t* text, ErrorRecord* error) {
    TBBUTTONINFOW info = {};
    info.cbSize = sizeof(info);
    info.dwMask = TBIF_TEXT;
    info.pszText = text;
    if (!ask(barWindow, TB_SETBUTTONINFO, id, &info))
        Win32Error_SetError(error, errorFailed, L"Unable to set menu item text");
}

static void setMenuText(const MenuItemRecord* item, wchar_t* text, ErrorRecord* error) {
    int position = MenuItem_Locate(item, error);
    if (position < 0) return;
    MENUITEMINFOW info = menuItemInfo(MIIM_TYPE);
    info.fType = MFT_STRING;
    info.dwTypeData = text;
    if (!SetMenuItemInfoW(item->menu->menuHandle, position, TRUE, &info))
        Win32Error_SetLast(error, L"Unable to update the menu item's label");
}

void LabeledMenuItem_SetText(LabeledMenuItemRecord* item, const wchar_t* text,
                             const wchar_t* acceleratorText, ErrorRecord* error) {
    HWND barWindow = MenuItem_GetBar(item);
    if (!text) text = L"";
    if (!acceleratorText || barWindow) acceleratorText = L"";
    Block<wchar_t> label(buildLabel(text, acceleratorText));
    if (!label) {
        Win32Error_SetError(error, errorOutOfMemory, L"");
        return;
    }
    if (barWindow)
        setButtonText(barWindow, item->id, label, error);
    else
        setMenuText(item, label, error);
}
