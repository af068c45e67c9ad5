// Menu items at their edges: the longest texts, what fails half-way, menus that are gone.

#include "device.h"
#include "faults.h"
#include "leaks.h"
#include "menu/menu_item.h"
#include "variety.h"

class MenuItemsTest : public DeviceTest {
  protected:
    ~MenuItemsTest() override {
        for (; !made.empty(); made.pop_back()) dispose(made.back());
    }
    jint make(const Native<jint(jint)>& native, jint first) {
        made.push_back(call(native, first));
        return made.back();
    }
    jint makeItem(const Native<jint(jint, jint)>& native, jint menu) {
        made.push_back(call(native, menu, 0));
        return made.back();
    }
    void setText(jint item, const std::u16string& text) {
        call(OS::LabeledMenuItem_SetText, item, vm.newString(text), nullptr);
    }
    void setSubMenu(jint item, jint subMenu) { call(OS::CascadeMenuItem_SetMenu, item, subMenu); }
    void set(const Native<void(jint, jboolean)>& native, jint item) { call(native, item, true); }
    static HMENU handleOf(jint menu) { return reinterpret_cast<MenuRecord*>(menu)->menuHandle; }
    static MENUITEMINFOW infoOf(jint menu, wchar_t* text, UINT length) {
        MENUITEMINFOW info = {};
        info.cbSize = sizeof(info);
        info.fMask = MIIM_TYPE | MIIM_DATA | MIIM_SUBMENU;
        info.dwTypeData = text;
        info.cch = length;
        EXPECT_TRUE(GetMenuItemInfoW(handleOf(menu), 0, TRUE, &info));
        return info;
    }

    jint shell = newShell();
    std::vector<jint> made;
};

TEST_F(MenuItemsTest, a_text_is_kept_up_to_127_characters_when_its_item_gets_a_menu) {
    jint menu = make(OS::DropDownMenu_New, shell);
    jint cascade = makeItem(OS::CascadeMenuItem_New, menu);
    jint first = make(OS::DropDownMenu_New, shell);
    for (size_t length : {1, 126, 127, 128, 129}) {
        std::u16string whole;
        for (size_t i = 0; i < length; ++i) whole.push_back(u'a' + i % 26);
        setText(cascade, whole);
        setSubMenu(cascade, first);
        wchar_t text[200] = L"";
        EXPECT_EQ(infoOf(menu, text, 200).hSubMenu, handleOf(first));
        std::wstring expected(whole.begin(), whole.begin() + std::min<size_t>(length, 127));
        EXPECT_EQ(text, expected);
        setSubMenu(cascade, 0);
    }
    EXPECT_TRUE(vm.reports.empty());
}

TEST_F(MenuItemsTest, a_cascade_item_whose_data_is_refused_stays_as_it_was) {
    jint menu = make(OS::DropDownMenu_New, shell);
    jint cascade = makeItem(OS::CascadeMenuItem_New, menu);
    jint subMenu = make(OS::DropDownMenu_New, shell);
    setText(cascade, u"More");
    {
        Faults faults;
        faults.fail("SetMenuItemInfoW", 1, ERROR_ACCESS_DENIED);
        setSubMenu(cascade, subMenu);
    }
    expectReport("CascadeMenuItem_SetMenu", -3, u"Unable to insert new cascade menu item::");
    EXPECT_EQ(GetMenuItemCount(handleOf(menu)), 1);
    wchar_t text[20] = L"";
    EXPECT_EQ(infoOf(menu, text, 20).hSubMenu, nullptr);
    EXPECT_STREQ(text, L"More");
    setSubMenu(cascade, subMenu);
    EXPECT_TRUE(vm.reports.empty()) << "it is found again";
    EXPECT_EQ(infoOf(menu, text, 20).hSubMenu, handleOf(subMenu));
}

// The new item that stands in its place is made enabled, as its Javadoc says.
TEST_F(MenuItemsTest, a_greyed_cascade_item_is_enabled_again_by_a_new_menu) {
    jint menu = make(OS::DropDownMenu_New, shell);
    jint cascade = makeItem(OS::CascadeMenuItem_New, menu);
    jint subMenu = make(OS::DropDownMenu_New, shell);
    auto isGrey = [&] {
        MENUITEMINFOW info = {};
        info.cbSize = sizeof(info);
        info.fMask = MIIM_STATE;
        EXPECT_TRUE(GetMenuItemInfoW(handleOf(menu), 0, TRUE, &info));
        return (info.fState & MFS_GRAYED) != 0;
    };
    call(OS::AbstractMenuItem_SetEnabled, cascade, false);
    EXPECT_TRUE(isGrey());
    setSubMenu(cascade, subMenu);
    EXPECT_FALSE(isGrey());
}

// Whatever failed before has nothing to do with it.
TEST_F(MenuItemsTest, an_item_whose_menu_is_gone_says_so) {
    jint menu = make(OS::DropDownMenu_New, shell);
    jint item = call(OS::PushMenuItem_New, menu, 0);
    jint cascade = call(OS::CascadeMenuItem_New, menu, 1);
    jint state = call(OS::StateMenuItem_New, menu, 2, 0);
    jint subMenu = make(OS::DropDownMenu_New, shell);
    std::swap(made[0], made[1]);
    dispose(made.back());
    made.pop_back();
    const std::u16string gone = textOf(ERROR_INVALID_MENU_HANDLE);
    const std::u16string notFound = u"Unable to find the item::" + gone;
    const std::u16string notRemoved = u"Unable to find menu item::" + gone;
    const struct {
        const char* native;
        std::u16string message;
        std::function<void()> use;
    } rows[] = {
        {"LabeledMenuItem_SetText", notFound, [&] { setText(item, u"text"); }},
        {"CascadeMenuItem_SetMenu", notFound, [&] { setSubMenu(cascade, subMenu); }},
        {"AbstractMenuItem_SetEnabled", notFound,
         [&] { set(OS::AbstractMenuItem_SetEnabled, item); }},
        {"StateMenuItem_SetSelection", u"Menu item doesn't exist",
         [&] { set(OS::StateMenuItem_SetSelection, state); }},
        {"Widget_Dispose", notRemoved, [&] { dispose(item); }},
        {"Widget_Dispose", notRemoved, [&] { dispose(cascade); }},
        {"Widget_Dispose", notRemoved, [&] { dispose(state); }},
    };
    for (const auto& row : rows) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        row.use();
        TestVm::Report report = onlyReport();
        EXPECT_EQ(report.function, row.native);
        EXPECT_EQ(report.code, -3) << row.native;
        EXPECT_EQ(report.message, row.message) << row.native;
    }
}
