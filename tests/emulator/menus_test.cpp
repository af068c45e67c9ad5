#include "ce.h"
#include "emulator.h"
#include <gtest/gtest.h>
#include <utility>

class MenuItemTest : public testing::Test {
  protected:
    MenuItemTest() { InsertMenuW(menu, 0, MF_BYPOSITION, 120, L"Open"); }
    ~MenuItemTest() override { DestroyMenu(menu); }

    static MENUITEMINFOW describe(UINT size, UINT mask) {
        MENUITEMINFOW info = {};
        info.cbSize = size;
        info.fMask = mask;
        return info;
    }
    bool isRead(MENUITEMINFOW info) {
        SetLastError(0);
        bool read = GetMenuItemInfoW(menu, 0, TRUE, &info);
        EXPECT_EQ(GetLastError(), read ? 0 : DWORD(ERROR_INVALID_PARAMETER));
        return read;
    }
    bool isWritten(const MENUITEMINFOW& info) {
        SetLastError(0);
        bool written = SetMenuItemInfoW(menu, 0, TRUE, &info);
        EXPECT_EQ(GetLastError(), written ? 0 : DWORD(ERROR_INVALID_PARAMETER));
        return written;
    }

    HMENU menu = CreatePopupMenu();
};

TEST_F(MenuItemTest, is_read_and_written_by_a_description_of_the_devices_size_only) {
    const std::pair<UINT, bool> sizes[] = {{MENU_ITEM_INFO_SIZE, true},
                                           {sizeof(MENUITEMINFOW), false},
                                           {MENU_ITEM_INFO_SIZE - 4, false},
                                           {0, false}};
    for (auto [size, taken] : sizes) {
        EXPECT_EQ(isRead(describe(size, MIIM_DATA)), taken) << size;
        EXPECT_EQ(isWritten(describe(size, MIIM_DATA)), taken) << size;
    }
}

TEST_F(MenuItemTest, has_no_parts_beyond_the_devices) {
    for (UINT bit = 1; bit; bit <<= 1) {
        bool taken = bit <= MIIM_DATA;
        EXPECT_EQ(isRead(describe(MENU_ITEM_INFO_SIZE, bit)), taken) << bit;
        EXPECT_EQ(isWritten(describe(MENU_ITEM_INFO_SIZE, bit)), taken) << bit;
    }
}

TEST_F(MenuItemTest, keeps_what_is_written) {
    MENUITEMINFOW info = describe(MENU_ITEM_INFO_SIZE, MIIM_DATA);
    info.dwItemData = 77;
    EXPECT_TRUE(SetMenuItemInfoW(menu, 0, TRUE, &info));
    info.dwItemData = 0;
    EXPECT_TRUE(GetMenuItemInfoW(menu, 0, TRUE, &info));
    EXPECT_EQ(info.dwItemData, 77u);
}

TEST_F(MenuItemTest, menus_and_tables_of_accelerators_are_counted_until_they_end) {
    LONG before = Emulator_CountMenusAndTables();
    HMENU inner = CreatePopupMenu(), outer = CreatePopupMenu();
    InsertMenuW(outer, 0, MF_BYPOSITION | MF_POPUP, reinterpret_cast<UINT_PTR>(inner), L"More");
    ACCEL entry = {FVIRTKEY, VK_F1, 120};
    HACCEL table = CreateAcceleratorTableW(&entry, 1);
    EXPECT_EQ(Emulator_CountMenusAndTables(), before + 3);
    DestroyMenu(outer);
    EXPECT_EQ(Emulator_CountMenusAndTables(), before + 1) << "with the menu within";
    DestroyAcceleratorTable(table);
    EXPECT_EQ(Emulator_CountMenusAndTables(), before);
    EXPECT_FALSE(DestroyAcceleratorTable(table));
    EXPECT_EQ(Emulator_CountMenusAndTables(), before) << "ended already";
}
