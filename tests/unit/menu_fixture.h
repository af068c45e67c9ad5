#pragma once
// Menus with their items, and the commands that they are chosen by.

#include "device.h"
#include "menu/menu_item.h"
#include <commctrl.h>

class MenuTest : public DeviceTest {
  protected:
    static MenuRecord* menuOf(jint handle) { return reinterpret_cast<MenuRecord*>(handle); }
    static MenuItemRecord* itemOf(jint handle) { return reinterpret_cast<MenuItemRecord*>(handle); }

    jint newMenu(const Native<jint(jint owner)>& kind, jint owner) {
        jint menu = call(kind, owner);
        made.push_back(menu);
        return menu;
    }
    jint newItem(const Native<jint(jint menu, jint index)>& kind, jint menu, jint index) {
        jint item = call(kind, menu, index);
        if (item) made.push_back(item);
        return item;
    }
    jint newStateItem(jint menu, jint index, jint style = 0) {
        jint item = call(OS::StateMenuItem_New, menu, index, style);
        made.push_back(item);
        return item;
    }
    void disposeAll() {
        for (; !made.empty(); made.pop_back()) dispose(made.back());
    }
    ~MenuTest() override { disposeAll(); }

    void setText(jint item, const std::u16string& text, const std::u16string& accelerator = u"") {
        call(OS::LabeledMenuItem_SetText, item, vm.newString(text), vm.newString(accelerator));
    }
    void setAccelerator(jint item, jint accelerator) {
        call(OS::LabeledMenuItem_SetAccelerator, item, accelerator);
    }
    void setEnabled(jint item, bool enabled) {
        call(OS::AbstractMenuItem_SetEnabled, item, enabled);
    }
    void setSubMenu(jint item, jint menu) { call(OS::CascadeMenuItem_SetMenu, item, menu); }

    static MENUITEMINFOW infoAt(HMENU menu, int position) {
        static wchar_t text[200];
        MENUITEMINFOW info = {};
        info.cbSize = sizeof(info);
        info.fMask = MIIM_TYPE | MIIM_STATE | MIIM_DATA | MIIM_SUBMENU | MIIM_ID;
        info.dwTypeData = text;
        info.cch = 200;
        EXPECT_TRUE(GetMenuItemInfoW(menu, position, TRUE, &info)) << position;
        return info;
    }
    static std::vector<DWORD> idsIn(HMENU menu) {
        std::vector<DWORD> ids;
        for (int i = 0; i < GetMenuItemCount(menu); ++i) ids.push_back(infoAt(menu, i).dwItemData);
        return ids;
    }
    static std::wstring textAt(HMENU menu, int position) {
        return infoAt(menu, position).dwTypeData;
    }
    static TBBUTTON buttonAt(HWND bar, int index) {
        TBBUTTON button = {};
        EXPECT_TRUE(SendMessageW(bar, TB_GETBUTTON, index, reinterpret_cast<LPARAM>(&button)));
        return button;
    }
    static std::wstring buttonText(HWND bar, int id) {
        wchar_t text[200] = L"";
        SendMessageW(bar, TB_GETBUTTONTEXTW, id, reinterpret_cast<LPARAM>(text));
        return text;
    }

    jint shell = newShell();
    std::vector<jint> made; // disposed of in reverse
};
