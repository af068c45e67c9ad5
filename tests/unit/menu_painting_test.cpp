// How menu items are measured and painted.

#include "faults.h"
#include "menu_fixture.h"

TEST_F(MenuTest, fonts_of_menus_are_the_systems) {
    jint menu = newMenu(OS::DropDownMenu_New, shell);
    jint item = newItem(OS::PushMenuItem_New, menu, 0);
    Faults faults;
    call(OS::Menu_SetFont, menu, 1);
    call(OS::LabeledMenuItem_SetFont, item, 1);
    EXPECT_TRUE(faults.calls().empty());
}

TEST_F(MenuTest, an_item_that_the_menu_asks_to_measure_answers) {
    jint item = newItem(OS::PushMenuItem_New, newMenu(OS::DropDownMenu_New, shell), 0);
    MEASUREITEMSTRUCT measuring = {};
    measuring.CtlType = ODT_MENU;
    measuring.itemData = itemOf(item)->id;
    auto ask = [&] {
        return SendMessageW(windowOf(shell), WM_MEASUREITEM, 0,
                            reinterpret_cast<LPARAM>(&measuring));
    };
    EXPECT_EQ(ask(), 1);
    measuring.CtlType = ODT_BUTTON;
    EXPECT_EQ(ask(), 0);
    measuring.CtlType = ODT_MENU;
    measuring.itemData = 5000;
    EXPECT_EQ(ask(), 0);
}

static std::vector<std::string> hookCalls;
static LRESULT recordPaint(MenuItemRecord*, WPARAM wParam, LPARAM lParam) {
    hookCalls.push_back("paint " + std::to_string(wParam) + " " +
                        std::to_string(reinterpret_cast<DRAWITEMSTRUCT*>(lParam)->itemData));
    return 0;
}

TEST_F(MenuTest, an_item_paints_itself_when_the_menu_asks) {
    jint item = newItem(OS::PushMenuItem_New, newMenu(OS::DropDownMenu_New, shell), 0);
    DRAWITEMSTRUCT drawing = {};
    drawing.CtlType = ODT_MENU;
    drawing.itemData = itemOf(item)->id;
    itemOf(item)->paint = recordPaint;
    hookCalls.clear();
    SendMessageW(windowOf(shell), WM_DRAWITEM, 7, reinterpret_cast<LPARAM>(&drawing));
    drawing.CtlType = ODT_BUTTON;
    SendMessageW(windowOf(shell), WM_DRAWITEM, 7, reinterpret_cast<LPARAM>(&drawing));
    EXPECT_EQ(hookCalls, Events{"paint 7 108"});
}

// A companion library's item may have no part in one of them.
TEST_F(MenuTest, an_item_without_a_part_in_it_is_left_to_the_window_class) {
    jint item = newItem(OS::PushMenuItem_New, newMenu(OS::DropDownMenu_New, shell), 0);
    listen(item);
    MenuItemRecord* record = itemOf(item);
    record->paint = nullptr;
    record->measure = nullptr;
    record->select = nullptr;
    DRAWITEMSTRUCT drawing = {};
    drawing.CtlType = ODT_MENU;
    drawing.itemData = record->id;
    MEASUREITEMSTRUCT measuring = {};
    measuring.CtlType = ODT_MENU;
    measuring.itemData = record->id;
    EXPECT_EQ(sendTo(shell, WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&drawing)), 0);
    EXPECT_EQ(sendTo(shell, WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&measuring)), 0);
    EXPECT_EQ(sendTo(shell, WM_COMMAND, record->id), 0);
    EXPECT_TRUE(fired::only(vm.takeEvents(), {"menu"}).empty());
}

// A menu item's picture, painted on a bitmap that a test can look at.
class ItemImageTest : public MenuTest {
  protected:
    ItemImageTest() : screen(GetDC(nullptr)), dc(CreateCompatibleDC(screen)) {
        bitmap = CreateCompatibleBitmap(screen, 20, 20);
        previous = SelectObject(dc, bitmap);
        PatBlt(dc, 0, 0, 20, 20, WHITENESS);
        drawing.CtlType = ODT_MENU;
        drawing.hDC = dc;
        drawing.rcItem = {2, 3, 8, 9};
    }
    ~ItemImageTest() override {
        SelectObject(dc, previous);
        DeleteObject(bitmap);
        DeleteDC(dc);
        ReleaseDC(nullptr, screen);
    }
    void paint(jint item) {
        drawing.itemData = itemOf(item)->id;
        SendMessageW(windowOf(shell), WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&drawing));
    }
    HDC screen, dc;
    HBITMAP bitmap;
    HGDIOBJ previous;
    DRAWITEMSTRUCT drawing = {};
};

TEST_F(ItemImageTest, an_item_with_an_image_paints_it_inside_the_item_only) {
    jint item = newItem(OS::PushMenuItem_New, newMenu(OS::DropDownMenu_New, shell), 0);
    jint image = call(OS::Image_NewFromSize, display, 10, 10, 0xFF0000);
    itemOf(item)->image = reinterpret_cast<ImageRecord*>(image);
    paint(item);
    const COLORREF red = RGB(255, 0, 0), white = RGB(255, 255, 255);
    EXPECT_EQ(GetPixel(dc, 2, 3), red);
    EXPECT_EQ(GetPixel(dc, 7, 8), red);
    EXPECT_EQ(GetPixel(dc, 1, 3), white);
    EXPECT_EQ(GetPixel(dc, 8, 8), white);
    EXPECT_EQ(GetPixel(dc, 7, 9), white);
    itemOf(item)->image = nullptr;
    call(OS::Image_Dispose, image);
}

TEST_F(ItemImageTest, an_item_without_an_image_paints_nothing) {
    paint(newItem(OS::PushMenuItem_New, newMenu(OS::DropDownMenu_New, shell), 0));
    EXPECT_EQ(GetPixel(dc, 2, 3), RGB(255, 255, 255));
}

TEST_F(ItemImageTest, painting_an_item_puts_the_clip_region_back) {
    jint item = newItem(OS::PushMenuItem_New, newMenu(OS::DropDownMenu_New, shell), 0);
    jint image = call(OS::Image_NewFromSize, display, 1, 1, 0);
    itemOf(item)->image = reinterpret_cast<ImageRecord*>(image);
    HRGN region = CreateRectRgn(1, 1, 15, 15);
    HRGN hole = CreateRectRgn(4, 4, 6, 6);
    CombineRgn(region, region, hole, RGN_DIFF);
    SelectClipRgn(dc, region);
    paint(item);
    HRGN after = CreateRectRgn(0, 0, 0, 0);
    EXPECT_EQ(GetClipRgn(dc, after), 1);
    EXPECT_TRUE(EqualRgn(after, region));
    SelectClipRgn(dc, nullptr);
    paint(item);
    EXPECT_EQ(GetClipRgn(dc, after), 0);
    for (HRGN each : {region, hole, after}) DeleteObject(each);
    itemOf(item)->image = nullptr;
    call(OS::Image_Dispose, image);
}
