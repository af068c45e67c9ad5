#pragma once
// Lists on the device, and what a person and Java do to them.

#include "device.h"
#include "widgets/list.h"

constexpr jint plain = 0, multiple = 0x800000, withBars = 0x30000, bordered = 0x800;

class ListTest : public DeviceTest {
  protected:
    jint newList(jint style = 0, const std::vector<std::u16string>& items = {}) {
        jint list = newControl(OS::List_New, shell, style, {20, 30, 140, 130});
        for (const std::u16string& item : items) add(list, item);
        dispatchAll();
        return list;
    }
    // Items "0", "1" and so on.
    jint newLongList(int count, jint style = 0x20000) {
        jint list = newList(style);
        for (int i = 0; i < count; ++i) add(list, numbered(i));
        dispatchAll();
        return list;
    }
    static std::u16string numbered(int number) {
        std::string digits = std::to_string(number);
        return {digits.begin(), digits.end()};
    }
    void add(jint list, const std::u16string& item, jint index = -1) {
        call(OS::List_Add, list, vm.newString(item), index);
    }
    void setItem(jint list, jint index, const std::u16string& item) {
        call(OS::List_SetItem, list, index, vm.newString(item));
    }
    void remove(jint list, jint index) { call(OS::List_Remove, list, index); }
    void select(jint list, jint index) { call(OS::List_Select, list, index); }
    void selectAll(jint list, const std::vector<jint>& indices, jint count) {
        call(OS::List_SelectIndices, list, vm.newInts(indices), count);
    }
    void deselect(jint list, jint index) { call(OS::List_Deselect, list, index); }
    bool isSelected(jint list, jint index) { return call(OS::List_IsSelected, list, index); }
    jint selectionCount(jint list) { return call(OS::List_GetSelectionCount, list); }
    jint selectionIndex(jint list) { return call(OS::List_GetSelectionIndex, list); }
    std::vector<jint> selection(jint list) {
        jobject indices = call(OS::List_GetSelectionIndices, list);
        EXPECT_NE(indices, nullptr);
        return vm.ints(indices);
    }
    void switchMode(jint list, bool toMultiple) {
        call(OS::List_SetMultipleMode, list, toMultiple);
    }
    void setTop(jint list, jint index) { call(OS::List_SetTopItemIndex, list, index); }
    std::vector<jint> minimumSize(jint list, jint rows) {
        return vm.ints(call(OS::List_GetMinimumSize, list, rows));
    }
    static LRESULT ask(jint list, UINT message, WPARAM wParam = 0) {
        return SendMessageW(windowOf(list), message, wParam, 0);
    }
    static jint countOf(jint list) { return ask(list, LB_GETCOUNT); }
    static jint topOf(jint list) { return ask(list, LB_GETTOPINDEX); }
    static LRESULT extentOf(jint list) { return ask(list, LB_GETHORIZONTALEXTENT); }
    static std::vector<std::u16string> itemsOf(jint list) {
        std::vector<std::u16string> items;
        for (jint i = 0; i < countOf(list); ++i) {
            std::u16string text(ask(list, LB_GETTEXTLEN, i) + 1, u'\0');
            SendMessageW(windowOf(list), LB_GETTEXT, i, reinterpret_cast<LPARAM>(text.data()));
            text.pop_back();
            items.push_back(text);
        }
        return items;
    }
    static ListRecord* record(jint list) { return reinterpret_cast<ListRecord*>(list); }
    // As the font that the list has lays it out, or the default one.
    static LONG widthOf(const wchar_t* text, UINT flags = 0xC20,
                        HGDIOBJ font = GetStockObject(SYSTEM_FONT)) {
        HDC context = GetDC(nullptr);
        HGDIOBJ before = SelectObject(context, font);
        RECT area = {};
        DrawTextW(context, text, -1, &area, flags);
        SelectObject(context, before);
        ReleaseDC(nullptr, context);
        return area.right;
    }
    // What the list tells Java when its window sends this notification.
    Events notify(jint list, WORD code) {
        listen(list);
        SendMessageW(windowOf(shell), WM_COMMAND, MAKEWPARAM(0, code),
                     reinterpret_cast<LPARAM>(windowOf(list)));
        return vm.takeEvents();
    }
    void tapItem(jint list, jint index) {
        RECT place;
        SendMessageW(windowOf(list), LB_GETITEMRECT, index, reinterpret_cast<LPARAM>(&place));
        tapAt(list, 10, (place.top + place.bottom) / 2);
    }
    Events selectionEvents() { return fired::only(vm.takeEvents(), {"listSelected"}); }

    jint shell = newShell();
};

// Takes some items more, and then none.
inline int insertionsTaken;
inline LRESULT WINAPI refuseInsertions(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != LB_INSERTSTRING || insertionsTaken-- > 0)
        return SendMessageW(window, message, wParam, lParam);
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return LB_ERRSPACE;
}
