#pragma once
// Choices on the device.

#include "device.h"
#include "widgets/choice.h"

class ChoiceTest : public DeviceTest {
  protected:
    ChoiceRecord* record(jint choice) { return reinterpret_cast<ChoiceRecord*>(choice); }
    jint newChoice(const std::vector<std::u16string>& items = {}) {
        jint choice = call(OS::Choice_New, shell);
        call(OS::Control_SetBounds, choice, 20, 30, 100, 24);
        call(OS::Control_SetVisible, choice, true);
        for (const std::u16string& item : items) add(choice, item);
        dispatchAll();
        return choice;
    }
    void add(jint choice, const std::u16string& item, jint index = -1) {
        call(OS::Choice_AddItem, choice, vm.newString(item), index);
    }
    void remove(jint choice, jint index) { call(OS::Choice_RemoveItem, choice, index); }
    void select(jint choice, jint index) { call(OS::Choice_SelectItem, choice, index); }
    jint selected(jint choice) { return call(OS::Choice_GetSelectedItemIndex, choice); }
    std::vector<std::u16string> items(jint choice) {
        std::vector<std::u16string> texts(sendTo(choice, CB_GETCOUNT));
        for (size_t i = 0; i < texts.size(); ++i) {
            texts[i].resize(sendTo(choice, CB_GETLBTEXTLEN, i) + 1);
            texts[i].resize(sendTo(choice, CB_GETLBTEXT, i, LPARAM(texts[i].data())));
        }
        return texts;
    }
    // The events but those of the pointer and of painting.
    Events ownEvents() {
        return fired::without(vm.takeEvents(), {"paint", "pointer", "pointerDown"});
    }

    static COMBOBOXINFO partsOf(jint choice) {
        COMBOBOXINFO info = {};
        info.cbSize = sizeof(info);
        constexpr UINT getComboBoxInfo = 0x162;
        EXPECT_TRUE(sendTo(choice, getComboBoxInfo, 0, reinterpret_cast<LPARAM>(&info)));
        return info;
    }
    static bool isDropped(jint choice) { return sendTo(choice, CB_GETDROPPEDSTATE) != 0; }

    // A person's tap on an item of the dropped list.
    void tapItem(jint choice, int index) {
        HWND list = partsOf(choice).hwndList;
        RECT item;
        SendMessageW(list, LB_GETITEMRECT, index, reinterpret_cast<LPARAM>(&item));
        POINT point = {item.left + 5, (item.top + item.bottom) / 2};
        ClientToScreen(list, &point);
        call(OS::Display_PostPointerMoveEvent, display, point.x, point.y);
        for (PointerType type : {pointerPress, pointerRelease}) {
            call(OS::Display_PostPointerEvent, display, type, buttonLeft);
            dispatchAll();
        }
    }
    static LONG widthOf(const std::u16string& text) {
        HDC context = GetDC(nullptr);
        HGDIOBJ before = SelectObject(context, GetStockObject(SYSTEM_FONT));
        RECT area = {};
        DrawTextW(context, reinterpret_cast<const wchar_t*>(text.c_str()), -1, &area,
                  DT_CALCRECT | DT_NOPREFIX);
        SelectObject(context, before);
        ReleaseDC(nullptr, context);
        return area.right;
    }

    jint shell = newShell();
    const std::vector<std::u16string> fruit = {u"apple", u"pear", u"plum"};
};
